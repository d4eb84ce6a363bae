#include "records/updatemark.h"
#include "suite/datacare/backup.h"
#include "suite/datacare/datacare.h"
#include "suite/datacare/repair.h"
#include "suite/datacare/scratchtables.h"
#include "tests/suite/suitefixture.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDataStream>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtEndian>

#include <sys/resource.h>

namespace {

const Progress silent = [](qint64, qint64) {};

/// A disk that is full after some bytes.
class FullDisk : public QBuffer
{
public:
    explicit FullDisk(qint64 room)
        : m_room(room)
    {
        open(QIODevice::WriteOnly);
    }

protected:
    qint64 writeData(const char *bytes, qint64 count) override
    {
        if (pos() + count <= m_room)
            return QBuffer::writeData(bytes, count);
        setErrorString("No space left on device");
        return -1;
    }

private:
    qint64 m_room;
};

/// Peak memory of this process in kilobytes.
long peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// A backup with the name and the definition of the challans' table as `change` makes them; the checksum is right.
QByteArray forged(const QByteArray &good, const std::function<void(QString &, QString &)> &change)
{
    constexpr qsizetype markBytes = 17;
    constexpr qsizetype checksumBytes = 32;
    QByteArray made = good.left(markBytes);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (qsizetype at = markBytes; at < good.size() - checksumBytes;) {
        const auto length = static_cast<qsizetype>(qFromBigEndian<quint32>(good.constData() + at));
        QByteArray payload = qUncompress(good.mid(at + 4, length));
        at += 4 + length;
        quint8 kind = 0;
        QString name;
        QString definition;
        quint32 columns = 0;
        QDataStream in(payload);
        in >> kind;
        if (kind == 1)
            in >> name >> definition >> columns;
        if (name.compare(u"FBT_Challan", Qt::CaseInsensitive) == 0) {
            change(name, definition);
            payload.clear();
            QDataStream(&payload, QIODevice::WriteOnly) << kind << name << definition << columns;
        }
        hash.addData(payload);
        const QByteArray packed = qCompress(payload);
        QByteArray size(4, '\0');
        qToBigEndian(static_cast<quint32>(packed.size()), size.data());
        made += size + packed;
    }
    return made + hash.result();
}

QByteArray damaged(QByteArray bytes, QRandomGenerator &dice)
{
    const auto at = dice.bounded(bytes.size());
    switch (dice.bounded(4)) {
    case 0:
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << dice.bounded(8)));
        return bytes;
    case 1:
        return bytes.left(at);
    case 2:
        return bytes.remove(at, 1 + dice.bounded(20));
    default:
        return bytes.insert(at, QByteArray(1 + dice.bounded(20), static_cast<char>(dice.bounded(256))));
    }
}

struct Forgery
{
    QString what;
    QString from; ///< in the definition of the challans; empty: its name
    QString to;
};

const QString column = "`srno` int(11) DEFAULT NULL";
const QString charset = " DEFAULT CHARSET";
const std::vector<Forgery> forgeries{
    {"a second statement", ") ENGINE", "); Delete from FBT_Info; -- ) ENGINE"},
    {"rows of a query", charset, " SELECT 1" + charset},
    {"a file of the server", charset, " DATA DIRECTORY='/tmp'" + charset},
    {"another server", charset, " CONNECTION='mysql://a@b/c'" + charset},
    {"a computed column", column, "`srno` int(11) GENERATED ALWAYS AS (sleep(9))"},
    {"a default that is run", column, "`srno` int(11) DEFAULT (sleep(9))"},
    {"a check that is run", column, column + " CHECK (sleep(9))"},
    {"an unknown type", "`srno` int(11)", "`srno` geometry"},
    {"an unknown column", "`srno`", "`other`"},
    {"a name that ends its quotes", "`srno`", "`srno`` int, x`"},
    {"a comment that the server reads", "`srno` int(11)", "`srno` int(11) /*! NOT NULL */"},
    {"a column less", column + ",\n", ""},
    {"an unknown table", "", "Strange"},
    {"a name of another schema", "", "mysql`.`user"},
    {"another's rows", "", "FBT_Info"},
};

QStringList withoutKey(QStringList tables)
{
    static const QRegularExpression key(",\n  `FbtRow`[^,]*,\n  PRIMARY KEY \\(`FbtRow`\\)| AUTO_INCREMENT=\\d+");
    return tables.replaceInStrings(key, QString());
}

} // namespace

