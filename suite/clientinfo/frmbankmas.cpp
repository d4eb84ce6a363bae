#include "suite/clientinfo/frmbankmas.h"

#include "controls/listedit.h"
#include "host/baseobject.h"
#include "platform/recordset.h"
#include "ui_frmbankmas.h"

namespace {

enum Column { Number, Name, Branch, BranchCode, BankNo };

constexpr int escapeKey = 27;

} // namespace

frmbankmas::frmbankmas(BaseObject &base, QWidget *parent)
    : Screen(QStringLiteral("frmbankmas"), parent)
    , m_base(base)
    , ui(std::make_unique<Ui::frmbankmas>())
{
    ui->setupUi(this);
    ui->vsf->setCaptions({QStringLiteral("S. No."), QStringLiteral("Name of the Bank"), QStringLiteral("Branch"),
                          QStringLiteral("BSR Code"), QString()});
    ui->vsf->setColHidden(BankNo, true);
    ui->vsf->setStretchCol(Name);
    const ListEdit::Controls controls{
        ui->vsf,       ui->Frame2,  ui->txtname, ui->cmdadd, ui->cmdmodify, ui->cmddelete, ui->cmdupdate,
        ui->cmdcancel, ui->cmdback, {},          {}};
    m_list = new ListEdit(this, controls,
                          {[this] { ADDROWS(); }, [this] { CLEARDATA(); }, [this](int row) { LOADDATA(row); },
                           [this] { CMDUPDATE_CLICK(); }, [this] { CMDDELETE_CLICK(); }});
}

frmbankmas::~frmbankmas() = default;

void frmbankmas::FORM_LOAD()
{
    m_base.Resize_For_Resolution(this);
    m_list->FORM_LOAD();
    ui->vsf->fitColumns();
}

bool frmbankmas::FORM_KEYPRESS(int asciiKey)
{
    return (asciiKey == escapeKey && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

void frmbankmas::ADDROWS()
{
    Recordset rows;
    rows.Open(QStringLiteral("Select * from bank_master order by bank_name,branch"), m_base.CnnObj);
    for (; !rows.Eof(); rows.MoveNext())
        ui->vsf->AddItem({QString(), rows.Fields(u"bank_name").text(), rows.Fields(u"branch").text(),
                          rows.Fields(u"branch_code").text(), rows.Fields(u"bank_code_no").text()});
}

void frmbankmas::CLEARDATA()
{
    for (QLineEdit *field : {ui->txtname, ui->txtbranch, ui->txtcode})
        field->clear();
}

void frmbankmas::LOADDATA(int row)
{
    ui->txtname->setText(ui->vsf->TextMatrix(row, Name));
    ui->txtbranch->setText(ui->vsf->TextMatrix(row, Branch));
    ui->txtcode->setText(ui->vsf->TextMatrix(row, BranchCode));
}

int frmbankmas::currentNumber() const
{
    return ui->vsf->hasDataRow() ? ui->vsf->TextMatrix(ui->vsf->Row(), BankNo).toInt() : 0;
}

void frmbankmas::CMDUPDATE_CLICK()
{
    const Bank bank{m_list->Adding() ? 0 : currentNumber(), ui->txtname->text().trimmed(),
                    ui->txtbranch->text().trimmed(), ui->txtcode->text().trimmed()};
    if (bank.name.isEmpty()) {
        MsgBox(this, QStringLiteral("Please specify Name of the Bank."), Buttons::Ok, Icon::Exclamation);
        ui->txtname->setFocus();
        return;
    }
    const int number = SaveBank(m_base.CnnObj, bank);
    if (number == 0)
        MsgBox(this, QStringLiteral("The bank could not be saved."), Buttons::Ok, Icon::Exclamation);
    else
        m_list->saved(QString::number(number), BankNo);
}

void frmbankmas::CMDDELETE_CLICK()
{
    const int number = currentNumber();
    if (number == 0)
        return;
    if (BankIsUsed(m_base.CnnObj, number)) {
        MsgBox(this, QStringLiteral("A challan was paid at this bank. It cannot be deleted."), Buttons::Ok,
               Icon::Exclamation);
        return;
    }
    if (MsgBox(this, QStringLiteral("Do you want to Delete Selected Item?"), Buttons::YesNo, Icon::Question, {}, 2) ==
            Reply::Yes &&
        DeleteBank(m_base.CnnObj, number))
        m_list->deleted();
}
