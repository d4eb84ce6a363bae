#include "keyplayer.h"

#include "launcher/application.h"
#include "launcher/modulelibrary.h"
#include "launcher/options.h"
#include "launcher/program.h"
#include "tests/support/employer.h"

#include <QTemporaryDir>
#include <QTimer>

namespace {

/// Employers enough for lists to scroll, some with expenses and more than one nature of business.
void addEmployers(Connection &connection)
{
    for (int i = 1; i <= 30; ++i)
        employer(connection, QStringLiteral("K%1").arg(i, 2, 10, QChar(u'0'))).name(QStringLiteral("EMPLOYER"));
    employer(connection, QStringLiteral("TWO"))
        .natures({1, 7})
        .expense(2007, 1, 1, 18, 1000)
        .expense(2007, 2, 7, 65, 2300);
}

/// Clicks that no control takes are part of the game; only what is worse than a warning is told.
void tellFaults(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

int play(int rounds, quint32 firstSeed)
{
    const QTemporaryDir scratch;
    const QString settingsFile = scratch.filePath(QStringLiteral("pelkfbt.ini"));
    Program program({scratch.filePath(QStringLiteral("app")), scratch.filePath(QStringLiteral("db")), settingsFile,
                     DeliveredFolder(), ModuleLibrary::usualPath()},
                    LauncherSettings());
    QString why;
    if (!program.start(&why)) {
        fprintf(stderr, "%s\n", qPrintable(why));
        return 1;
    }
    int played = 1;
    KeyPlayer player(program.window(), rounds, firstSeed);
    QObject::connect(&player, &KeyPlayer::finished, qApp, [&played] {
        played = 0;
        QCoreApplication::exit(0); // quit() would ask the windows
    });
    QTimer::singleShot(0, qApp, [&] {
        program.show();
        addEmployers(program.connection());
        player.begin();
    });
    QApplication::exec();
    program.stop();
    return played;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(tellFaults);
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QCoreApplication::arguments();
    constexpr int fewRounds = 40;
    const int rounds = arguments.size() > 1 ? arguments.at(1).toInt() : fewRounds;
    return play(rounds, arguments.size() > 2 ? arguments.at(2).toUInt() : 1);
}
