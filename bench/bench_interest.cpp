#include "bench/bareclient.h"
#include "bench/measure.h"
#include "calc/interest.h"
#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

constexpr int year = 2008;
constexpr int challansOfClient = 200;
constexpr int challansOfOthers = 20;
constexpr int fewClients = 10;
constexpr int manyClients = 10000;

/// A company with 200 challans over two years, two thirds of them advance tax, that pay a fifth of its tax.
void addMeasuredClient(Connection &connection)
{
    employer(connection, QStringLiteral("A1")).status(16).natures({7}).expense(year, 1, 7, 57, 500000000);
    for (int i = 0; i < challansOfClient; ++i) {
        const bool advance = i % 3 != 0;
        const QDate date = QDate(advance ? year - 1 : year, 4, 1).addDays(i);
        connection.Execute(Sql("Insert into FBT_Challan Values ('A1',", year, ",", advance ? 1 + i % 4 : 0, ",", i + 1,
                               ",'", PaymentTypes().at(advance ? 0 : 1), "','", DateText(date),
                               "',0,0,0,0,0,0,34000,'Cheque','123456','','SOME BANK','00017',1,0)"));
    }
}

/// The challans of clients B2 to B<count>.
void addOtherClients(Connection &connection, int count)
{
    connection.Execute(
        Sql("Insert into FBT_Challan Select Concat('B', seq), t_year, quarter, srno, paytype, challan_dt, "
            "ITAmt, SCAmt, ECAmt, IntAmt, PenAmt, OthAmt, TotAmt, paymode, chq_no, chq_dt, bank_nm, "
            "ChallanNo, BSRCode, ECAmt1 from FBT_Challan, seq_2_to_",
            count, " Where Code_No='A1' and srno<=", challansOfOthers));
    connection.Execute(
        Sql("Insert into FBT_Info Select Concat('B', seq), Name, PAN, Flat, Building, Street, Area, City, "
            "State, Pin, STD, TelNo, ClStatus, AuditC, Busnat, SignP, SignD, Doi, Email, ResSt, SexM, "
            "FName, SurApp from FBT_Info, seq_2_to_",
            count, " Where Code_No='A1'"));
}

/// A database with that many clients.
struct Database
{
    Database(TestServer &server, int clients)
        : module(server)
        , bare(module.connection.address())
    {
        UpdateDatabase(&module.connection);
        addMeasuredClient(module.connection);
        addOtherClients(module.connection, clients);
        Settle(module.connection);
        module.base.code = QStringLiteral("A1");
        module.base.TYear = year;
        module.base.status = 16;
    }
    /// The time of the interest alone; the computation that it follows is run beforehand.
    double seconds()
    {
        Cnn = &module.connection;
        Base = &module.base;
        FBTRate = RatesFor(year, 16, QString());
        CALCFBT();
        return SecondsOf([] { benchmark::DoNotOptimize(CALCINTEREST()); });
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

/// Time of the interest of one client among many. Beside it, in turns so that all see the same load of the machine, the
/// same queries through the C client, and the same interest among few clients.
void interest(benchmark::State &state)
{
    SetToday({2008, 12, 15});
    Database &few = databaseOf(fewClients);
    Database &database = databaseOf(static_cast<int>(state.range(0)));
    database.seconds();
    const std::vector<QByteArray> queries = StatementsOf(database.module.connection, CALCINTEREST);
    double seconds = 0;
    double secondsBare = 0;
    double secondsFew = 0;
    for ([[maybe_unused]] auto _ : state) {
        secondsBare += SecondsOf([&] {
            for (const QByteArray &query : queries)
                database.bare.readAll(query);
        });
        secondsFew += few.seconds();
        const double run = database.seconds();
        state.SetIterationTime(run);
        seconds += run;
    }
    state.counters["challans"] = FirstField(Cnn, QStringLiteral("Select Count(*) from FBT_Challan")).num();
    state.counters["queries"] = static_cast<double>(queries.size());
    state.counters["interest"] = CALCINTEREST().total();
    state.counters["ratio_to_bare"] = seconds / secondsBare;
    state.counters["ratio_to_few_clients"] = seconds / secondsFew;
}

} // namespace

BENCHMARK(interest)->Arg(fewClients)->Arg(manyClients)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2);

BENCHMARK_MAIN();
