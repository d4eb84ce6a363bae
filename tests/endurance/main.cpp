#include "bench.h"

#include "launcher/application.h"

#include <QCommandLineParser>
#include <QElapsedTimer>

#include <array>
#include <cstdio>

namespace {

constexpr std::array<Case, 18> cases{{
    {"start", "two programs started at once on one empty data folder", StartTogether},
    {"start-office", "two programs started at once on one empty office schema", StartTogetherAtOffice},
    {"start-kill", "the same, the first one killed half way through the update", StartAfterKill},
    {"texts", "hostile texts typed in every text field of every screen", HostileTexts},
    {"code", "a stored code X' or 'a'='a met by the updater", HostileCode},
    {"apostrophe", "an apostrophe in an item's text, in a notification", Apostrophes},
    {"kill-program", "kill -9 of the program while it saves", KillProgram},
    {"kill-server", "kill -9 of the server while the program saves", KillServer},
    {"two-writers", "two programs adding to one client and quarter", TwoWriters},
    {"six-writers", "six programs adding to one client and quarter", SixInOneQuarter},
    {"six-clients", "six programs at full speed in different clients", SixClients},
    {"disk-save", "full disk while saving", FullDiskSaving},
    {"disk-update", "full disk during the first update", FullDiskUpdate},
    {"server-gone", "the private server killed while the program runs", ServerGone},
    {"office-restart", "an office server restarted while the program runs, over TCP", OfficeRestarted},
    {"backup-damage", "damaged backup files", DamagedBackups},
    {"backup-forged", "backups with a changed table definition, checksum made anew", ForgedBackups},
    {"settings", "damaged settings files", DamagedSettings},
}};

/// One line of the table. False when anything came out otherwise.
bool play(const Case &one, int rounds, quint32 seed)
{
    QElapsedTimer time;
    time.start();
    Dice dice{rounds, QRandomGenerator(seed)};
    const Outcome outcome = one.play(dice);
    const char *verdict = !outcome.run ? "NOT RUN" : outcome.wrong > 0 ? "WRONG" : "ok";
    std::printf("| %s | %s | %d | %s: %d wrong%s%s | %.1f s |\n", one.name, one.done, outcome.rounds, verdict,
                outcome.wrong, outcome.happened.isEmpty() ? "" : "; ", qPrintable(outcome.happened),
                static_cast<double>(time.elapsed()) / 1000);
    std::fflush(stdout);
    return outcome.wrong == 0;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg || type == QtCriticalMsg)
            fprintf(stderr, "%s\n", qPrintable(text));
    });
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    const QCommandLineOption rounds(QStringLiteral("rounds"), {}, QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption seed(QStringLiteral("seed"), {}, QStringLiteral("S"), QStringLiteral("1"));
    const QCommandLineOption only(QStringLiteral("only"), {}, QStringLiteral("NAME,..."));
    parser.addOptions({rounds, seed, only});
    parser.process(application);
    const QStringList names = parser.value(only).split(u',', Qt::SkipEmptyParts);
    std::printf("| case | what was done | rounds | what happened | time |\n|---|---|---|---|---|\n");
    bool right = true;
    int played = 0;
    for (const Case &one : cases) {
        if (!names.isEmpty() && !names.contains(QLatin1String(one.name)))
            continue;
        right = play(one, parser.value(rounds).toInt(), parser.value(seed).toUInt()) && right;
        ++played;
    }
    return right && played > 0 ? 0 : 1;
}
