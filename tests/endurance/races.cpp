#include "bench.h"

#include "platform/recordset.h"

#include <memory>
#include <vector>

// Programs that add at the same time.

namespace {

/// Every program adds `adds` rows; each row must be there once, with a number of its own in its client and quarter.
void race(Outcome &outcome, int programs, int adds, bool oneClient)
{
    Bench &bench = Bench::upToDate();
    for (int client = 1; client <= (oneClient ? 1 : programs); ++client)
        bench.carry(ClientRows(Joined("C", client)).mid(0, 1));
    qsizetype logged = 0;
    std::vector<std::unique_ptr<Played>> running;
    for (int i = 0; i < programs; ++i) {
        logged -= LogOf(bench, i).size();
        running.push_back(
            std::make_unique<Played>(bench, AtEntry(oneClient ? 1 : i + 1) + Repeated(AddExpense(), adds), i));
    }
    for (int i = 0; i < programs; ++i) {
        outcome.expectEnd(*running[static_cast<std::size_t>(i)]);
        logged += LogOf(bench, i).size();
    }
    const int rows = bench.first(QStringLiteral("Select Count(*) from FBT_Detail")).toInt();
    const int numbers =
        bench.first(QStringLiteral("Select Count(Distinct Code_No,Quarter,SrNo) from FBT_Detail")).toInt();
    outcome.expect(rows == programs * adds, Joined(rows, " rows of ", programs * adds));
    outcome.expect(numbers == rows, Joined(rows - numbers, " double numbers"));
    outcome.expect(logged == 0, Joined(static_cast<int>(logged), " lines in the log"));
    outcome.rounds += programs * adds;
}

Outcome raceFor(const Dice &dice, int programs, bool oneClient)
{
    constexpr int shortRun = 10;
    constexpr int longRun = 150;
    Outcome outcome;
    race(outcome, programs, dice.rounds > 1 ? longRun : shortRun, oneClient);
    return outcome;
}

} // namespace

Outcome TwoWriters(Dice &dice)
{
    return raceFor(dice, 2, true);
}

Outcome SixInOneQuarter(Dice &dice)
{
    return raceFor(dice, 6, true);
}

Outcome SixClients(Dice &dice)
{
    return raceFor(dice, 6, false);
}
