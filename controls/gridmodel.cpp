#include "controls/gridmodel.h"

#include "platform/text.h"

#include <QFont>

#include <algorithm>
#include <utility>

using Slot = CellTexts::Slot;

namespace {

QFont boldFont()
{
    QFont font;
    font.setBold(true);
    return font;
}

} // namespace

GridModel::GridModel(QObject *parent)
    : QAbstractTableModel(parent)
    , m_texts(0)
{
}

bool GridModel::holds(int row, int col) const
{
    return row >= 0 && row < rows() && col >= 0 && col < cols();
}

// --- size ---

void GridModel::setRows(int count)
{
    count = std::max(count, m_fixedRows);
    if (count > rows())
        appendRows(count - rows());
    else if (count < rows())
        truncateRows(count);
}

void GridModel::appendRows(int count)
{
    const int first = rowCount();
    if (m_exposed)
        beginInsertRows({}, first, first + count - 1);
    for (int i = 0; i < count; ++i) {
        const Slot slot = m_texts.addSlot();
        if (slot >= m_hidden.size())
            m_hidden.resize(slot + 1);
        m_hidden[slot] = false;
        m_visible.push_back(rows());
        m_rows.push_back(slot);
    }
    if (m_exposed)
        endInsertRows();
}

void GridModel::truncateRows(int count)
{
    const int kept = firstVisibleFrom(count);
    const bool tell = m_exposed && kept < rowCount();
    if (tell)
        beginRemoveRows({}, kept, rowCount() - 1);
    forget(std::span(m_rows).subspan(static_cast<std::size_t>(count)));
    m_rows.resize(static_cast<std::size_t>(count));
    m_visible.resize(static_cast<std::size_t>(kept));
    if (tell)
        endRemoveRows();
}

void GridModel::forget(std::span<const Slot> gone)
{
    for (const Slot slot : gone) {
        m_colors.remove(slot);
        m_results.remove(slot);
        m_rowData.remove(slot);
        m_hidden[slot] = false;
    }
    m_texts.freeSlots(gone);
}

void GridModel::setCols(int count)
{
    const int before = cols();
    count = std::max(count, 0);
    if (count == before)
        return;
    if (count > before)
        beginInsertColumns({}, before, count - 1);
    else
        beginRemoveColumns({}, count, before - 1);
    m_texts.setCols(count);
    m_columns.resize(static_cast<std::size_t>(count));
    m_fixedCols = std::min(m_fixedCols, count);
    if (count > before)
        endInsertColumns();
    else
        endRemoveColumns();
    emit headerTextChanged();
}

void GridModel::setFixedRows(int count)
{
    count = std::max(count, 0);
    if (count == m_fixedRows)
        return;
    beginResetModel();
    const bool exposed = std::exchange(m_exposed, false);
    if (count > rows())
        appendRows(count - rows());
    m_fixedRows = count;
    m_exposed = exposed;
    rebuildVisible();
    endResetModel();
    emit headerTextChanged();
}

void GridModel::setFixedCols(int count)
{
    m_fixedCols = std::clamp(count, 0, cols());
    if (rowCount() > 0 && cols() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, cols() - 1));
}

// --- texts ---

QString GridModel::text(int row, int col) const
{
    return holds(row, col) ? view(row, col).toString() : QString();
}

QString GridModel::shownText(int row, int col) const
{
    QString stored = text(row, col);
    if (row < m_fixedRows || !holds(row, col))
        return stored;
    const GridColumn &look = column(col);
    if (!look.list.isEmpty())
        return look.list.shown(stored);
    if (look.check || look.format.isEmpty() || !IsNumeric(stored))
        return look.check ? QString() : stored;
    return Format(Val(stored), look.format);
}

void GridModel::setText(int row, int col, QStringView text)
{
    if (!holds(row, col) || view(row, col) == text)
        return;
    m_texts.setText(key(row), col, text);
    cellChanged(row, col);
}

void GridModel::cellChanged(int row, int col)
{
    if (row < m_fixedRows) {
        emit headerDataChanged(Qt::Horizontal, col, col);
        emit headerTextChanged();
        return;
    }
    const int at = m_exposed ? viewRow(row) : -1;
    if (at >= 0)
        emit dataChanged(index(at, col), index(at, col));
}

