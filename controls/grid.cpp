#include "controls/grid.h"

#include "controls/exportactions.h"
#include "controls/griddelegate.h"
#include "controls/gridheader.h"
#include "platform/text.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>

#include <algorithm>
#include <utility>

/// While it lives the view follows the grid's current cell; at the end the view is brought into line with it and a
/// change of the current cell is told.
class Grid::Sync
{
public:
    explicit Sync(Grid *grid)
        : m_grid(grid)
        , m_row(grid->m_row)
        , m_col(grid->m_col)
    {
        ++grid->m_syncing;
    }
    ~Sync()
    {
        m_grid->showCurrent();
        --m_grid->m_syncing;
        m_grid->tellMove(m_row, m_col);
    }
    Sync(const Sync &) = delete;
    Sync &operator=(const Sync &) = delete;

private:
    Grid *m_grid;
    int m_row;
    int m_col;
};

Grid::Grid(QWidget *parent)
    : QTableView(parent)
    , m_model(new GridModel(this))
    , m_header(new GridHeader(m_model, this))
    , m_delegate(new GridDelegate(this))
{
    setHorizontalHeader(m_header);
    setModel(m_model);
    setItemDelegate(m_delegate);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(EditKeyPressed | AnyKeyPressed | DoubleClicked);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    applyRowHeight();
    m_model->setFixedRows(1);
    new ExportActions(
        this, [this] { return SheetOfGrid(this); }, [this] { return SheetOfSelection(this); });
    connect(m_header, &QHeaderView::sectionClicked, this, &Grid::captionClicked);
    connect(m_model, &QAbstractItemModel::columnsInserted, m_header, &GridHeader::relayout);
}

Grid::~Grid()
{
    m_validate = nullptr; // an editor that is still open goes without asking: who would answer may be gone already
    delete m_delegate;
}

// --- cells ---

QString Grid::TextMatrix(int row, int col) const
{
    return m_model->text(row, col);
}

QString Grid::shownText(int row, int col) const
{
    return m_model->shownText(row, col);
}

void Grid::setTextMatrix(int row, int col, const QString &text)
{
    m_model->setText(row, col, text);
}

int Grid::Rows() const
{
    return m_model->rows();
}

void Grid::setRows(int count)
{
    const Sync sync(this);
    m_model->setRows(count);
    keepRowInside();
}

int Grid::Cols() const
{
    return m_model->cols();
}

void Grid::setCols(int count)
{
    const Sync sync(this);
    m_model->setCols(count);
    m_col = std::clamp(m_col, 0, std::max(0, count - 1));
}

int Grid::FixedRows() const
{
    return m_model->fixedRows();
}

void Grid::setFixedRows(int count)
{
    const Sync sync(this);
    m_model->setFixedRows(count);
    keepRowInside();
}

int Grid::FixedCols() const
{
    return m_model->fixedCols();
}

void Grid::setFixedCols(int count)
{
    m_model->setFixedCols(count);
}

void Grid::setCaptions(const QStringList &captions)
{
    if (Cols() < captions.size())
        setCols(static_cast<int>(captions.size()));
    for (int col = 0; col < captions.size(); ++col)
        setTextMatrix(0, col, captions.at(col));
}

int Grid::AddItem(const QStringList &texts, int at)
{
    const Sync sync(this);
    const bool hadRow = hasDataRow(); // without fixed rows the first row is at once the current one
    const int row = m_model->insertGridRow(texts, at);
    if (hadRow && row <= m_row)
        ++m_row;
    return row;
}

void Grid::RemoveItem(int row)
{
    const Sync sync(this);
    if (row >= FixedRows() && row < m_row)
        --m_row;
    m_model->removeGridRow(row);
    keepRowInside();
}

void Grid::clearBody()
{
    setRows(FixedRows());
    showOrder(-1, Qt::AscendingOrder);
}

void Grid::keepRowInside()
{
    if (m_row >= Rows())
        m_row = Rows() - 1;
    if (m_row < FixedRows())
        m_row = 0;
}

// --- current cell ---

void Grid::setRow(int row)
{
    setCell(row, m_col);
}

