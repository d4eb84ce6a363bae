#include "entry/frmannualfbt.h"
#include "ui_frmannualfbt.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/listedit.h"
#include "controls/matchlist.h"
#include "controls/uiarray.h"
#include "entry/amountfield.h"
#include "entry/expenseentry.h"
#include "entry/expenselists.h"
#include "entry/figures.h"
#include "entry/natures.h"
#include "entry/readingnote.h"
#include "platform/text.h"

#include <algorithm>

namespace {

constexpr int headColumn = 1;
constexpr int expenseColumn = 2;
constexpr int rateColumn = 3;
constexpr int totalAmountColumn = 16;
constexpr int totalValueColumn = 17;
constexpr int columnCount = 18;
constexpr int firstAmountField = 2;
constexpr int quarterCount = 4;

/// The three columns of a quarter (1 to 4): its amount, followed by value and number.
constexpr int amountColumn(int quarter)
{
    return quarter * 3 + 1;
}

void setCaptions(Grid *grid)
{
    const QStringList quarters{QStringLiteral("April - June"), QStringLiteral("July - September"),
                               QStringLiteral("October - December"), QStringLiteral("January - March"),
                               QStringLiteral("Total")};
    QStringList upper{QStringLiteral("S. No."), QStringLiteral("Head of Expenses"),
                      QStringLiteral("Nature of Expenses"), QStringLiteral("Rate")};
    QStringList lower = upper;
    for (const QString &quarter : quarters) {
        upper << quarter << quarter << quarter;
        lower << QStringLiteral("Amount") << QStringLiteral("Value") << QString();
    }
    for (int col = 0; col < columnCount; ++col) {
        grid->setTextMatrix(0, col, upper[col]);
        grid->setTextMatrix(1, col, lower[col]);
    }
}

} // namespace

frmannualfbt::frmannualfbt(const ClientYear &client, QWidget *parent)
    : Screen(QStringLiteral("frmannualfbt"), parent)
    , ui(std::make_unique<Ui::frmannualfbt>())
    , m_client(client)
{
    ui->setupUi(this);
    txtdedflds = ControlArray<QLineEdit>(this, QStringLiteral("txtdedflds"));
    auto *vsfl = new MatchList(this);
    vsfl->setObjectName(QStringLiteral("vsfl"));
    setUpGrid();
    m_entry = new ExpenseEntry(this, {ui->txtdedflds_0, ui->txtdedflds_1, ui->txtdedflds_2, vsfl});
    for (int i = firstAmountField; i < firstAmountField + quarterCount; ++i)
        WatchAmount(this, txtdedflds[i]);
    const ListEdit::Controls controls{ui->vsf2,
                                      ui->Frame4,
                                      ui->txtdedflds_0,
                                      ui->cmdaddded,
                                      ui->cmdmodifyded,
                                      ui->cmddeleteded,
                                      ui->cmdupdateded,
                                      ui->cmdcancelded,
                                      ui->cmdback,
                                      {ui->famselect},
                                      {}};
    m_list =
        new ListEdit(this, controls,
                     {[this] { fillRows(); }, [this] { clearFields(); }, [this](int row) { showRow(row); },
                      [this] { CMDUPDATEDED_CLICK(); }, [this] { CMDDELETEDED_CLICK(); }, [this] { return mayAdd(); }});
}

frmannualfbt::~frmannualfbt() = default;

void frmannualfbt::setUpGrid()
{
    Grid *vsf2 = ui->vsf2;
    vsf2->setCols(columnCount);
    vsf2->setFixedRows(2);
    setCaptions(vsf2);
    vsf2->setMergeHeaders(true);
    const int widths[] = {44, 150, 190, 44};
    for (int col = 0; col < columnCount; ++col) {
        const bool figure = col > rateColumn;
        vsf2->setColWidth(col, figure ? 90 : widths[col]);
        if (figure)
            vsf2->setColFormat(col, QStringLiteral("###0.00"));
        if (figure || col == 0 || col == rateColumn)
            vsf2->setColAlignment(col, Qt::AlignRight);
    }
    for (int quarter = 1; quarter <= quarterCount; ++quarter)
        vsf2->setColHidden(amountColumn(quarter) + 2, true);
    vsf2->setStretchCol(expenseColumn, widths[expenseColumn]);
}

void frmannualfbt::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    setWindowTitle(QStringLiteral("Annual FBT Details") + Base->Cap);
    GETITEMS(ui->vsf2, m_client.year);
    m_entry->setYear(m_client.year);
}

void frmannualfbt::INITDATA(int nature)
{
    ErrorTail tail(this);
    const RowsRead<Nature> natures = ClientNatures(Cnn, m_client.code);
    NoteReading(this, QStringLiteral("natures of business"), natures.failed());
    FillNatures(ui->cbonature, *natures, nature);
    connect(ui->cbonature, &QComboBox::currentIndexChanged, this, &frmannualfbt::CBONATURE_CLICK);
    CBONATURE_CLICK();
}

void frmannualfbt::CBONATURE_CLICK()
{
    ErrorTail tail(this);
    m_nature = ui->cbonature->currentData().toInt();
    LOADGRIDDED();
    m_list->SETBUTTON(true);
    m_list->LOADDATA();
}

