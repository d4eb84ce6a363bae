// From the start of the program to its main screen, ready for the user, on an existing database: the private server, the
// connection, the suite's objects, the module and the screen. Peak memory is that of the program without the server.

#include "launcher/application.h"
#include "launcher/program.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>
#include <sys/resource.h>

namespace {

const QString onceOption = QStringLiteral("--once");

double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

/// The measured program: starts, says that it is ready, and ends in order.
int startOnce(const QString &folder)
{
    Program program(
        {folder + QStringLiteral("/app"), folder + QStringLiteral("/db"), folder + QStringLiteral("/x.ini")},
        LauncherSettings());
    QString why;
    if (!program.start(&why)) {
        QTextStream(stderr) << why << '\n';
        return 1;
    }
    program.show(); // returns when the main screen is through with its first activation
    QCoreApplication::processEvents();
    QTextStream(stdout) << "ready " << peakMegabytes() << Qt::endl;
    program.stop();
    return 0;
}

/// Runs the measured program. Returns its peak memory in megabytes, and in `seconds` the time until it was ready.
double measure(const QString &folder, double *seconds)
{
    constexpr int patienceMs = 120'000;
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    process.start(QCoreApplication::applicationFilePath(), {onceOption, folder});
    QString line;
    while (!line.startsWith(u"ready ") && process.waitForReadyRead(patienceMs))
        line = QString::fromUtf8(process.readLine());
    *seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    process.waitForFinished(patienceMs);
    if (!line.startsWith(u"ready "))
        qFatal("The program did not become ready: %s", process.readAllStandardError().constData());
    return line.mid(6).toDouble();
}

void startToReady(benchmark::State &state)
{
    const QTemporaryDir folder;
    double seconds = 0;
    measure(folder.path(), &seconds); // makes the database
    double peak = 0;
    for ([[maybe_unused]] auto round : state) {
        peak = measure(folder.path(), &seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["peak_MB"] = peak;
}

} // namespace

BENCHMARK(startToReady)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const QStringList arguments = Application::arguments();
    if (arguments.size() == 3 && arguments[1] == onceOption)
        return startOnce(arguments[2]);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
