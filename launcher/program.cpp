#include "launcher/program.h"
#include "suite/registersuite.h"

#include "controls/screen.h"
#include "frame/clsmain.h"
#include "host/mainobject.h"
#include "launcher/delivered.h"
#include "launcher/returnfigures.h"
#include "masters/statuslist.h"

#include <QDir>

Program::Program(ProgramPlaces places, LauncherSettings settings)
    : m_places(std::move(places))
    , m_database(std::move(settings), m_places.dataFolder)
{
}

Program::~Program()
{
    stop();
}

bool Program::start(QString *why, const DatabaseFiller &fill)
{
    const QStringList folders{QStringLiteral("Data"), QStringLiteral("ITR8Fls2007"), QStringLiteral("ITR8Fls2008"),
                              QStringLiteral("ITR8Fls2009"), QStringLiteral("HTMLHelp")};
    if (!TopUpApplicationFolder(m_places.delivered, folders, m_places.appPath, why) || !m_database.open(why))
        return false;
    if (fill && !fill(m_database.connection(), why))
        return false;
    RegisterSuiteObjects(m_objects, context());
    return makeMainObject(why) && loadModule(why);
}

SuiteContext Program::context()
{
    SuiteContext context;
    context.cnn = &m_database.connection();
    context.suiteCnn = m_database.suiteConnection();
    context.appPath = m_places.appPath;
    context.tmpPath = QDir::tempPath();
    context.settingsFile = m_places.settingsFile;
    context.version = QStringLiteral(FBT_VERSION);
    context.returnFigures = FiguresOfReturn;
    context.statusName = StatusText;
    return context;
}

bool Program::makeMainObject(QString *why)
{
    m_mainObject = m_objects.create(QStringLiteral("PrjWexaMainO.ClsMain"));
    if (m_mainObject == nullptr)
        *why = QStringLiteral("The suite has no main object.");
    return m_mainObject != nullptr;
}

bool Program::loadModule(QString *why)
{
    m_window = std::make_unique<MainWindow>();
    m_module = m_library.load(m_places.module, &m_objects, why);
    if (m_module == nullptr)
        return false;
    m_module->SetWexaMainObj(dynamic_cast<MainObject *>(m_mainObject.get()));
    m_module->SetMdiForm(m_window.get());
    m_module->SetVerInf(QStringLiteral(FBT_VERSION));
    const bool ready = m_module->LoadFBT(false);
    if (!ready)
        *why =
            QStringLiteral("The module did not become ready; FBTLogger.log in %1 may tell why.").arg(m_places.appPath);
    return ready;
}

void Program::show()
{
    m_window->show();
    m_module->ShowMain();
}

void Program::stop()
{
    m_library.destroy();
    m_module = nullptr;
    m_window.reset();
    if (auto *mainObject = dynamic_cast<MainObject *>(m_mainObject.get()))
        mainObject->TerminateObj();
    m_mainObject.reset();
    m_database.close();
}
