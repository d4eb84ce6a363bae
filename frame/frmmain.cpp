#include "frame/frmmain.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/pelkbtn.h"
#include "db/frmupdatedb.h"
#include "efile/frmchkret.h"
#include "entry/frmfbtdet.h"
#include "frame/frmLogin.h"
#include "frame/frmsbase.h"
#include "frame/frmsettings.h"
#include "frame/password.h"
#include "help/frmhelp.h"
#include "host/siblings.h"
#include "masters/frmclinfo.h"
#include "masters/frmduedts.h"
#include "masters/frmfbtmas.h"
#include "masters/frmnatmas.h"
#include "platform/clock.h"
#include "platform/connection.h"
#include "records/updatemark.h"
#include "ui_frmmain.h"

#include <QLocale>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>

namespace {

constexpr int tickMs = 1000;

bool knows(const QString &object)
{
    return SuiteObjects != nullptr && SuiteObjects->knows(object);
}

} // namespace

frmmain::frmmain(QWidget *parent)
    : Screen(QStringLiteral("frmmain"), parent)
    , ui(std::make_unique<Ui::frmmain>())
{
    ui->setupUi(this);
    buildMenus();
    wireButtons();
    connect(&Timer4, &QTimer::timeout, this, &frmmain::TIMER4_TIMER);
    connect(this, &Screen::unloaded, this, [] {
        if (auto *help = opened<frmhelp>())
            help->Unload(); // the only screen outside the main window
        if (SuiteMode)
            return;
        NoTail none;
        none([] { MainObj->TerminateObj(); });
        if (MdiForm != nullptr)
            MdiForm->close();
    });
}

frmmain::~frmmain()
{
    setHelp({});
}

QMenu *frmmain::addMenu(const QString &name, const QString &caption)
{
    auto *menu = new QMenu(caption, this);
    menu->setObjectName(name);
    return menu;
}

void frmmain::addEntry(QMenu *menu, const QString &name, const QString &caption, void (frmmain::*handler)())
{
    QAction *entry = menu->addAction(caption);
    entry->setObjectName(name);
    entry->setParent(this); // found by its name on the screen, as the controls are
    connect(entry, &QAction::triggered, this, handler);
}

void frmmain::buildMenus()
{
    mnumain = addMenu(QStringLiteral("mnumain"), QStringLiteral("&Main Info"));
    addEntry(mnumain, QStringLiteral("mnuclinfo"), QStringLiteral("&Employer's Detail"), &frmmain::MNUCLINFO_CLICK);
    addEntry(mnumain, QStringLiteral("mnunatbus"), QStringLiteral("&Nature of Business"), &frmmain::MNUNATBUS_CLICK);
    addEntry(mnumain, QStringLiteral("mnuexphead"), QStringLiteral("Expenses &Head Details"),
             &frmmain::MNUEXPHEAD_CLICK);
    addEntry(mnumain, QStringLiteral("mnuduedt"), QStringLiteral("&Due Date"), &frmmain::MNUDUEDT_CLICK);
    mnureps = addMenu(QStringLiteral("mnureps"), QStringLiteral("&Reports"));
    addEntry(mnureps, QStringLiteral("mnucldet"), QStringLiteral("&Client Details"), &frmmain::MNUCLDET_CLICK);
    addEntry(mnureps, QStringLiteral("mnuret"), QStringLiteral("&Returns"), &frmmain::MNURET_CLICK);
    addEntry(mnureps, QStringLiteral("mnuchkret"), QStringLiteral("Check &all returns"), &frmmain::MNUCHKRET_CLICK);
    mnutools = addMenu(QStringLiteral("mnutools"), QStringLiteral("T&ools"));
    addEntry(mnutools, QStringLiteral("mnubkup"), QStringLiteral("&BackUp"), &frmmain::MNUBKUP_CLICK);
    addEntry(mnutools, QStringLiteral("mnurestore"), QStringLiteral("&Restore"), &frmmain::MNURESTORE_CLICK);
    addEntry(mnutools, QStringLiteral("mnurepair"), QStringLiteral("Refresh &Data"), &frmmain::MNUREPAIR_CLICK);
    mnubkup = findChild<QAction *>(QStringLiteral("mnubkup"));
}

