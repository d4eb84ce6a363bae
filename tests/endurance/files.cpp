#include "bench.h"

#include "launcher/settings.h"
#include "suite/datacare/backup.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDataStream>
#include <QFile>
#include <QtEndian>

#include <array>

// Files from outside that are not as the program wrote them.

namespace {

constexpr qsizetype markBytes = 17;
constexpr qsizetype checksumBytes = 32;
const Progress silent = [](qint64, qint64) {};

QByteArray backup(Bench &bench)
{
    bench.carry(ClientRows(QStringLiteral("T1")));
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    BackupSummary summary;
    QString why;
    if (!WriteBackup(&bench.connection(), file, summary, silent, &why))
        qFatal("%s", qPrintable(why));
    return file.data();
}

bool restore(Bench &bench, QByteArray bytes, QString *why)
{
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    return RestoreBackup(&bench.connection(), file, silent, why);
}

/// A backup with the definition of a table, and its name, put in another's place; the checksum is right.
QByteArray forged(const QByteArray &good, const QString &table, const std::function<void(QString &, QString &)> &change)
{
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
        if (name.compare(table, Qt::CaseInsensitive) == 0) {
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

QByteArray damaged(QByteArray bytes, Dice &dice, qsizetype from = 0)
{
    const auto at = from + dice.upTo(static_cast<int>(bytes.size() - from));
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
    const char *what;
    const char *from;
    const char *to;
};

/// Each in the definition of the challans; a pipe stands for the end of a definition's first column.
constexpr std::array<Forgery, 12> forgeries{{
    {"a second statement", ") ENGINE", "); Delete from FBT_Info; -- ) ENGINE"},
    {"rows of a query", " DEFAULT CHARSET", " SELECT 1 DEFAULT CHARSET"},
    {"a file of the server", " DEFAULT CHARSET", " DATA DIRECTORY='/tmp' DEFAULT CHARSET"},
    {"another server", " DEFAULT CHARSET", " CONNECTION='mysql://a@b/c' DEFAULT CHARSET"},
    {"a computed column", "`srno` int(11) DEFAULT NULL", "`srno` int(11) GENERATED ALWAYS AS (sleep(9))"},
    {"a default that is run", "`srno` int(11) DEFAULT NULL", "`srno` int(11) DEFAULT (sleep(9))"},
    {"a check that is run", "`srno` int(11) DEFAULT NULL", "`srno` int(11) DEFAULT NULL CHECK (sleep(9))"},
    {"an unknown type", "`srno` int(11)", "`srno` geometry"},
    {"an unknown column", "`srno`", "`other`"},
    {"a name that ends its quotes", "`srno`", "`srno`` int, x`"},
    {"a comment that the server reads", "`srno` int(11)", "`srno` int(11) /*! NOT NULL */"},
    {"a column less", "`srno` int(11) DEFAULT NULL,\n", ""},
}};

} // namespace

Outcome ForgedBackups(Dice & /*dice*/)
{
    Outcome outcome;
    Bench &bench = Bench::upToDate();
    const QByteArray good = backup(bench);
    const QStringList before = bench.content();
    const auto attempt = [&](const QString &what, const std::function<void(QString &, QString &)> &change) {
        const QByteArray bytes = forged(good, QStringLiteral("FBT_Challan"), change);
        QString why;
        const bool taken = restore(bench, bytes, &why);
        outcome.expect(bytes != good && !taken && bench.content() == before, what + QStringLiteral(": taken"));
        ++outcome.rounds;
    };
    for (const Forgery &forgery : forgeries) {
        attempt(QLatin1String(forgery.what), [&](QString &, QString &definition) {
            if (!definition.contains(QLatin1String(forgery.from)))
                qFatal("No place for %s in %s", forgery.what, qPrintable(definition));
            definition.replace(QLatin1String(forgery.from), QLatin1String(forgery.to));
        });
    }
    attempt(QStringLiteral("an unknown table"), [](QString &name, QString &) { name = QStringLiteral("Strange"); });
    attempt(QStringLiteral("a name of another schema"),
            [](QString &name, QString &) { name = QStringLiteral("mysql`.`user"); });
    attempt(QStringLiteral("another's rows"), [](QString &name, QString &) { name = QStringLiteral("FBT_Info"); });
    // The same hand, with nothing changed, makes a backup that is taken.
    QString why;
    outcome.expect(restore(bench, forged(good, QStringLiteral("FBT_Challan"), [](QString &, QString &) {}), &why) &&
                       bench.content() == before,
                   QStringLiteral("an unchanged one: ") + why);
    return outcome;
}

Outcome DamagedBackups(Dice &dice)
{
    constexpr int each = 10;
    Outcome outcome;
    Bench &bench = Bench::upToDate();
    const QByteArray good = backup(bench);
    const QStringList before = bench.content();
    for (; outcome.rounds < dice.rounds * each; ++outcome.rounds) {
        QByteArray bytes = damaged(good, dice);
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        BackupSummary summary;
        QString why;
        outcome.expect(bytes == good || !VerifyBackup(file, summary, silent, &why), QStringLiteral("taken as whole"));
        if (outcome.rounds % each == 0) // even unchecked it changes nothing
            outcome.expect(bytes == good || (!restore(bench, bytes, &why) && bench.content() == before),
                           QStringLiteral("restored: ") + why);
    }
    return outcome;
}

// A file that names an office server never opens the private database, and a complaint never shows the password.
Outcome DamagedSettings(Dice &dice)
{
    constexpr int each = 50;
    const QByteArray good = "[Server]\nhost=office\nport=3307\nuser=fbt\npassword=s3cr3t\ntls=off\nschema=fbt2\n"
                            "[Suite]\nschema=suite\n";
    constexpr qsizetype opening = 9; // a file that is cut before the section is over names no server
    Outcome outcome;
    const QTemporaryDir folder;
    int refused = 0;
    for (; outcome.rounds < dice.rounds * each; ++outcome.rounds) {
        const QByteArray bytes = damaged(good, dice, opening);
        QFile file(folder.filePath(QStringLiteral("pelkfbt.ini")));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("%s", qPrintable(file.errorString()));
        file.close();
        QString why;
        const auto settings = ReadLauncherSettings(file.fileName(), &why);
        refused += settings ? 0 : 1;
        outcome.expect(settings ? settings->server.has_value() : !why.isEmpty() && !why.contains(u"s3cr3t"),
                       (settings ? QStringLiteral("private: ") : why) + QString::fromLatin1(bytes.toPercentEncoding()));
    }
    outcome.happened += Joined(refused, " refused, the others name their server");
    return outcome;
}
