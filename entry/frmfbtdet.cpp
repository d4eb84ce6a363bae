#include "entry/frmfbtdet.h"
#include "ui_frmfbtdet.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/matchlist.h"
#include "controls/uiarray.h"
#include "entry/addinfo.h"
#include "entry/amountfield.h"
#include "entry/consolidated.h"
#include "entry/expenseentry.h"
#include "entry/expenselists.h"
#include "entry/frmannualfbt.h"
#include "entry/natures.h"
#include "payments/challan.h"
#include "platform/text.h"
#include "records/change.h"
#include "reports/frmfbtrep.h"
#include "returns/frmretfrm.h"

#include <QMainWindow>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int headColumn = 1;
constexpr int expenseColumn = 2;
constexpr int rateColumn = 3;
constexpr int valueColumn = 5;

// What the figures are made of.
const QString additionalInformation = QStringLiteral("additional information");
const QString ownExpenses = QStringLiteral("expenses");
const QString consolidatedExpenses = QStringLiteral("consolidated expenses");
const QString salaries = QStringLiteral("salaries");

double valueOf(const Expense &row)
{
    return BENEFITVALUE(row.rate, row.amount);
}

/// As wide as there is room beside the figures on a screen 1024 wide.
RowList<Expense>::Columns listColumns()
{
    using Column = ListColumn<Expense>;
    const QString money = QStringLiteral("###0.00");
    return {
        Column{.caption = "S. No.", .width = 44},
        Column{
            .caption = "Head of Expenses", .text = [](const Expense &e) { return HeadText(e.headId); }, .width = 150},
        Column{.caption = "Nature of Expenses",
               .text = [](const Expense &e) { return QString::number(e.expId); },
               .width = 120,
               .stretch = true},
        Column{
            .caption = "Rate", .text = [](const Expense &e) { return NumberText(e.rate); }, .width = 50, .right = true},
        Column{.caption = "Expenses Amount",
               .text = [](const Expense &e) { return NumberText(e.amount); },
               .width = 100,
               .format = money},
        Column{.caption = "Value of Fringe Benefit",
               .text = [](const Expense &e) { return NumberText(valueOf(e)); },
               .width = 110,
               .format = money},
        Column{.text = [](const Expense &e) { return QString::number(e.srNo); }, .hidden = true}};
}

/// Position of a nature among the client's.
std::size_t positionOf(int natId, const std::vector<Nature> &natures)
{
    const auto found =
        std::find_if(natures.begin(), natures.end(), [natId](const Nature &nature) { return nature.srNo == natId; });
    return static_cast<std::size_t>(found - natures.begin());
}

} // namespace

frmfbtdet::frmfbtdet(QWidget *parent)
    : Screen(QStringLiteral("frmfbtdet"), parent)
    , ui(std::make_unique<Ui::frmfbtdet>())
{
    ui->setupUi(this);
    txtcalcn = ControlArray<QLineEdit>(this, QStringLiteral("txtcalcn"));
    ui->famcon->hide();
    auto *vsfl = new MatchList(this);
    vsfl->setObjectName(QStringLiteral("vsfl"));
    setUpList();
    m_entry = new ExpenseEntry(this, {ui->txtdedflds_0, ui->txtdedflds_1, ui->txtdedflds_2, vsfl});
    WatchAmount(this, ui->txtdedflds_2);
    connectButtons();
}

frmfbtdet::~frmfbtdet() = default;

void frmfbtdet::setUpList()
{
    m_list = new RowList<Expense>(
        this, ListEdit::ofEntries(*ui, {ui->famselect, ui->fambuttons}), listColumns(),
        {.what = ownExpenses,
         .read = [this] { return readRows(); },
         .key = [](const Expense &row) { return row.srNo; },
         .CLEARDATA = [this] { clearFields(); },
         .LOADDATA = [this](const Expense &row) { showRow(row); },
         .CMDUPDATE_CLICK = [this] { CMDUPDATEDED_CLICK(); },
         .CMDDELETE_CLICK = [this](const Expense &row) { CMDDELETEDED_CLICK(row); },
         .mayAdd = [this] { return NatureChosen(this, ui->cbonature); },
         .mayModify = [this](const Expense &row) { return mayModify(row); },
         .colour =
             [](const Expense &row) { return row.srNo == shareSrNo ? std::optional(QColor(Qt::blue)) : std::nullopt; },
         .LOADGRID = [this] { LOADGRIDDED(); }});
}

