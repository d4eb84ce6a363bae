#include "frame/frmsettings.h"

#include "context/errortail.h"
#include "context/faultnotice.h"
#include "context/modbase.h"
#include "frame/password.h"
#include "platform/text.h"
#include "ui_frmsettings.h"

#include <QIntValidator>
#include <QPrinterInfo>

#include <algorithm>

namespace {

constexpr double mostLines = 70;

QString section()
{
    return QStringLiteral("Settings");
}

void fillPrinters(QComboBox *combo, const QString &stored)
{
    combo->addItem(QString());
    combo->addItems(QPrinterInfo::availablePrinterNames());
    combo->setCurrentIndex(combo->findText(stored));
}

} // namespace

frmsettings::frmsettings(QWidget *parent)
    : Screen(QStringLiteral("frmsettings"), parent)
    , ui(std::make_unique<Ui::frmsettings>())
{
    ui->setupUi(this);
    ui->txtlines->setValidator(new QIntValidator(0, 999, this));
    connect(ui->xpcmdbutton1, &QPushButton::clicked, this, &Screen::Unload);
    connect(ui->xpcmdbutton2, &QPushButton::clicked, this, &frmsettings::XPCMDBUTTON2_CLICK);
    connect(this, &Screen::left, this, [this](const QWidget *field) {
        if (field == ui->txtlines)
            TXTLINES_LOSTFOCUS();
    });
}

frmsettings::~frmsettings() = default;

void frmsettings::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    fillPrinters(ui->cbodos, Base->GetSettingINI(section(), QStringLiteral("DosPrinter"), QString()));
    fillPrinters(ui->cbowin, Base->GetSettingINI(section(), QStringLiteral("WinPrinter"), QString()));
    ui->txtlines->setText(Base->GetSettingINI(section(), QStringLiteral("LinesPP"), QStringLiteral("70")));
    ui->Check1->setChecked(Val(Base->GetSettingINI(section(), QStringLiteral("Pin24"), QStringLiteral("0"))) != 0);
}

void frmsettings::TXTLINES_LOSTFOCUS()
{
    const ErrorTail tail(this);
    const double lines = Val(ui->txtlines->text());
    if (lines > mostLines || lines < 1)
        ui->txtlines->setText(QStringLiteral("70"));
}

void frmsettings::XPCMDBUTTON2_CLICK()
{
    const ErrorTail tail(this);
    const bool withPassword = passwordTyped();
    if (!savePassword())
        return;
    if (saveSettings()) {
        Unload();
        return;
    }
    QString why = QStringLiteral("the settings file cannot be written");
    if (withPassword)
        why += QStringLiteral("; the password was saved");
    Notify({FaultNumber::PathAccess, why, QStringLiteral("FBT"), Doing::Save});
}

bool frmsettings::passwordTyped() const
{
    return !ui->Text1->text().isEmpty() || !ui->Text2->text().isEmpty();
}

/// Shows why the password was not taken, and goes back to the field.
bool frmsettings::refusePassword(QLineEdit *field, const QString &why)
{
    MsgBox(this, why, Buttons::Ok, Icon::None, QStringLiteral("Login"));
    field->setFocus();
    field->selectAll();
    return false;
}

/// False when the password was not taken: nothing is saved then.
bool frmsettings::savePassword()
{
    if (!passwordTyped())
        return true;
    if (ui->Text1->text() != AdminPassword)
        return refusePassword(ui->Text1, QStringLiteral("Invalid Password, try again!"));
    const QString fault = PasswordFault(ui->Text2->text());
    if (!fault.isEmpty())
        return refusePassword(ui->Text2, fault);
    if (!StorePassword(ui->Text2->text())) {
        ui->Text2->setFocus(); // with what was typed
        return false;
    }
    for (QLineEdit *field : {ui->Text1, ui->Text2})
        field->clear(); // it is not changed again when the settings are tried once more
    return true;
}

/// False when one of them could not be written.
bool frmsettings::saveSettings()
{
    TXTLINES_LOSTFOCUS(); // a mnemonic saves without leaving the field
    const std::pair<QString, QString> settings[] = {
        {QStringLiteral("DosPrinter"), ui->cbodos->currentText()},
        {QStringLiteral("WinPrinter"), ui->cbowin->currentText()},
        {QStringLiteral("LinesPP"), NumberText(Val(ui->txtlines->text()))},
        {QStringLiteral("Pin24"), ui->Check1->isChecked() ? QStringLiteral("1") : QStringLiteral("0")}};
    return std::ranges::all_of(
        settings, [](const auto &setting) { return Base->SaveSettingINI(section(), setting.first, setting.second); });
}