// --- the list ---

void frmannualfbt::LOADGRIDDED()
{
    ErrorTail tail(this);
    const bool withoutRate = m_nature == consolidatedNature;
    ui->vsf2->setColHidden(rateColumn, withoutRate);
    ui->vsf2->setColHidden(totalValueColumn, withoutRate);
    for (int quarter = 1; quarter <= quarterCount; ++quarter)
        ui->vsf2->setColHidden(amountColumn(quarter) + 1, withoutRate);
    m_list->LOADGRID();
}

void frmannualfbt::fillRows()
{
    const RowsRead<Expense> expenses = ExpensesOfYear(Cnn, m_client, m_nature);
    NoteReading(this, QStringLiteral("expenses"), expenses.failed());
    m_lines = LineUp(*expenses);
    for (const AnnualRow &line : m_lines)
        addRow(line);
}

void frmannualfbt::addRow(const AnnualRow &line)
{
    QStringList texts{QString(), HeadText(line.headId), QString::number(line.expId), NumberText(line.rate)};
    for (const auto &cell : line.quarters) {
        if (cell)
            texts << NumberText(cell->amount) << NumberText(cell->value) << QString::number(cell->srNo);
        else
            texts << QString() << QString() << QString();
    }
    texts << NumberText(line.amount()) << NumberText(line.value());
    ui->vsf2->AddItem(texts);
}

const AnnualRow *frmannualfbt::currentLine() const
{
    const Grid *vsf2 = ui->vsf2;
    return vsf2->hasDataRow() ? &m_lines[static_cast<std::size_t>(vsf2->Row() - vsf2->FixedRows())] : nullptr;
}

// --- the fields ---

void frmannualfbt::clearFields()
{
    m_entry->clear();
    for (int i = firstAmountField; i < firstAmountField + quarterCount; ++i)
        txtdedflds[i]->clear();
    for (QPushButton *button : {ui->cmdmodifyded, ui->cmddeleteded})
        button->setEnabled(ui->vsf2->hasDataRow());
}

void frmannualfbt::showRow(int row)
{
    const AnnualRow &line = *currentLine();
    m_entry->show(line.headId, ui->vsf2->shownText(row, headColumn), line.expId,
                  ui->vsf2->shownText(row, expenseColumn));
    for (int i = 0; i < quarterCount; ++i) {
        if (line.quarters[i])
            ShowAmount(txtdedflds[firstAmountField + i], line.quarters[i]->amount);
    }
}

bool frmannualfbt::takeAmounts()
{
    for (int i = firstAmountField; i < firstAmountField + quarterCount; ++i) {
        if (!TakeAmount(this, txtdedflds[i]))
            return false;
    }
    return true;
}

QuarterAmounts frmannualfbt::amounts() const
{
    QuarterAmounts typed{};
    for (int i = 0; i < quarterCount; ++i)
        typed[i] = AmountIn(txtdedflds.at(firstAmountField + i));
    return typed;
}

bool frmannualfbt::mayAdd()
{
    return NatureChosen(this, ui->cbonature);
}

void frmannualfbt::CMDUPDATEDED_CLICK()
{
    ErrorTail tail(this);
    m_entry->commit();
    if (!takeAmounts())
        return;
    if (!m_entry->itemChosen())
        return;
    if (amounts() == QuarterAmounts{}) {
        MsgBox(this, QStringLiteral("Please specify Amount."), Buttons::Ok, Icon::Exclamation);
        ui->txtdedflds_2->setFocus(Qt::OtherFocusReason);
        return;
    }
    saveLine(amounts());
}

void frmannualfbt::saveLine(const QuarterAmounts &amounts)
{
    const std::optional<AnnualRow> before = m_list->Adding() ? std::nullopt : std::optional(*currentLine());
    const auto written = SaveAnnual(Cnn, m_client, m_nature, m_entry->expId(), amounts, before);
    if (!written)
        return; // what was typed stays
    LOADGRIDDED();
    const int line = FindLine(m_lines, *written);
    if (line >= 0)
        ui->vsf2->setRow(ui->vsf2->FixedRows() + line);
    m_list->SETBUTTON(true);
    m_list->LOADDATA();
    (m_list->Adding() ? static_cast<QWidget *>(ui->cmdaddded) : ui->vsf2)->setFocus(Qt::OtherFocusReason);
}

void frmannualfbt::CMDDELETEDED_CLICK()
{
    ErrorTail tail(this);
    const AnnualRow *line = currentLine();
    if (line == nullptr || MsgBox(this, QStringLiteral("Do you want to Delete Selected Item?"), Buttons::YesNo,
                                  Icon::Question, {}, 2) != Reply::Yes)
        return;
    DeleteAnnual(Cnn, m_client, *line);
    LOADGRIDDED();
    if (!ui->vsf2->hasDataRow())
        ui->cmdaddded->setFocus(Qt::OtherFocusReason);
    m_list->LOADDATA();
}

bool frmannualfbt::FORM_KEYPRESS(int asciiKey)
{
    constexpr int escapeKey = 27;
    return (asciiKey == escapeKey && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

bool frmannualfbt::FORM_UNLOAD()
{
    return askExit(Icon::Exclamation);
}
