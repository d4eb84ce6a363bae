#include "entry/frmannualfbt.h"
#include "ui_frmannualfbt.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/matchlist.h"
#include "controls/uiarray.h"
#include "entry/amountfield.h"
#include "entry/expenseentry.h"
#include "entry/expenselists.h"
#include "entry/figures.h"
#include "entry/natures.h"
#include "platform/text.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int headColumn = 1;
constexpr int expenseColumn = 2;
constexpr int rateColumn = 3;
constexpr int totalValueColumn = 17;
constexpr int firstAmountField = 2;
constexpr int quarterCount = 4;

// With these all quarters and the total show on a screen 1024 wide.
constexpr int serialWidth = 36;
constexpr int headWidth = 90;
constexpr int wideHeadWidth = 220; // where the window has room for it
constexpr int wideWindow = 1200;
constexpr int leastItemWidth = 70;
constexpr int rateWidth = 36;
constexpr int amountWidth = 64;

/// The three columns of a quarter (1 to 4): its amount, followed by value and number.
constexpr int amountColumn(int quarter)
{
    return quarter * 3 + 1;
}

using Column = ListColumn<AnnualRow>;

/// What a quarter (index 0 is the first) holds of a line; empty where it holds nothing.
template<class Part>
Column::Text ofQuarter(std::size_t index, Part part)
{
    return [index, part](const AnnualRow &line) {
        const auto &cell = line.quarters.at(index);
        return cell ? NumberText((*cell).*part) : QString();
    };
}

void addQuarter(RowList<AnnualRow>::Columns &columns, const QString &caption, const std::array<Column::Text, 3> &texts)
{
    for (const Column::Text &text : texts) {
        const bool number = &text == &texts.back();
        columns.push_back({.caption = caption,
                           .text = text,
                           .width = amountWidth,
                           .format = QStringLiteral("###0.00"),
                           .hidden = number});
    }
}

RowList<AnnualRow>::Columns listColumns()
{
    RowList<AnnualRow>::Columns columns{Column{.caption = "S. No.", .width = serialWidth},
                                        Column{.caption = "Head of Expenses",
                                               .text = [](const AnnualRow &l) { return HeadText(l.headId); },
                                               .width = headWidth},
                                        Column{.caption = "Nature of Expenses",
                                               .text = [](const AnnualRow &l) { return QString::number(l.expId); },
                                               .width = leastItemWidth,
                                               .stretch = true},
                                        Column{.caption = "Rate",
                                               .text = [](const AnnualRow &l) { return NumberText(l.rate); },
                                               .width = rateWidth,
                                               .right = true}};
    const QStringList quarters{QStringLiteral("April - June"), QStringLiteral("July - September"),
                               QStringLiteral("October - December"), QStringLiteral("January - March")};
    using Cell = AnnualRow::Cell;
    for (std::size_t i = 0; i < quarterCount; ++i)
        addQuarter(columns, quarters.at(static_cast<int>(i)),
                   {ofQuarter(i, &Cell::amount), ofQuarter(i, &Cell::value), ofQuarter(i, &Cell::srNo)});
    addQuarter(columns, QStringLiteral("Total"),
               {[](const AnnualRow &l) { return NumberText(l.amount()); },
                [](const AnnualRow &l) { return NumberText(l.value()); }, [](const AnnualRow &) { return QString(); }});
    columns.pop_back(); // a year has no number
    return columns;
}

