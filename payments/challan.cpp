#include "payments/challan.h"
#include "ui_challan.h"

#include "calc/interest.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/grid.h"
#include "controls/uiarray.h"
#include "payments/challanlist.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "platform/sqltext.h"
#include "platform/text.h"
#include "records/banks.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int numberField = 2;
constexpr int dateField = 3;
constexpr int secondCessField = 7;
constexpr int lastAmountField = 10;
constexpr int totalField = 11;
constexpr int chequeNoField = 12;
constexpr int chequeDateField = 13;
constexpr int bankNameField = 14;
constexpr int advanceTaxIndex = 0;   // in Combo1
constexpr int firstChequeOption = 2; // of optmop: "Debit to A/c", then "Cheque"

/// What an amount must stay below: from 16 digits on a number no longer holds each rupee.
constexpr double amountLimit = 1e15;

bool holdsRupees(double amount)
{
    return std::fabs(amount) < amountLimit;
}

const QString challans = QStringLiteral("challans");
const QString banks = QStringLiteral("banks");
using InterestSource::clientData;

/// Letter case and blanks around a stored text do not count, as they do not to the database.
bool isSame(const QString &stored, const QString &text)
{
    return stored.trimmed().compare(text, Qt::CaseInsensitive) == 0;
}

} // namespace

Challan::Challan(QWidget *parent)
    : Screen(QStringLiteral("Challan"), parent)
    , ui(std::make_unique<Ui::Challan>())
{
    ui->setupUi(this);
    txtfields = ControlArray<QLineEdit>(this, QStringLiteral("txtfields"));
    optq = ControlArray<QRadioButton>(this, QStringLiteral("optq"));
    optmop = ControlArray<QRadioButton>(this, QStringLiteral("optmop"));
    ui->Combo1->addItems(PaymentTypes());
    ui->famcalcadv->hide();
    ui->fampg->hide();
    m_list = new ChallanList(ui->vsf, hasSecondCess());
    connectButtons();
    connectEPay();
    connectFields();
    SETBUTTON(false);
}

Challan::~Challan() = default;

void Challan::connectButtons()
{
    const auto clicked = [this](QAbstractButton *button, void (Challan::*procedure)()) {
        connect(button, &QAbstractButton::clicked, this, procedure);
    };
    clicked(ui->cmdadd, &Challan::CMDADD_CLICK);
    clicked(ui->cmdmodify, &Challan::CMDMODIFY_CLICK);
    clicked(ui->cmddelete, &Challan::CMDDELETECLICK);
    clicked(ui->cmdupdate, &Challan::CMDUPDATE_CLICK);
    clicked(ui->cmdcancel, &Challan::CMDCANCEL_CLICK);
    clicked(ui->cmdimp, &Challan::CMDIMP_CLICK);
    clicked(ui->cmdprintwin, &Challan::CMDPRINTWIN);
    clicked(ui->cmdePay, &Challan::CMDEPAY_CLICK);
    clicked(ui->cmdbankm, &Challan::CMDBANKM_CLICK);
    clicked(ui->cmdcalcadv, &Challan::CMDCALCADV);
    clicked(ui->cmdback_0, &Challan::back);
    clicked(findChild<QAbstractButton *>(QStringLiteral("cmdback_1")), &Challan::back);
    connect(ui->famcalcadv, &InstalmentPanel::transferAsked, this, &Challan::CMDTRANS_CLICK);
    connect(ui->famcalcadv, &InstalmentPanel::statementAsked, this, &Challan::CMDINTCALREP_CLICK);
    connect(ui->famcalcadv, &InstalmentPanel::reading, this, &Screen::noteReading);
    connect(m_list, &ChallanList::moved, this, &Challan::LOADDATA);
}

void Challan::connectEPay()
{
    connect(ui->fampg, &EPayPanel::begun, this, [this] { ui->Frame1->hide(); });
    connect(ui->fampg, &EPayPanel::ended, this, [this] {
        ui->Frame1->show();
        ui->cmdePay->setFocus(Qt::OtherFocusReason);
    });
}

void Challan::connectFields()
{
    for (const int index : {dateField, chequeDateField})
        static_cast<MaskedDate *>(txtfields[index])->setConverter([](const QString &typed) {
            return Base->ConvertDate(typed);
        });
    connect(this, &Screen::left, this, [this](const QWidget *field) {
        for (const auto &[index, candidate] : txtfields) {
            if (candidate == field)
                TXTFIELDS_LOSTFOCUS(index);
        }
    });
    connect(ui->Combo1, &QComboBox::currentIndexChanged, this, &Challan::COMBO1_CLICK);
    for (const auto &[index, option] : optmop)
        connect(option, &QRadioButton::toggled, this, &Challan::OPTMOP_CLICK);
}