void Grid::setCol(int col)
{
    setCell(m_row, col);
}

void Grid::setCell(int row, int col)
{
    if (row < 0 || row >= Rows() || col < 0 || (col >= Cols() && col != m_col))
        return;
    const Sync sync(this);
    m_row = row;
    m_col = col;
}

QModelIndex Grid::indexOf(int row, int col) const
{
    const int viewRow = m_model->isExposed() && row >= FixedRows() ? m_model->viewRow(row) : -1;
    return viewRow < 0 ? QModelIndex() : m_model->index(viewRow, col);
}

/// The current column of a row; the first one shown where that is hidden: from a hidden cell no key leads on.
QModelIndex Grid::shownIndex(int row) const
{
    int col = m_col;
    for (int place = 0; place < m_header->count() && isColumnHidden(col); ++place)
        col = m_header->logicalIndex(place);
    return indexOf(row, col);
}

void Grid::showCurrent()
{
    const QModelIndex current = shownIndex(m_row);
    ++m_syncing;
    if (current.isValid())
        selectionModel()->setCurrentIndex(current, selectionCommand(current, nullptr));
    else
        selectionModel()->clear();
    --m_syncing;
}

void Grid::tellMove(int oldRow, int oldCol)
{
    if (m_syncing > 0 || (oldRow == m_row && oldCol == m_col))
        return;
    const QPointer<Grid> alive(this);
    emit rowColChange(oldRow, oldCol, m_row, m_col);
    if (alive)
        emit enterCell(m_row, m_col);
}

void Grid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    const int row = m_syncing == 0 && current.isValid() ? m_model->gridRow(current.row()) : -1;
    if (row < 0)
        return;
    const int oldRow = std::exchange(m_row, row);
    const int oldCol = std::exchange(m_col, current.column());
    tellMove(oldRow, oldCol);
}

// --- hiding ---

bool Grid::RowHidden(int row) const
{
    return m_model->rowHidden(row);
}

void Grid::setRowHidden(int row, bool hidden)
{
    const Sync sync(this);
    m_model->setRowHidden(row, hidden);
}

bool Grid::ColHidden(int col) const
{
    return isColumnHidden(col);
}

void Grid::setColHidden(int col, bool hidden)
{
    setColumnHidden(col, hidden);
    showCurrent();
    m_header->relayout();
}

void Grid::setRowsVisible(const std::function<bool(int)> &shown)
{
    const Sync sync(this);
    m_model->setRowsVisible(shown);
}

void Grid::showAllRows()
{
    setRowsVisible([](int) { return true; });
}

int Grid::firstVisibleRow() const
{
    return m_model->gridRow(0);
}

int Grid::visibleRowCount() const
{
    return m_model->shownRowCount();
}

// --- search, view, order ---

int Grid::FindRow(const QString &text, int fromRow, int col, bool caseSensitive, bool fullMatch) const
{
    return m_model->findRow(text, fromRow, col, caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive, fullMatch);
}

void Grid::ShowCell(int row, int col)
{
    scrollTo(indexOf(row, col));
}

void Grid::showAtTop(int row)
{
    updateGeometries(); // the scroll bar knows new rows only from here on
    scrollTo(shownIndex(row), PositionAtTop);
}

bool Grid::isRowInView(int row) const
{
    const int viewRow = m_model->viewRow(row);
    if (viewRow < 0)
        return false;
    const int top = rowViewportPosition(viewRow);
    return top >= 0 && top + rowHeight(viewRow) <= viewport()->height();
}

void Grid::Sort(int col, Qt::SortOrder order)
{
    const Sync sync(this);
    const CellTexts::Slot record = hasDataRow() ? m_model->rowKey(m_row) : 0;
    m_model->sort(col, order);
    if (hasDataRow())
        m_row = m_model->rowOfKey(record);
    showOrder(col, order);
}

void Grid::showOrder(int col, Qt::SortOrder order)
{
    m_sortCol = col;
    m_sortOrder = order;
    m_header->setSortIndicator(col, order);
}

