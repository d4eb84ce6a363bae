#include "bench/amongclients.h"

#include "bench/measure.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "db/updater.h"

#include <map>
#include <memory>

namespace {

constexpr int privateCompany = 16;

struct ClientsDatabase
{
    ClientsDatabase(TestServer &server, const FillClients &fill, int clients)
        : module(server)
        , bare(module.connection.address())
    {
        UpdateDatabase(&module.connection);
        fill(module.connection, clients);
        Settle(module.connection);
        module.base.code = QString::fromLatin1(measuredClient);
        module.base.TYear = measuredYear;
        module.base.status = privateCompany;
    }
    double secondsOf(const MeasuredWork &measured)
    {
        Cnn = &module.connection;
        Base = &module.base;
        FBTRate = RatesFor(measuredYear, privateCompany, QString());
        measured.prepare();
        return SecondsOf(measured.work);
    }

    TestModule module;
    BareClient bare;
};

ClientsDatabase &databaseOf(const FillClients &fill, int clients)
{
    static TestServer server;
    static std::map<int, std::unique_ptr<ClientsDatabase>> databases;
    std::unique_ptr<ClientsDatabase> &database = databases[clients];
    if (!database)
        database = std::make_unique<ClientsDatabase>(server, fill, clients);
    return *database;
}

} // namespace

void MeasureAmongClients(benchmark::State &state, const MeasuredWork &measured)
{
    ClientsDatabase &few = databaseOf(measured.fill, fewClients);
    ClientsDatabase &database = databaseOf(measured.fill, static_cast<int>(state.range(0)));
    database.secondsOf(measured);
    const std::vector<QByteArray> queries = StatementsOf(database.module.connection, measured.work);
    double seconds = 0;
    double secondsBare = 0;
    double secondsFew = 0;
    for ([[maybe_unused]] auto _ : state) {
        secondsBare += SecondsOf([&] {
            for (const QByteArray &query : queries)
                database.bare.readAll(query);
        });
        secondsFew += few.secondsOf(measured);
        const double run = database.secondsOf(measured);
        state.SetIterationTime(run);
        seconds += run;
    }
    state.counters["queries"] = static_cast<double>(queries.size());
    state.counters["ratio_to_bare"] = seconds / secondsBare;
    state.counters["ratio_to_few_clients"] = seconds / secondsFew;
}
