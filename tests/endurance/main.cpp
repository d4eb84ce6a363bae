#include "bench.h"

#include "launcher/application.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QLoggingCategory>

#include <functional>

namespace {

struct Case
{
    QString name;
    const char *done; ///< what is done to the program
    std::function<void(Outcome &, Dice &)> play;
};

template<typename Play, typename How>
auto with(Play play, How how)
{
    return [play, how](Outcome &outcome, Dice &dice) { play(outcome, dice, how); };
}

const std::vector<Case> cases{
    {"start", "two programs started at once on one empty data folder", with(StartTogether, Starts::AtOnce)},
    {"start-office", "the same on an empty office schema", with(StartTogether, Starts::AtOffice)},
    {"start-kill", "two at one folder, the first one killed half way through the update",
     with(StartTogether, Starts::FirstKilled)},
    {"kill-program", "kill -9 of the program while it saves", with(CutWhileSaving, Kills::Program)},
    {"kill-server", "kill -9 of the server while the program saves", with(CutWhileSaving, Kills::Server)},
    {"server-gone", "the private server killed while the program runs", ServerGone},
    {"six-writers", "six programs adding to one client and quarter", with(SixPrograms, true)},
    {"six-clients", "six programs at full speed in different clients", with(SixPrograms, false)},
    {"disk-save", "full disk while saving", FullDiskSaving},
    {"disk-update", "full disk during the first update", FullDiskUpdate},
    {"texts", "hostile texts in each text field of each screen", HostileTexts},
};

/// One line of the table. False when anything came out otherwise.
bool play(const Case &one, int rounds, quint32 seed)
{
    QElapsedTimer time;
    time.start();
    Dice dice{rounds, QRandomGenerator(seed)};
    Outcome outcome;
    one.play(outcome, dice);
    const char *verdict = !outcome.run ? "NOT RUN" : outcome.wrong > 0 ? "WRONG" : "ok";
    std::printf("| %s | %s | %d | %s: %d wrong; %s | %.1f s |\n", qPrintable(one.name), one.done, outcome.rounds,
                verdict, outcome.wrong, qPrintable(outcome.happened), static_cast<double>(time.elapsed()) / 1000);
    std::fflush(stdout);
    return outcome.wrong == 0;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    QLoggingCategory::setFilterRules("*.warning=false"); // what a display that is none cannot do
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    const QCommandLineOption rounds("rounds", {}, "N", "1");
    const QCommandLineOption seed("seed", {}, "S", "1");
    const QCommandLineOption only("only", {}, "NAME,...");
    const QCommandLineOption without("without", {}, "NAME,...");
    parser.addOptions({rounds, seed, only, without});
    parser.process(application);
    const QStringList names = parser.value(only).split(u',', Qt::SkipEmptyParts);
    const QStringList leftOut = parser.value(without).split(u',');
    std::printf("| case | what was done | rounds | what happened | time |\n|---|---|---|---|---|\n");
    int wrong = 0;
    int played = 0;
    for (const Case &one : cases) {
        if ((!names.isEmpty() && !names.contains(one.name)) || leftOut.contains(one.name))
            continue;
        wrong += play(one, parser.value(rounds).toInt(), parser.value(seed).toUInt()) ? 0 : 1;
        ++played;
    }
    return wrong == 0 && played > 0 ? 0 : 1;
}
