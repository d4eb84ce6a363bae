#include "controls/exportactions.h"
#include "controls/grid.h"
#include "platform/rtftokens.h"
#include "suite/report/pageview.h"
#include "suite/report/reportlayout.h"
#include "suite/report/reportoutput.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPixmap>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

/// Reports and sheets against what an office program needs for the same table. `bench_report` prints, for 5,000 rows, the time
/// to a PDF here and there (the time there to start is taken off); --benchmark_filter chooses.

namespace {

const QList<int> widths{6, 12, 34, 30, 14, 14};

QStringList cellsOf(int row)
{
    return {QString::number(row),
            QStringLiteral("15/06/2007"),
            QStringLiteral("Employees welfare, canteen and medical expenses of the works at Pune"),
            QStringLiteral("Expenditure on hospitality of every kind"),
            QString::number(row * 37.5, 'f', 2),
            QString::number(row * 11)};
}

std::shared_ptr<const ReportDocument> tableOf(int rows)
{
    auto document = std::make_shared<ReportDocument>();
    document->beginTable();
    ReportRow row;
    row.widths = {widths.begin(), widths.end()};
    row.aligns = {ReportRow::Right, ReportRow::Left,  ReportRow::Left,
                  ReportRow::Left,  ReportRow::Right, ReportRow::Right};
    row.left = row.right = row.top = row.bottom = QStringLiteral("111111");
    for (int i = 0; i < rows; ++i) {
        row.cells = cellsOf(i);
        document->addRow(row);
    }
    return document;
}

/// The same table for a word processor.
QByteArray rtfOf(int rows)
{
    QByteArray rtf = "{\\rtf1\\ansi{\\fonttbl{\\f0 DejaVu Sans;}}\\paperw11906\\paperh16838\\margl720\\margr720"
                     "\\margt720\\margb720\n";
    QByteArray form = "\\trowd\\trgaph40";
    int edge = 0;
    for (const int width : widths) {
        constexpr int unitsPerColumn = 95;
        edge += width * unitsPerColumn;
        for (const char side : {'t', 'l', 'b', 'r'})
            form += QByteArray("\\clbrdr") + side + "\\brdrs\\brdrw10";
        form += "\\cellx" + QByteArray::number(edge);
    }
    for (int row = 0; row < rows; ++row) {
        rtf += form;
        for (const QString &cell : cellsOf(row))
            rtf += "\\pard\\intbl\\f0\\fs14 " + RtfOfText(cell) + "\\cell";
        rtf += "\\row\n";
    }
    return rtf + "\\pard\\par}";
}

void toPdf(benchmark::State &state)
{
    const QTemporaryDir folder;
    const auto document = tableOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        ReportLayout layout(document, PageFor(*document, false));
        if (!WritePdf(layout, folder.filePath(QStringLiteral("a.pdf"))))
            state.SkipWithError("no file");
        state.counters["pages"] = layout.pagesSoFar();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(toPdf)->Arg(1000)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

void toFirstPage(benchmark::State &state)
{
    const auto document = tableOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        PageView view;
        view.resize(900, 700);
        view.setPages(std::make_shared<ReportLayout>(document, PageFor(*document, false)));
        view.pagesAdded();
        QPixmap seen = view.grab();
        benchmark::DoNotOptimize(seen);
    }
}
BENCHMARK(toFirstPage)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

void toAllPages(benchmark::State &state)
{
    const auto document = tableOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        ReportLayout layout(document, PageFor(*document, false));
        benchmark::DoNotOptimize(layout.pageCount());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(toAllPages)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

double megabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

/// The grid itself is filled before; what is measured on top is the most that the program has held so far.
void toSpreadsheet(benchmark::State &state)
{
    const QTemporaryDir folder;
    Grid grid;
    grid.setCols(static_cast<int>(widths.size()));
    for (int col = 4; col < widths.size(); ++col)
        grid.setColAlignment(col, Qt::AlignRight);
    grid.setRedraw(false);
    for (int row = 0; row < state.range(0); ++row)
        grid.AddItem(cellsOf(row));
    const double before = megabytes();
    for (auto _ : state) {
        if (!WriteXlsx(SheetOfGrid(&grid), folder.filePath(QStringLiteral("a.xlsx"))))
            state.SkipWithError("no file");
    }
    state.counters["MB with the grid"] = before;
    state.counters["MB more"] = megabytes() - before;
}
BENCHMARK(toSpreadsheet)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);

/// Has an office program convert a file; the seconds that it took, below 0 when it did not come to an end.
double secondsToConvert(const QString &office, const QString &folder, const QString &file, const QString &to)
{
    QElapsedTimer clock;
    clock.start();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(office,
                  {QStringLiteral("-env:UserInstallation=file://%1/profile").arg(folder), QStringLiteral("--headless"),
                   QStringLiteral("--convert-to"), to, QStringLiteral("--outdir"), folder, folder + u'/' + file});
    constexpr int patience = 300000;
    return process.waitForFinished(patience) ? static_cast<double>(clock.nsecsElapsed()) / 1e9 : -1;
}

bool writeTable(const QString &path, int rows)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(rtfOf(rows)) > 0;
}

/// From the office program's own format, which it reads faster than any other, and without the time that it takes to start.
void officeToPdf(benchmark::State &state)
{
    const QString office = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    const QTemporaryDir folder;
    if (office.isEmpty() || !writeTable(folder.filePath(QStringLiteral("one.rtf")), 1) ||
        !writeTable(folder.filePath(QStringLiteral("all.rtf")), static_cast<int>(state.range(0)))) {
        state.SkipWithError("soffice is not installed");
        return;
    }
    for (const char *name : {"one.rtf", "all.rtf"})
        secondsToConvert(office, folder.path(), QLatin1String(name), QStringLiteral("odt"));
    const double start = secondsToConvert(office, folder.path(), QStringLiteral("one.odt"), QStringLiteral("pdf"));
    for (auto _ : state)
        state.SetIterationTime(
            secondsToConvert(office, folder.path(), QStringLiteral("all.odt"), QStringLiteral("pdf")) - start);
}
BENCHMARK(officeToPdf)->Arg(5000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
