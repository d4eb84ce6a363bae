#include "payments/instalmentpanel.h"
#include "ui_instalmentpanel.h"

#include "calc/instalmentdates.h"
#include "calc/interest.h"
#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "platform/dates.h"
#include "platform/text.h"

#include <QFontMetrics>

#include <algorithm>

namespace {

constexpr int captionRows = 2;
constexpr int cellsOfHead = 3; // due, paid, balance
constexpr int totalColumn = 13;
constexpr int columns = 16;

const QString screenName = QStringLiteral("Challan");

QStringList groupCaptions()
{
    QStringList captions{QStringLiteral("Due Date")};
    for (const char *group : {"Income Tax", "Surcharge", "Education Cess", "Sec. & Higher E.C.", "Total"}) {
        for (int i = 0; i < cellsOfHead; ++i)
            captions << QString::fromLatin1(group);
    }
    return captions;
}

QString cellCaption(int column)
{
    if (column == 0)
        return QStringLiteral("Due Date");
    const char *captions[] = {"Due Amount", "Amount Paid", "Balance Amount"};
    return QString::fromLatin1(captions[(column - 1) % cellsOfHead]);
}

/// As narrow as figures and the words of the captions allow, which wrap: sixteen columns shall fit a small display.
void fitColumns(Grid *grid)
{
    constexpr int margins = 9;
    const QFontMetrics metrics = grid->fontMetrics();
    for (int col = 0; col < grid->Cols(); ++col) {
        int width = 0;
        for (const QString &word : grid->TextMatrix(grid->FixedRows() - 1, col).split(u' '))
            width = std::max(width, metrics.horizontalAdvance(word));
        for (int row = grid->FixedRows(); row < grid->Rows(); ++row)
            width = std::max(width, metrics.horizontalAdvance(grid->TextMatrix(row, col)));
        grid->setColWidth(col, width + margins);
    }
}

} // namespace

InstalmentPanel::InstalmentPanel(QWidget *parent)
    : QGroupBox(parent)
    , ui(std::make_unique<Ui::InstalmentPanel>())
{
    ui->setupUi(this);
    setUpGrid();
    connect(ui->optadv_0, &QRadioButton::toggled, this, [this](bool on) { OPTADV_CLICK(on ? 0 : 1); });
    connect(ui->txtadvamt_1, &QLineEdit::editingFinished, this, &InstalmentPanel::TXTADVAMT_LOSTFOCUS);
    connect(ui->cmdtrans, &QPushButton::clicked, this, [this] {
        takeTyped();
        emit transferAsked();
    });
    connect(ui->cmdintcalc, &QPushButton::clicked, this, [this] {
        takeTyped();
        emit statementAsked();
    });
}

InstalmentPanel::~InstalmentPanel() = default;

Grid *InstalmentPanel::vsfa() const
{
    return ui->vsfa;
}

void InstalmentPanel::setUpGrid()
{
    Grid *grid = ui->vsfa;
    grid->setCols(columns);
    grid->setRows(captionRows + static_cast<int>(m_figures.size()));
    grid->setFixedRows(captionRows);
    grid->setCaptions(groupCaptions());
    for (int col = 0; col < columns; ++col) {
        grid->setTextMatrix(1, col, cellCaption(col));
        if (col > 0)
            grid->setColAlignment(col, Qt::AlignRight);
    }
    grid->setMergeHeaders(true);
}

int InstalmentPanel::rowOf(const Instalment &instalment) const
{
    return ui->vsfa->FixedRows() + instalment.place;
}

QString InstalmentPanel::dateOf(const Instalment &instalment) const
{
    return ui->vsfa->TextMatrix(rowOf(instalment), 0);
}

void InstalmentPanel::clearBody()
{
    for (int row = ui->vsfa->FixedRows(); row < ui->vsfa->Rows(); ++row) {
        for (int col = 1; col < columns; ++col)
            ui->vsfa->setTextMatrix(row, col, QString());
    }
    m_figures = {};
}

void InstalmentPanel::LOADADVGRID()
{
    ErrorTail tail(screenName);
    const Reading<InstalmentDates> dates = InstalmentDatesOfYear(Base->TYear);
    m_datesKnown = !dates.failed();
    emit reading(InterestSource::dueDates, m_datesKnown);
    clearBody();
    const bool four = PaysFourInstalments(Base->status);
    ui->vsfa->setRowHidden(ui->vsfa->FixedRows(), !four);
    for (const Instalment &instalment : InstalmentsOf(Base->status))
        ui->vsfa->setTextMatrix(rowOf(instalment), 0, (*dates)[static_cast<std::size_t>(instalment.place)]);
    ui->cmdintcalc->setText(
        QStringLiteral("&Interest Calculation u/s 115WJ(%1)").arg(four ? QLatin1Char('3') : QLatin1Char('4')));
    fitColumns(ui->vsfa);
}

