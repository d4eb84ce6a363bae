#include "entry/consolidatedpanel.h"
#include "ui_consolidatedpanel.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/msgbox.h"
#include "controls/screen.h"
#include "platform/text.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

namespace {

constexpr auto formName = "frmfbtdet"; // the screen that the panel is a part of
constexpr int salaryRow = 1;
constexpr int rateRow = 1;
constexpr int amountRow = 2;
constexpr int secondCessRow = 8;

/// A column of a nature is narrow: a long name is cut.
QString columnCaption(const QString &nature)
{
    constexpr int longest = 20;
    constexpr int kept = 18;
    return nature.size() > longest ? nature.left(kept) + QStringLiteral("..") : nature;
}

QStringList figureCaptions()
{
    return {QStringLiteral("Rate"),
            QStringLiteral("Expenses Amount"),
            QStringLiteral("Value of Fringe Benefit"),
            QStringLiteral("Taxable Value of Fringe Benefit"),
            WithRate(QStringLiteral("Fringe Benefit Tax"), FBTRate[1]),
            WithRate(QStringLiteral("Surcharge"), FBTRate[2]),
            WithRate(QStringLiteral("Education Cess"), FBTRate[3]),
            WithRate(QStringLiteral("Sec. & Higher E.C."), FBTRate[4]),
            QStringLiteral("Total FBT")};
}

} // namespace

ConsolidatedPanel::ConsolidatedPanel(QWidget *parent)
    : QFrame(parent)
    , ui(std::make_unique<Ui::ConsolidatedPanel>())
{
    ui->setupUi(this);
    ui->vsfs->setSelectionBehavior(QAbstractItemView::SelectItems);
    ui->vsfs->setEditable([this](int row, int col) { return m_salaryRead && row == salaryRow && col > 0; });
    ui->vsfs->setValidateEdit([this](int, int, QString &text) { return acceptSalary(text); });
    connect(ui->vsfs, &Grid::afterEdit, this, [this](int, int col) { VSFS_AFTEREDIT(col); });
    connect(ui->cboexp, &QComboBox::currentIndexChanged, this, &ConsolidatedPanel::LOADEXPDET);
}

ConsolidatedPanel::~ConsolidatedPanel() = default;

void ConsolidatedPanel::setNatures(const ClientYear &client, const std::vector<Nature> &natures)
{
    m_client = client;
    m_natures = natures;
    setUpGrid(ui->vsfs, {QStringLiteral("Salary and Wages")});
    ui->vsfs->setTextMatrix(0, static_cast<int>(natures.size()) + 1, QStringLiteral("Total Salary and Wages"));
    for (Grid *grid : {ui->vsfe, ui->vsfr}) {
        setUpGrid(grid, figureCaptions());
        grid->setRowHidden(secondCessRow, m_client.year < firstYearWithSecondCess);
    }
    ui->vsfr->setRowHidden(rateRow, true); // a sum has no rate
}

void ConsolidatedPanel::setUpGrid(Grid *grid, const QStringList &rowCaptions)
{
    QStringList captions{QString()};
    for (const Nature &nature : m_natures)
        captions << columnCaption(nature.text);
    captions << QStringLiteral("Total");
    grid->setCaptions(captions);
    grid->setFixedCols(1);
    grid->setRows(static_cast<int>(rowCaptions.size()) + 1);
    for (int row = 1; row < grid->Rows(); ++row)
        grid->setTextMatrix(row, 0, rowCaptions[row - 1]);
    for (int col = 1; col < grid->Cols(); ++col)
        grid->setColAlignment(col, Qt::AlignRight);
    constexpr int captionWidth = 212;
    constexpr int amountWidth = 140;
    for (int col = 0; col < grid->Cols(); ++col)
        grid->setColWidth(col, col == 0 ? captionWidth : amountWidth);
}

bool ConsolidatedPanel::LOADSALDET(int quarter)
{
    ErrorTail tail(formName);
    m_quarter = quarter;
    const RowsRead<Salary> read = SalariesOfQuarter(Cnn, m_client, quarter);
    m_salaryRead = !read.failed();
    showSalary(SalaryByNature(*read, m_natures));
    m_stored = salary(); // in the paise that the cells show
    return m_salaryRead;
}

void ConsolidatedPanel::showSalary(const QuarterSalary &salary)
{
    const int totalCol = static_cast<int>(m_natures.size()) + 1;
    for (int col = 1; col < totalCol; ++col)
        ui->vsfs->setTextMatrix(salaryRow, col, Money(salary.ofNatures[col - 1]));
    ui->vsfs->setTextMatrix(salaryRow, totalCol, Money(salary.total));
}

void ConsolidatedPanel::setExpenses(const std::vector<Expense> &expenses, const QStringList &descriptions)
{
    m_expenses = expenses;
    m_descriptions = descriptions;
    LOADALLEXPDET();
}

void ConsolidatedPanel::begin()
{
    {
        const QSignalBlocker blocker(ui->cboexp);
        ui->cboexp->clear();
        ui->cboexp->addItems(m_descriptions);
        ui->cboexp->setCurrentIndex(m_descriptions.isEmpty() ? -1 : 0);
    }
    LOADEXPDET();
    LOADALLEXPDET(); // of the salaries as they stand now
    ui->vsfs->setCell(salaryRow, 1);
    ui->vsfs->setFocus(Qt::OtherFocusReason);
}

bool ConsolidatedPanel::editNextSalary()
{
    const int next = ui->vsfs->Col() + 1;
    if (!ui->vsfs->isEditing() || next >= ui->vsfs->Cols())
        return false;
    if (ui->vsfs->finishEdit()) {
        ui->vsfs->setCell(salaryRow, next);
        ui->vsfs->EditCell();
    }
    return true;
}