void Challan::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    showCaption();
    LOADPAYER();
    LOADBANKS();
    txtfields[secondCessField]->setEnabled(hasSecondCess());
    LOADGRID();
    LOADDATA();
    ui->cmdcalcadv->setVisible(hasSecondCess());
    if (hasSecondCess())
        ui->famcalcadv->LOADADVGRID();
}

void Challan::FORM_ACTIVATE()
{
    m_inHand.putBack();
}

bool Challan::FORM_UNLOAD()
{
    if (ui->fampg->isRunning()) {
        ui->fampg->cancel(); // the run still needs the screen
        return false;
    }
    return MsgBox(this, QStringLiteral("Do you want to exit?"), Buttons::YesNo, Icon::Question,
                  QStringLiteral("Confirmation")) == Reply::Yes;
}

bool Challan::FORM_KEYPRESS(int asciiKey)
{
    ErrorTail tail(this);
    if (asciiKey != escapeKey)
        return false;
    if (!ui->fampg->isHidden())
        ui->fampg->cancel();
    else if (!ui->famcalcadv->isHidden())
        closePanel();
    else if (isEditing())
        CMDCANCEL_CLICK();
    else
        Unload();
    return true;
}

void Challan::back()
{
    FORM_KEYPRESS(escapeKey);
}

bool Challan::isEditing() const
{
    return !ui->famact2->isHidden();
}

bool Challan::isEntering(const ClientYear &client) const
{
    return isEditing() && m_inHand.client == client;
}

void Challan::reload()
{
    ErrorTail tail(this, "LOADGRID");
    m_inHand.putBack();
    if (TakeClientYear(QString(m_inHand.client.code), m_inHand.client.year) && TakeEmployeesOfYear())
        m_inHand = InHand::now(); // another status has other rates
    if (isEditing())
        return; // what is being typed stays
    LOADPAYER();
    LOADBANKS();
    refreshGrid();
    LOADDATA();
}

/// The cess for secondary and higher education came with A.Y. 2008-09, and with it the instalments of the year's tax.
bool Challan::hasSecondCess() const
{
    return m_inHand.client.year >= firstYearWithSecondCess;
}

void Challan::showCaption()
{
    setWindowTitle(QStringLiteral("Challan") + Base->Cap +
                   (m_saveRefused ? QStringLiteral(" - could not be saved") : QString()));
}

// --- reading ---

void Challan::LOADPAYER()
{
    ErrorTail tail(this, "FORM_LOAD");
    const Reading<ClientRecord> client = ReadClient(Cnn, m_inHand.client.code);
    noteReading(clientData, !client.failed());
    m_payer = PayerFrom(*client);
    if (!m_payer.doi.isEmpty())
        tail([this] { m_payer.ClientDOI = DateOrFault(m_payer.doi); });
    txtfields[0]->setText(m_payer.pan);
    txtfields[1]->setText(m_payer.name);
}

/// After a failed reading the list stays as it was.
void Challan::LOADBANKS()
{
    ErrorTail tail(this);
    const RowsRead<Bank> rows = Banks(Cnn);
    noteReading(banks, !rows.failed());
    if (rows.failed())
        return;
    ui->cbobsrcode->clear();
    ui->cbobsrcode->addItem(QString(), 0);
    for (const Bank &bank : *rows)
        ui->cbobsrcode->addItem(QStringLiteral("%1 - %2, %3").arg(bank.branchCode, bank.name, bank.branch),
                                bank.number);
    m_list->setBanks(*rows);
}

void Challan::LOADGRID()
{
    ErrorTail tail(this);
    if (!couldRead(banks)) // they may be there by now
        LOADBANKS();
    const RowsRead<ChallanRecord> rows = Challans(Cnn, m_inHand.client);
    noteReading(challans, !rows.failed());
    m_list->fill(*rows);
}

// --- the fields ---

void Challan::LOADDATA()
{
    ErrorTail tail(this);
    CLEARDATA();
    const ChallanRecord *challan = m_list->current();
    ui->cmdmodify->setEnabled(challan != nullptr);
    ui->cmddelete->setEnabled(challan != nullptr);
    ui->cmdprintwin->setEnabled(challan != nullptr || !couldRead(challans)); // the list may be there by now
    if (challan != nullptr)
        showChallan(*challan);
}

bool Challan::showChallanOf(const ChallanRecord &wanted)
{
    m_list->select(wanted);
    LOADDATA();
    const ChallanRecord *current = m_list->current();
    return current != nullptr && *current == wanted;
}