void GridModel::rowChanged(int row)
{
    const int at = m_exposed ? viewRow(row) : -1;
    if (at >= 0 && cols() > 0)
        emit dataChanged(index(at, 0), index(at, cols() - 1));
}

int GridModel::insertGridRow(const QStringList &texts, int at)
{
    const std::vector<QStringView> views(texts.begin(), texts.end());
    return insertGridRow(std::span(views), at);
}

int GridModel::insertGridRow(std::span<const QStringView> texts, int at)
{
    const int row = at < 0 ? rows() : std::clamp(at, m_fixedRows, rows());
    const Slot slot = m_texts.addSlot();
    if (slot >= m_hidden.size())
        m_hidden.resize(slot + 1);
    for (int col = 0; col < std::min(cols(), static_cast<int>(texts.size())); ++col)
        m_texts.setText(slot, col, texts[static_cast<std::size_t>(col)]);
    const int place = firstVisibleFrom(row);
    if (m_exposed)
        beginInsertRows({}, place, place);
    m_rows.insert(m_rows.begin() + row, slot);
    for (auto later = m_visible.begin() + place; later != m_visible.end(); ++later)
        ++*later;
    m_visible.insert(m_visible.begin() + place, row);
    if (m_exposed)
        endInsertRows();
    return row;
}

void GridModel::removeGridRow(int row)
{
    if (row < m_fixedRows || row >= rows())
        return;
    const int place = firstVisibleFrom(row);
    const bool shown = !m_hidden[key(row)];
    if (m_exposed && shown)
        beginRemoveRows({}, place, place);
    forget(std::span(m_rows).subspan(static_cast<std::size_t>(row), 1));
    m_rows.erase(m_rows.begin() + row);
    if (shown)
        m_visible.erase(m_visible.begin() + place);
    for (auto later = m_visible.begin() + place; later != m_visible.end(); ++later)
        --*later;
    if (m_exposed && shown)
        endRemoveRows();
}

// --- hiding ---

bool GridModel::rowHidden(int row) const
{
    return row >= 0 && row < rows() && m_hidden[key(row)];
}

void GridModel::setRowHidden(int row, bool hidden)
{
    if (row < 0 || row >= rows() || m_hidden[key(row)] == hidden)
        return;
    if (row < m_fixedRows) {
        m_hidden[key(row)] = hidden;
        emit headerTextChanged();
    } else if (hidden) {
        makeHidden(row);
    } else {
        makeVisible(row);
    }
}

void GridModel::makeHidden(int row)
{
    const int place = firstVisibleFrom(row);
    if (m_exposed)
        beginRemoveRows({}, place, place);
    m_hidden[key(row)] = true;
    m_visible.erase(m_visible.begin() + place);
    if (m_exposed)
        endRemoveRows();
}

void GridModel::makeVisible(int row)
{
    const int place = firstVisibleFrom(row);
    if (m_exposed)
        beginInsertRows({}, place, place);
    m_hidden[key(row)] = false;
    m_visible.insert(m_visible.begin() + place, row);
    if (m_exposed)
        endInsertRows();
}

void GridModel::setRowsVisible(const std::function<bool(int)> &shown)
{
    std::vector<bool> hidden = m_hidden;
    for (int row = m_fixedRows; row < rows(); ++row)
        hidden[key(row)] = !shown(row);
    if (hidden == m_hidden)
        return;
    if (m_exposed)
        beginResetModel();
    m_hidden = std::move(hidden);
    rebuildVisible();
    if (m_exposed)
        endResetModel();
}

void GridModel::rebuildVisible()
{
    m_visible.clear();
    for (int row = m_fixedRows; row < rows(); ++row) {
        if (!m_hidden[key(row)])
            m_visible.push_back(row);
    }
}

int GridModel::firstVisibleFrom(int row) const
{
    return static_cast<int>(std::lower_bound(m_visible.begin(), m_visible.end(), row) - m_visible.begin());
}

int GridModel::viewRow(int row) const
{
    const int place = firstVisibleFrom(row);
    return place < static_cast<int>(m_visible.size()) && gridRow(place) == row ? place : -1;
}

