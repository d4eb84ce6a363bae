#include "bench/amongclients.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/recordset.h"
#include "tests/support/employer.h"

#include <algorithm>

namespace {

constexpr int natures = 7;
constexpr int rowsOfClient = 400;
constexpr int itemCount = 134;

/// One client with 400 expenses, every fifth consolidated, and the salaries of its seven natures.
void addMeasuredClient(Connection &connection)
{
    Employer client =
        employer(connection, QString::fromLatin1(measuredClient)).status(16).natures({1, 2, 3, 4, 5, 6, 7});
    for (int i = 0; i < rowsOfClient; ++i)
        client.expense(measuredYear, 1 + i % 4, i % 5 == 0 ? -1 : 1 + i % natures, 1 + i % itemCount, 1000 + i * 37);
    for (int quarter = 1; quarter <= 4; ++quarter) {
        for (int nature = 1; nature <= natures; ++nature)
            client.salary(measuredYear, quarter, nature, 100000 * nature);
        client.salary(measuredYear, quarter, -1, 2800000);
    }
}

/// Copies the rows of the measured client to the clients B<from> to B<to>.
/// @param lastSrNo the copies' last line of expenses in each quarter
void copyClient(Connection &connection, int from, int to, int lastSrNo)
{
    struct Table
    {
        const char *name;
        const char *columns;
        QString condition;
    };
    for (const Table &table :
         {Table{
              "FBT_Info",
              "Name, PAN, Flat, Building, Street, Area, City, State, Pin, STD, TelNo, ClStatus, AuditC, Busnat, SignP, "
              "SignD, Doi, Email, ResSt, SexM, FName, SurApp",
              ""},
          Table{"FBT_Detail", "Tyear, Quarter, NatId, SrNo, ExpId, Amt", Sql(" and SrNo<=", lastSrNo)},
          Table{"FBT_SalDet", "Tyear, Quarter, NatId, Amt", ""}}) {
        if (!connection.Execute(Sql("Insert into ", table.name, " Select Concat('B', seq), ", table.columns,
                                    " from seq_", from, "_to_", to, ", ", table.name, " Where Code_No='",
                                    measuredClient, "'", table.condition)))
            qFatal("The rows of %s could not be copied.", table.name);
    }
}

/// Further clients until there are `count`: the first few with as many rows as the measured one, the rest with a tenth,
/// in groups that the server's memory of locks can hold.
void addOtherClients(Connection &connection, int count)
{
    constexpr int group = 250;
    copyClient(connection, 2, fewClients, rowsOfClient);
    for (int from = fewClients + 1; from <= count; from += group)
        copyClient(connection, from, std::min(from + group - 1, count), rowsOfClient / 4 / 10);
}

void fill(Connection &connection, int clients)
{
    addMeasuredClient(connection);
    addOtherClients(connection, clients);
}

/// The computation of a client with 400 expenses.
void computation(benchmark::State &state)
{
    MeasureAmongClients(state, {.fill = fill, .prepare = [] {}, .work = [] { CALCFBT(); }});
    state.counters["rows"] = FirstField(Cnn, QStringLiteral("Select Count(*) from FBT_Detail")).num();
    state.counters["peak_MB"] = PeakMegabytes();
}

} // namespace

BENCHMARK(computation)->Arg(fewClients)->Arg(manyClients)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2);

BENCHMARK_MAIN();