void Challan::CLEARDATA()
{
    ErrorTail tail(this);
    ui->Frame3->show();
    optq[1]->setChecked(true);
    ui->Combo1->setCurrentIndex(-1);
    ui->cbobsrcode->setCurrentIndex(0);
    for (int index = numberField; index <= bankNameField; ++index)
        txtfields[index]->clear();
    if (!hasSecondCess())
        txtfields[secondCessField]->setText(QStringLiteral("N.A."));
    optmop[0]->setChecked(true);
    OPTMOP_CLICK();
}

void Challan::showChallan(const ChallanRecord &challan)
{
    if (const auto option = optq.find(challan.quarter); option != optq.end())
        option->second->setChecked(true);
    for (int type = 0; type < ui->Combo1->count(); ++type) {
        if (isSame(challan.payType, ui->Combo1->itemText(type)))
            ui->Combo1->setCurrentIndex(type);
    }
    txtfields[numberField]->setText(challan.challanNo);
    txtfields[dateField]->setText(challan.date);
    int field = firstAmountField;
    for (const double amount : {challan.ITAmt, challan.SCAmt, challan.ECAmt, challan.ECAmt1, challan.IntAmt,
                                challan.PenAmt, challan.OthAmt, challan.TotAmt})
        showAmount(field++, Round(amount));
    ui->cbobsrcode->setCurrentIndex(std::max(0, ui->cbobsrcode->findData(challan.bank)));
    for (const auto &[index, option] : optmop) {
        if (isSame(challan.payMode, option->text()))
            option->setChecked(true);
    }
    txtfields[chequeNoField]->setText(challan.chequeNo);
    txtfields[chequeDateField]->setText(challan.chequeDate);
    txtfields[bankNameField]->setText(challan.bankName);
    ui->Frame3->setVisible(ui->Combo1->currentIndex() == advanceTaxIndex);
}

/// The field of the second cess says "N.A." in the years that have none.
void Challan::showAmount(int index, double rupees)
{
    if (index == secondCessField && !hasSecondCess())
        return;
    txtfields[index]->setText(NumberText(rupees));
}

void Challan::showHeads(const HeadAmounts &heads, int count)
{
    for (int head = 0; head < count; ++head)
        showAmount(firstAmountField + head, heads.at(static_cast<std::size_t>(head)));
}

void Challan::TXTFIELDS_LOSTFOCUS(int index)
{
    ErrorTail tail(this);
    if (index == dateField || index == chequeDateField)
        static_cast<MaskedDate *>(txtfields[index])->convertNow();
    if (index < firstAmountField || index > lastAmountField)
        return;
    if (const double amount = Val(txtfields[index]->text()); holdsRupees(amount))
        showAmount(index, Round(amount));
    double total = 0;
    for (int field = firstAmountField; field <= lastAmountField; ++field)
        total += Val(txtfields[field]->text());
    showAmount(totalField, Round(total));
}

void Challan::COMBO1_CLICK()
{
    const NoTail tail;
    if (isEditing())
        ui->Frame3->setVisible(ui->Combo1->currentIndex() == advanceTaxIndex);
}

/// What was typed stays when its fields hide: it is saved all the same.
void Challan::OPTMOP_CLICK()
{
    const NoTail tail;
    showCheque(optmop[firstChequeOption]->isChecked() || optmop[firstChequeOption + 1]->isChecked());
}

void Challan::showCheque(bool visible)
{
    for (QWidget *label : {ui->lblchq, ui->lblchq1, ui->lblchq2})
        label->setVisible(visible);
    for (const int index : {chequeNoField, chequeDateField, bankNameField})
        txtfields[index]->setVisible(visible);
}

/// A text that no statement can hold is shown when it is why a save was refused: one typed for a cheque stays when the
/// mode of payment hides its field.
void Challan::showRefusedText()
{
    for (const int index : {numberField, chequeNoField, chequeDateField, bankNameField}) {
        if (Sql("'", txtfields[index]->text(), "'").fault().isEmpty())
            continue;
        if (index != numberField)
            showCheque(true);
        txtfields[index]->setFocus(Qt::OtherFocusReason);
        return;
    }
}

int Challan::quarter() const
{
    if (ui->Combo1->currentIndex() != advanceTaxIndex)
        return 0;
    const auto chosen =
        std::find_if(optq.begin(), optq.end(), [](const auto &entry) { return entry.second->isChecked(); });
    return chosen == optq.end() ? 0 : chosen->first;
}

QString Challan::payMode() const
{
    for (const auto &[index, option] : optmop) {
        if (index != 0 && option->isChecked())
            return option->text();
    }
    return {};
}