/// Backup, restore and repair: what was there comes back, and nothing is lost on the way.
class TestBackup : public QObject
{
    Q_OBJECT

private slots:
    void bringsBackEveryRow()
    {
        SuiteFixture suite(m_server);
        fill();
        const QStringList before = content(suite);
        QBuffer file;
        const BackupSummary written = write(file);
        QCOMPARE(written.rows, 4U);

        Cnn->Execute("Delete from FBT_Info");
        Cnn->Execute("Update FBT_Detail Set Amt=1");
        Cnn->Execute("Insert into bank_master Values (9,'LATER','','')");
        QVERIFY2(RestoreBackup(Cnn, file, silent, &m_why), qPrintable(m_why));
        // A backup from before the hidden keys: its tables come back with them.
        QCOMPARE(withoutKey(content(suite)), before);
        QCOMPARE(content(suite).filter("PRIMARY KEY (`FbtRow`)").size(), tables(suite).size());

        QBuffer keyed;
        QCOMPARE(write(keyed).rows, 4U);
        Cnn->Execute("Delete from FBT_Detail");
        QVERIFY2(RestoreBackup(Cnn, keyed, silent, &m_why), qPrintable(m_why));
        QCOMPARE(withoutKey(content(suite)), before);
        QCOMPARE(content(suite).filter("PRIMARY KEY (`FbtRow`)").size(), tables(suite).size());
        QCOMPARE(tables(suite).filter("restore"), QStringList());
        QCOMPARE(suite.module.logLines(), QStringList());
    }

    // What was saved amid an update is completed at the next start, wherever it is brought back.
    void bringsBackTheMarkOfAnOpenUpdate()
    {
        SuiteFixture suite(m_server);
        Cnn->Execute(Sql("Create Table ", updateMark, " (Nm Varchar(20))"));
        QBuffer file;
        write(file);
        Cnn->Execute(Sql("Drop Table ", updateMark));
        QVERIFY2(RestoreBackup(Cnn, file, silent, &m_why), qPrintable(m_why));
        QVERIFY(tables(suite).contains(QString(updateMark).toLower()));
    }

    void damagedFileIsRefused()
    {
        SuiteFixture suite(m_server);
        fill();
        QBuffer good;
        write(good);
        const QStringList before = content(suite);
        const QByteArray bytes = good.data();
        const auto flipped = [&bytes](qsizetype at) {
            QByteArray other = bytes;
            other[at] = static_cast<char>(other[at] ^ 1);
            return other;
        };
        QList<QByteArray> damages{"",
                                  bytes + 'x',
                                  bytes.chopped(32),
                                  QByteArray(5000, 'x'),
                                  flipped(bytes.size() - 1),
                                  QByteArray(bytes).replace(17, 4, "\xff\xff\xff\xf0")}; // a huge length
        for (QRandomGenerator dice(1); damages.size() < 60;)
            damages << damaged(bytes, dice);
        int whole = 0; // a bit of the packing that nothing hangs on
        for (QByteArray read : damages) {
            QBuffer file(&read);
            QVERIFY(file.open(QIODevice::ReadOnly));
            BackupSummary summary;
            const bool taken = VerifyBackup(file, summary, silent, &m_why);
            file.seek(0);
            QVERIFY2(RestoreBackup(Cnn, file, silent, &m_why) == taken, read.toHex().constData());
            QVERIFY2(withoutKey(content(suite)) == before, read.toHex().constData());
            QCOMPARE(tables(suite).filter("restore"), QStringList());
            whole += taken ? 1 : 0;
        }
        QVERIFY2(whole < 3, qPrintable(QString::number(whole)));
    }

    /// A table's definition that someone changed in a backup; the checksum is made anew.
    void forgedFileIsRefused()
    {
        SuiteFixture suite(m_server);
        fill();
        QBuffer good;
        write(good);
        const QStringList before = content(suite);
        const auto restores = [this](QByteArray bytes) {
            QBuffer file(&bytes);
            return file.open(QIODevice::ReadOnly) && RestoreBackup(Cnn, file, silent, &m_why);
        };
        for (const Forgery &forgery : forgeries) {
            const QByteArray bytes = forged(good.data(), [&](QString &name, QString &definition) {
                forgery.from.isEmpty() ? name = forgery.to : definition.replace(forgery.from, forgery.to);
            });
            QVERIFY2(bytes != good.data() && !restores(bytes), qPrintable(forgery.what));
            QVERIFY2(content(suite) == before, qPrintable(forgery.what));
        }
        // The same hand, with nothing changed, makes a backup that is taken.
        QVERIFY2(restores(forged(good.data(), [](QString &, QString &) {})), qPrintable(m_why));
    }

