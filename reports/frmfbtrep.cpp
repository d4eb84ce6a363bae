#include "reports/frmfbtrep.h"
#include "ui_frmfbtrep.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "host/reporttable.h"
#include "platform/text.h"
#include "records/law.h"
#include "reports/annualstatement.h"
#include "reports/interestpages.h"

#include <algorithm>

namespace {

constexpr int headColumn = 1;
constexpr int expenseColumn = 2;
constexpr int rateColumn = 3;
constexpr int columnCount = 14;

// What the report is made of, in the words that tell what of it could not be read.
const QString natures = QStringLiteral("natures of business");
const QString descriptions = QStringLiteral("descriptions of heads and items");
const QString expensesOfYear = QStringLiteral("expenses");
const QString salaries = QStringLiteral("salaries");
const QString payments = QStringLiteral("payments");
const QString employees = QStringLiteral("numbers of employees");
const QString interest = QStringLiteral("figures of interest");

QStringList numberTexts(const std::optional<AnnualLine::Quarter> &quarter)
{
    if (!quarter)
        return {QString(), QString()};
    return {NumberText(quarter->amount), NumberText(quarter->value)};
}

QStringList textsOf(const AnnualLine &line, int number)
{
    QStringList texts{QString::number(number), line.headId == 0 ? QString() : QString::number(line.headId),
                      QString::number(line.expId), NumberText(line.rate)};
    for (const auto &quarter : line.quarters)
        texts << numberTexts(quarter);
    return texts << numberTexts(line.total());
}

} // namespace

frmfbtrep::frmfbtrep(QWidget *parent)
    : Screen(QStringLiteral("frmfbtrep"), parent)
    , ui(std::make_unique<Ui::frmfbtrep>())
{
    ui->setupUi(this);
    ui->gridSplitter->setStretchFactor(0, 1);
    connect(ui->Combo1, &QComboBox::currentIndexChanged, this, &frmfbtrep::COMBO1_CLICK);
    connect(ui->cmdprev, &QAbstractButton::clicked, this, &frmfbtrep::CMDPREVIEW);
    connect(ui->cmdintcalc, &QAbstractButton::clicked, this, &frmfbtrep::CMDINTCALREP_CLICK);
    connect(ui->cmdback, &QAbstractButton::clicked, this, [this] { FORM_KEYPRESS(escapeKey); });
}

frmfbtrep::~frmfbtrep() = default;

void frmfbtrep::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    setWindowTitle(QStringLiteral("Annual FBT Details") + Base->Cap);
    compute();
    LOADNATURES();
    ui->cmdintcalc->setVisible(isAggregate());
    LOADREPORT(true);
}

void frmfbtrep::FORM_ACTIVATE()
{
    m_inHand.putBack();
}

bool frmfbtrep::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey != escapeKey)
        return false;
    m_leaving = true;
    Unload();
    m_leaving = false;
    return true;
}

bool frmfbtrep::FORM_UNLOAD()
{
    return m_leaving || askExit();
}

/// A client without natures has no tax: what stands there is that of the client before.
void frmfbtrep::compute()
{
    ClearTax();
    noteReading(employees, TakeEmployeesOfYear());
    m_inHand.employees = EmployeesInHand();
    const bool computed = CALCFBT() && couldRead(employees);
    m_interest = CALCINTEREST();
    noteReading(interest, computed && m_interest.known());
}

/// What could not be read may be there by now.
void frmfbtrep::readAgain()
{
    if (couldRead())
        return;
    if (!couldRead(natures)) {
        LOADNATURES();
        ui->cmdintcalc->setVisible(isAggregate());
    }
    LOADREPORT(false);
}

void frmfbtrep::LOADNATURES()
{
    ErrorTail tail(this);
    RepNatId = 0;
    ui->Combo1->setEnabled(false);
    ui->Combo1->clear();
    const RowsRead<Nature> rows = ClientNatures(Cnn, m_inHand.client.code);
    noteReading(natures, !rows.failed());
    m_natures = *rows;
    for (const Nature &nature : m_natures)
        ui->Combo1->addItem(nature.text, nature.srNo);
    if (!m_natures.empty()) {
        ui->Combo1->addItem(QStringLiteral("(Aggregate)"), aggregateNature);
        ui->Combo1->setCurrentIndex(ui->Combo1->count() - 1);
        RepNatId = aggregateNature;
    }
    ui->Combo1->setEnabled(true);
}