void InstalmentPanel::CMDCALCADV()
{
    const NoTail tail;
    if (!m_datesKnown)
        LOADADVGRID();
    m_calculated.reset();
    ui->optadv_0->setChecked(true);
    OPTADV_CLICK(0);
    ui->optadv_0->setFocus(Qt::OtherFocusReason);
}

void InstalmentPanel::OPTADV_CLICK(int index)
{
    const NoTail tail;
    if (index == 0 && !m_taxKnown) {
        ClearTax();
        m_taxKnown = CALCFBT();
        m_tax = FBTTax + FBTSurcharge + FBTEduCess + FBTSHECess;
        ui->txtadvamt_0->setText(m_taxKnown ? NumberText(FBTTaxableValue) : QString());
        emit reading(figuresOfTax, m_taxKnown);
    }
    ui->txtadvamt_0->setEnabled(index == 0);
    ui->txtadvamt_1->setEnabled(index == 1);
    if (m_calculated == index)
        return;
    m_calculated = index;
    CALCADVTAX();
}

void InstalmentPanel::TXTADVAMT_LOSTFOCUS()
{
    const NoTail tail;
    if (ui->txtadvamt_1->isEnabled())
        CALCADVTAX();
}

/// A button pressed by its key does not leave the field first.
void InstalmentPanel::takeTyped()
{
    if (ui->txtadvamt_1->isModified())
        TXTADVAMT_LOSTFOCUS();
}

double InstalmentPanel::annualTax() const
{
    if (ui->optadv_0->isChecked())
        return m_tax;
    return TaxOn(Val(ui->txtadvamt_1->text()), FBTRate).total();
}

void InstalmentPanel::CALCADVTAX()
{
    ErrorTail tail(screenName);
    clearBody();
    ui->txtadvamt_1->setModified(false);
    bool good = m_taxKnown || !ui->optadv_0->isChecked();
    for (const Instalment &instalment : InstalmentsOf(Base->status))
        good = good && m_datesKnown && calculate(instalment);
    if (!good)
        clearBody();
    fitColumns(ui->vsfa);
}

/// False when the payments could not be read: without them a balance would be too high.
bool InstalmentPanel::calculate(const Instalment &instalment)
{
    ErrorTail tail(screenName, QStringLiteral("CALCADVTAX"));
    const Reading<HeadAmounts> paid = GETDEPAMT(dateOf(instalment));
    emit reading(InterestSource::payments, !paid.failed());
    if (paid.failed())
        return false;
    const InstalmentFigures figures = FiguresOfInstalment(annualTax(), instalment.share, FBTRate, *paid, tail);
    m_figures.at(static_cast<std::size_t>(instalment.place)) = figures;
    showFigures(rowOf(instalment), figures);
    return true;
}

void InstalmentPanel::showFigures(int row, const InstalmentFigures &figures)
{
    const auto showHead = [&](int column, const InstalmentHead &head) {
        ui->vsfa->setTextMatrix(row, column, head.due ? NumberText(*head.due) : QString());
        ui->vsfa->setTextMatrix(row, column + 1, NumberText(head.paid));
        ui->vsfa->setTextMatrix(row, column + 2, NumberText(head.balance));
    };
    int column = 1;
    for (const InstalmentHead &head : figures.heads) {
        showHead(column, head);
        column += cellsOfHead;
    }
    showHead(totalColumn, figures.total);
}

std::optional<HeadAmounts> InstalmentPanel::balances() const
{
    if (!ui->vsfa->hasDataRow())
        return std::nullopt;
    const auto &figures = m_figures.at(static_cast<std::size_t>(ui->vsfa->Row() - ui->vsfa->FixedRows()));
    if (!figures)
        return std::nullopt;
    HeadAmounts amounts{};
    for (std::size_t head = 0; head < figures->heads.size(); ++head)
        amounts.at(head) = figures->heads.at(head).balance;
    return amounts;
}

std::optional<std::vector<InstalmentInterest>> InstalmentPanel::shortfalls(const QDate &incorporated,
                                                                           const QDate &upTo) const
{
    ErrorTail tail(screenName, QStringLiteral("CMDINTCALREP_CLICK"));
    std::vector<InstalmentInterest> rows;
    for (const Instalment &instalment : InstalmentsOf(Base->status)) {
        const auto &figures = m_figures.at(static_cast<std::size_t>(instalment.place));
        if (!figures)
            return std::nullopt;
        QDate due;
        if (!tail([&] { due = DateOrFault(dateOf(instalment)); }) || !InstalmentCounts(due, incorporated, upTo))
            continue;
        const auto interest =
            InterestOnInstalment(instalment, due, figures->total.due.value_or(0), figures->total.paid);
        if (interest)
            rows.push_back(*interest);
    }
    return rows;
}
