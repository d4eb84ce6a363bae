#include "controls/gridheader.h"

#include "controls/gridmodel.h"

#include <QPainter>
#include <QStyleOptionHeader>

#include <numeric>

namespace {

constexpr int Margin = 4;
constexpr int CaptionFlags = Qt::AlignCenter | Qt::TextWordWrap;

} // namespace

GridHeader::GridHeader(GridModel *model, QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
    , m_model(model)
{
    setSectionsClickable(true);
    setHighlightSections(false);
    connect(this, &QHeaderView::sectionResized, this, &GridHeader::relayout);
    connect(this, &QHeaderView::sectionCountChanged, this, &GridHeader::relayout);
    connect(model, &GridModel::headerTextChanged, this, &GridHeader::relayout);
}

void GridHeader::setMergeHeaders(bool merge)
{
    m_merge = merge;
    relayout();
}

void GridHeader::relayout()
{
    viewport()->update();
    m_dirty = true;
    if (m_pending)
        return;
    m_pending = true;
    // Captions come one after the other; the height is looked at once, when all are there.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pending = false;
            if (height() != sizeHint().height())
                emit geometriesChanged();
        },
        Qt::QueuedConnection);
}

std::vector<int> GridHeader::shownRows() const
{
    std::vector<int> rows;
    for (int row = 0; row < m_model->fixedRows(); ++row) {
        if (!m_model->rowHidden(row))
            rows.push_back(row);
    }
    return rows;
}

int GridHeader::stepCol(int col, int step) const
{
    do {
        col += step;
    } while (col >= 0 && col < count() && isSectionHidden(col));
    return col >= 0 && col < count() ? col : -1;
}

int GridHeader::stepRow(int row, int step) const
{
    do {
        row += step;
    } while (row >= 0 && row < m_model->fixedRows() && m_model->rowHidden(row));
    return row >= 0 && row < m_model->fixedRows() ? row : -1;
}

GridHeader::Block GridHeader::widest(int row, int col) const
{
    Block block{row, row, col, col};
    const QString text = m_model->text(row, col);
    if (!m_merge || text.isEmpty())
        return block;
    for (int next = stepCol(col, 1); next >= 0 && m_model->text(row, next) == text; next = stepCol(next, 1))
        block.right = next;
    for (int next = stepCol(col, -1); next >= 0 && m_model->text(row, next) == text; next = stepCol(next, -1))
        block.left = next;
    return block;
}

GridHeader::Block GridHeader::blockAt(int row, int col) const
{
    Block block = widest(row, col);
    const QString text = m_model->text(row, col);
    if (!m_merge || text.isEmpty())
        return block;
    // Rows join only where the cell is equally wide, so that every cell belongs to one block alone.
    const auto joins = [&](int other) {
        if (other < 0 || m_model->text(other, col) != text)
            return false;
        const Block there = widest(other, col);
        return there.left == block.left && there.right == block.right;
    };
    for (int next = stepRow(row, 1); joins(next); next = stepRow(next, 1))
        block.bottom = next;
    for (int next = stepRow(row, -1); joins(next); next = stepRow(next, -1))
        block.top = next;
    return block;
}

int GridHeader::blockWidth(const Block &block) const
{
    int width = 0;
    for (int col = block.left; col <= block.right; ++col)
        width += sectionSize(col);
    return width;
}

int GridHeader::captionHeight(const Block &block) const
{
    const int width = std::max(1, blockWidth(block) - 2 * Margin);
    const QString text = m_model->text(block.top, block.left);
    return fontMetrics().boundingRect(0, 0, width, 10000, CaptionFlags, text).height() + 2 * Margin;
}

/// A block over several rows that needs more room than they have gets it from its last row.
std::vector<int> GridHeader::computedHeights() const
{
    std::vector<int> heights(static_cast<std::size_t>(m_model->fixedRows()), 0);
    for (const int row : shownRows()) {
        int &height = heights[static_cast<std::size_t>(row)];
        height = fontMetrics().height() + 2 * Margin;
        for (int col = stepCol(-1, 1); col >= 0; col = stepCol(col, 1)) {
            const Block block = blockAt(row, col);
            if (block.bottom != row)
                continue;
            const int above = std::accumulate(heights.begin() + block.top, heights.begin() + row, 0);
            height = std::max(height, captionHeight(block) - above);
        }
    }
    return heights;
}

const std::vector<int> &GridHeader::heights() const
{
    if (m_dirty) {
        m_heights = computedHeights();
        m_dirty = false;
    }
    return m_heights;
}

QSize GridHeader::sizeHint() const
{
    const std::vector<int> &rows = heights();
    return {QHeaderView::sizeHint().width(), std::accumulate(rows.begin(), rows.end(), 0)};
}

QRect GridHeader::blockRect(const Block &block) const
{
    const std::vector<int> &rows = heights();
    const int top = std::accumulate(rows.begin(), rows.begin() + block.top, 0);
    const int height = std::accumulate(rows.begin() + block.top, rows.begin() + block.bottom + 1, 0);
    return {sectionViewportPosition(block.left), top, blockWidth(block), height};
}

void GridHeader::drawBlock(QPainter *painter, const Block &block, int logicalIndex) const
{
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = blockRect(block);
    option.section = logicalIndex;
    option.position = QStyleOptionHeader::Middle;
    const bool arrow = isSortIndicatorShown() && sortIndicatorSection() == logicalIndex &&
                       stepRow(block.bottom, 1) < 0 && block.left == block.right;
    if (arrow) {
        const bool ascending = sortIndicatorOrder() == Qt::AscendingOrder;
        option.sortIndicator = ascending ? QStyleOptionHeader::SortDown : QStyleOptionHeader::SortUp;
    }
    style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);
    painter->setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    const QRect inside = option.rect.adjusted(Margin, 0, -Margin, 0);
    painter->drawText(inside, CaptionFlags, m_model->text(block.top, block.left));
    if (arrow) {
        option.rect = style()->subElementRect(QStyle::SE_HeaderArrow, &option, this);
        style()->drawPrimitive(QStyle::PE_IndicatorHeaderArrow, &option, painter, this);
    }
}

void GridHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    if (!rect.isValid())
        return;
    painter->save();
    painter->setClipRect(rect); // each section shows its part of the block that it belongs to
    for (const int row : shownRows()) {
        const Block block = blockAt(row, logicalIndex);
        if (block.top == row)
            drawBlock(painter, block, logicalIndex);
    }
    painter->restore();
}
