#include "frame/clsmain.h"

#include "context/errortail.h"
#include "context/faultnotice.h"
#include "controls/msgbox.h"
#include "controls/screen.h"
#include "frame/frmmain.h"
#include "frame/noticeline.h"
#include "frame/returnplaces.h"
#include "platform/connection.h"

#include <QApplication>
#include <QMainWindow>
#include <QPointer>
#include <QStatusBar>

namespace {

constexpr int reporterVersion = 1;

/// The object behind a pointer, or the fault that there is none.
template<typename T>
T *present(T *object, const char *name)
{
    constexpr int objectNotSet = 91;
    if (object == nullptr)
        throw FaultError(objectNotSet, QStringLiteral("There is no object %1.").arg(QLatin1String(name)));
    return object;
}

/// Who receives the faults of the module's connections, and hears of changes that were carried out.
void receiveFaults(const FaultHandler &handler, const std::function<void()> &doneHandler)
{
    for (Connection *connection : {Cnn, MainObj == nullptr ? nullptr : MainObj->SuiteCnn}) {
        if (connection == nullptr)
            continue;
        connection->setFaultHandler(handler);
        connection->setDoneHandler(doneHandler);
    }
}

/// Takes away every screen that still stands, without a question. A modal one belongs to the procedure that waits in it.
void dropScreens()
{
    const QList<Screen *> waitedFor = Screen::modalScreens();
    QList<QPointer<Screen>> screens;
    for (QWidget *widget : QApplication::allWidgets()) {
        auto *screen = qobject_cast<Screen *>(widget);
        if (screen != nullptr && !waitedFor.contains(screen))
            screens.append(screen);
    }
    for (const QPointer<Screen> &screen : screens)
        delete screen.data(); // those that an earlier one owned are gone by then
}

} // namespace

ClsMain::ClsMain(const ObjectTable *objects)
{
    ResetModule();
    SuiteObjects = objects;
}

ClsMain::~ClsMain()
{
    dropScreens();
    receiveFaults({}, {});
    m_notices.reset();
    SetPlaceOpener({});
    ResetModule();
}

void ClsMain::SetWexaMainObj(MainObject *mainObject)
{
    MainObj = mainObject;
}

void ClsMain::SetDBObj(QObject *databaseObject)
{
    DBObj = databaseObject;
}

void ClsMain::SetMdiForm(QMainWindow *window)
{
    MdiForm = window;
}

void ClsMain::SetVerInf(const QString &text)
{
    VerText = text;
}

bool ClsMain::LoadFBT(bool suiteFlag)
{
    ErrorTail tail(QStringLiteral("CLSMAIN"));
    SuiteMode = suiteFlag;
    tail([this] { m_base = CreateObject(QStringLiteral("WexaBase.ClsMain")); });
    Base = dynamic_cast<BaseObject *>(m_base.get());
    if (!makeMainObject(tail) || !makeReporter(tail))
        return false;
    tail([&] { takeConnection(); });
    SetPlaceOpener(OpenReturnPlace);
    tail([&] { prepareReporter(); });
    if (!SuiteMode && MdiForm != nullptr)
        MdiForm->setWindowTitle(QStringLiteral("Pelk FBT ver ") + VerText);
    return Base != nullptr && Cnn != nullptr;
}

bool ClsMain::makeMainObject(ErrorTail &tail)
{
    if (SuiteMode)
        MainObj = nullptr;
    if (MainObj == nullptr) {
        tail([this] { m_ownMainObject = CreateObject(QStringLiteral("PrjWexaMainO.ClsMain")); });
        MainObj = dynamic_cast<MainObject *>(m_ownMainObject.get());
    }
    if (MainObj == nullptr) {
        MsgBox(MdiForm, QStringLiteral("Library [PrjWexaMainO.Dll] not found."));
        return false;
    }
    // Faults can be logged from here on: the application folder is known.
    tail([] { present(Base, "Base")->AppPath = MainObj->AppPath; });
    return true;
}

bool ClsMain::makeReporter(ErrorTail &tail)
{
    tail([this] { m_reporter = CreateObject(QStringLiteral("PrjWexaRep.RepView")); });
    Reporter = dynamic_cast<ReportObject *>(m_reporter.get());
    bool compatible = false;
    tail([&] { compatible = present(Reporter, "Reporter")->MyDllVersion() == reporterVersion; });
    if (!compatible)
        MsgBox(MdiForm, QStringLiteral("Incompatible version of \"Wexa Reporting Component\"."));
    return compatible;
}

void ClsMain::takeConnection()
{
    Cnn = present(MainObj->Cnn, "Cnn");
    receiveFaults(ErrorTail::dispatch, NotifyDone);
    m_notices = std::make_unique<NoticeLine>(MdiForm);
    present(Base, "Base")->CnnObj = Cnn;
    Base->vTmpPath = MainObj->TmpPath;
    Base->GetScreenReso();
}

void ClsMain::prepareReporter()
{
    Reporter->setcallfrom = QStringLiteral("FBT");
    Reporter->Setapppath = present(Base, "Base")->AppPath;
    Reporter->Settmppath = Base->vTmpPath;
    if (MdiForm != nullptr)
        Reporter->StatusBarobj = MdiForm->findChild<QStatusBar *>(QStringLiteral("TXStatusBar1"));
}

void ClsMain::ShowMain()
{
    ErrorTail tail(QStringLiteral("CLSMAIN"));
    tail([this] {
        if (m_main.isNull())
            m_main = new frmmain(MdiForm);
        m_main->openChild(MdiForm);
    });
}
