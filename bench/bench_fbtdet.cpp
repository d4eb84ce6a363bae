#include "bench/bareclient.h"
#include "controls/msgbox.h"
#include "db/updater.h"
#include "entry/frmfbtdet.h"
#include "records/change.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <map>
#include <memory>

namespace {

constexpr int year = 2008;
constexpr int rowsOfQuarter = 2000;
constexpr int itemCount = 134;
constexpr int fewClients = 10;
constexpr int manyClients = 10000;

/// Yes to every question.
class Agreeing : public Answerer
{
public:
    Reply message(const MessageBox &box) override { return box.buttons == Buttons::YesNo ? Reply::Yes : Reply::Ok; }
    QString file(const FileRequest &) override { return {}; }
};

/// A client with 2,000 expenses in its first quarter, one in four consolidated, among others with a few each.
class Database
{
public:
    Database(TestServer &server, int clients)
        : m_module(server)
    {
        use();
        UpdateDatabase(Cnn);
        addOthers(clients - 1);
        addMeasured();
        m_module.base.code = QStringLiteral("A1");
        m_module.base.TYear = year;
    }
    void use()
    {
        Cnn = &m_module.connection;
        Base = &m_module.base;
    }

private:
    void addMeasured()
    {
        const ClientYear client{QStringLiteral("A1"), year};
        employer(m_module.connection, client.code)
            .natures({1, 3, 7})
            .salary(year, 1, 1, 300)
            .salary(year, 1, 3, 500)
            .salary(year, 1, 7, 200)
            .salary(year, 1, -1, 1000);
        ChangeTogether(Cnn, [&client](Change &change) {
            constexpr int natures[] = {1, 3, 7, consolidatedNature};
            for (int i = 0; i < rowsOfQuarter; ++i)
                InsertExpense(change, client, {1, natures[i % 4], 0, 1 + i % itemCount, 0, 1000.0 + i * 37, i + 1});
            return true;
        });
    }
    void addOthers(int count)
    {
        Cnn->Execute(Sql("Insert into FBT_Detail Select Concat('B', s.seq), ", year,
                         ", q.seq, 1, n.seq, n.seq, 1000 from ", "seq_1_to_", count, " s, seq_1_to_4 q, seq_1_to_5 n"));
    }

    TestModule m_module;
};

Database &databaseOf(benchmark::State &state)
{
    static TestServer server;
    static std::map<int, std::unique_ptr<Database>> databases;
    const int clients = static_cast<int>(state.range(0));
    std::unique_ptr<Database> &database = databases[clients];
    if (!database)
        database = std::make_unique<Database>(server, clients);
    database->use();
    state.counters["peak_MB"] = PeakMegabytes();
    return *database;
}

/// Closes a screen as the program does.
struct Closing
{
    void operator()(frmfbtdet *screen) const
    {
        screen->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

using OpenScreen = std::unique_ptr<frmfbtdet, Closing>;

/// The screen as it is shown, all paint events done.
OpenScreen opened()
{
    OpenScreen screen(new frmfbtdet);
    screen->openChild(nullptr);
    QCoreApplication::processEvents();
    return screen;
}

void opening(benchmark::State &state)
{
    databaseOf(state);
    for ([[maybe_unused]] auto _ : state) {
        const OpenScreen screen = opened();
        benchmark::DoNotOptimize(screen.get());
    }
    state.counters["peak_MB"] = PeakMegabytes();
}

void changingNature(benchmark::State &state)
{
    databaseOf(state);
    const OpenScreen screen = opened();
    auto *cbonature = screen->findChild<QComboBox *>(QStringLiteral("cbonature"));
    int nature = 0;
    for ([[maybe_unused]] auto _ : state) {
        cbonature->setCurrentIndex(++nature % cbonature->count());
        QCoreApplication::processEvents();
    }
    state.counters["peak_MB"] = PeakMegabytes();
}

void savingARow(benchmark::State &state)
{
    databaseOf(state);
    const OpenScreen screen = opened();
    auto *amount = screen->findChild<QLineEdit *>(QStringLiteral("txtdedflds_2"));
    int rupees = 0;
    for ([[maybe_unused]] auto _ : state) {
        screen->findChild<QPushButton *>(QStringLiteral("cmdmodifyded"))->click();
        amount->setText(QString::number(++rupees));
        screen->findChild<QPushButton *>(QStringLiteral("cmdupdateded"))->click();
        QCoreApplication::processEvents();
    }
    state.counters["peak_MB"] = PeakMegabytes();
}

} // namespace

BENCHMARK(opening)->Arg(fewClients)->Arg(manyClients)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(changingNature)->Arg(fewClients)->Arg(manyClients)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(savingARow)->Arg(fewClients)->Arg(manyClients)->UseRealTime()->Unit(benchmark::kMillisecond);

/// Needs no display: run it with QT_QPA_PLATFORM=offscreen.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Agreeing user;
    const AnswererScope scope(&user);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