void Grid::setSortByHeader(bool on)
{
    m_sortByHeader = on;
    m_header->setSortIndicatorShown(on);
}

void Grid::captionClicked(int col)
{
    if (!m_sortByHeader)
        return;
    const bool again = col == m_sortCol && m_sortOrder == Qt::AscendingOrder;
    Sort(col, again ? Qt::DescendingOrder : Qt::AscendingOrder);
    emit sorted(col, m_sortOrder);
}

// --- columns and rows ---

void Grid::setColFormat(int col, const QString &pattern)
{
    m_model->changeColumn(col, [&](GridColumn &column) { column.format = pattern; });
}

void Grid::setColAlignment(int col, Qt::Alignment alignment)
{
    const bool vertical = alignment & Qt::AlignVertical_Mask;
    const Qt::Alignment whole = vertical ? alignment : alignment | Qt::AlignVCenter;
    m_model->changeColumn(col, [&](GridColumn &column) { column.alignment = whole; });
}

void Grid::setColComboList(int col, const QString &list)
{
    m_model->changeColumn(col, [&](GridColumn &column) { column.list = TranslationList(list); });
}

void Grid::setColCheck(int col, bool check)
{
    m_model->changeColumn(col, [&](GridColumn &column) { column.check = check; });
}

bool Grid::isCheckCol(int col) const
{
    return col >= 0 && col < Cols() && m_model->column(col).check;
}

void Grid::setColWidth(int col, int pixels)
{
    setColumnWidth(col, pixels);
}

int Grid::ColWidth(int col) const
{
    return columnWidth(col);
}

void Grid::setStretchCol(int col, int least)
{
    m_stretchCol = col;
    m_stretchLeast = least;
    m_header->setSectionResizeMode(QHeaderView::Interactive);
    applyStretch();
}

void Grid::applyStretch()
{
    if (m_stretchCol < 0 || m_stretchCol >= Cols() || isColumnHidden(m_stretchCol))
        return;
    int others = 0;
    for (int col = 0; col < Cols(); ++col)
        others += col == m_stretchCol ? 0 : columnWidth(col); // 0 when it is hidden
    const bool fits = m_stretchLeast == 0 || viewport()->width() - others >= m_stretchLeast;
    const QHeaderView::ResizeMode mode = fits ? QHeaderView::Stretch : QHeaderView::Interactive;
    const bool changes = m_header->sectionResizeMode(m_stretchCol) != mode;
    if (changes)
        m_header->setSectionResizeMode(m_stretchCol, mode);
    if (!fits && (changes || columnWidth(m_stretchCol) < m_stretchLeast))
        setColumnWidth(m_stretchCol, m_stretchLeast);
}

void Grid::updateGeometries()
{
    applyStretch();
    QTableView::updateGeometries();
}

void Grid::fitColumns()
{
    constexpr int rowsLookedAt = 100;
    constexpr int margin = 16;
    constexpr int widest = 360;
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics inBold(bold);
    const int last = std::min(Rows(), FixedRows() + rowsLookedAt);
    constexpr int besideArrow = 12; // of a caption in the middle
    for (int col = 0; col < Cols(); ++col) {
        int width = 0;
        for (int row = 0; row < last; ++row) {
            const QFontMetrics &metrics = m_model->rowResult(row) ? inBold : fontMetrics();
            const int beside = m_sortByHeader && row < FixedRows() ? besideArrow : 0;
            width = std::max(width, metrics.horizontalAdvance(shownText(row, col)) + beside);
        }
        if (!isColumnHidden(col))
            setColumnWidth(col, std::min(width + margin, widest));
    }
}

void Grid::setRowData(int row, const QVariant &value)
{
    m_model->setRowData(row, value);
}

QVariant Grid::RowData(int row) const
{
    return m_model->rowData(row);
}

void Grid::setRowResult(int row, bool result)
{
    m_model->setRowResult(row, result);
}

void Grid::setRowColor(int row, const QColor &color)
{
    m_model->setRowColor(row, color);
}

void Grid::setMergeHeaders(bool merge)
{
    m_header->setMergeHeaders(merge);
}

// --- editing ---

