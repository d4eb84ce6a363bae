#include "masters/frmduedts.h"
#include "ui_frmduedts.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/yearcombo.h"
#include "masters/duedatewindows.h"
#include "masters/gridlook.h"
#include "platform/dates.h"
#include "records/duedates.h"

#include <QSignalBlocker>

namespace {

constexpr int dateColumn = 1; // the original date; in the list of instalments the only one
constexpr int extendedColumn = 2;
constexpr int notificationColumn = 3;
constexpr int notificationLength = 255;
constexpr int particularWidth = 300;
constexpr int dateWidth = 130;

void setParticulars(Grid *grid, const QStringList &particulars)
{
    grid->clearBody();
    for (const QString &particular : particulars)
        grid->AddItem({particular});
}

void setUpDates(Grid *grid)
{
    grid->setCols(notificationColumn + 1);
    grid->setCaptions({QObject::tr("Particular"), QObject::tr("Original Due Date"), QObject::tr("Extended Due Date"),
                       QObject::tr("Notification No.")});
    grid->setStretchCol(-1);
    grid->setColWidth(0, particularWidth);
    grid->setColWidth(dateColumn, dateWidth);
    grid->setColWidth(extendedColumn, dateWidth);
    grid->setStretchCol(notificationColumn);
}

/// Class of assessee or quarter as a place in its list, and the other way round: only classes stand in another order.
int placeOf(bool classes, int number)
{
    return classes ? PlaceOfClass(number) : number;
}

void showDates(Grid *grid, bool classes, const DueDateRows &rows)
{
    int number = 1;
    for (const DueDateRow &dates : rows) {
        const int row = placeOf(classes, number++);
        grid->setTextMatrix(row, dateColumn, dates.original);
        grid->setTextMatrix(row, extendedColumn, dates.extended);
        grid->setTextMatrix(row, notificationColumn, dates.notification);
    }
}

DueDateRows typedDates(const Grid *grid, bool classes)
{
    DueDateRows rows;
    int number = 1;
    for (DueDateRow &dates : rows) {
        const int row = placeOf(classes, number++);
        dates = {grid->TextMatrix(row, dateColumn), grid->TextMatrix(row, extendedColumn),
                 grid->TextMatrix(row, notificationColumn)};
    }
    return rows;
}

InstalmentDates typedInstalments(const Grid *grid)
{
    InstalmentDates dates;
    int row = 1;
    for (QString &date : dates)
        date = grid->TextMatrix(row++, dateColumn);
    return dates;
}

} // namespace

frmduedts::frmduedts(QWidget *parent)
    : Screen(QStringLiteral("frmduedts"), parent)
    , ui(std::make_unique<Ui::frmduedts>())
{
    ui->setupUi(this);
    setUpGrid(ui->vsf);
    setUpGrid(ui->vsf1);
    ui->vsf->setEditable([this](int row, int col) { return VSF_BEFOREEDIT(row, col); });
    ui->vsf1->setEditable([this](int row, int col) { return VSF1_BEFOREEDIT(row, col); });
    ui->vsf->setValidateEdit([this](int row, int col, QString &text) { return VSF_VALIDATEEDIT(row, col, text); });
    ui->vsf1->setValidateEdit([this](int row, int col, QString &text) { return VSF1_VALIDATEEDIT(row, col, text); });
    setUpDates(ui->vsf);
    connect(ui->Combo4, &QComboBox::currentIndexChanged, this, &frmduedts::COMBO4_CLICK);
    connect(ui->Combo4, &QComboBox::activated, this, &frmduedts::COMBO4_CLICK); // the same year, to try again
    connect(ui->cmdsave, &QAbstractButton::clicked, this, [this] { SAVEGRID(); });
    connect(ui->cmdback, &QAbstractButton::clicked, this, [this] { FORM_KEYPRESS(escapeKey); });
}

frmduedts::~frmduedts() = default;

