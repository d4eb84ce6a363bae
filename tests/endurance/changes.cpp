#include "bench.h"

#include "tests/launcher/officeserver.h"

#include <QFile>
#include <QThread>

#include <memory>

#include <sys/mount.h>

// Programs that save while others do, while the disk is full, and while they or their server are killed.

namespace {

const QStringList onlyStart{"start"};
const QStringList sayBegun{"sql Select 'begun'"};

QStringList lines(const QString &text)
{
    return text.split(u'\n');
}

QStringList repeated(const QStringList &once, int times)
{
    QStringList all;
    for (int i = 0; i < times; ++i)
        all += once;
    return all;
}

QStringList atEntry(int clientRow = 1)
{
    return lines(QString("today 15/06/2008\nclick frmmain.cmdfbtdet\nchoose frmsbase.cboasyear 2008-2009\n"
                         "row frmsbase.ClGrd1.vsf %1\nkey frmsbase.ClGrd1.vsf Enter")
                     .arg(clientRow));
}

const QStringList addExpense = lines("click frmfbtdet.cmdaddded\ntype frmfbtdet.txtdedflds(0) conv\n"
                                     "key frmfbtdet.txtdedflds(0) Enter\ntype frmfbtdet.txtdedflds(1) loc\n"
                                     "key frmfbtdet.txtdedflds(1) Enter\nset frmfbtdet.txtdedflds(2) 10\n"
                                     "click frmfbtdet.cmdupdateded");

/// Something that a user changes back and forth.
struct Change
{
    const char *name;
    QStringList open; ///< steps to the screen
    QString to;       ///< makes it the one state
    QString one;      ///< what `to` writes
    QString other;    ///< what it writes on the way back

    [[nodiscard]] QStringList there() const { return lines(to); }
    [[nodiscard]] QStringList back() const { return lines(QString(to).replace(one, other)); }
};

std::vector<Change> changes()
{
    return {{"expense", atEntry(),
             "click frmfbtdet.cmdmodifyded\nset frmfbtdet.txtdedflds(2) 111\nclick frmfbtdet.cmdupdateded", "111",
             "222"},
            {"annual line", atEntry() + lines("click frmfbtdet.cmdimp"),
             "click frmannualfbt.cmdmodifyded\nset frmannualfbt.txtdedflds(2) 111\n"
             "set frmannualfbt.txtdedflds(3) 111\nset frmannualfbt.txtdedflds(4) 111\n"
             "set frmannualfbt.txtdedflds(5) 111\nclick frmannualfbt.cmdupdateded",
             "111", "222"},
            {"salaries", atEntry() + lines("choose frmfbtdet.cbonature Consolidated Expenses"),
             "click frmfbtdet.cmdconexp\ncell frmfbtdet.vsfs 1 1 111\ncell frmfbtdet.vsfs 1 3 500\n"
             "key frmfbtdet.vsfs Esc",
             "111", "222"},
            {"due dates", lines("today 15/06/2008\nclick frmmain.mnuduedt\nanswer no\nchoose frmduedts.Combo4 2008-09"),
             "cell frmduedts.vsf 1 3 order 1\ncell frmduedts.vsf 2 3 order 1\nclick frmduedts.cmdsave", "order 1",
             "order 2"},
            {"change of code", lines("today 15/06/2008\nclick frmmain.mnuclinfo"),
             "click frmclinfo.cmdmodify\nset frmclinfo.txtfields(0) T9\nclick frmclinfo.cmdupdate", "T9", "T1"}};
}

/// What the steps leave when nothing disturbs them.
QStringList undisturbed(Bench &bench, const QStringList &steps)
{
    bench.onlyClient();
    Played program(bench, steps);
    if (program.ended() != 0)
        qFatal("%s", qPrintable(program.printed()));
    return bench.content();
}

/// The content as soon as the server has taken back what was cut off.
QStringList settled(Bench &bench)
{
    QStringList before;
    QStringList now = bench.content();
    while (before != now) {
        QThread::msleep(30);
        before = std::exchange(now, bench.content());
    }
    return now;
}

/// A small file system in memory, where the system lets one be mounted.
class SmallDisk
{
public:
    explicit SmallDisk(int megabytes)
        : m_mounted(::mount("none", path().constData(), "tmpfs", 0,
                            Joined("size=", megabytes, "m").toUtf8().constData()) == 0)
    {
    }
    ~SmallDisk() { m_mounted ? ::umount2(path().constData(), MNT_DETACH) : 0; }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    /// False, which the outcome tells, when none may be mounted here.
    [[nodiscard]] bool mounted(Outcome &outcome) const
    {
        if (!m_mounted)
            outcome = {0, 0, "no file system may be mounted here", false};
        return m_mounted;
    }
    [[nodiscard]] QString folder() const { return m_folder.filePath("db"); }
    bool makeRoom() { return ::mount("none", path().constData(), "tmpfs", MS_REMOUNT, "size=400m") == 0; }
    void fill() const
    {
        const QByteArray piece(4096, 'x');
        QFile file(m_folder.filePath("filler"));
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            while (file.write(piece) == piece.size()) {
            }
        }
    }

private:
    [[nodiscard]] QByteArray path() const { return QFile::encodeName(m_folder.path()); }

