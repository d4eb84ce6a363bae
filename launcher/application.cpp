#include "launcher/application.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/screen.h"

#include <QSocketNotifier>

#include <csignal>
#include <unistd.h>

namespace {

std::array<int, 2> signalPipe{-1, -1};

void noteSignal(int)
{
    const char byte = 0;
    // Nothing can be done about a full pipe; then a signal is on its way already.
    [[maybe_unused]] const ssize_t written = write(signalPipe[1], &byte, 1);
}

void logThrown(const QObject *receiver, const Fault &fault)
{
    ErrText = receiver->objectName() + QStringLiteral("\tNOTIFY");
    LogFault(fault);
}

} // namespace

Application::Application(int &argc, char **argv)
    : QApplication(argc, argv)
{
    NameProgram();
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const FaultError &error) {
        logThrown(receiver, error.fault());
    } catch (const std::exception &error) {
        logThrown(receiver, {FaultNumber::General, QString::fromUtf8(error.what()), QStringLiteral("FBT")});
    }
    return false;
}

void NameProgram()
{
    QCoreApplication::setApplicationName(QStringLiteral("pelkfbt"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FBT_VERSION));
}

void QuitOnSignals()
{
    if (pipe(signalPipe.data()) != 0)
        return; // the signals then end the program at once, as they would anyway
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, qApp);
    // Not quit(), which would first ask the user whether the windows may close.
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [notifier] {
        notifier->setEnabled(false);
        Screen::endSession();
        QCoreApplication::exit(0);
    });
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, noteSignal);
}