void frmfbtdet::connectButtons()
{
    const auto clicked = [this](QAbstractButton *button, void (frmfbtdet::*procedure)()) {
        connect(button, &QAbstractButton::clicked, this, procedure);
    };
    clicked(ui->cmdimp, &frmfbtdet::CMDIMP_CLICK);
    clicked(ui->cmdaddinfo, &frmfbtdet::CMDADDINFO_CLICK);
    clicked(ui->cmdconexp, &frmfbtdet::CMDCONEXP_CLICK);
    clicked(ui->cmdefl, &frmfbtdet::CMDEFL_CLICK);
    connect(ui->cmdret, &QAbstractButton::clicked, this, [this] { showReturn(&frmretfrm::LOADPRNGRID); });
    connect(ui->cmdchallan, &QAbstractButton::clicked, this, [] { openOnce<Challan>(MdiForm); });
    connect(ui->Command2, &QAbstractButton::clicked, this, [] { openOnce<frmfbtrep>(MdiForm); });
    connect(ui->famcon, &ConsolidatedPanel::computed, this, &frmfbtdet::showConsolidatedFigures);
    connect(ui->cboquarter, &QComboBox::currentIndexChanged, this, &frmfbtdet::CBOQUARTER_CLICK);
    connect(ui->cbonature, &QComboBox::currentIndexChanged, this, &frmfbtdet::CBONATURE_CLICK);
}

void frmfbtdet::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    setWindowTitle(QStringLiteral("FBT Details") + Base->Cap);
    m_inHand = InHand::now();
    m_entry->setYear(client().year);
    showRates();
    takeAddInfo();
    LOADNATURES();
    GETITEMS(ui->vsf2, client().year);
    ui->cmdconexp->setEnabled(false);
    // The first of them gets selected, which fills the list.
    ui->cboquarter->addItems({QStringLiteral("Ist   - April - June"), QStringLiteral("IInd - July - September"),
                              QStringLiteral("IIIrd - October - December"), QStringLiteral("IVth - January - March")});
}

void frmfbtdet::FORM_ACTIVATE()
{
    m_inHand.putBack();
}

/// The employees belong to what is in hand from here on.
void frmfbtdet::takeAddInfo()
{
    noteReading(additionalInformation, LOADADDINFO(client()));
    m_inHand = InHand::now();
}

void frmfbtdet::showRates()
{
    ui->lbltax->setText(WithRate(QStringLiteral("Fringe Benefit Tax"), FBTRate[1]));
    ui->lblsur->setText(WithRate(QStringLiteral("Surcharge"), FBTRate[2]));
    ui->lbleduc->setText(WithRate(QStringLiteral("Education Cess"), FBTRate[3]));
    ui->lblhec->setText(WithRate(QStringLiteral("Sec. && Higher E.C."), FBTRate[4]));
    const bool secondCess = client().year >= firstYearWithSecondCess;
    for (QWidget *widget : {static_cast<QWidget *>(ui->lblhec), static_cast<QWidget *>(ui->txtcalcn_6)}) {
        widget->setVisible(secondCess);
        widget->setEnabled(secondCess);
    }
}

void frmfbtdet::LOADNATURES()
{
    ErrorTail tail(this);
    const RowsRead<Nature> natures = ClientNatures(Cnn, client().code);
    noteReading(businessNatures, !natures.failed());
    m_natures = *natures;
    // The list follows once a quarter is selected.
    const QSignalBlocker blocker(ui->cbonature);
    FillNatures(ui->cbonature, m_natures);
    m_nature = ui->cbonature->currentData().toInt();
    ui->famcon->setNatures(client(), m_natures);
}

void frmfbtdet::LOADSALDET()
{
    noteReading(salaries, ui->famcon->LOADSALDET(m_quarter));
}

bool frmfbtdet::sharesExpenses() const
{
    return m_natures.size() > 1;
}

// --- selection ---

void frmfbtdet::CBOQUARTER_CLICK()
{
    ErrorTail tail(this);
    const int quarter = ui->cboquarter->currentIndex() + 1;
    if (quarter == m_quarter)
        return;
    m_quarter = quarter;
    if (sharesExpenses())
        LOADSALDET();
    LOADGRIDDED();
    SETBUTTONDED(true);
    LOADDATADED();
}

