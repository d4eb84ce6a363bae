#include "bench.h"

#include "platform/recordset.h"

#include <QDir>
#include <QFile>

#include <sys/mount.h>

// A small file system that is full.

namespace {

constexpr auto plenty = "size=400m";

/// A file system of some size in memory, where the system lets one be mounted.
class SmallDisk
{
public:
    explicit SmallDisk(int megabytes)
        : m_mounted(::mount("none", path().constData(), "tmpfs", 0,
                            Joined("size=", megabytes, "m").toUtf8().constData()) == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_mounted)
            ::umount2(path().constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool mounted() const { return m_mounted; }
    [[nodiscard]] QString folder() const { return m_folder.filePath(QStringLiteral("db")); }
    bool makeRoom() { return ::mount("none", path().constData(), "tmpfs", MS_REMOUNT, plenty) == 0; }
    void fill() const
    {
        constexpr int piece = 4096;
        QFile file(m_folder.filePath(QStringLiteral("filler")));
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            while (file.write(QByteArray(piece, 'x')) == piece) {
            }
        }
    }

private:
    [[nodiscard]] QByteArray path() const { return QFile::encodeName(m_folder.path()); }

    QTemporaryDir m_folder;
    bool m_mounted;
};

Outcome notRun()
{
    return {0, 0, QStringLiteral("no file system may be mounted here"), false};
}

} // namespace

Outcome FullDiskUpdate(Dice &dice)
{
    Outcome outcome;
    const QStringList whole = Bench::upToDate().asUpdated();
    int said = 0;
    for (int round = 0; round < 1 + dice.rounds / 10; ++round) {
        constexpr int least = 40; // the server's own files take about as much
        constexpr int more = 90;
        const int size = least + dice.upTo(more);
        SmallDisk disk(size);
        if (!disk.mounted())
            return notRun();
        Bench bench(disk.folder());
        Played first(bench, {QStringLiteral("start")});
        const bool complained = first.ended() != 0 || !first.printed().isEmpty() || !LogOf(bench).isEmpty();
        said += complained ? 1 : 0;
        const bool room = disk.makeRoom();
        Played second(bench, {QStringLiteral("start")});
        const int code = second.ended();
        const bool held = bench.hold();
        const QStringList found = held ? bench.content() : QStringList();
        outcome.expect(room && code == 0 && found == whole,
                       Joined(size, " MB: ", Difference(found, whole), complained ? ", said: " : ", nothing said: ") +
                           first.printed().right(200) + second.printed().right(200));
        ++outcome.rounds;
    }
    outcome.happened += Joined(said, " of the first starts were told to have failed");
    return outcome;
}

Outcome FullDiskSaving(Dice &dice)
{
    Outcome outcome;
    int refused = 0;
    for (int round = 0; round < 1 + dice.rounds / 20; ++round) {
        SmallDisk disk(300);
        if (!disk.mounted())
            return notRun();
        Bench bench(disk.folder());
        outcome.expect(Played(bench, {QStringLiteral("start")}).ended() == 0 && bench.hold(),
                       QStringLiteral("no start"));
        bench.carry(ClientRows(QStringLiteral("T1")));
        disk.fill();
        // What is free within the table's own file goes too.
        bench.connection().setFaultHandler({});
        for (const char *rows : {"500", "1"}) {
            while (bench.connection().Execute(
                Joined("Insert into FBT_Detail Select 'X',2007,1,1,seq,69,1 from seq_1_to_", rows))) {
            }
        }
        const auto logged = LogOf(bench).size();
        Played program(bench, AtEntry() + AddExpense() + QStringList{QStringLiteral("read frmfbtdet.txtdedflds(2)")});
        const int code = program.ended();
        const QStringList rows =
            bench.rows(QStringLiteral("Select Amt from FBT_Detail Where Code_No='T1' and Quarter=1"));
        const bool saved = rows == QStringList{QStringLiteral("100"), QStringLiteral("10")};
        const bool old = rows == QStringList{QStringLiteral("100")};
        const bool told = LogOf(bench).size() > logged;
        const bool kept = program.printed().contains(QStringLiteral("txtdedflds(2)\t10"));
        refused += old ? 1 : 0;
        outcome.expect(code == 0 && (saved || (old && told && kept)),
                       rows.join(u' ') + (told ? ", told" : ", not told") + (kept ? ", kept: " : ", not kept: ") +
                           program.printed().right(200));
        ++outcome.rounds;
    }
    outcome.happened += Joined(refused, " saves were refused, said, and left the old row and the typed text");
    return outcome;
}