    void fullDiskIsToldAtEveryPlace()
    {
        SuiteFixture suite(m_server);
        fill();
        QBuffer whole;
        write(whole);
        for (qint64 room = 0; room < whole.size(); room += 97) {
            FullDisk disk(room);
            BackupSummary summary;
            QVERIFY(!WriteBackup(Cnn, disk, summary, silent, &m_why));
            QVERIFY2(m_why.contains("No space left on device"), qPrintable(QString::number(room)));
        }
    }

    void backupsNeverReplaceOneAnother()
    {
        SuiteFixture suite(m_server);
        QTemporaryDir folder;
        QStringList files;
        for (int i = 0; i < 4; ++i) {
            QString file;
            QVERIFY2(BackUpToFolder(Cnn, folder.path(), file, silent, &m_why), qPrintable(m_why));
            files << QFileInfo(file).fileName();
        }
        files.sort();
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files, QDir::Name), files); // four, and nothing unfinished
    }

    void serverLostWhileRestoringLeavesTheData()
    {
        SuiteFixture suite(m_server);
        fill();
        QBuffer file;
        write(file);
        Cnn->Execute("Update FBT_Info Set City='PRESENT'");
        const QStringList present = content(suite);
        int sent = 0;
        Cnn->setObserver([&sent](const QString &text) {
            if (text.startsWith("Insert into `fbt_restore_new_") && ++sent == 2)
                Cnn->close();
        });
        QVERIFY(!RestoreBackup(Cnn, file, silent, &m_why));
        Cnn->setObserver(nullptr);
        QVERIFY(Cnn->open(Cnn->address()));
        QVERIFY(!tables(suite).filter("restore").isEmpty());
        RepairTables(Cnn, silent);
        const ScratchTables next(Cnn); // the next restore clears away what was left
        QCOMPARE(tables(suite).filter("restore"), QStringList());
        QCOMPARE(content(suite), present);
    }

    void memoryDoesNotGrowWithTheRows()
    {
        SuiteFixture suite(m_server);
        Cnn->Execute("Insert into FBT_Info (Code_no,Name,Busnat) Select seq,Repeat('N',90),Repeat('1,',100) from "
                     "seq_1_to_80000"); // 24 MB
        QTemporaryDir folder;
        QString file;
        [[maybe_unused]] const long start = peakMemory();
        QVERIFY2(BackUpToFolder(Cnn, folder.path(), file, silent, &m_why), qPrintable(m_why));
        QFile backup(file);
        QVERIFY(backup.open(QIODevice::ReadOnly));
        QVERIFY2(RestoreBackup(Cnn, backup, silent, &m_why), qPrintable(m_why));
        QCOMPARE(suite.module.rows("Select Count(*) from FBT_Info"), QStringList({"80000"}));
#ifndef __SANITIZE_ADDRESS__ // which holds back what is freed, so that the peak tells nothing
        QVERIFY2(peakMemory() - start < 12 * 1024, qPrintable(QString::number(peakMemory() - start)));
#endif
    }

private:
    /// Rows with all that a text can hold.
    static void fill()
    {
        Cnn->Execute("Insert into FBT_Info (Code_no,Name,Busnat,SurApp) Values ('A1','O''BRIEN \\\\ SONS','1,3',''),"
                     "('B''2',Null,'','00000')");
        Cnn->Execute("Insert into FBT_Detail Values ('A1',2008,1,3,1,69,12000.1),"
                     "('\u0905\n\t\"',2008,1,-1,1,69,0.1234567890123456)");
    }

    /// Writes a backup, checks it, and leaves the device open for reading it.
    BackupSummary write(QBuffer &file)
    {
        BackupSummary written;
        BackupSummary read;
        file.open(QIODevice::WriteOnly);
        [&] { QVERIFY2(WriteBackup(Cnn, file, written, silent, &m_why), qPrintable(m_why)); }();
        file.close();
        file.open(QIODevice::ReadOnly);
        [&] { QVERIFY2(VerifyBackup(file, read, silent, &m_why), qPrintable(m_why)); }();
        file.seek(0);
        [&] { QVERIFY(read == written); }();
        return written;
    }

    static QStringList tables(SuiteFixture &suite)
    {
        return suite.module.rows("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()"
                                 " and TABLE_NAME<>'later' Order by TABLE_NAME");
    }

    static QStringList content(SuiteFixture &suite)
    {
        QStringList all;
        for (const QString &table : tables(suite)) {
            all << suite.module.rows("Show Create Table " + table);
            all << suite.module.rows("Select * from " + table);
        }
        return all;
    }

    TestServer m_server;
    QString m_why;
};

QTEST_MAIN(TestBackup)
#include "tst_backup.moc"