/// As long as there is no list of banks to choose from, the challan keeps the one it has.
int Challan::bankNumber() const
{
    if (ui->cbobsrcode->count() > 0)
        return ui->cbobsrcode->currentData().toInt();
    const ChallanRecord *before = ChallanAddMode ? nullptr : m_list->current();
    return before != nullptr ? before->bank : 0;
}

ChallanRecord Challan::entry() const
{
    const auto text = [this](int index) { return txtfields.at(index)->text(); };
    const auto amount = [this](int index) { return Val(txtfields.at(index)->text()); };
    ChallanRecord challan;
    challan.quarter = quarter();
    challan.payType = ui->Combo1->currentText();
    challan.date = text(dateField);
    challan.ITAmt = amount(firstAmountField);
    challan.SCAmt = amount(firstAmountField + SurchargeHead);
    challan.ECAmt = amount(firstAmountField + EduCessHead);
    challan.ECAmt1 = amount(secondCessField);
    challan.IntAmt = amount(firstAmountField + InterestHead);
    challan.PenAmt = amount(lastAmountField - 1);
    challan.OthAmt = amount(lastAmountField);
    challan.TotAmt = amount(totalField);
    challan.payMode = payMode();
    challan.chequeNo = text(chequeNoField);
    challan.chequeDate = text(chequeDateField);
    challan.bankName = text(bankNameField);
    challan.challanNo = text(numberField);
    challan.bank = bankNumber();
    return challan;
}

/// What the challan that is being changed pays itself; nothing for a new one.
HeadAmounts Challan::ownHeads() const
{
    const ChallanRecord *own = ChallanAddMode ? nullptr : m_list->current();
    return own == nullptr ? HeadAmounts{} : HeadsOf(*own);
}

// --- browse and edit ---

/// What comes into view comes first: the focus then never falls on a control elsewhere.
void Challan::SETBUTTON(bool flag)
{
    const QList<QWidget *> browsing{ui->famact1, ui->vsf, ui->cmdprintwin, ui->cmdePay, ui->cmdback_0};
    ui->Frame2->setEnabled(flag);
    for (QWidget *widget : flag ? QList<QWidget *>{ui->famact2} : browsing)
        widget->show();
    (flag ? static_cast<QWidget *>(ui->Combo1) : ui->vsf)->setFocus(Qt::OtherFocusReason);
    for (QWidget *widget : flag ? browsing : QList<QWidget *>{ui->famact2})
        widget->hide();
    m_saveRefused = false;
    showCaption();
}

void Challan::CMDADD_CLICK()
{
    ErrorTail tail(this);
    ChallanAddMode = true;
    CLEARDATA();
    txtfields[dateField]->setText(Base->ConvertDate(DateText(Today())));
    SETBUTTON(true);
}

void Challan::CMDMODIFY_CLICK()
{
    ErrorTail tail(this);
    if (m_list->current() == nullptr)
        return;
    ChallanAddMode = false;
    SETBUTTON(true);
}

void Challan::CMDCANCEL_CLICK()
{
    ErrorTail tail(this);
    const bool refused = m_saveRefused;
    SETBUTTON(false);
    if (refused)
        refreshGrid();
    LOADDATA();
}

/// The database may hold other rows than the list, which is then why a save was refused.
void Challan::refreshGrid()
{
    const ChallanRecord *before = m_list->current();
    const ChallanRecord at = before == nullptr ? ChallanRecord() : *before;
    LOADGRID();
    m_list->select(at);
}

void Challan::CMDDELETECLICK()
{
    ErrorTail tail(this);
    const ChallanRecord *challan = m_list->current();
    if (challan == nullptr || MsgBox(this, QStringLiteral("Do you want to delete this record?"), Buttons::YesNo,
                                     Icon::Question, QStringLiteral("Confirmation")) != Reply::Yes)
        return;
    if (!DeleteChallan(Cnn, m_inHand.client, *challan))
        return; // it stays, and stays current
    LOADGRID();
    LOADDATA();
    if (m_list->current() == nullptr)
        ui->cmdadd->setFocus(Qt::OtherFocusReason);
}

/// A button pressed by its key saves while a field is still open.
void Challan::leaveField()
{
    for (const auto &[index, field] : txtfields) {
        if (field == currentField())
            TXTFIELDS_LOSTFOCUS(index);
    }
}

void Challan::refuse(const QString &message, QWidget *field)
{
    MsgBox(this, message, Buttons::Ok, Icon::Information);
    field->setFocus(Qt::OtherFocusReason);
}