void setLowerCaptions(Grid *grid)
{
    for (int col = 0; col < grid->Cols(); ++col) {
        const bool figure = col > rateColumn;
        const QString part = (col - rateColumn) % 3 == 1 ? QStringLiteral("Amount") : QStringLiteral("Value");
        grid->setTextMatrix(1, col, figure ? part : grid->TextMatrix(0, col));
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
    setUpList();
    m_entry = new ExpenseEntry(this, {ui->txtdedflds_0, ui->txtdedflds_1, ui->txtdedflds_2, vsfl});
    for (int i = firstAmountField; i < firstAmountField + quarterCount; ++i)
        WatchAmount(this, txtdedflds[i]);
}

frmannualfbt::~frmannualfbt() = default;

void frmannualfbt::setUpList()
{
    ui->vsf2->setFixedRows(2);
    ui->vsf2->setMergeHeaders(true);
    m_list = new RowList<AnnualRow>(this, ListEdit::ofEntries(*ui, {ui->famselect}), listColumns(),
                                    {.what = QStringLiteral("expenses"),
                                     .read = [this] { return readLines(); },
                                     .key = [](const AnnualRow &line) { return KeyOf(line); },
                                     .CLEARDATA = [this] { clearFields(); },
                                     .LOADDATA = [this](const AnnualRow &line) { showLine(line); },
                                     .CMDUPDATE_CLICK = [this] { CMDUPDATEDED_CLICK(); },
                                     .CMDDELETE_CLICK = [this](const AnnualRow &line) { CMDDELETEDED_CLICK(line); },
                                     .mayAdd = [this] { return NatureChosen(this, ui->cbonature); }});
    setLowerCaptions(ui->vsf2);
    if (const QWidget *opener = parentWidget() != nullptr ? parentWidget()->window() : nullptr) {
        resize(opener->size()); // as much as the screen that it is opened from has
        if (opener->width() > wideWindow)
            ui->vsf2->setColWidth(headColumn, wideHeadWidth);
    }
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
    LOADNATURES(nature);
    connect(ui->cbonature, &QComboBox::currentIndexChanged, this, &frmannualfbt::CBONATURE_CLICK);
    CBONATURE_CLICK();
}

void frmannualfbt::LOADNATURES(int nature)
{
    const RowsRead<Nature> natures = ClientNatures(Cnn, m_client.code);
    noteReading(businessNatures, !natures.failed());
    const QSignalBlocker blocker(ui->cbonature);
    FillNatures(ui->cbonature, *natures, nature);
    m_nature = ui->cbonature->currentData().toInt();
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
    if (!couldRead(itemTexts)) // it may be there by now
        GETITEMS(ui->vsf2, m_client.year);
    if (!couldRead(businessNatures))
        LOADNATURES(m_nature);
    const bool withoutRate = m_nature == consolidatedNature;
    ui->vsf2->setColHidden(rateColumn, withoutRate);
    ui->vsf2->setColHidden(totalValueColumn, withoutRate);
    for (int quarter = 1; quarter <= quarterCount; ++quarter)
        ui->vsf2->setColHidden(amountColumn(quarter) + 1, withoutRate);
    m_list->LOADGRID();
    fitAmounts();
}

/// A column with a longer number gets wider.
void frmannualfbt::fitAmounts()
{
    constexpr int padding = 10;
    for (int col = rateColumn + 1; col < ui->vsf2->Cols(); ++col) {
        int width = amountWidth;
        for (int row = ui->vsf2->FixedRows(); row < ui->vsf2->Rows(); ++row)
            width = std::max(width, padding + ui->vsf2->fontMetrics().horizontalAdvance(ui->vsf2->shownText(row, col)));
        ui->vsf2->setColWidth(col, width);
    }
}

/// None when the expenses could not be read.
std::optional<std::vector<AnnualRow>> frmannualfbt::readLines()
{
    const RowsRead<Expense> expenses = ExpensesOfYear(Cnn, m_client, m_nature);
    return expenses.failed() ? std::nullopt : std::optional(LineUp(*expenses));
}

// --- the fields ---

void frmannualfbt::clearFields()
{
    m_entry->clear();
    for (int i = firstAmountField; i < firstAmountField + quarterCount; ++i)
        txtdedflds[i]->clear();
}

void frmannualfbt::showLine(const AnnualRow &line)
{
    const int row = ui->vsf2->Row();
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
    const auto written = SaveAnnual(Cnn, m_client, m_nature, m_entry->expId(), amounts, m_list->edited());
    if (!written)
        m_list->notSaved();
    else
        m_list->saved([&](const AnnualRow &line) { return IsLine(line, *written); });
}

void frmannualfbt::CMDDELETEDED_CLICK(const AnnualRow &line)
{
    ErrorTail tail(this);
    if (MsgBox(this, QStringLiteral("Do you want to Delete Selected Item?"), Buttons::YesNo, Icon::Question, {}, 2) !=
        Reply::Yes)
        return;
    if (!DeleteAnnual(Cnn, m_client, line))
        return; // it stays, and stays current
    LOADGRIDDED();
    m_list->LOADDATA();
}

bool frmannualfbt::FORM_KEYPRESS(int asciiKey)
{
    return (asciiKey == escapeKey && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

bool frmannualfbt::FORM_UNLOAD()
{
    return askExit(Icon::Exclamation);
}