    QTemporaryDir m_folder;
    bool m_mounted;
};

} // namespace

void StartTogether(Outcome &outcome, Dice &dice, Starts starts)
{
    const bool killFirst = starts == Starts::FirstKilled;
    // 10,000 of item 69 count 20 percent, 2,000; of that 30 percent are 600.
    const QStringList compute =
        lines("sql Insert into FBT_Detail Values ('T1',2008,1,1,1,69,10000)") + atEntry() + lines("compute");
    for (; outcome.rounds < 1 + dice.rounds / (killFirst ? 5 : 10); ++outcome.rounds) {
        Bench bench;
        std::unique_ptr<OfficeServer> office;
        if (starts == Starts::AtOffice) {
            office = std::make_unique<OfficeServer>(false);
            office->ask("Create Database office");
            bench.moveTo(office->address());
        }
        Played first(bench, onlyStart);
        Played second(bench, onlyStart, 1);
        const int wait = killFirst ? 100 + dice.upTo(1200) : 0;
        QThread::msleep(static_cast<unsigned long>(wait));
        if (killFirst)
            first.kill();
        else
            outcome.expectEnd(first);
        const QString how = Joined("after ", wait, " ms");
        outcome.expectEnd(second, how);
        outcome.expect(bench.hold() && bench.content() == Bench::upToDate().asUpdated(), how + ": another law");
        bench.addClient("T1");
        Played last(bench, compute);
        outcome.expectEnd(last, how);
        outcome.expect(last.printed().contains("FBTTax=600\n"), how + ": another tax");
    }
}

/// The database holds the state before the change or the one after it.
void CutWhileSaving(Outcome &outcome, Dice &dice, Kills kills)
{
    Bench &bench = Bench::upToDate();
    for (const Change &change : changes()) {
        const QStringList there = undisturbed(bench, change.open + change.there());
        const QStringList back = undisturbed(bench, change.open + change.there() + change.back());
        outcome.expect(there != back, Joined(change.name, " changes nothing"));
        for (int round = 0; round < dice.rounds; ++round, ++outcome.rounds) {
            bench.onlyClient();
            Played program(bench,
                           change.open + change.there() + sayBegun + repeated(change.back() + change.there(), 200));
            const bool begun = program.waitFor("begun\n");
            const int wait = dice.upTo(600);
            QThread::msleep(static_cast<unsigned long>(wait));
            if (kills == Kills::Server)
                bench.killServer();
            program.kill();
            const bool held = kills != Kills::Server || bench.hold();
            const QStringList found = held ? settled(bench) : QStringList();
            outcome.expect(begun && (found == there || found == back),
                           Joined(change.name, " after ", wait, " ms: ", Difference(found, there), program.printed()));
        }
    }
}

/// What was committed is there, what was under way when the server died was said.
void ServerGone(Outcome &outcome, Dice &dice)
{
    Bench &bench = Bench::upToDate();
    int said = 0;
    for (; outcome.rounds < dice.rounds; ++outcome.rounds) {
        bench.onlyClient(false);
        const qsizetype logged = bench.faults();
        Played program(bench, atEntry() + repeated(sayBegun + addExpense, 80));
        outcome.expect(program.waitFor("begun\n"), "not begun");
        QThread::msleep(static_cast<unsigned long>(dice.upTo(300)));
        bench.killServer();
        const bool inOrder = program.ended() == 0; // not where a save was not known to stay
        const bool told = bench.faults() > logged;
        const auto begun = program.printed().count("begun\n");
        bench.hold();
        const int rows = bench.count("Select Count(*) from FBT_Detail");
        outcome.expect(rows >= begun - (inOrder ? 0 : 2) && rows <= begun && (inOrder || told),
                       Joined("of ", begun, " rows ", rows, " are there; ", program.printed().right(150)));
        said += inOrder ? 0 : 1;
    }
    outcome.happened += Joined(said, " said what was not known, the others lost nothing");
}

