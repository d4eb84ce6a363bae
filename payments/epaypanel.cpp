#include "payments/epaypanel.h"
#include "ui_epaypanel.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/msgbox.h"

#include <QGuiApplication>
#include <QJsonObject>
#include <QTimer>

namespace {

constexpr auto formName = "Challan"; // the screen that the panel is a part of
constexpr auto procedure = "DOCUMENTCOMPLETE";

QString portalAddress()
{
    return Base->GetSettingINI(QStringLiteral("EPay"), QStringLiteral("portal"), QString()).trimmed();
}

} // namespace

EPayPanel::EPayPanel(QWidget *parent)
    : QFrame(parent)
    , ui(std::make_unique<Ui::EPayPanel>())
{
    ui->setupUi(this);
    connect(ui->cmdcancelPg, &QPushButton::clicked, this, &EPayPanel::cancel);
    connect(ui->cmdstoppg, &QPushButton::clicked, this, &EPayPanel::CMDSTOPPG_CLICK);
}

EPayPanel::~EPayPanel() = default;

void EPayPanel::DOCUMENTCOMPLETE(const QJsonArray &values)
{
    if (m_running)
        return;
    m_running = true;
    if (mayCloseEarlier()) {
        const QString portal = portalAddress();
        if (!IsPortalAddress(portal))
            MsgBox(this,
                   QStringLiteral("The address of the e-payment portal is not known. Write it as portal=https://... "
                                  "under [EPay] in the settings file pelkfbt.ini."),
                   Buttons::Ok, Icon::Information);
        else
            walk(portal, values);
    }
    m_running = false;
}

/// Asks before a window that is still there is closed. False: it stays, and nothing is done.
bool EPayPanel::mayCloseEarlier()
{
    constexpr int no = 2;
    if (PayBrowser == nullptr || !PayBrowser->Visible())
        return true;
    if (MsgBox(this,
               QStringLiteral("Previously opened window is not closed. You must close the window before proceeding.\n\n"
                              "Do you want to Continue by closing the previous opened window now ?"),
               Buttons::YesNo, Icon::Question, {}, no) != Reply::Yes)
        return false;
    PayBrowser->Close();
    return true;
}

/// The panel is up while the browser starts, so that nothing of the register can be pressed meanwhile.
bool EPayPanel::openBrowser()
{
    if (PayBrowser != nullptr)
        PayBrowser->Close(); // the driver of a window that the user has closed
    m_made = CreateObject(QStringLiteral("InternetExplorer.Application"));
    PayBrowser = dynamic_cast<BrowserObject *>(m_made.get());
    m_opening = true;
    const auto opened = PayBrowser == nullptr ? BrowserObject::Opened::Failed : PayBrowser->Open();
    m_opening = false;
    if (opened == BrowserObject::Opened::Yes)
        return true;
    if (m_run == Run::Taken)
        m_run = Run::Going; // there is nothing to take over
    if (opened == BrowserObject::Opened::Failed && m_run == Run::Going)
        note(PayBrowser == nullptr ? QStringLiteral("there is no browser") : PayBrowser->Reason());
    m_made.reset();
    PayBrowser = nullptr;
    SHOWFAILMSG(
        opened == BrowserObject::Opened::Failed
            ? QStringLiteral("Could not open Internet Explorer Application.")
            : QStringLiteral("No driver of a browser was found. Install chromedriver, msedgedriver or "
                             "geckodriver, or name one as driver= under [EPay] in the settings file pelkfbt.ini."));
    return false;
}

void EPayPanel::walk(const QString &portal, const QJsonArray &values)
{
    m_run = Run::Going;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    emit begun();
    show();
    ui->cmdcancelPg->setFocus();
    showStage(QStringLiteral("Connecting to e-Tax Payment System .........."));
    if (!openBrowser())
        return;
    if (m_run == Run::Going)
        PayBrowser->Navigate2(StartAddress(portal)); // a failure shows in the page, or in the window being gone
    if (!waitFor([&](const PortalPage &page) { return IsStartPage(page, portal); },
                 QStringLiteral("Could not Open e-Tax Payment System.")))
        return;
    showStage(QStringLiteral("Opening CHALLAN NO./ITNS 283 .........."));
    clickChallan();
    if (!waitFor([&](const PortalPage &page) { return IsChallanPage(page, portal); },
                 QStringLiteral("Could not Open Challan.")))
        return;
    showStage(QStringLiteral("Filling Challan .........."));
    setEnabled(false);
    fill({values.at(0), ChallanAddress(portal)});
    setEnabled(true);
    m_run = Run::Taken;
    SHOWFAILMSG(QString());
    run(FocusScript());
}

