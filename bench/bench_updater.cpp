// The update of an empty database against its bare statements through the C client; what the indexes cost a write; and
// the conversion of many old clients.

#include "bench/bareclient.h"
#include "db/updater.h"
#include "platform/recordset.h"
#include "tests/support/testmodule.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

namespace {

TestServer &server()
{
    static TestServer instance;
    return instance;
}

template<typename Work>
double secondsOf(Work work)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void dropSchema(Connection &connection)
{
    connection.Execute(Sql("Drop Database ", FirstField(&connection, QStringLiteral("Select Database()")).text()));
}

std::vector<QByteArray> statementsOfAnUpdate()
{
    TestModule module(server());
    std::vector<QByteArray> statements;
    module.connection.setObserver([&](const QString &text) { statements.push_back(text.toUtf8()); });
    UpdateDatabase(&module.connection);
    module.connection.setObserver({});
    dropSchema(module.connection);
    return statements;
}

double secondsBare(const std::vector<QByteArray> &statements)
{
    TestModule module(server());
    BareClient bare(module.connection.address());
    const double seconds = secondsOf([&] {
        for (const QByteArray &statement : statements)
            bare.readAll(statement);
    });
    dropSchema(module.connection);
    return seconds;
}

void updateEmpty(benchmark::State &state)
{
    const std::vector<QByteArray> statements = statementsOfAnUpdate();
    double seconds = 0;
    double bare = 0;
    for ([[maybe_unused]] auto _ : state) {
        bare += secondsBare(statements);
        TestModule module(server());
        const double run = secondsOf([&] { UpdateDatabase(&module.connection); });
        dropSchema(module.connection);
        state.SetIterationTime(run);
        seconds += run;
    }
    state.counters["statements"] = static_cast<double>(statements.size());
    state.counters["ratio_to_bare"] = seconds / bare;
    state.counters["peak_MB"] = PeakMegabytes();
}

/// A table of expenses with many rows, in a database of its own.
struct Expenses
{
    explicit Expenses(bool indexed)
        : module(server())
    {
        UpdateDatabase(&module.connection);
        if (!indexed)
            module.connection.Execute(QStringLiteral("Drop Index IdxFBT on FBT_Detail"));
        module.connection.Execute(QStringLiteral("Insert into FBT_Detail Select Concat('C',seq%2000),2006+seq%5,"
                                                 "1+seq%4,1,seq,1+seq%134,seq from seq_1_to_200000"));
    }
    double secondsOfInserts(int count)
    {
        return secondsOf([&] {
            for (int i = 0; i < count; ++i) {
                ++m_last;
                module.connection.Execute(
                    Sql("Insert into FBT_Detail Values('C", m_last * 7919 % 2000, "',2008,1,1,", m_last, ",12,1000)"));
            }
        });
    }

    TestModule module;

private:
    int m_last = 0;
};

void writeIndexed(benchmark::State &state)
{
    constexpr int rows = 200;
    Expenses plain(false);
    Expenses indexed(true);
    double seconds = 0;
    double secondsPlain = 0;
    for ([[maybe_unused]] auto _ : state) {
        secondsPlain += plain.secondsOfInserts(rows);
        const double run = indexed.secondsOfInserts(rows);
        state.SetIterationTime(run / rows);
        seconds += run;
    }
    state.counters["ratio_to_no_index"] = seconds / secondsPlain;
}

/// A database of that many clients from before the surcharge by year.
void convertClients(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        TestModule module(server());
        CREATETABLES(&module.connection);
        module.connection.Execute(Sql("Insert into FBT_Info (Code_no,Name,ClStatus) Select Concat('C',seq),'Employer',"
                                      "seq%17 from seq_1_to_",
                                      state.range(0)));
        module.connection.Execute(QStringLiteral("Alter Table FBT_Info Drop SurApp"));
        state.SetIterationTime(secondsOf([&] { UpdateDatabase(&module.connection); }));
        dropSchema(module.connection);
    }
    state.counters["peak_MB"] = PeakMegabytes();
}

} // namespace

BENCHMARK(updateEmpty)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK(writeIndexed)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinTime(0.02);
BENCHMARK(convertClients)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

BENCHMARK_MAIN();