void frmduedts::setUpGrid(Grid *grid)
{
    grid->setFixedCols(1);
    WrapRows(grid);
    grid->setSelectionBehavior(QAbstractItemView::SelectItems);
    connect(grid, &Grid::enterCell, this, [grid] { editCurrent(grid); });
    connect(grid, &Grid::afterEdit, this, [this, grid](int row, int col) {
        if (col == dateColumn && m_missingDate == std::pair<const Grid *, int>(grid, row))
            m_missingDate = {}; // filled
    });
    connect(this, &Screen::entered, grid, [grid](const QWidget *field) {
        // After the event that brought the focus: a click goes to the cell that it points at.
        if (field == grid)
            QMetaObject::invokeMethod(
                grid, [grid] { editCurrent(grid); }, Qt::QueuedConnection);
    });
}

void frmduedts::editCurrent(Grid *grid)
{
    if (grid->hasFocus() && !grid->isEditing() && grid->hasDataRow() && grid->Col() > 0)
        grid->EditCell();
}

void frmduedts::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    SelYear = 0;
    {
        const QSignalBlocker filling(ui->Combo4);
        LoadYears(ui->Combo4, lastAssessmentYear);
    }
    LOADGRID();
}

bool frmduedts::FORM_UNLOAD()
{
    ErrorTail tail(this);
    return maySaveChanges();
}

/// What nobody touched is not written: another user may have changed it since.
void frmduedts::FORM_SESSIONEND()
{
    if (!finishEdit() || shownDates() != m_loaded)
        Screen::FORM_SESSIONEND();
}

void frmduedts::COMBO4_CLICK()
{
    ErrorTail tail(this);
    if (ui->Combo4->currentData().toInt() != SelYear && SelYear != 0 && !maySaveChanges()) {
        ui->Combo4->setCurrentIndex(ui->Combo4->findData(SelYear));
        return;
    }
    LOADGRID();
}

/// Asks whether to save the year in hand. False when it was to be saved and could not be. Dates that could not be read
/// are nothing to ask about.
bool frmduedts::maySaveChanges()
{
    if (!couldRead())
        return true;
    const QString question = "Do you want to Save Changes Made in A.Y. " + YearLabel(SelYear) + "?";
    return MsgBox(this, question, Buttons::YesNo, Icon::Question, "Confirmation") != Reply::Yes || SAVEGRID();
}

void frmduedts::LOADGRID()
{
    ErrorTail tail(this);
    const int year = ui->Combo4->currentData().toInt();
    if (year == SelYear && couldRead())
        return;
    SelYear = year;
    m_missingDate = {};
    readingWell();
    setParticulars(ui->vsf, {"Company", "Partnership Firm Whose accounts are required to be Audited",
                             "Other than Company and Partnership Firm Whose accounts are required to be Audited",
                             "Any Other Assessee"});
    const Reading<DueDateRows> dates = ReturnDueDates(Cnn, year);
    noteReading(tr("due dates of the return"), !dates.failed());
    showDates(ui->vsf, true, *dates);
    if (HasQuarterDates(year))
        setUpQuarters();
    else
        setUpInstalments();
    ui->cmdsave->setEnabled(couldRead());
    m_loaded = shownDates();
    for (Grid *grid : {ui->vsf, ui->vsf1})
        grid->setCell(1, grid == ui->vsf || HasQuarterDates(year) ? extendedColumn : dateColumn);
}

void frmduedts::setUpQuarters()
{
    setUpDates(ui->vsf1);
    setParticulars(ui->vsf1, {"April - June", "July - September", "October - December", "January - March"});
    const Reading<DueDateRows> dates = QuarterDueDates(Cnn, SelYear);
    noteReading(tr("due dates of the advance tax"), !dates.failed());
    showDates(ui->vsf1, false, *dates);
}

void frmduedts::setUpInstalments()
{
    ui->vsf1->setCols(dateColumn + 1);
    ui->vsf1->setCaptions({tr("Installment"), tr("Date")});
    ui->vsf1->setStretchCol(dateColumn);
    ui->vsf1->setColWidth(0, particularWidth);
    setParticulars(ui->vsf1, {"Ist", "IInd", "IIIrd", "IVth"});
    const Reading<InstalmentDates> dates = InstalmentDueDates(Cnn, SelYear);
    noteReading(tr("due dates of the advance tax"), !dates.failed());
    int row = 1;
    for (const QString &date : *dates)
        ui->vsf1->setTextMatrix(row++, dateColumn, date);
}

// --- editing ---