void frmmain::wireButtons()
{
    connect(ui->cmdmaster, &PelkBtn::clicked, this, [this] { openMenuBeside(ui->cmdmaster, mnumain); });
    connect(ui->cmdfbtdet, &PelkBtn::clicked, this, &frmmain::CMDFBTDET_CLICK);
    connect(ui->cmdreps, &PelkBtn::clicked, this, [this] { openMenuBeside(ui->cmdreps, mnureps); });
    connect(ui->cmdtools, &PelkBtn::clicked, this, [this] { openMenuBeside(ui->cmdtools, mnutools); });
    connect(ui->cmdsettings, &PelkBtn::clicked, this, &frmmain::CMDSETTINGS_CLICK);
    connect(ui->cmdhelp, &PelkBtn::clicked, this, &frmmain::CMDHELP_CLICK);
    connect(ui->cmdbill, &PelkBtn::clicked, this, &frmmain::CMDBILL_CLICK);
    connect(ui->cmdmiscinf, &PelkBtn::clicked, this, &frmmain::CMDMISCINF_CLICK);
    connect(ui->cmdprod, &PelkBtn::clicked, this, &frmmain::CMDPROD_CLICK);
    connect(ui->cmdquit, &PelkBtn::clicked, this, &frmmain::CMDQUIT_CLICK);
    connect(ui->lblcheckup, &QPushButton::clicked, this, &frmmain::LBLCHECKUP_CLICK);
}

void frmmain::FORM_LOAD()
{
    ErrorTail tail(this);
    m_firstActivation = true;
    setHelp(&frmhelp::OpenFor);
    Base->Resize_For_Resolution(this);
    ui->cmdbill->setVisible(knows(QStringLiteral("PrjWexaBill.Forms")));
    ui->cmdmiscinf->setVisible(knows(QStringLiteral("WexaMiscInf.ClsMain")));
    for (QWidget *ownLauncherOnly : {static_cast<QWidget *>(ui->cmdprod), static_cast<QWidget *>(ui->lbltime),
                                     static_cast<QWidget *>(ui->lbldate)})
        ownLauncherOnly->setVisible(!SuiteMode);
    if (!SuiteMode) {
        TIMER4_TIMER();
        Timer4.start(tickMs);
    }
}

void frmmain::FORM_ACTIVATE()
{
    NoTail none;
    // Disabled buttons lose the focus; it comes back to where the user was.
    const QPointer<QWidget> focus = qobject_cast<PelkBtn *>(focusWidget());
    enableButtons(false);
    if (std::exchange(m_firstActivation, false))
        firstActivation(none);
    if (m_leaving)
        return;
    enableButtons(true);
    (focus ? focus.data() : ui->cmdmaster)->setFocus();
}

void frmmain::enableButtons(bool on)
{
    for (PelkBtn *button : findChildren<PelkBtn *>())
        button->setEnabled(on);
}

/// A fault in one step never keeps the user from the next one, least of all from the password.
void frmmain::firstActivation(NoTail &none)
{
    none([this] {
        if (MainObj->ChkRepDbFlag())
            Base->RepairData(this);
    });
    if (!databaseReady(none)) {
        MsgBox(this, QStringLiteral("Failed to Update Database Structure."));
        leave();
        return;
    }
    bool passed = false;
    none([&] { passed = mayEnter(); });
    if (!passed) {
        leave();
        return;
    }
    none([] { MainObj->ShowWexaNews(); });
}

/// Updates the database where that is wanted. False when it failed. A version that cannot be read keeps nobody out: no
/// update is begun on it, and the next start asks again.
bool frmmain::databaseReady(NoTail &none)
{
    bool wanted = false;
    bool ready = true;
    none([&] { wanted = MainObj->CreateDbFlag() || MainObj->UpdateDbFlag(); });
    none([&] {
        // An update that was cut off is completed, also where the host's main object does not know how to see it.
        if (wanted || UpdateIsMarked(Cnn))
            ready = updateDatabase();
    });
    return ready;
}

bool frmmain::updateDatabase()
{
    DbUpdated = false;
    frmupdatedb screen(MdiForm); // holds the lock of the update until the version is written
    screen.showModal();
    if (DbUpdated)
        StoreVersion(Cnn, QStringLiteral(FBT_VERSION)); // the next start updates again where that was refused
    return DbUpdated;
}

/// A password that could not be read keeps everybody out: nobody can say that there is none.
bool frmmain::mayEnter()
{
    if (GETPASSWORD())
        return AdminPassword.isEmpty() || passwordGiven();
    MsgBox(this, QStringLiteral("The administrator's password could not be read. Please start the Software again."),
           Buttons::Ok, Icon::Critical);
    return false;
}

bool frmmain::passwordGiven()
{
    PasswordPassed = false;
    frmLogin(MdiForm).showModal();
    return PasswordPassed;
}

void frmmain::leave()
{
    m_leaving = true;
    Unload();
}