void frmfbtrep::COMBO1_CLICK()
{
    ErrorTail tail(this);
    const int nature = ui->Combo1->currentData().toInt();
    if (!ui->Combo1->isEnabled() || nature == RepNatId)
        return;
    RepNatId = nature;
    ui->cmdintcalc->setVisible(isAggregate());
    LOADREPORT(false);
}

// --- the grids ---

void frmfbtrep::setUpExpenses()
{
    QStringList upper{QStringLiteral("Sr. No."), QStringLiteral("Head of Expenses"),
                      QStringLiteral("Nature of Expenses"), QStringLiteral("Rate")};
    QStringList lower = upper;
    for (const char *quarter : {"Quarter-I", "Quarter-II", "Quarter-III", "Quarter-IV", "Total"}) {
        upper << QString::fromLatin1(quarter) << QString::fromLatin1(quarter);
        lower << QStringLiteral("Expenses Amount") << QStringLiteral("Value of Fringe Benefit");
    }
    Grid *vsf = ui->vsf;
    vsf->setCols(columnCount);
    vsf->setFixedRows(2);
    vsf->setMergeHeaders(true);
    for (int col = 0; col < columnCount; ++col) {
        vsf->setTextMatrix(0, col, upper[col]);
        vsf->setTextMatrix(1, col, lower[col]);
        if (col >= rateColumn)
            vsf->setColFormat(col, QStringLiteral("###0.00"));
        if (col >= rateColumn || col == 0)
            vsf->setColAlignment(col, Qt::AlignRight);
    }
}

void frmfbtrep::setUpStatement()
{
    Grid *vsfd = ui->vsfd;
    vsfd->setCaptions({QStringLiteral("Particulars"), QStringLiteral("Quarter-I"), QStringLiteral("Quarter-II"),
                       QStringLiteral("Quarter-III"), QStringLiteral("Quarter-IV"), QStringLiteral("Total")});
    for (int col = 1; col <= statementTotal; ++col)
        vsfd->setColAlignment(col, Qt::AlignRight);
    for (const QString &text : StatementTexts(m_inHand.client.year, m_inHand.status, m_inHand.rates))
        vsfd->AddItem({text});
    for (int row = 1; row < vsfd->Rows(); ++row)
        vsfd->setRowResult(row, IsStatementResult(row));
}

/// The descriptions that the numbers of heads and items stand for.
void frmfbtrep::GETITEMS()
{
    ErrorTail tail(this);
    const RowsRead<ExpenseHead> heads = ExpenseHeads(Cnn, m_inHand.client.year);
    const RowsRead<ExpenseItem> items = ExpenseItems(Cnn, m_inHand.client.year);
    std::vector<TranslationList::Entry> headTexts;
    for (const ExpenseHead &head : *heads)
        headTexts.push_back({QString::number(head.headId), head.section + u'-' + head.text});
    std::vector<TranslationList::Entry> itemTexts;
    for (const ExpenseItem &item : *items)
        itemTexts.push_back({QString::number(item.srNo), item.text});
    ui->vsf->setColComboList(headColumn, TranslationList::listOf(headTexts));
    ui->vsf->setColComboList(expenseColumn, TranslationList::listOf(itemTexts));
    noteReading(descriptions, !heads.failed() && !items.failed());
}

void frmfbtrep::LOADREPORT(bool First)
{
    ErrorTail tail(this);
    if (!First && !couldRead(interest))
        compute();
    const AnnualPayments paid = ReadAnnualPayments(m_inHand.client);
    noteReading(payments, paid.read);
    if (First) {
        setUpExpenses();
        setUpStatement();
    }
    if (First || !couldRead(descriptions))
        GETITEMS();
    const AnnualExpenses expenses = readExpenses();
    noteReading(expensesOfYear, expenses.expensesRead);
    noteReading(salaries, expenses.salariesRead);
    showExpenses(expenses.lines);
    showStatement(expenses, paid);
}

/// Some of the expenses alone would look like all of them.
AnnualExpenses frmfbtrep::readExpenses()
{
    AnnualExpenses expenses =
        couldRead(natures) ? ReadAnnualExpenses(m_inHand.client, m_natures, RepNatId) : AnnualExpenses();
    if (!expenses.expensesRead || !expenses.salariesRead)
        expenses.lines.clear();
    return expenses;
}