void frmfbtdet::CBONATURE_CLICK()
{
    ErrorTail tail(this);
    const int nature = ui->cbonature->currentData().toInt();
    if (nature == m_nature)
        return;
    m_nature = nature;
    ui->cmdconexp->setEnabled(nature == consolidatedNature);
    LOADGRIDDED();
    SETBUTTONDED(true);
    LOADDATADED();
}

void frmfbtdet::SETBUTTONDED(bool browse)
{
    ui->cmdimp->setText(m_quarter == 1 ? QStringLiteral("Annual &Input") : QStringLiteral("&Import from Last Quarter"));
    m_list->SETBUTTON(browse);
}

// --- the list and its figures ---

void frmfbtdet::LOADGRIDDED()
{
    ErrorTail tail(this);
    readAgain();
    clearFigures();
    for (const int col : {rateColumn, valueColumn})
        ui->vsf2->setColHidden(col, m_nature == consolidatedNature);
    m_list->LOADGRID();
    markFigures(tail([this] { showFigures(); }));
}

/// What could not be read when the screen opened may be there by now.
void frmfbtdet::readAgain()
{
    if (!couldRead(itemTexts))
        GETITEMS(ui->vsf2, client().year);
    if (!couldRead(additionalInformation)) {
        m_inHand.putBack();
        takeAddInfo();
    }
    if (couldRead(businessNatures))
        return;
    LOADNATURES();
    ui->cmdconexp->setEnabled(m_nature == consolidatedNature);
    if (sharesExpenses())
        LOADSALDET();
}

/// Says so where the figures lack what could not be read.
/// @param computed false when the computation itself faulted
void frmfbtdet::markFigures(bool computed)
{
    const QString sources[] = {additionalInformation, businessNatures, ownExpenses,
                               consolidatedExpenses,  salaries,        ConsolidatedPanel::percentages()};
    const bool whole =
        computed && std::ranges::all_of(sources, [this](const QString &what) { return couldRead(what); });
    tell(Told::Figures, whole ? QString() : tr("The figures are incomplete."));
}

void frmfbtdet::reload()
{
    ErrorTail tail(this, "LOADGRIDDED");
    m_inHand.putBack();
    TakeClientYear(QString(client().code), client().year); // another status has other rates
    showRates();
    takeAddInfo();
    if (m_list->editing()) {
        markFigures(tail([this] { showFigures(); })); // what is being typed stays
        return;
    }
    if (ui->famcon->isHidden())
        reloadNatures();
    LOADGRIDDED();
    LOADDATADED();
}

/// The nature that was chosen stays chosen as long as the client has it.
void frmfbtdet::reloadNatures()
{
    const int chosen = m_nature;
    LOADNATURES();
    const QSignalBlocker blocker(ui->cbonature);
    ui->cbonature->setCurrentIndex(std::max(0, ui->cbonature->findData(chosen)));
    m_nature = ui->cbonature->currentData().toInt();
    ui->cmdconexp->setEnabled(m_nature == consolidatedNature);
    if (sharesExpenses())
        LOADSALDET();
}

bool frmfbtdet::showExpense(const Expense &expense)
{
    const int nature = ui->cbonature->findData(expense.natId);
    if (expense.quarter < 1 || expense.quarter > ui->cboquarter->count() || nature < 0)
        return false;
    const auto isWanted = [&expense](const Expense &row) {
        return row.srNo == expense.srNo && row.expId == expense.expId && row.amount == expense.amount;
    };
    ui->cboquarter->setCurrentIndex(expense.quarter - 1);
    ui->cbonature->setCurrentIndex(nature);
    m_list->select(isWanted);
    LOADDATADED();
    const Expense *current = m_list->current();
    return current != nullptr && isWanted(*current);
}

bool frmfbtdet::isEntering(const ClientYear &entered) const
{
    return m_list->editing() && client() == entered;
}

/// None when the expenses could not be read.
std::optional<std::vector<Expense>> frmfbtdet::readRows()
{
    std::optional<std::vector<Expense>> rows = ExpensesOfQuarter(Cnn, client(), m_quarter, m_nature, m_nature).ifRead();
    if (rows && sharesExpenses() && m_nature != consolidatedNature)
        GETCONSITEMS(*rows);
    return rows;
}