bool Challan::checkEntry()
{
    if (ui->Combo1->currentIndex() < 0) {
        refuse(QStringLiteral("Please Select Type of Payment."), ui->Combo1);
        ui->Combo1->showPopup();
        return false;
    }
    static_cast<MaskedDate *>(txtfields[dateField])->convertNow(); // one stored as what is no date counts as none
    if (txtfields[dateField]->text().isEmpty()) {
        refuse(QStringLiteral("Please Specity Date of Challan."), txtfields[dateField]);
        return false;
    }
    return checkDate();
}

/// Advance tax is paid within the financial year, all else from the first day of the assessment year on.
bool Challan::checkDate()
{
    const int year = m_inHand.client.year;
    const QDate date = DateFromText(txtfields[dateField]->text());
    const bool advance = ui->Combo1->currentIndex() == advanceTaxIndex;
    const QDate first(advance ? year - 1 : year, 4, 1);
    if (date >= first && (!advance || date <= YearEnd(year)))
        return true;
    refuse(advance ? QStringLiteral("Date should be between 01/04/%1 and 31/03/%2.").arg(year - 1).arg(year)
                   : QStringLiteral("Date should be on or after 01/04/%1.").arg(year),
           txtfields[dateField]);
    return false;
}

/// An amount that would lose digits is not stored. It stays in its field as it was typed.
bool Challan::checkAmounts()
{
    for (int index = firstAmountField; index <= totalField; ++index) {
        if (holdsRupees(Val(txtfields[index]->text())))
            continue;
        ErrorTail tail(this, "CMDUPDATE_CLICK");
        tail.take({FaultNumber::Overflow, QStringLiteral("an amount has more than 15 digits"), QStringLiteral("FBT"),
                   Doing::Save});
        m_saveRefused = true;
        showCaption();
        txtfields[index == totalField ? firstAmountField : index]->setFocus(Qt::OtherFocusReason);
        return false;
    }
    return true;
}

void Challan::CMDUPDATE_CLICK()
{
    ErrorTail tail(this);
    leaveField();
    if (!checkEntry() || !checkAmounts())
        return;
    ChallanRecord challan = entry();
    const std::optional<int> srNo = ChallanAddMode ? AddChallan(Cnn, m_inHand.client, challan)
                                                   : ChangeChallan(Cnn, m_inHand.client, *m_list->current(), challan);
    m_saveRefused = !srNo;
    showCaption();
    if (m_saveRefused) {
        showRefusedText();
        return;
    }
    LOADGRID();
    challan.srNo = *srNo;
    m_list->select(challan);
    LOADDATA();
    SETBUTTON(false);
}

void Challan::CMDBANKM_CLICK()
{
    ErrorTail tail(this);
    const int chosen = bankNumber();
    Base->ShowBankMas();
    LOADBANKS();
    ui->cbobsrcode->setCurrentIndex(std::max(0, ui->cbobsrcode->findData(chosen)));
}

// --- on paper ---

ChallanForm Challan::form() const
{
    const auto text = [this](int index) { return txtfields.at(index)->text(); };
    ChallanForm form;
    form.year = m_inHand.client.year;
    form.payer = m_payer;
    form.typeIndex = ui->Combo1->currentIndex();
    form.type = ui->Combo1->currentText();
    form.date = text(dateField);
    for (int index = firstAmountField; index <= totalField; ++index)
        form.amounts.at(static_cast<std::size_t>(index - firstAmountField)) = text(index);
    for (const auto &[index, option] : optmop) {
        if (option->isChecked())
            form.mode = index;
    }
    form.chequeNo = text(chequeNoField);
    form.chequeDate = text(chequeDateField);
    form.bankName = text(bankNameField);
    return form;
}

void Challan::CMDPRINTWIN()
{
    ErrorTail tail(this);
    if (!couldRead(clientData))
        LOADPAYER();
    if (!couldRead(challans)) {
        refreshGrid();
        LOADDATA();
    }
    if (!couldRead(clientData) || !couldRead(challans) || m_list->current() == nullptr)
        return;
    tail([] { Reporter->newreportnew(Base->AppPath + QStringLiteral("/Data/FBTChallan.doc")); });
    Reporter->title = QStringLiteral("Challan");
    for (const auto &mark : ChallanMarks(form(), [](double rupees) { return Base->ConvertToWord(rupees); }))
        tail([&] { Reporter->SetText(mark.first, mark.second); });
    Reporter->ShowReport();
}

void Challan::CMDEPAY_CLICK()
{
    if (!couldRead(clientData))
        LOADPAYER();
    if (couldRead(clientData))
        ui->fampg->DOCUMENTCOMPLETE(ChallanValues(m_payer, m_inHand.client.year, ui->Combo1->currentIndex()));
}
