#include "launcher/launch.h"
#include "suite/registersuite.h"

#include "controls/screen.h"
#include "host/baseobject.h"
#include "launcher/application.h"
#include "launcher/checkrun.h"
#include "launcher/delivered.h"
#include "launcher/demofolder.h"
#include "launcher/program.h"
#include "launcher/samplerun.h"

#include <QDir>
#include <QSettings>
#include <QTextStream>
#include <QTimer>

namespace {

QTextStream &standardOutput()
{
    static QTextStream stream(stdout);
    return stream;
}

/// The base object alone: a run without a window needs no main object and leaves no mark of a run behind.
std::unique_ptr<SuiteObject> makeBase(const QString &appPath)
{
    ObjectTable objects;
    SuiteContext context;
    context.appPath = appPath;
    context.settingsFile = UserSettingsFile();
    RegisterSuiteObjects(objects, context);
    return objects.create(QStringLiteral("WexaBase.ClsMain"));
}

bool computeSamples(LauncherDatabase &database, const LaunchOptions &options, QString *why)
{
    const std::vector<SampleEmployer> employers = ReadSamples(options.samples, why);
    if (employers.empty() || !database.open(why) || !database.takeScratch(why))
        return false;
    const std::unique_ptr<SuiteObject> base = makeBase(options.appPath);
    const bool done =
        RunSamples(database.connection(), dynamic_cast<BaseObject *>(base.get()), employers, standardOutput(), why);
    database.dropScratch();
    return done;
}

/// The sample employers are computed on the private server whatever the settings say: an office server is no place
/// for scratch databases.
int runSamples(const LaunchOptions &options)
{
    LauncherSettings settings;
    settings.schema = QStringLiteral("pelkfbt_sample");
    LauncherDatabase database(settings, options.dataFolder);
    QString why;
    if (!QDir().mkpath(options.appPath))
        return Refuse(QStringLiteral("The application folder %1 cannot be made.").arg(options.appPath));
    const bool done = computeSamples(database, options, &why);
    standardOutput().flush();
    return done ? 0 : Refuse(why);
}

/// The user's own database, in which nothing is changed.
bool checkReturns(LauncherDatabase &database, const LaunchOptions &options, QString *why)
{
    if (!TopUpApplicationFolder(DeliveredFolder(), {QStringLiteral("Data")}, options.appPath, why) ||
        !database.open(why))
        return false;
    const std::unique_ptr<SuiteObject> made = makeBase(options.appPath);
    auto *base = dynamic_cast<BaseObject *>(made.get());
    return base != nullptr && RunCheck(database.connection(), *base, options.year, options.csv, standardOutput(), why);
}

/// 1 also without a sentence: the errors were printed.
int runCheck(const LaunchOptions &options)
{
    QString why;
    const std::optional<LauncherSettings> settings = ReadLauncherSettings(UserSettingsFile(), &why);
    if (!settings)
        return Refuse(why);
    LauncherDatabase database(*settings, options.dataFolder);
    const bool right = checkReturns(database, options, &why);
    standardOutput().flush();
    if (!why.isEmpty())
        return Refuse(why);
    return right ? 0 : 1;
}

/// Runs the window from its start to its end.
/// @param fill brings rows into the open database before the module is loaded
int runProgram(const ProgramPlaces &places, const LauncherSettings &settings, const DatabaseFiller &fill = {})
{
    QSettings geometry(places.settingsFile, QSettings::IniFormat);
    Screen::setGeometryStore(&geometry);
    QuitOnSignals();
    Program program(places, settings);
    QString why;
    int code = 1;
    if (program.start(&why, fill)) {
        // From within the event loop: the first activation may end the program, by a cancelled login for example.
        QTimer::singleShot(0, [&program] { program.show(); });
        code = QApplication::exec();
    } else {
        Refuse(why);
    }
    program.stop();
    Screen::setGeometryStore(nullptr);
    return code;
}

int runWindow(const LaunchOptions &options)
{
    QString why;
    const std::optional<LauncherSettings> settings = ReadLauncherSettings(UserSettingsFile(), &why);
    return settings ? runProgram({options.appPath, options.dataFolder}, *settings) : Refuse(why);
}

/// Application folder, database and settings lie in one scratch folder: nothing of the user's is read or written.
int runDemo(const LaunchOptions &options)
{
    QString why;
    const std::vector<SampleEmployer> employers = ReadSamples(options.samples, &why);
    if (employers.empty())
        return Refuse(why);
    const DemoFolder scratch;
    if (!scratch.isValid())
        return Refuse(QStringLiteral("The scratch folder cannot be made: %1").arg(scratch.errorString()));
    const ProgramPlaces places{scratch.appPath(), scratch.dataFolder(), scratch.settingsFile()};
    return runProgram(places, LauncherSettings(), [&](Connection &connection, QString *failure) {
        const std::unique_ptr<SuiteObject> base = makeBase(places.appPath);
        return FillWithSamples(connection, dynamic_cast<BaseObject *>(base.get()), employers, failure);
    });
}

} // namespace

int Refuse(const QString &sentence)
{
    QTextStream(stderr) << sentence << '\n';
    static const QStringList unseen{QStringLiteral("offscreen"), QStringLiteral("minimal")};
    const bool windows = qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
    if (windows && !unseen.contains(QGuiApplication::platformName()))
        MsgBox(nullptr, sentence, Buttons::Ok, Icon::Critical);
    return 1;
}

int Launch(const LaunchOptions &options)
{
    using Action = LaunchOptions::Action;
    switch (options.action) {
    case Action::Help:
        standardOutput() << HelpText() << Qt::flush;
        return 0;
    case Action::Version:
        standardOutput() << "pelkfbt " << QCoreApplication::applicationVersion() << '\n' << Qt::flush;
        return 0;
    case Action::Sample:
        return runSamples(options);
    case Action::Check:
        return runCheck(options);
    case Action::Demo:
        return runDemo(options);
    case Action::Window:
        return runWindow(options);
    }
    return 1;
}