bool frmmain::confirmQuit()
{
    if (MsgBox(this, QStringLiteral("Do you really want to exit ?"), Buttons::YesNo, Icon::None,
               QStringLiteral("Sure to Quit...")) != Reply::Yes)
        return false;
    if (!SuiteMode && mnubkup->isEnabled() &&
        MsgBox(this, QStringLiteral("Do you want to backup data?"), Buttons::YesNo, Icon::Question, QString(), 2) ==
            Reply::Yes)
        MNUBKUP_CLICK();
    return true;
}

void frmmain::CMDQUIT_CLICK()
{
    ErrorTail tail(this);
    if (confirmQuit())
        leave();
}

bool frmmain::FORM_UNLOAD()
{
    ErrorTail tail(this);
    // Closed by its window rather than by "Quit": the same questions.
    return m_leaving || confirmQuit();
}

bool frmmain::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey == escapeKey && SuiteMode)
        CMDQUIT_CLICK();
    return asciiKey == escapeKey;
}

void frmmain::openMenuBeside(QWidget *button, QMenu *menu)
{
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
}

void frmmain::MNUCLINFO_CLICK()
{
    ErrorTail tail(this);
    // A client that is being worked on must not get another code, or none, under the working screen.
    if (unloadEach({opened<frmfbtdet>()}, MdiForm))
        openOnce<frmclinfo>(MdiForm);
}

void frmmain::MNUNATBUS_CLICK()
{
    ErrorTail tail(this);
    openOnce<frmnatmas>(MdiForm);
}

void frmmain::MNUEXPHEAD_CLICK()
{
    ErrorTail tail(this);
    openOnce<frmfbtmas>(MdiForm);
}

void frmmain::MNUDUEDT_CLICK()
{
    ErrorTail tail(this);
    openOnce<frmduedts>(MdiForm);
}

void frmmain::MNUCLDET_CLICK()
{
    ErrorTail tail(this);
    Base->ShowClDet();
}

void frmmain::MNURET_CLICK()
{
    ErrorTail tail(this);
    Base->ShowReturn();
}

void frmmain::MNUCHKRET_CLICK()
{
    ErrorTail tail(this);
    openOnce<frmchkret>(MdiForm);
}

void frmmain::MNUBKUP_CLICK()
{
    ErrorTail tail(this);
    Base->BackUp();
}

void frmmain::MNURESTORE_CLICK()
{
    ErrorTail tail(this);
    if (!Base->Restoration())
        return;
    MsgBox(this, QStringLiteral("Software will Close Now. You have to start the Software again."));
    leave();
}

void frmmain::MNUREPAIR_CLICK()
{
    ErrorTail tail(this);
    Base->RepairData(this);
}

void frmmain::CMDFBTDET_CLICK()
{
    ErrorTail tail(this);
    openOnce<frmsbase>(MdiForm);
}

void frmmain::CMDSETTINGS_CLICK()
{
    ErrorTail tail(this);
    openOnce<frmsettings>(MdiForm);
}

void frmmain::CMDHELP_CLICK()
{
    const ErrorTail tail(this);
    frmhelp::Open();
}

void frmmain::CMDBILL_CLICK()
{
    ErrorTail tail(this);
    const std::unique_ptr<SuiteObject> made = CreateObject(QStringLiteral("PrjWexaBill.Forms"));
    if (auto *billing = dynamic_cast<BillingObject *>(made.get())) {
        billing->CallBilling(QStringLiteral("F"));
        billing->OpenBilling();
    }
}

void frmmain::CMDMISCINF_CLICK()
{
    ErrorTail tail(this);
    const std::unique_ptr<SuiteObject> made = CreateObject(QStringLiteral("WexaMiscInf.ClsMain"));
    if (auto *miscInf = dynamic_cast<MiscInfObject *>(made.get())) {
        miscInf->InitMe(Base->AppPath, Cnn, QStringLiteral("FBTLogger.log"), Base->vScreenRatX, Base->vScreenRatY,
                        Base->vScreenRatFS);
        miscInf->ObjMain();
    }
}

void frmmain::CMDPROD_CLICK()
{
    ErrorTail tail(this);
    MainObj->ShowAbout();
}

void frmmain::LBLCHECKUP_CLICK()
{
    ErrorTail tail(this);
    MainObj->CheckForUpdates();
}

void frmmain::TIMER4_TIMER()
{
    const ErrorTail tail(this);
    const QDateTime now = Now();
    ui->lbltime->setText(now.time().toString(u"hh:mm:ss AP"));
    ui->lbldate->setText(QLocale().toString(now.date(), QLocale::LongFormat));
}
