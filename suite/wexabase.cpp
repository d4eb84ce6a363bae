#include "suite/wexabase.h"

#include "platform/dates.h"
#include "platform/text.h"
#include "records/clientcode.h"
#include "records/statelist.h"
#include "suite/clientinfo/frmaddinfo.h"
#include "suite/clientinfo/frmbankmas.h"
#include "suite/clientinfo/frmretreg.h"
#include "suite/clientinfo/suitereports.h"
#include "suite/datacare/datacare.h"

#include <QApplication>
#include <QComboBox>
#include <QRegularExpression>
#include <QScreen>
#include <QWidget>

WexaBase::WexaBase(const SuiteContext &context, std::shared_ptr<ReportShelf> shelf)
    : m_context(context)
    , m_settings(context.settingsFile)
    , m_report(context, std::move(shelf))
{
    AppPath = context.appPath;
    vTmpPath = context.tmpPath;
    CnnObj = context.cnn;
}

void WexaBase::GetScreenReso()
{
    constexpr double plainWidth = 1024;
    constexpr double plainHeight = 768;
    constexpr double plainDpi = 96;
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    vScreenRatX = screen->size().width() / plainWidth;
    vScreenRatY = screen->size().height() / plainHeight;
    vScreenRatFS = screen->logicalDotsPerInch() / plainDpi;
}

void WexaBase::Resize_For_Resolution(QWidget *form)
{
    const QSize available = form->screen()->availableSize();
    form->resize(form->size().boundedTo(available));
}

QString WexaBase::GetSettingINI(const QString &section, const QString &key, const QString &defaultValue) const
{
    return m_settings.value(section, key, defaultValue);
}

bool WexaBase::SaveSettingINI(const QString &section, const QString &key, const QString &value)
{
    return m_settings.save(section, key, value);
}

void WexaBase::BackUp()
{
    BackUpWithUser(*this);
}

bool WexaBase::Restoration()
{
    return RestoreWithUser(*this);
}

void WexaBase::RepairData(QWidget *form)
{
    RepairWithUser(*this, form);
}

void WexaBase::ShowClDet()
{
    ReportClients(CnnObj, m_context, m_report);
}

void WexaBase::ShowReturn()
{
    frmretreg choice(TYear, QApplication::activeWindow());
    choice.showModal();
    if (choice.chosenYear() != 0)
        ReportReturns(CnnObj, choice.chosenYear(), m_context, m_report);
}

void WexaBase::ShowAddInfo()
{
    frmaddinfo screen(*this, QApplication::activeWindow());
    screen.showModal();
}

void WexaBase::ShowAddInfo1()
{
    frmaddinfo1 screen(*this, QApplication::activeWindow());
    screen.showModal();
}

void WexaBase::ShowBankMas()
{
    frmbankmas screen(*this, QApplication::activeWindow());
    screen.showModal();
}

QString WexaBase::ConvertDate(const QString &text) const
{
    return ConvertTypedDate(text);
}

QString WexaBase::ConvertToWord(double rupees) const
{
    return AmountInWords(rupees);
}

bool WexaBase::ValidPan(const QString &text) const
{
    static const QRegularExpression pan(
        QRegularExpression::anchoredPattern(QStringLiteral("([A-Z]{5}[0-9]{4}[A-Z])?")));
    return pan.match(text).hasMatch();
}

void WexaBase::LoadStateList(QComboBox *combo) const
{
    combo->clear();
    for (const StateCode &state : ReadStates(AppPath + QStringLiteral("/Data/StateCodes.txt")))
        combo->addItem(state.name);
}

void WexaBase::ChangeCode(const QString &oldCode, const QString &newCode)
{
    ChangeClientCode(CnnObj, oldCode, newCode);
}

void WexaBase::DeleteClient(const QString &clientCode)
{
    DeleteClientRows(CnnObj, clientCode);
}