int GridModel::gridRow(int viewRow) const
{
    const bool there = viewRow >= 0 && viewRow < static_cast<int>(m_visible.size());
    return there ? m_visible[static_cast<std::size_t>(viewRow)] : -1;
}

int GridModel::rowOfKey(Slot slot) const
{
    const auto found = std::find(m_rows.begin(), m_rows.end(), slot);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void GridModel::setExposed(bool exposed)
{
    if (exposed == m_exposed)
        return;
    beginResetModel();
    m_exposed = exposed;
    endResetModel();
}

// --- looks ---

QVariant GridModel::rowData(int row) const
{
    return holds(row, 0) ? m_rowData.value(key(row)) : QVariant();
}

void GridModel::setRowData(int row, const QVariant &data)
{
    if (holds(row, 0))
        m_rowData.insert(key(row), data);
}

QColor GridModel::rowColor(int row) const
{
    return holds(row, 0) ? m_colors.value(key(row)) : QColor();
}

void GridModel::setRowColor(int row, const QColor &color)
{
    if (!holds(row, 0))
        return;
    if (color.isValid())
        m_colors.insert(key(row), color);
    else
        m_colors.remove(key(row));
    rowChanged(row);
}

bool GridModel::rowResult(int row) const
{
    return holds(row, 0) && m_results.contains(key(row));
}

void GridModel::setRowResult(int row, bool result)
{
    if (!holds(row, 0))
        return;
    if (result)
        m_results.insert(key(row));
    else
        m_results.remove(key(row));
    rowChanged(row);
}

void GridModel::changeColumn(int col, const std::function<void(GridColumn &)> &change)
{
    if (col < 0 || col >= cols())
        return;
    change(m_columns[static_cast<std::size_t>(col)]);
    if (rowCount() > 0)
        emit dataChanged(index(0, col), index(rowCount() - 1, col));
}

void GridModel::setEditable(std::function<bool(int, int)> editable)
{
    m_editable = std::move(editable);
}

bool GridModel::isEditable(int row, int col) const
{
    return row >= m_fixedRows && col >= m_fixedCols && holds(row, col) && m_editable && m_editable(row, col);
}

int GridModel::findRow(QStringView text, int fromRow, int col, Qt::CaseSensitivity sensitivity, bool fullMatch) const
{
    if (col < 0 || col >= cols())
        return -1;
    for (int row = std::max(fromRow, 0); row < rows(); ++row) {
        const QStringView stored = view(row, col);
        if (fullMatch ? stored.compare(text, sensitivity) == 0 : stored.startsWith(text, sensitivity))
            return row;
    }
    return -1;
}

// --- what a view asks ---

int GridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_exposed ? 0 : static_cast<int>(m_visible.size());
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : cols();
}

QVariant GridModel::checkState(int row, int col) const
{
    return Val(view(row, col)) != 0 ? Qt::Checked : Qt::Unchecked;
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    const int row = index.isValid() ? gridRow(index.row()) : -1;
    const int col = index.column();
    if (!holds(row, col))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return shownText(row, col);
    case Qt::EditRole:
        return text(row, col);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(column(col).alignment);
    case Qt::CheckStateRole:
        return column(col).check ? checkState(row, col) : QVariant();
    case Qt::FontRole:
        return rowResult(row) ? QVariant(boldFont()) : QVariant();
    case Qt::ForegroundRole:
        return rowColor(row).isValid() ? rowColor(row) : QVariant();
    default:
        return {};
    }
}

bool GridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int row = index.isValid() ? gridRow(index.row()) : -1;
    if (!holds(row, index.column()) || (role != Qt::EditRole && role != Qt::CheckStateRole))
        return false;
    const bool on = role == Qt::CheckStateRole && value.toInt() != Qt::Unchecked;
    const QString mark = on ? QStringLiteral("-1") : QStringLiteral("0");
    setText(row, index.column(), role == Qt::EditRole ? value.toString() : mark);
    return true;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    for (int row = m_fixedRows - 1; row >= 0; --row) {
        if (!rowHidden(row))
            return text(row, section);
    }
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags plain = QAbstractTableModel::flags(index);
    const int row = index.isValid() ? gridRow(index.row()) : -1;
    if (!isEditable(row, index.column()))
        return plain;
    return plain | (column(index.column()).check ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}
