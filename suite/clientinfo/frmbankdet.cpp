#include "suite/clientinfo/frmbankdet.h"

#include "controls/listedit.h"
#include "host/baseobject.h"
#include "platform/recordset.h"
#include "ui_frmbankdet.h"

#include <QLineEdit>

namespace {

enum Column { Number, BankName, Address, Micr, Type, Account, Ecs, Default, SrNo, Columns };

constexpr int escapeKey = 27;
constexpr int typeLength = 50;

QString yesNo(bool yes)
{
    return yes ? QStringLiteral("Yes") : QString();
}

} // namespace

frmbankdet::frmbankdet(BaseObject &base, QWidget *parent)
    : Screen(QStringLiteral("frmbankdet"), parent)
    , m_base(base)
    , ui(std::make_unique<Ui::frmbankdet>())
{
    ui->setupUi(this);
    setWindowTitle(QStringLiteral("Bank Accounts") + base.Cap);
    ui->cbotype->addItems({QStringLiteral("SAVINGS"), QStringLiteral("CURRENT"), QStringLiteral("CASH CREDIT")});
    ui->cbotype->lineEdit()->setMaxLength(typeLength);
    ui->vsf->setCaptions({QStringLiteral("S. No."), QStringLiteral("Bank"), QStringLiteral("Address"),
                          QStringLiteral("MICR Code"), QStringLiteral("Type"), QStringLiteral("Account No."),
                          QStringLiteral("ECS"), QStringLiteral("Default"), QString()});
    ui->vsf->setColHidden(SrNo, true);
    ui->vsf->setStretchCol(BankName);
    const ListEdit::Controls controls{
        ui->vsf,       ui->Frame2,  ui->txtbank, ui->cmdadd, ui->cmdmodify, ui->cmddelete, ui->cmdupdate,
        ui->cmdcancel, ui->cmdback, {},          {}};
    m_list = new ListEdit(this, controls,
                          {[this] { ADDROWS(); }, [this] { CLEARDATA(); }, [this](int row) { LOADDATA(row); },
                           [this] { CMDUPDATE_CLICK(); }, [this] { CMDDELETE_CLICK(); }});
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

void frmbankdet::ADDROWS()
{
    Recordset rows;
    rows.Open(Sql("Select * from FBT_BankDet Where Code_No=", Quoted(m_base.code), " and Yr=", m_base.TYear,
                  " order by SrNo"),
              m_base.CnnObj);
    for (; !rows.Eof(); rows.MoveNext()) {
        ui->vsf->AddItem({QString(), rows.Fields(u"BankNm").text(), rows.Fields(u"BankAdd").text(),
                          rows.Fields(u"MICR").text(), rows.Fields(u"AcTyp").text(), rows.Fields(u"AcNo").text(),
                          yesNo(rows.Fields(u"ECS").num() != 0),
                          yesNo(rows.Fields(u"DefBank").text().compare(QLatin1String("Y"), Qt::CaseInsensitive) == 0),
                          rows.Fields(u"SrNo").text()});
    }
}

void frmbankdet::CLEARDATA()
{
    for (QLineEdit *field : {ui->txtbank, ui->txtaddress, ui->txtmicr, ui->txtaccount})
        field->clear();
    ui->cbotype->setCurrentText(QString());
    ui->chkecs->setChecked(false);
    ui->chkdefault->setChecked(ui->vsf->Rows() == ui->vsf->FixedRows()); // the first account is the default one
}

void frmbankdet::LOADDATA(int row)
{
    ui->txtbank->setText(ui->vsf->TextMatrix(row, BankName));
    ui->txtaddress->setText(ui->vsf->TextMatrix(row, Address));
    ui->txtmicr->setText(ui->vsf->TextMatrix(row, Micr));
    ui->cbotype->setCurrentText(ui->vsf->TextMatrix(row, Type));
    ui->txtaccount->setText(ui->vsf->TextMatrix(row, Account));
    ui->chkecs->setChecked(!ui->vsf->TextMatrix(row, Ecs).isEmpty());
    ui->chkdefault->setChecked(!ui->vsf->TextMatrix(row, Default).isEmpty());
}

int frmbankdet::currentNumber() const
{
    return ui->vsf->hasDataRow() ? ui->vsf->TextMatrix(ui->vsf->Row(), SrNo).toInt() : 0;
}

BankAccount frmbankdet::typed() const
{
    return {m_list->Adding() ? 0 : currentNumber(),
            ui->txtbank->text().trimmed(),
            ui->txtaddress->text().trimmed(),
            ui->txtmicr->text().trimmed(),
            ui->cbotype->currentText().trimmed(),
            ui->txtaccount->text().trimmed(),
            ui->chkecs->isChecked(),
            ui->chkdefault->isChecked()};
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
    const int number = SaveBankAccount(m_base.CnnObj, m_base.code, m_base.TYear, typed());
    if (number == 0)
        MsgBox(this, QStringLiteral("The account could not be saved."), Buttons::Ok, Icon::Exclamation);
    else
        m_list->saved(QString::number(number), SrNo);
}

void frmbankdet::CMDDELETE_CLICK()
{
    const int number = currentNumber();
    if (number == 0 || MsgBox(this, QStringLiteral("Do you want to Delete Selected Item?"), Buttons::YesNo,
                              Icon::Question, {}, 2) != Reply::Yes)
        return;
    if (!DeleteBankAccount(m_base.CnnObj, m_base.code, m_base.TYear, number))
        return;
    m_list->deleted();
    reload(); // another account may be the default one now
}

void frmbankdet::reload()
{
    const int current = currentNumber();
    m_list->LOADGRID();
    ui->vsf->setRow(ui->vsf->FindRow(QString::number(current), ui->vsf->FixedRows(), SrNo));
    m_list->LOADDATA();
}