bool frmduedts::VSF_BEFOREEDIT(int row, int col) const
{
    return mayEditDates(ui->vsf, row, col);
}

bool frmduedts::VSF1_BEFOREEDIT(int row, int col) const
{
    return HasQuarterDates(SelYear) ? mayEditDates(ui->vsf1, row, col) : col > 0 && couldRead();
}

/// The original date stays as it is, unless it was missing and has been asked for.
bool frmduedts::mayEditDates(const Grid *grid, int row, int col) const
{
    return couldRead() && (col > dateColumn || (col == dateColumn && m_missingDate == std::pair(grid, row)));
}

bool frmduedts::VSF_VALIDATEEDIT(int row, int col, QString &text)
{
    ErrorTail tail(this);
    return validate(ui->vsf, row, col, text);
}

bool frmduedts::VSF1_VALIDATEEDIT(int row, int col, QString &text)
{
    ErrorTail tail(this);
    return validate(ui->vsf1, row, col, text);
}

bool frmduedts::validate(const Grid *grid, int row, int col, QString &text)
{
    if (!isLoaded())
        return true; // the screen goes, and an open cell with it
    if (col == notificationColumn) {
        text.truncate(notificationLength);
        return true;
    }
    text = withDefault(grid, row, Base->ConvertDate(text));
    const QString message = messageFor(grid, row, col, text);
    if (!message.isEmpty())
        MsgBox(this, message, Buttons::Ok, Icon::Exclamation);
    return message.isEmpty();
}

bool frmduedts::holdsInstalments(const Grid *grid) const
{
    return grid == ui->vsf1 && !HasQuarterDates(SelYear);
}

QString frmduedts::withDefault(const Grid *grid, int row, const QString &date) const
{
    return date.isEmpty() && holdsInstalments(grid) ? LawInstalments(SelYear).at(static_cast<std::size_t>(row - 1))
                                                    : date;
}

QString frmduedts::messageFor(const Grid *grid, int row, int col, const QString &date) const
{
    if (grid == ui->vsf)
        return CheckReturnDate(SelYear, col, date);
    if (holdsInstalments(grid))
        return CheckInstalment(SelYear, row, date);
    return CheckQuarterDate(col, col == dateColumn ? date : grid->TextMatrix(row, dateColumn), date);
}

// --- saving ---

bool frmduedts::SAVEGRID()
{
    ErrorTail tail(this);
    return couldRead() && finishEdit() && checkCells(ui->vsf) && checkCells(ui->vsf1) && save();
}

/// Takes a text that is still being edited. False when it was refused, with its message, and the cell stays in edit.
bool frmduedts::finishEdit()
{
    return ui->vsf->finishEdit() && ui->vsf1->finishEdit();
}

bool frmduedts::checkCells(Grid *grid)
{
    const int lastColumn = holdsInstalments(grid) ? dateColumn : extendedColumn;
    for (int row = 1; row < grid->Rows(); ++row) {
        for (int col = dateColumn; col <= lastColumn; ++col) {
            if (!checkCell(grid, row, col))
                return false;
        }
    }
    return true;
}

bool frmduedts::checkCell(Grid *grid, int row, int col)
{
    const QString date = withDefault(grid, row, grid->TextMatrix(row, col));
    grid->setTextMatrix(row, col, date);
    const QString message = messageFor(grid, row, col, date);
    if (message.isEmpty())
        return true;
    MsgBox(this, message, Buttons::Ok, Icon::Exclamation);
    if (col == dateColumn && date.isEmpty())
        m_missingDate = {grid, row};
    grid->setFocus();
    grid->setCell(row, col);
    editCurrent(grid);
    return false;
}

bool frmduedts::save()
{
    const DueDates dates = shownDates();
    const bool saved = SaveDueDates(Cnn, SelYear, dates);
    if (saved)
        m_loaded = dates;
    return saved;
}

DueDates frmduedts::shownDates() const
{
    DueDates dates{typedDates(ui->vsf, true), std::nullopt, std::nullopt};
    if (HasQuarterDates(SelYear))
        dates.quarters = typedDates(ui->vsf1, false);
    else
        dates.instalments = typedInstalments(ui->vsf1);
    return dates;
}
