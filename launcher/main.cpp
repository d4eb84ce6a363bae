#include "launcher/application.h"
#include "launcher/launch.h"

#include <QTextStream>

namespace {

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

int run()
{
    LaunchOptions options;
    QString why;
    return ReadOptions(QCoreApplication::arguments(), &options, &why) ? Launch(options) : Refuse(why);
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    // Decided before there is an application object, since the one with windows ends the program without a display.
    if (RunsWithoutWindow(arguments)) {
        const QCoreApplication application(argc, argv);
        NameProgram();
        return run();
    }
    if (!hasDisplay()) {
        QTextStream(stderr) << "There is no display to open a window on; --sample computes the sample employers "
                               "without one.\n";
        return 1;
    }
    const Application application(argc, argv);
    return run();
}
