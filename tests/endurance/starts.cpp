#include "bench.h"

#include "tests/launcher/officeserver.h"

#include <QThread>

#include <csignal>
#include <memory>

// Programs that meet on one database at their start.

namespace {

const QStringList onlyStart{QStringLiteral("start")};

QString urlOf(const ServerAddress &address, const QString &schema)
{
    return QStringLiteral("mysql://%1:%2@%3:%4/%5")
        .arg(address.user, address.password, address.host)
        .arg(address.port)
        .arg(schema);
}

/// 10,000 of item 69 count 20 percent, 2,000; of that 30 percent are 600.
const QStringList computeTax =
    ClientRows(QStringLiteral("A1"))
        .mid(0, 1)
        .replaceInStrings(QStringLiteral("Insert"), QStringLiteral("sql Insert")) +
    QStringList{QStringLiteral("sql Insert into FBT_Detail Values ('A1',2008,1,1,1,69,10000)")} + AtEntry() +
    QStringList{QStringLiteral("compute")};

void checkLaw(Outcome &outcome, const QString &tax, const QStringList &content, const QString &how)
{
    outcome.expect(tax.contains(u"FBTTax=600\n"),
                   how + QStringLiteral(": tax ") + tax.mid(tax.indexOf(u"FBTTax=")).section(u'\n', 0, 0));
    const QString other = Difference(content, Bench::upToDate().asUpdated());
    outcome.expect(other.isEmpty(), how + QStringLiteral(": ") + other);
    ++outcome.rounds;
}

void atOneFolder(Dice &dice, Outcome &outcome, bool killFirst)
{
    constexpr int updateMs = 1200;
    Bench bench;
    Played first(bench, onlyStart);
    const int wait = killFirst ? 100 + dice.upTo(updateMs) : 0;
    auto second = std::make_unique<Played>(bench, onlyStart, 1);
    if (killFirst) {
        QThread::msleep(static_cast<unsigned long>(wait));
        first.kill();
    }
    const QString how = killFirst ? QStringLiteral("killed after %1 ms").arg(wait) : QStringLiteral("at once");
    outcome.expectEnd(*second, how);
    if (!killFirst)
        outcome.expectEnd(first, how);
    if (!bench.hold())
        qFatal("The database is gone.");
    const QStringList content = bench.content();
    Played last(bench, computeTax);
    outcome.expectEnd(last, how);
    checkLaw(outcome, last.printed(), content, how);
}

} // namespace

Outcome StartTogether(Dice &dice)
{
    Outcome outcome;
    for (int round = 0; round < 1 + dice.rounds / 10; ++round)
        atOneFolder(dice, outcome, false);
    return outcome;
}

Outcome StartAfterKill(Dice &dice)
{
    Outcome outcome;
    for (int round = 0; round < 1 + dice.rounds / 5; ++round)
        atOneFolder(dice, outcome, true);
    return outcome;
}

Outcome StartTogetherAtOffice(Dice &dice)
{
    Outcome outcome;
    const Bench bench; // for the application folders only
    OfficeServer office;
    for (int round = 0; round < 1 + dice.rounds / 10; ++round) {
        office.ask(QStringLiteral("Drop Database If Exists office"));
        office.ask(QStringLiteral("Create Database office"));
        const QString url = urlOf(office.address(), QStringLiteral("office"));
        Played first(bench, onlyStart, 0, url);
        Played second(bench, onlyStart, 1, url);
        outcome.expectEnd(first);
        outcome.expectEnd(second);
        ServerAddress address = office.address();
        address.schema = QStringLiteral("office");
        Connection connection;
        connection.open(address);
        const QStringList content = ContentOf(connection);
        Played last(bench, computeTax, 0, url);
        outcome.expectEnd(last);
        checkLaw(outcome, last.printed(), content, QStringLiteral("office"));
    }
    return outcome;
}

Outcome OfficeRestarted(Dice &dice)
{
    Outcome outcome;
    const Bench bench;
    OfficeServer office;
    office.ask(QStringLiteral("Create Database office"));
    const QString url = urlOf(office.address(), QStringLiteral("office"));
    for (int round = 0; round < dice.rounds; ++round) {
        constexpr int adds = 400;
        QStringList script{QStringLiteral("sql Delete from FBT_Nature"), QStringLiteral("sql Select 'begun'")};
        for (int i = 1; i <= adds; ++i)
            script << Joined("sql Insert into FBT_Nature Values (", i, ",'N')");
        Played program(bench, script, 0, url);
        outcome.expect(program.waitFor(QStringLiteral("begun\n")), QStringLiteral("not begun"));
        QThread::msleep(static_cast<unsigned long>(dice.upTo(100)));
        program.signal(SIGSTOP); // the server is away while the program sends nothing
        office.restart();
        program.signal(SIGCONT);
        outcome.expectEnd(program);
        const QString found = office.ask(QStringLiteral("Select Count(*) from office.FBT_Nature"));
        outcome.expect(found == QString::number(adds), Joined(found, " rows of ", adds));
        ++outcome.rounds;
    }
    return outcome;
}