void Grid::setEditable(std::function<bool(int, int)> editable)
{
    m_model->setEditable(std::move(editable));
}

void Grid::setValidateEdit(std::function<bool(int, int, QString &)> validate)
{
    m_validate = std::move(validate);
}

bool Grid::EditCell()
{
    const QModelIndex cell = indexOf(m_row, m_col);
    if (!(cell.flags() & Qt::ItemIsEditable))
        return false;
    setFocus();
    return edit(cell, AllEditTriggers, nullptr);
}

bool Grid::finishEdit()
{
    return !isEditing() || m_delegate->takeOpenEditor();
}

bool Grid::accept(int row, int col, QString &text)
{
    return !m_validate || m_validate(row, col, text);
}

void Grid::store(int row, int col, const QString &text)
{
    setTextMatrix(row, col, text);
    m_edited = {row, col};
}

void Grid::toggle(int row, int col)
{
    QString text = Val(TextMatrix(row, col)) != 0 ? QStringLiteral("0") : QStringLiteral("-1");
    if (!accept(row, col, text))
        return;
    store(row, col, text);
    tellEdit();
}

void Grid::tellEdit()
{
    if (!m_edited)
        return;
    const auto [row, col] = *std::exchange(m_edited, std::nullopt);
    emit afterEdit(row, col);
}

void Grid::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    QTableView::closeEditor(editor, hint);
    tellEdit(); // only now, so that a message shown for it does not stand over an open editor
}

// --- drawing and events ---

void Grid::setRedraw(bool on)
{
    if (!on) {
        ++m_syncing;
        if (m_redrawOff++ > 0)
            return;
        m_scrollBefore = verticalScrollBar()->value();
        m_rowBefore = {m_row, m_col};
        m_model->setExposed(false);
        return;
    }
    if (m_redrawOff == 0)
        return;
    if (--m_redrawOff == 0) {
        m_model->setExposed(true);
        showCurrent();
        updateGeometries();
        verticalScrollBar()->setValue(m_scrollBefore);
    }
    --m_syncing;
    if (m_redrawOff == 0)
        tellMove(m_rowBefore.first, m_rowBefore.second);
}

void Grid::focusInEvent(QFocusEvent *event)
{
    const Sync sync(this); // getting the focus makes no row current
    QTableView::focusInEvent(event);
}

void Grid::keyPressEvent(QKeyEvent *event)
{
    const QString typed = event->text();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const int ascii = enter ? 13 : (typed.isEmpty() ? 0 : typed.at(0).unicode());
    const QPointer<Grid> alive(this);
    if (ascii > 0)
        emit keyPress(ascii);
    if (!alive)
        return;
    const int check = event->key() == Qt::Key_Space ? onlyCheckCol() : -1;
    if (check >= 0)
        toggle(m_row, check);
    else
        QTableView::keyPressEvent(event);
}

/// The one check box that the user may change in the current row; -1 when there is none, more than one, or when the
/// current cell itself can be edited.
int Grid::onlyCheckCol() const
{
    if (!indexOf(m_row, m_col).isValid() || m_model->isEditable(m_row, m_col))
        return -1;
    int found = -1;
    for (int col = 0; col < Cols(); ++col) {
        if (!isCheckCol(col) || !m_model->isEditable(m_row, col))
            continue;
        if (found >= 0)
            return -1;
        found = col;
    }
    return found;
}

void Grid::mousePressEvent(QMouseEvent *event)
{
    // An open editor whose text was refused keeps the focus; a click beside the rows would unmark the current one.
    if (isEditing() || !indexAt(event->position().toPoint()).isValid())
        event->accept();
    else
        QTableView::mousePressEvent(event);
}

void Grid::mouseDoubleClickEvent(QMouseEvent *event)
{
    const bool onRow = indexAt(event->position().toPoint()).isValid();
    QTableView::mouseDoubleClickEvent(event);
    if (onRow && hasDataRow())
        emit dblClick();
}

void Grid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        applyRowHeight();
}

void Grid::applyRowHeight()
{
    constexpr int padding = 7;
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + padding);
}
