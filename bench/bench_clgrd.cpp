#include "bench/bareclient.h"
#include "controls/grid.h"
#include "db/schema.h"
#include "masters/clgrd.h"
#include "tests/support/testmodule.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>

#include <memory>
#include <vector>

namespace {

constexpr int clients = 100000;
const QByteArray wholeTable = "Select * From FBT_Info";

/// A database with 100,000 clients, and the client grid on the screen.
struct Stage
{
    Stage()
        : module(server)
    {
        for (const TableShape &table : ModuleTables()) {
            if (qstrcmp(table.name, "FBT_Info") == 0)
                module.connection.Execute(CreateStatement(table));
        }
        module.connection.Execute(Sql(
            "Insert into FBT_Info Select Concat('K',LPad(seq,6,'0')),Concat(Char(65+seq%26),Char(65+seq%17),"
            "Char(65+seq%11),' ENGINEERING COMPANY ',seq),'AAACA1234A',seq%900,'TOWER HOUSE','STATION ROAD',"
            "'SECTOR 5','MUMBAI','MAHARASHTRA','400001','022','2345678',16,'1','1,3','','','01/04/1990','','0','','',"
            "'11111' from seq_1_to_",
            clients));
        grid.resize(1200, 700);
        grid.show();
        grid.DispClGrid();
        vsf = grid.findChild<Grid *>(QStringLiteral("vsf"));
        for (int col = 0; col < 2; ++col) {
            boxes.push_back(grid.findChild<QLineEdit *>(QStringLiteral("Text1_%1").arg(col)));
            for (int row = vsf->FixedRows(); row < vsf->Rows(); ++row)
                texts[static_cast<std::size_t>(col)].push_back(vsf->TextMatrix(row, col));
        }
    }

    TestServer server;
    TestModule module;
    ClGrd grid;
    Grid *vsf = nullptr;
    std::vector<QLineEdit *> boxes;
    std::array<std::vector<QString>, 2> texts;
};

std::unique_ptr<Stage> onlyStage; // goes before the application does

Stage &stage()
{
    if (!onlyStage)
        onlyStage = std::make_unique<Stage>();
    return *onlyStage;
}

/// What is typed: the box and the texts that follow on each other.
struct Typed
{
    std::size_t box;
    const char *first;
    const char *second;
};

constexpr std::array<Typed, 4> cases{{{0, "K0123", "K01234"}, {1, "AA", "AAA"}, {1, "A", "B"}, {0, "K", "K0"}}};

void tellMemory(benchmark::State &state)
{
    state.counters["peak_MB"] = PeakMegabytes();
}

void loadClients(benchmark::State &state)
{
    Stage &all = stage();
    for (auto _ : state)
        all.grid.DispClGrid();
    tellMemory(state);
}

/// What the C client needs to bring the same rows over.
void loadBare(benchmark::State &state)
{
    BareClient client(stage().module.connection.address());
    for (auto _ : state)
        client.readAll(wholeTable);
    tellMemory(state);
}

void keystroke(benchmark::State &state)
{
    Stage &all = stage();
    const Typed &typed = cases.at(static_cast<std::size_t>(state.range(0)));
    QLineEdit *box = all.boxes.at(typed.box);
    bool second = false;
    for (auto _ : state) {
        box->setText(QLatin1String(second ? typed.second : typed.first));
        second = !second;
    }
    state.counters["shown"] = all.vsf->visibleRowCount();
    box->clear();
    QCoreApplication::processEvents();
}

void keystrokeInBoth(benchmark::State &state)
{
    Stage &all = stage();
    all.boxes[0]->setText(QStringLiteral("K0"));
    bool second = false;
    for (auto _ : state) {
        all.boxes[1]->setText(second ? QStringLiteral("A") : QStringLiteral("AB"));
        second = !second;
    }
    for (QLineEdit *box : all.boxes)
        box->clear();
}

int scan(const std::vector<QString> &texts, const QString &prefix)
{
    int found = 0;
    for (const QString &text : texts)
        found += text.startsWith(prefix, Qt::CaseInsensitive) ? 1 : 0;
    return found;
}

/// The same texts in memory looked through once.
void bareScan(benchmark::State &state)
{
    Stage &all = stage();
    const Typed &typed = cases.at(static_cast<std::size_t>(state.range(0)));
    const std::vector<QString> &texts = all.texts.at(typed.box);
    bool second = false;
    for (auto _ : state) {
        benchmark::DoNotOptimize(scan(texts, QLatin1String(second ? typed.second : typed.first)));
        second = !second;
    }
}

} // namespace

BENCHMARK(loadClients)->Unit(benchmark::kMillisecond);
BENCHMARK(loadBare)->Unit(benchmark::kMillisecond);
BENCHMARK(bareScan)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);
BENCHMARK(keystroke)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);
BENCHMARK(keystrokeInBoth)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    onlyStage.reset();
    return 0;
}
