#include "bench.h"

#include "platform/recordset.h"

#include <QThread>

#include <array>

// The program or its server killed while a change is saved: the database holds the state before or the one after.

namespace {

/// Something that a user changes back and forth.
struct Toggle
{
    const char *name;
    QStringList open; ///< steps to the screen
    QStringList to;   ///< makes it the one state
    QStringList back; ///< and the other
};

QStringList lines(const char *text)
{
    return QString::fromUtf8(text).split(u'\n');
}

QStringList twice(const char *text, const char *one, const char *other)
{
    return lines(text).replaceInStrings(QString::fromUtf8(one), QString::fromUtf8(other));
}

std::array<Toggle, 5> toggles()
{
    const char *expense = "click frmfbtdet.cmdmodifyded\nset frmfbtdet.txtdedflds(2) 111\nclick frmfbtdet.cmdupdateded";
    const char *annual = "click frmannualfbt.cmdmodifyded\nset frmannualfbt.txtdedflds(2) 111\n"
                         "set frmannualfbt.txtdedflds(3) 111\nset frmannualfbt.txtdedflds(4) 111\n"
                         "set frmannualfbt.txtdedflds(5) 111\nclick frmannualfbt.cmdupdateded";
    const char *code = "click frmclinfo.cmdmodify\nset frmclinfo.txtfields(0) T9\nclick frmclinfo.cmdupdate";
    const char *dates = "cell frmduedts.vsf 1 3 order 1\ncell frmduedts.vsf 2 3 order 1\nclick frmduedts.cmdsave";
    const char *salary = "click frmfbtdet.cmdconexp\ncell frmfbtdet.vsfs 1 1 111\ncell frmfbtdet.vsfs 1 3 500\n"
                         "key frmfbtdet.vsfs Esc";
    const QStringList first = AtEntry();
    return {
        {{"expense", first, lines(expense), twice(expense, "111", "222")},
         {"annual line", first + QStringList{QStringLiteral("click frmfbtdet.cmdimp")}, lines(annual),
          twice(annual, "111", "222")},
         {"salaries", first + QStringList{QStringLiteral("choose frmfbtdet.cbonature Consolidated Expenses")},
          lines(salary), twice(salary, "111", "222")},
         {"due dates", lines("today 15/06/2008\nclick frmmain.mnuduedt\nanswer no\nchoose frmduedts.Combo4 2008-09"),
          lines(dates), twice(dates, "order 1", "order 2")},
         {"change of code", lines("today 15/06/2008\nclick frmmain.mnuclinfo"), lines(code), twice(code, "T9", "T1")}}};
}

/// The content as soon as the server has taken back what was cut off.
QStringList settled(Bench &bench)
{
    QStringList before;
    QStringList now = bench.content();
    while (before != now) {
        QThread::msleep(30);
        before = now;
        now = bench.content();
    }
    return now;
}

void prepare(Bench &bench)
{
    bench.clearClients();
    bench.carry(ClientRows(QStringLiteral("T1")));
}

/// What the steps leave when nothing disturbs them.
QStringList undisturbed(Bench &bench, const Toggle &toggle, const QStringList &steps)
{
    prepare(bench);
    Played program(bench, toggle.open + steps);
    if (program.ended() != 0)
        qFatal("%s: %s", toggle.name, qPrintable(program.printed()));
    return bench.content();
}

struct States
{
    QStringList to;
    QStringList back;
};

void cut(Bench &bench, Dice &dice, const Toggle &toggle, const States &states, bool server, Outcome &outcome)
{
    constexpr int manyTimes = 200;
    constexpr int someMs = 600;
    prepare(bench);
    Played program(bench, toggle.open + toggle.to + QStringList{QStringLiteral("sql Select 'begun'")} +
                              Repeated(toggle.back + toggle.to, manyTimes));
    const bool begun = program.waitFor(QStringLiteral("begun\n"));
    const int wait = dice.upTo(someMs);
    QThread::msleep(static_cast<unsigned long>(wait));
    if (server)
        bench.killServer();
    program.kill();
    const bool back = !server || bench.hold();
    const QStringList found = back ? settled(bench) : QStringList();
    const bool whole = found == states.to || found == states.back;
    outcome.expect(begun && back && whole, Joined(toggle.name, " after ", wait,
                                                  " ms: ", begun ? Difference(found, states.to) : program.printed()));
    ++outcome.rounds;
}

Outcome cutAll(Dice &dice, bool server)
{
    Outcome outcome;
    Bench &bench = Bench::upToDate();
    for (const Toggle &toggle : toggles()) {
        const States states{undisturbed(bench, toggle, toggle.to), undisturbed(bench, toggle, toggle.to + toggle.back)};
        if (states.to == states.back)
            qFatal("%s changes nothing.", toggle.name);
        for (int round = 0; round < dice.rounds; ++round)
            cut(bench, dice, toggle, states, server, outcome);
    }
    return outcome;
}

} // namespace

Outcome KillProgram(Dice &dice)
{
    return cutAll(dice, false);
}

Outcome KillServer(Dice &dice)
{
    return cutAll(dice, true);
}

// What was committed is there, what was under way when the server died was said.
Outcome ServerGone(Dice &dice)
{
    constexpr int adds = 80;
    Outcome outcome;
    Bench &bench = Bench::upToDate();
    int said = 0;
    int repeated = 0;
    for (int round = 0; round < dice.rounds; ++round) {
        prepare(bench);
        bench.carry({"Delete from FBT_Detail"});
        const auto logged = LogOf(bench).size();
        Played program(bench, AtEntry() + Repeated(lines("sql Select 'begun'") + AddExpense(), adds));
        outcome.expect(program.waitFor(QStringLiteral("begun\n")), QStringLiteral("not begun"));
        QThread::msleep(static_cast<unsigned long>(dice.upTo(300)));
        bench.killServer();
        const int code =
            program.ended(); // not 0 where a save was not known to stay, and the screen keeps what was typed
        const auto told = static_cast<int>(LogOf(bench).size() - logged);
        const auto begun = static_cast<int>(program.printed().count(QStringLiteral("begun\n")));
        bench.hold();
        const int rows = bench.first(QStringLiteral("Select Count(*) from FBT_Detail")).toInt();
        outcome.expect(rows >= begun - (code == 0 ? 0 : 2) && rows <= begun && (code == 0 || told > 0),
                       Joined("of ", begun, " rows ", rows, " are there, ", told, " said; ") +
                           program.printed().right(150));
        said += code == 0 ? 0 : 1;
        repeated += code == 0 ? 1 : 0;
        ++outcome.rounds;
    }
    outcome.happened += Joined(repeated, " went on with nothing lost, ", said, " said what was not known");
    return outcome;
}