/// Each row is there once, with a number of its own in its client and quarter.
void SixPrograms(Outcome &outcome, Dice &dice, bool oneClient)
{
    constexpr int programs = 6;
    const int adds = dice.rounds > 1 ? 150 : 10;
    Bench &bench = Bench::upToDate();
    bench.onlyClient(false);
    qsizetype logged = 0;
    std::vector<std::unique_ptr<Played>> running;
    for (int i = 0; i < programs; ++i) {
        if (i > 0 && !oneClient)
            bench.addClient(Joined("T", i + 1));
        logged -= bench.faults(i);
    }
    for (int i = 0; i < programs; ++i)
        running.push_back(
            std::make_unique<Played>(bench, atEntry(oneClient ? 1 : i + 1) + repeated(addExpense, adds), i));
    for (int i = 0; i < programs; ++i) {
        outcome.expectEnd(*running[static_cast<std::size_t>(i)]);
        logged += bench.faults(i);
    }
    outcome.rounds = programs * adds;
    const int numbers = bench.count("Select Count(Distinct Code_No,Quarter,SrNo) from FBT_Detail");
    outcome.expect(bench.count("Select Count(*) from FBT_Detail") == outcome.rounds, "rows are missing");
    outcome.expect(numbers == outcome.rounds, Joined(numbers, " numbers"));
    outcome.expect(logged == 0, Joined(logged, " lines in the log"));
}

void FullDiskUpdate(Outcome &outcome, Dice &dice)
{
    const QStringList whole = Bench::upToDate().asUpdated();
    int said = 0;
    for (; outcome.rounds < 1 + dice.rounds / 10; ++outcome.rounds) {
        const int size = 40 + dice.upTo(90); // the server's own files take about the least of it
        SmallDisk disk(size);
        if (!disk.mounted(outcome))
            return;
        Bench bench(disk.folder());
        Played first(bench, onlyStart);
        said += first.ended() != 0 || !first.printed().isEmpty() || bench.faults() > 0 ? 1 : 0;
        outcome.expect(disk.makeRoom(), "no room could be made");
        Played second(bench, onlyStart);
        outcome.expectEnd(second, Joined(size, " MB"));
        const QStringList found = bench.hold() ? bench.content() : QStringList();
        outcome.expect(found == whole, Joined(size, " MB: ", Difference(found, whole)));
    }
    outcome.happened += Joined(said, " of the first starts were told to have failed");
}

void FullDiskSaving(Outcome &outcome, Dice &dice)
{
    int refused = 0;
    for (; outcome.rounds < 1 + dice.rounds / 20; ++outcome.rounds) {
        SmallDisk disk(300);
        if (!disk.mounted(outcome))
            return;
        Bench bench(disk.folder());
        outcome.expect(Played(bench, onlyStart).ended() == 0 && bench.hold(), "no start");
        bench.onlyClient();
        disk.fill();
        // What is free within the table's own file goes too.
        bench.connection().setFaultHandler({});
        for (const char *rows : {"500", "1"}) {
            while (bench.connection().Execute(
                Sql("Insert into FBT_Detail Select 'X',2007,1,1,seq,69,1 from seq_1_to_", rows))) {
            }
        }
        const qsizetype logged = bench.faults();
        Played program(bench, atEntry() + addExpense + lines("read frmfbtdet.txtdedflds(2)"));
        outcome.expectEnd(program);
        const QString rows =
            RowsOf(bench.connection(), "Select Amt from FBT_Detail Where Code_No='T1' and Quarter=1").join(u' ');
        const bool told = bench.faults() > logged;
        const bool kept = program.printed().contains("txtdedflds(2)\t10");
        refused += rows == "100" ? 1 : 0;
        outcome.expect(rows == "100 10" || (rows == "100" && told && kept),
                       Joined(rows, told ? ", told, " : ", not told, ", program.printed().right(200)));
    }
    outcome.happened += Joined(refused, " saves were refused, said, and left the old row and the typed text");
}