void frmfbtrep::showExpenses(const std::vector<AnnualLine> &lines)
{
    Grid *vsf = ui->vsf;
    vsf->setRedraw(false);
    vsf->clearBody();
    int number = 0;
    for (const AnnualLine &line : lines)
        vsf->AddItem(textsOf(line, ++number));
    vsf->setRedraw(true);
    vsf->fitColumns();
    constexpr int widest = 260;
    for (const int col : {headColumn, expenseColumn})
        vsf->setColWidth(col, std::min(vsf->ColWidth(col), widest));
    vsf->setRow(vsf->FixedRows());
}

void frmfbtrep::showStatement(const AnnualExpenses &expenses, const AnnualPayments &paid)
{
    ErrorTail tail(this, "LOADREPORT");
    const bool expensesKnown = couldRead(natures) && expenses.expensesRead && expenses.salariesRead;
    const AnnualStatement statement =
        StatementOf(expenses.lines, {m_inHand.client.year, m_inHand.rates, m_inHand.employees, paid, m_interest,
                                     expensesKnown, couldRead(employees), couldRead(interest)});
    for (int unknown = 0; unknown < statement.unknownShares; ++unknown)
        tail.take({FaultNumber::DivisionByZero, QStringLiteral("Division by zero"), QStringLiteral("FBT")});
    Grid *vsfd = ui->vsfd;
    for (int row = ExpensesRow; row <= BalanceDueRow; ++row) {
        for (int col = 1; col <= statementTotal; ++col)
            vsfd->setTextMatrix(row, col, statement.text(row, col));
        vsfd->setRowHidden(row, IsStatementRowHidden(row, m_inHand.client.year, isAggregate()));
    }
    vsfd->fitColumns();
}

// --- on paper ---

AnnualTexts frmfbtrep::shownTexts() const
{
    const auto rowTexts = [](const Grid *grid, int row) {
        QStringList texts;
        for (int col = 0; col < grid->Cols(); ++col)
            texts << grid->shownText(row, col);
        return texts;
    };
    AnnualTexts texts;
    texts.title =
        AnnualTitle(m_inHand.client.year, isAggregate() ? std::nullopt : std::optional(ui->Combo1->currentText()));
    for (const QString &what : {natures, descriptions, expensesOfYear, salaries, payments, employees, interest}) {
        if (!couldRead(what))
            texts.unread << what;
    }
    for (int row = ui->vsf->FixedRows(); row < ui->vsf->Rows(); ++row)
        texts.expenses.push_back(rowTexts(ui->vsf, row));
    for (int row = ExpensesRow; isAggregate() && row <= BalanceDueRow; ++row) {
        if (!ui->vsfd->RowHidden(row))
            texts.statement.push_back({rowTexts(ui->vsfd, row), IsStatementResult(row)});
    }
    return texts;
}

std::optional<PayerDetails> frmfbtrep::readClient()
{
    const Reading<ClientRecord> client = ReadClient(Cnn, m_inHand.client.code);
    noteReading(QStringLiteral("client data"), !client.failed());
    return client.failed() ? std::nullopt : std::optional(PayerFrom(*client));
}

void frmfbtrep::CMDPREVIEW()
{
    ErrorTail tail(this);
    readAgain();
    const std::optional<PayerDetails> client = readClient();
    if (!client)
        return;
    const AnnualTexts texts = shownTexts();
    BeginReport(*Reporter, texts.title);
    CREATEREPORT(*Reporter, *client, texts);
    Reporter->ShowReport();
}

void frmfbtrep::CMDINTCALREP_CLICK()
{
    ErrorTail tail(this);
    if (!couldRead(interest))
        readAgain();
    if (!couldRead(interest))
        return; // what is missing is told at the top of the screen
    if (m_interest.Det115WJ.isEmpty() && m_interest.Det115WJ5.isEmpty() && m_interest.Det115WK.isEmpty()) {
        MsgBox(this, QStringLiteral("Nothing to Calculate."), Buttons::Ok, Icon::Information);
        return;
    }
    const std::optional<PayerDetails> client = readClient();
    if (!client)
        return;
    BeginReport(*Reporter, InterestTitle(m_inHand.client.year));
    CREATEREPORT_INTEREST(*Reporter, *client, m_inHand.client.year, m_inHand.status, m_interest);
    Reporter->ShowReport();
}