void frmfbtdet::GETCONSITEMS(std::vector<Expense> &rows)
{
    ErrorTail tail(this);
    const RowsRead<Expense> expenses = ExpensesOfQuarter(Cnn, client(), m_quarter, consolidatedNature, m_nature);
    noteReading(consolidatedExpenses, !expenses.failed());
    const auto shares = SharesOf(*expenses, positionOf(m_nature, m_natures), ui->famcon->salary());
    rows.insert(rows.end(), shares.begin(), shares.end());
}

void frmfbtdet::clearFigures()
{
    ui->txtcalcn_0->clear();
    clearTax();
    showProportion(QString());
}

void frmfbtdet::clearTax()
{
    for (const auto &[index, field] : txtcalcn) {
        if (index > 0)
            field->clear();
    }
}

void frmfbtdet::showProportion(const QString &text)
{
    ui->lbltaxfbt->setToolTip(text);
    ui->txtcalcn_2->setToolTip(text);
}

void frmfbtdet::showFigures()
{
    double amount = 0;
    double value = 0;
    for (const Expense &row : m_list->rows()) {
        amount += row.amount;
        value += valueOf(row);
    }
    ui->txtcalcn_0->setText(Money(amount));
    if (m_nature == consolidatedNature) {
        ui->famcon->setExpenses(m_list->rows(), expenseTexts());
        GETCONSFIGS();
        return;
    }
    const Employees employees = EmployeesInHand();
    showTax(FiguresOn(amount, value, employees, FBTRate));
    showProportion(ProportionText(employees, value));
}

void frmfbtdet::GETCONSFIGS()
{
    ErrorTail tail(this);
    const Reading<SharedFigures> &all = ui->famcon->all();
    if (all.failed())
        clearTax();
    else
        showTax(all->total);
}

/// The fields after the first one, which the expenses themselves fill.
void frmfbtdet::showTax(const Figures &figures)
{
    const TaxParts &tax = figures.Tax;
    int index = 0;
    for (const double figure :
         {figures.Value, figures.Taxable, tax.Tax, tax.Surcharge, tax.EduCess, tax.SHECess, figures.total()})
        txtcalcn[++index]->setText(Money(figure));
}

QStringList frmfbtdet::expenseTexts() const
{
    QStringList texts;
    for (int row = ui->vsf2->FixedRows(); row < ui->vsf2->Rows(); ++row)
        texts << ui->vsf2->shownText(row, expenseColumn);
    return texts;
}

// --- the fields ---

void frmfbtdet::LOADDATADED()
{
    ErrorTail tail(this);
    m_list->LOADDATA();
}

void frmfbtdet::clearFields()
{
    m_entry->clear();
    ui->txtdedflds_2->clear();
}

void frmfbtdet::showRow(const Expense &expense)
{
    const int row = ui->vsf2->Row();
    m_entry->show(expense.headId, ui->vsf2->shownText(row, headColumn), expense.expId,
                  ui->vsf2->shownText(row, expenseColumn));
    ShowAmount(ui->txtdedflds_2, expense.amount);
}

bool frmfbtdet::mayModify(const Expense &row)
{
    if (row.srNo != shareSrNo)
        return true;
    tellConsolidated();
    return false;
}

void frmfbtdet::tellConsolidated()
{
    MsgBox(this, QStringLiteral("Selected Item is a Consolidated Expenses."), Buttons::Ok, Icon::Exclamation);
}

void frmfbtdet::CMDDELETEDED_CLICK(const Expense &row)
{
    ErrorTail tail(this);
    if (!mayModify(row))
        return;
    if (MsgBox(this, QStringLiteral("Do you want to Delete Selected Item?"), Buttons::YesNo, Icon::Question, {}, 2) !=
        Reply::Yes)
        return;
    if (!ChangeTogether(
            Cnn, [&](Change &change) { return DeleteExpense(change, client(), row); }, Doing::Delete))
        return; // it stays, and stays current
    LOADGRIDDED();
    LOADDATADED();
}

void frmfbtdet::CMDUPDATEDED_CLICK()
{
    ErrorTail tail(this);
    m_entry->commit();
    if (!TakeAmount(this, ui->txtdedflds_2))
        return;
    if (!m_entry->itemChosen())
        return;
    if (!saveRow())
        return m_list->notSaved();
    LOADGRIDDED();
    m_list->endEdit();
}

