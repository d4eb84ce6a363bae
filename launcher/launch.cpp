#include "launcher/launch.h"
#include "suite/registersuite.h"

#include "controls/screen.h"
#include "host/baseobject.h"
#include "launcher/application.h"
#include "launcher/program.h"
#include "launcher/samplerun.h"

#include <QDir>
#include <QSettings>
#include <QTextStream>

namespace {

QTextStream &standardOutput()
{
    static QTextStream stream(stdout);
    return stream;
}

ProgramPlaces placesOf(const LaunchOptions &options)
{
    return {options.appPath, options.dataFolder, UserSettingsFile(), DeliveredFolder(), ModuleLibrary::usualPath()};
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
    const std::unique_ptr<SuiteObject> made = makeBase(options.appPath);
    auto *base = dynamic_cast<BaseObject *>(made.get());
    if (base == nullptr) {
        *why = QStringLiteral("The suite has no base object.");
        return false;
    }
    const bool done = RunSamples(database.connection(), *base, employers, standardOutput(), why);
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

int runWindow(const LaunchOptions &options)
{
    QString why;
    const std::optional<LauncherSettings> settings = ReadLauncherSettings(UserSettingsFile(), &why);
    if (!settings)
        return Refuse(why);
    QSettings geometry(UserSettingsFile(), QSettings::IniFormat);
    Screen::setGeometryStore(&geometry);
    Program program(placesOf(options), *settings);
    int code = 1;
    if (program.start(&why)) {
        QuitOnSignals();
        program.show();
        code = QApplication::exec();
    } else {
        Refuse(why);
    }
    program.stop();
    Screen::setGeometryStore(nullptr);
    return code;
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
    case Action::Window:
        return runWindow(options);
    }
    return 1;
}
