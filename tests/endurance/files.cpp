#include "bench.h"

#include "suite/datacare/backup.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDataStream>
#include <QtEndian>

// Files from outside that are not as the program wrote them.

namespace {

const Progress silent = [](qint64, qint64) {};

QByteArray backup(Bench &bench)
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    BackupSummary summary;
    QString why;
    if (!WriteBackup(&bench.connection(), file, summary, silent, &why))
        qFatal("%s", qPrintable(why));
    return file.data();
}

bool restores(Bench &bench, QByteArray bytes)
{
    QBuffer file(&bytes);
    QString why;
    return file.open(QIODevice::ReadOnly) && RestoreBackup(&bench.connection(), file, silent, &why);
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

QByteArray damaged(QByteArray bytes, Dice &dice)
{
    const auto at = dice.upTo(bytes.size());
    switch (dice.upTo(4)) {
    case 0:
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << dice.upTo(8)));
        return bytes;
    case 1:
        return bytes.left(at);
    case 2:
        return bytes.remove(at, 1 + dice.upTo(20));
    default:
        return bytes.insert(at, QByteArray(1 + dice.upTo(20), static_cast<char>(dice.upTo(256))));
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

} // namespace

void ForgedBackups(Outcome &outcome, Dice & /*dice*/)
{
    Bench &bench = Bench::upToDate();
    const QByteArray good = backup(bench);
    const QStringList before = bench.content();
    for (const Forgery &forgery : forgeries) {
        const QByteArray bytes = forged(good, [&](QString &name, QString &definition) {
            if (forgery.from.isEmpty())
                name = forgery.to;
            else
                definition.replace(forgery.from, forgery.to);
        });
        outcome.expect(bytes != good && !restores(bench, bytes) && bench.content() == before, forgery.what + ": taken");
        ++outcome.rounds;
    }
    // The same hand, with nothing changed, makes a backup that is taken.
    const QByteArray same = forged(good, [](QString &, QString &) {});
    outcome.expect(restores(bench, same) && bench.content() == before, "an unchanged one is refused");
}

void DamagedBackups(Outcome &outcome, Dice &dice)
{
    constexpr int each = 10;
    Bench &bench = Bench::upToDate();
    const QByteArray good = backup(bench);
    const QStringList before = bench.content();
    for (; outcome.rounds < dice.rounds * each; ++outcome.rounds) {
        QByteArray bytes = damaged(good, dice);
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        BackupSummary summary;
        QString why;
        outcome.expect(bytes == good || !VerifyBackup(file, summary, silent, &why), "taken as whole");
        if (outcome.rounds % each == 0) // even unchecked it changes nothing
            outcome.expect(bytes == good || (!restores(bench, bytes) && bench.content() == before), "restored");
    }
}