bool frmfbtdet::saveRow()
{
    Expense expense;
    expense.quarter = m_quarter;
    expense.natId = m_nature;
    expense.expId = m_entry->expId();
    expense.amount = AmountIn(ui->txtdedflds_2);
    const std::optional<Expense> before = m_list->edited();
    return ChangeTogether(Cnn, [&](Change &change) {
        if (before) {
            expense.srNo = before->srNo;
            return ReplaceExpense(change, client(), *before, expense);
        }
        const auto srNo = NextExpenseNo(change, client(), m_quarter);
        expense.srNo = srNo.value_or(0);
        return srNo && AddExpense(change, client(), expense);
    });
}

// --- other buttons ---

void frmfbtdet::CMDIMP_CLICK()
{
    ErrorTail tail(this);
    if (m_quarter == 1) {
        frmannualfbt annual(client(), this);
        annual.Load();
        annual.INITDATA(m_nature);
        annual.showModal();
    } else if (!importFromLastQuarter()) {
        return;
    }
    LOADGRIDDED();
    LOADDATADED();
}

bool frmfbtdet::importFromLastQuarter()
{
    if (MsgBox(this, QStringLiteral("Do you want to Import Details from Last Quarter?"), Buttons::YesNo,
               Icon::Question) != Reply::Yes)
        return false;
    ImportLastQuarter(Cnn, client(), m_quarter);
    return true;
}

void frmfbtdet::CMDADDINFO_CLICK()
{
    ErrorTail tail(this);
    constexpr int lastYearOfFirstForm = 2006;
    const Employees before = EmployeesInHand();
    const bool known = couldRead(additionalInformation);
    if (!known)
        takeAddInfo();
    // What did not come into the year would be missing for good once the user saves there.
    if (!couldRead(additionalInformation))
        return;
    if (client().year <= lastYearOfFirstForm)
        Base->ShowAddInfo();
    else
        Base->ShowAddInfo1();
    takeAddInfo();
    if (EmployeesInHand() == before && couldRead(additionalInformation) == known)
        return;
    m_list->reload();
}

void frmfbtdet::CMDCONEXP_CLICK()
{
    ErrorTail tail(this);
    LOADSALDET(); // another user may have changed them
    ui->famcon->show();
    ui->famcon->begin();
    showConsolidatedFigures();
    ui->Frame3->hide();
}

void frmfbtdet::showConsolidatedFigures()
{
    GETCONSFIGS();
    markFigures(true);
}

void frmfbtdet::closeConsolidated()
{
    if (!ui->famcon->SAVESALDATA())
        return;
    showConsolidatedFigures();
    ui->Frame3->show();
    ui->cmdconexp->setFocus(Qt::OtherFocusReason);
    ui->famcon->hide();
}

void frmfbtdet::CMDEFL_CLICK()
{
    ErrorTail tail(this);
    if (client().year > lastTaxedYear)
        MsgBox(this, QStringLiteral("E-filing Rules have not been notified for A.Y. 2010-11."), Buttons::Ok,
               Icon::Information);
    else
        showReturn(&frmretfrm::EFILE);
}

/// @param begin makes the screen of the return ready for what is to be done with it
void frmfbtdet::showReturn(void (frmretfrm::*begin)(const QString &FormName))
{
    frmretfrm screen(MdiForm);
    screen.Load();
    (screen.*begin)(ReturnFormOf(client().year));
    screen.showModal();
}

bool frmfbtdet::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey == escapeKey && ui->famcon->isVisibleTo(this)) {
        closeConsolidated();
        return true;
    }
    return (asciiKey == escapeKey && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

/// Tab in a salary that is being typed goes on to the next one, and from the last one out of the grid.
bool frmfbtdet::FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers)
{
    return (key == Qt::Key_Tab && ui->famcon->editNextSalary()) || Screen::FORM_KEYDOWN(key, modifiers);
}

/// What was opened from here is for the same client and year, so it goes first. False when one of them stays.
bool frmfbtdet::closeOpened()
{
    return unloadEach({opened<Challan>(), opened<frmfbtrep>()}, MdiForm);
}

bool frmfbtdet::FORM_UNLOAD()
{
    if (!closeOpened())
        return false;
    if (ui->famcon->isVisibleTo(this) && !ui->famcon->SAVESALDATA())
        return false;
    return askExit(Icon::Exclamation);
}

void frmfbtdet::FORM_SESSIONEND()
{
    if (ui->famcon->isVisibleTo(this))
        ui->famcon->keepSalaries();
}
