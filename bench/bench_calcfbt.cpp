#include "bench/bareclient.h"
#include "bench/measure.h"
#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "platform/recordset.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>

namespace {

constexpr int year = 2008;
constexpr int natures = 7;
constexpr int rowsOfClient = 400;
constexpr int itemCount = 134;
constexpr int fewClients = 10;
constexpr int manyClients = 10000;

/// One client with 400 expenses, every fifth consolidated, and the salaries of its seven natures.
void addMeasuredClient(Connection &connection, const QString &code)
{
    Employer client = employer(connection, code).status(16).natures({1, 2, 3, 4, 5, 6, 7});
    for (int i = 0; i < rowsOfClient; ++i)
        client.expense(year, 1 + i % 4, i % 5 == 0 ? -1 : 1 + i % natures, 1 + i % itemCount, 1000 + i * 37);
    for (int quarter = 1; quarter <= 4; ++quarter) {
        for (int nature = 1; nature <= natures; ++nature)
            client.salary(year, quarter, nature, 100000 * nature);
        client.salary(year, quarter, -1, 2800000);
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
                                    " from seq_", from, "_to_", to, ", ", table.name, " Where Code_No='A1'",
                                    table.condition)))
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

/// A database with that many clients.
struct Database
{
    Database(TestServer &server, int clients)
        : module(server)
        , bare(module.connection.address())
    {
        UpdateDatabase(&module.connection);
        addMeasuredClient(module.connection, QStringLiteral("A1"));
        addOtherClients(module.connection, clients);
        Settle(module.connection);
        module.base.code = QStringLiteral("A1");
        module.base.TYear = year;
    }
    void use()
    {
        Cnn = &module.connection;
        Base = &module.base;
        FBTRate = RatesFor(year, 16, QString());
    }

    TestModule module;
    BareClient bare;
};

Database &databaseOf(int clients)
{
    static TestServer server;
    static std::map<int, std::unique_ptr<Database>> databases;
    std::unique_ptr<Database> &database = databases[clients];
    if (!database)
        database = std::make_unique<Database>(server, clients);
    return *database;
}

double secondsOfComputation(Database &database)
{
    database.use();
    return SecondsOf([] { CALCFBT(); });
}

/// Time of a computation for one client among many. Beside it, in turns so that all see the same load of the machine, the
/// same queries through the C client, and the same computation among few clients.
void computation(benchmark::State &state)
{
    Database &few = databaseOf(fewClients);
    Database &database = databaseOf(static_cast<int>(state.range(0)));
    database.use();
    const std::vector<QByteArray> queries = StatementsOf(database.module.connection, [] { CALCFBT(); });
    double seconds = 0;
    double secondsBare = 0;
    double secondsFew = 0;
    for ([[maybe_unused]] auto _ : state) {
        secondsBare += SecondsOf([&] {
            for (const QByteArray &query : queries)
                database.bare.readAll(query);
        });
        secondsFew += secondsOfComputation(few);
        const double run = secondsOfComputation(database);
        state.SetIterationTime(run);
        seconds += run;
    }
    state.counters["rows"] = FirstField(Cnn, QStringLiteral("Select Count(*) from FBT_Detail")).num();
    state.counters["queries"] = static_cast<double>(queries.size());
    state.counters["ratio_to_bare"] = seconds / secondsBare;
    state.counters["ratio_to_few_clients"] = seconds / secondsFew;
    state.counters["peak_MB"] = PeakMegabytes();
}

} // namespace

BENCHMARK(computation)->Arg(fewClients)->Arg(manyClients)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2);

BENCHMARK_MAIN();
