#include "suite/clientinfo/frmbankdet.h"

#include "host/baseobject.h"
#include "ui_frmbankdet.h"

#include <QLineEdit>

namespace {

constexpr int typeLength = 50;

QString yesNo(bool yes)
{
    return yes ? QStringLiteral("Yes") : QString();
}

RowList<BankAccount>::Columns columns()
{
    return {
        ListColumn<BankAccount>{.caption = "S. No."},
        ListColumn<BankAccount>{
            .caption = "Bank", .text = [](const BankAccount &a) { return a.bank; }, .stretch = true},
        ListColumn<BankAccount>{.caption = "Address", .text = [](const BankAccount &a) { return a.address; }},
        ListColumn<BankAccount>{.caption = "MICR Code", .text = [](const BankAccount &a) { return a.micr; }},
        ListColumn<BankAccount>{.caption = "Type", .text = [](const BankAccount &a) { return a.type; }},
        ListColumn<BankAccount>{.caption = "Account No.", .text = [](const BankAccount &a) { return a.account; }},
        ListColumn<BankAccount>{.caption = "ECS", .text = [](const BankAccount &a) { return yesNo(a.ecs); }},
        ListColumn<BankAccount>{.caption = "Default", .text = [](const BankAccount &a) { return yesNo(a.isDefault); }}};
}

} // namespace

frmbankdet::frmbankdet(BaseObject &base, QWidget *parent)
    : Screen(QStringLiteral("frmbankdet"), parent)
    , m_base(base)
    , m_client{base.code, base.TYear}
    , ui(std::make_unique<Ui::frmbankdet>())
{
    ui->setupUi(this);
    setWindowTitle(QStringLiteral("Bank Accounts") + base.Cap);
    ui->cbotype->addItems({QStringLiteral("SAVINGS"), QStringLiteral("CURRENT"), QStringLiteral("CASH CREDIT")});
    ui->cbotype->lineEdit()->setMaxLength(typeLength);
    m_list = new RowList<BankAccount>(this, ListEdit::ofList(*ui, ui->txtbank), columns(),
                                      {.what = tr("bank accounts"),
                                       .read = [this] { return BankAccounts(m_base.CnnObj, m_client).ifRead(); },
                                       .key = [](const BankAccount &account) { return account.number; },
                                       .CLEARDATA = [this] { CLEARDATA(); },
                                       .LOADDATA = [this](const BankAccount &account) { LOADDATA(account); },
                                       .CMDUPDATE_CLICK = [this] { CMDUPDATE_CLICK(); },
                                       .CMDDELETE_CLICK = [this](const BankAccount &a) { CMDDELETE_CLICK(a); }});
}

frmbankdet::~frmbankdet() = default;

void frmbankdet::FORM_LOAD()
{
    m_base.Resize_For_Resolution(this);
    m_list->FORM_LOAD();
    ui->vsf->fitColumns();
}

bool frmbankdet::FORM_UNLOAD()
{
    return !m_list->editing() ||
           MsgBox(this, QStringLiteral("Do you want to Cancel the Entry?"), Buttons::YesNo) == Reply::Yes;
}

bool frmbankdet::FORM_KEYPRESS(int asciiKey)
{
    return (asciiKey == escapeKey && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

void frmbankdet::CLEARDATA()
{
    BankAccount first;
    first.isDefault = couldRead() && ui->vsf->Rows() == ui->vsf->FixedRows(); // the first account is the default one
    LOADDATA(first);
}

void frmbankdet::LOADDATA(const BankAccount &account)
{
    ui->txtbank->setText(account.bank);
    ui->txtaddress->setText(account.address);
    ui->txtmicr->setText(account.micr);
    ui->cbotype->setCurrentText(account.type);
    ui->txtaccount->setText(account.account);
    ui->chkecs->setChecked(account.ecs);
    ui->chkdefault->setChecked(account.isDefault);
}

BankAccount frmbankdet::typed() const
{
    return {m_list->editedKey(),           ui->txtbank->text().trimmed(),        ui->txtaddress->text().trimmed(),
            ui->txtmicr->text().trimmed(), ui->cbotype->currentText().trimmed(), ui->txtaccount->text().trimmed(),
            ui->chkecs->isChecked(),       ui->chkdefault->isChecked()};
}

bool frmbankdet::complete()
{
    const struct
    {
        QLineEdit *field;
        QString message;
    } needed[] = {{ui->txtbank, QStringLiteral("Please specify Name of the Bank.")},
                  {ui->txtaccount, QStringLiteral("Please specify Account No.")}};
    for (const auto &one : needed) {
        if (!one.field->text().trimmed().isEmpty())
            continue;
        MsgBox(this, one.message, Buttons::Ok, Icon::Exclamation);
        one.field->setFocus();
        return false;
    }
    return true;
}

void frmbankdet::CMDUPDATE_CLICK()
{
    if (!complete())
        return;
    if (const auto number = SaveBankAccount(m_base.CnnObj, m_client, typed(), m_list->Adding()))
        m_list->saved(*number);
    else
        m_list->notSaved();
}

void frmbankdet::CMDDELETE_CLICK(const BankAccount &account)
{
    constexpr int no = 2;
    if (MsgBox(this, QStringLiteral("Do you want to Delete Selected Item?"), Buttons::YesNo, Icon::Question, {}, no) !=
            Reply::Yes ||
        !DeleteBankAccount(m_base.CnnObj, m_client, account.number))
        return;
    m_list->deleted();
    m_list->reload(); // another account may be the default one now
}