QString ConsolidatedPanel::percentages()
{
    return QStringLiteral("percentages of the consolidated expenses");
}

QuarterSalary ConsolidatedPanel::salary() const
{
    QuarterSalary salary;
    const int totalCol = static_cast<int>(m_natures.size()) + 1;
    for (int col = 1; col < totalCol; ++col)
        salary.ofNatures.push_back(Val(ui->vsfs->TextMatrix(salaryRow, col)));
    salary.total = Val(ui->vsfs->TextMatrix(salaryRow, totalCol));
    return salary;
}

bool ConsolidatedPanel::acceptSalary(QString &text)
{
    if (!IsAmount(text)) {
        if (!m_silent)
            MsgBox(this, QStringLiteral("Please Enter Numeric Value."), Buttons::Ok, Icon::Exclamation);
        return false;
    }
    text = Money(Val(text));
    return true;
}

void ConsolidatedPanel::VSFS_AFTEREDIT(int col)
{
    ErrorTail tail(formName);
    const int totalCol = static_cast<int>(m_natures.size()) + 1;
    const QuarterSalary now = salary();
    if (now.totalTooSmall()) {
        if (col == totalCol && !m_silent)
            tellTotalTooSmall();
        ui->vsfs->setTextMatrix(salaryRow, totalCol, Money(now.sum()));
    }
    LOADEXPDET();
    LOADALLEXPDET();
    emit computed();
}

void ConsolidatedPanel::LOADEXPDET()
{
    ErrorTail tail(formName);
    const int index = ui->cboexp->currentIndex();
    const std::size_t natures = m_natures.size();
    RowsRead<double> percent = std::vector(natures, 0.0);
    Reading<SharedFigures> figures = SharedFigures{std::vector<Figures>(natures), {}};
    if (index >= 0) {
        const Expense &expense = m_expenses[static_cast<std::size_t>(index)];
        percent = RatesOfItem(m_client.year, expense.expId, m_natures);
        figures = percent.failed() ? Reading<SharedFigures>::failure()
                                   : ShareExpense(expense.amount, *percent, salary(), EmployeesInHand(), FBTRate);
    }
    Screen::of(this)->noteReading(QStringLiteral("percentages of the expense"), !percent.failed());
    for (std::size_t i = 0; i < natures; ++i)
        ui->vsfe->setTextMatrix(rateRow, static_cast<int>(i) + 1,
                                percent.failed() ? QString() : NumberText((*percent)[i]));
    ui->vsfe->setTextMatrix(rateRow, static_cast<int>(natures) + 1, QStringLiteral("-"));
    showFigures(ui->vsfe, figures);
}

void ConsolidatedPanel::LOADALLEXPDET()
{
    ErrorTail tail(formName);
    m_all = ShareAll(m_expenses, m_client.year, m_natures, salary(), EmployeesInHand(), FBTRate);
    Screen::of(this)->noteReading(percentages(), !m_all.failed());
    showFigures(ui->vsfr, m_all);
}

/// Figures that are not known leave their cells empty.
void ConsolidatedPanel::showFigures(Grid *grid, const Reading<SharedFigures> &figures)
{
    if (figures.failed()) {
        for (int row = amountRow; row < grid->Rows(); ++row) {
            for (int col = 1; col < grid->Cols(); ++col)
                grid->setTextMatrix(row, col, QString());
        }
        return;
    }
    const auto showColumn = [grid](int col, const Figures &f) {
        const double cells[] = {f.Amount,        f.Value,       f.Taxable,     f.Tax.Tax,
                                f.Tax.Surcharge, f.Tax.EduCess, f.Tax.SHECess, f.total()};
        int row = amountRow;
        for (const double cell : cells)
            grid->setTextMatrix(row++, col, Money(cell));
    };
    int col = 0;
    for (const Figures &ofNature : figures->ofNatures)
        showColumn(++col, ofNature);
    showColumn(++col, figures->total);
}

void ConsolidatedPanel::tellTotalTooSmall()
{
    MsgBox(this,
           QStringLiteral("Total Salary and Wages Amount Should be Greater than or Equal to Total of Business Wise "
                          "Salary and Wages."),
           Buttons::Ok, Icon::Exclamation);
}

bool ConsolidatedPanel::SAVESALDATA()
{
    ErrorTail tail(formName);
    if (!m_salaryRead)
        return true;
    if (!ui->vsfs->finishEdit())
        return false;
    const QuarterSalary now = salary();
    if (now.totalTooSmall()) {
        tellTotalTooSmall();
        return false;
    }
    return save(now) || leaveUnsaved();
}

/// What is as it was read is not written: another user may have changed it since.
bool ConsolidatedPanel::save(const QuarterSalary &now)
{
    if (now != m_stored && !SaveSalaries(Cnn, m_client, m_quarter, SalaryRows(now, m_quarter, m_natures)))
        return false;
    m_stored = now;
    return true;
}

/// Asks whether to give up what was typed and could not be saved. The figures are then those of the stored salaries.
bool ConsolidatedPanel::leaveUnsaved()
{
    constexpr int no = 2;
    const QString question = tr("The salaries could not be saved. Do you want to leave without saving them?");
    if (MsgBox(this, question, Buttons::YesNo, Icon::Exclamation, {}, no) != Reply::Yes)
        return false;
    showSalary(m_stored);
    LOADEXPDET();
    LOADALLEXPDET();
    return true;
}

void ConsolidatedPanel::keepSalaries()
{
    ErrorTail tail(formName);
    const QScopedValueRollback silent(m_silent, true);
    ui->vsfs->finishEdit();
    if (const QuarterSalary now = salary(); m_salaryRead && !now.totalTooSmall())
        save(now);
}