/// Looks at the page again and again until it is there. False when the run has ended otherwise, and all of it is told.
bool EPayPanel::waitFor(const std::function<bool(const PortalPage &)> &there, const QString &failure)
{
    QString message = failure;
    while (pause()) {
        QJsonValue answer;
        const BrowserObject::Result result = run(PageScript(), {}, &answer);
        if (m_run != Run::Going || result == BrowserObject::Result::Gone)
            break;
        const PortalPage page = result == BrowserObject::Result::Done ? PageFrom(answer) : PortalPage();
        if (page.isFailure()) {
            message = QStringLiteral("Failed");
            break;
        }
        if (there(page))
            return true;
    }
    SHOWFAILMSG(message);
    return false;
}

/// A dialog of the page can stand before the click; the user answers it.
void EPayPanel::clickChallan()
{
    QJsonValue found;
    BrowserObject::Result result = BrowserObject::Result::NotYet;
    do
        result = run(OpenChallanScript(), {}, &found);
    while (result == BrowserObject::Result::NotYet && pause());
    if (result == BrowserObject::Result::Done && !found.toBool())
        note(QStringLiteral("the start page has no element 283"));
}

/// An element that cannot be filled costs that element alone, and is logged.
void EPayPanel::fill(const QJsonArray &values)
{
    QJsonValue missed;
    run(FillScript(), values, &missed);
    if (!missed.isArray())
        note(QStringLiteral("the form could not be filled"));
    for (const QString &name : values.at(0).toObject().keys()) {
        if (missed.toArray().contains(name))
            note(QStringLiteral("the form has no element %1").arg(name));
    }
}

/// A fault that the log alone tells.
void EPayPanel::note(const QString &what)
{
    ErrorTail(QString::fromLatin1(formName), procedure).take({FaultNumber::General, what, QStringLiteral("FBT")});
}

void EPayPanel::cancel()
{
    if (isEnabled() && (m_run == Run::Going || m_opening))
        end(Run::Cancelled);
}

void EPayPanel::CMDSTOPPG_CLICK()
{
    if (m_run == Run::Going)
        end(Run::Taken);
}

/// The loop sees it at once, whatever it waits for; but a browser that the user wants must first be there.
void EPayPanel::end(Run how)
{
    m_run = how;
    if (PayBrowser != nullptr && !(m_opening && how == Run::Taken))
        PayBrowser->Interrupt();
    if (m_pause)
        m_pause->quit();
}

void EPayPanel::SHOWFAILMSG(const QString &Message)
{
    QGuiApplication::restoreOverrideCursor();
    hide();
    if (m_run == Run::Going && !Message.isEmpty())
        MsgBox(this, Message, Buttons::Ok, Icon::Exclamation);
    emit ended();
    m_run = m_run == Run::Taken ? Run::Left : Run::Closed;
    if (PayBrowser == nullptr)
        return;
    if (m_run == Run::Left)
        PayBrowser->Maximize();
    else
        PayBrowser->Close();
}

void EPayPanel::showStage(const QString &text)
{
    ui->lblpg->setText(text);
}

/// A moment for events, and for the processor. False when the user has ended the run.
bool EPayPanel::pause()
{
    constexpr int milliseconds = 100;
    QEventLoop wait;
    m_pause = &wait;
    QTimer::singleShot(milliseconds, &wait, &QEventLoop::quit);
    if (m_run == Run::Going)
        wait.exec();
    return m_run == Run::Going;
}

BrowserObject::Result EPayPanel::run(const QString &script, const QJsonArray &arguments, QJsonValue *value)
{
    QJsonValue unused;
    return PayBrowser->Run(script, arguments, value == nullptr ? &unused : value);
}
