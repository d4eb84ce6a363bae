#include "calc/modfbtcalc.h"
#include "calc/returnform.h"
#include "db/updater.h"
#include "platform/sqltext.h"
#include "records/paymentschedule.h"
#include "returns/itr8.h"
#include "suite/report/reportlayout.h"
#include "suite/report/repview.h"
#include "tests/support/testmodule.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

/// Form ITR-8 of A.Y. 2009-10, six documents filled, shown and written to PDF, against an office program that converts the
/// same six filled documents to PDF. `bench_return` prints the seconds of both, their ratio, and the most memory that this
/// program took.

namespace {

constexpr int year = 2009;

/// Everything filled, with as many payments as a large employer has.
ReturnForm filledForm()
{
    ReturnForm form;
    form.TYear = year;
    form.FormNm = ReturnFormOf(year);
    form.RetCode = QStringLiteral("21");
    form.ClName = QStringLiteral("AN EMPLOYER WITH A LONG NAME (INDIA) PRIVATE LIMITED");
    form.ClPAN = QStringLiteral("AAACA1234A");
    for (QString &part : form.ClAddr)
        part = QStringLiteral("PART OF AN ADDRESS");
    for (std::size_t line = 1; line < FBTExpAmt.size(); ++line)
        FBTExpAmt[line] = FBTValue[line] = 1234567;
    return form;
}

void addPayments(int count)
{
    for (int number = 1; number <= count; ++number)
        Cnn->Execute(Sql("Insert into FBT_Challan (Code_No,T_Year,Quarter,SrNo,PayType,challan_dt,TotAmt,ChallanNo) "
                         "Values ('A1',",
                         year, ",1,", number, ",'Advance Tax (100)','14/06/2008',", 1000 * number, ",'00017')"));
    RebuildPaymentSchedule(Cnn, {QStringLiteral("A1"), year});
}

/// From the documents of the year to the first page on the screen and the PDF.
bool printReturn(const ReturnForm &form, RepView &viewer, const ReportShelf &shelf, const QString &folder)
{
    const Itr8Job job{form, Joined(FBT_SOURCES "/ITR8Fls", year), folder, QStringLiteral("Son of"), false, true};
    viewer.InItReport(true, false);
    for (auto *page : {FORMITR_ACK, FORMITR8_MAIN, FORMITR_PARTC, FORMITR_SCHFBI, FORMITR_SCHFB, FORMITR_SCHFBT})
        page(job);
    viewer.ShowReport();
    viewer.ReplaceTickM();
    ReportLayout layout(shelf.document, PageFor(*shelf.document, false));
    QImage screen(900, 1200, QImage::Format_RGB32);
    QPainter painter(&screen);
    painter.scale(0.075, 0.075);
    layout.drawPage(painter, 0);
    return viewer.writePdf(folder + QStringLiteral("/return.pdf"));
}

/// Seconds that an office program takes for documents; below 0 when it did not come to an end.
double secondsToConvert(const QString &office, const QString &folder, const QStringList &documents)
{
    QStringList arguments{QStringLiteral("-env:UserInstallation=file://%1/profile").arg(folder),
                          QStringLiteral("--headless"),
                          QStringLiteral("--convert-to"),
                          QStringLiteral("pdf"),
                          QStringLiteral("--outdir"),
                          folder};
    for (const QString &name : documents)
        arguments << folder + u'/' + name + QStringLiteral(".rtf");
    QElapsedTimer clock;
    clock.start();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(office, arguments);
    constexpr int patience = 300000;
    return process.waitForFinished(patience) ? static_cast<double>(clock.nsecsElapsed()) / 1e9 : -1;
}

void returnToPdf(benchmark::State &state)
{
    TestServer server;
    TestModule module(server);
    UpdateDatabase(Cnn);
    Base->code = QStringLiteral("A1");
    Base->TYear = year;
    addPayments(12);
    const QTemporaryDir folder;
    const auto shelf = std::make_shared<ReportShelf>();
    RepView viewer(SuiteContext(), shelf);
    viewer.setObserver([] {});
    Reporter = &viewer;
    const ReturnForm form = filledForm();
    double seconds = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        if (!printReturn(form, viewer, *shelf, folder.path()))
            state.SkipWithError("no file");
        seconds += static_cast<double>(clock.nsecsElapsed()) / 1e9;
    }
    seconds /= static_cast<double>(state.iterations());
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["MB at most"] = static_cast<double>(usage.ru_maxrss) / 1024;
    const QString office = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    const QStringList documents{"Ack", "Main", "PartB", "Sch-FBI", "Sch-FB", "Sch-FBT"};
    if (!office.isEmpty()) {
        secondsToConvert(office, folder.path(), documents); // makes its profile
        const double there = secondsToConvert(office, folder.path(), documents);
        state.counters["s of the office program"] = there;
        state.counters["ratio"] = seconds / there;
    }
    ResetModule();
}
BENCHMARK(returnToPdf)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
