#include "suite/report/reportlayout.h"

#include "suite/report/celllayout.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double sidePadding = 40; // of a cell, two points
constexpr double topPadding = 20;
constexpr double rule = 10; // half a point

Qt::Alignment alignmentOf(int align)
{
    switch (align) {
    case ReportRow::Centre:
    case ReportRow::CentredHeader:
        return Qt::AlignHCenter;
    case ReportRow::Right:
        return Qt::AlignRight;
    case ReportRow::Justified:
        return Qt::AlignJustify;
    default:
        return Qt::AlignLeft;
    }
}

bool isHeader(const ReportBlock &block)
{
    return block.kind == ReportBlock::Kind::Row && block.form->header();
}

/// Height of one cell. Most hold one short text without tokens, which needs no layout to be measured.
double cellHeight(FontMeasure &measure, const QString &text, TextLook &look, double width, double scale)
{
    if (!HasTokens(text) && !text.contains(u'\n') && measure.fits(text, look, width, scale))
        return measure.height(look, scale);
    return CellLayout(text, look, Qt::AlignLeft, width, scale).height();
}

} // namespace

QPageLayout PageFor(const ReportDocument &document, bool mayLie)
{
    constexpr double much = 1.3;
    constexpr double margin = 36; // half an inch
    const bool lies = mayLie && document.widest() > much;
    return {QPageSize(QPageSize::A4), lies ? QPageLayout::Landscape : QPageLayout::Portrait,
            QMarginsF(margin, margin, margin, margin)};
}

ReportLayout::ReportLayout(const ReportDocument &document, const QPageLayout &page)
    : m_document(document)
    , m_pageSize(page.fullRectPixels(unitsPerInch).size())
    , m_content(page.paintRectPixels(unitsPerInch))
{
    const double sides = m_pageSize.width() - m_content.width();
    m_portraitWidth = std::min(m_pageSize.width(), m_pageSize.height()) - sides;
    paginate();
}

void ReportLayout::paginate()
{
    m_pages.emplace_back();
    const std::vector<ReportBlock> &blocks = m_document.blocks();
    for (size_t block = 0; block < blocks.size(); ++block) {
        if (block == 0 || blocks[block].kind != blocks[block - 1].kind ||
            blocks[block].table != blocks[block - 1].table)
            m_tableStart = block;
        if (blocks[block].kind == ReportBlock::Kind::Break)
            newPage(block);
        else
            place(block);
    }
}

void ReportLayout::newPage(size_t block)
{
    m_pages.emplace_back();
    m_used = 0;
    repeatHeader(block);
}

void ReportLayout::repeatHeader(size_t block)
{
    const std::vector<ReportBlock> &blocks = m_document.blocks();
    if (blocks[block].kind != ReportBlock::Kind::Row || isHeader(blocks[block]))
        return;
    for (size_t header = m_tableStart; isHeader(blocks[header]); ++header) {
        const double height = heightOf(blocks[header]);
        m_pages.back().push_back({header, 0, height});
        m_used += height;
    }
}

void ReportLayout::place(size_t block)
{
    const double height = heightOf(m_document.blocks()[block]);
    if (m_used + height > m_content.height() && m_used > 0)
        newPage(block);
    const TextLook &look = m_document.blocks()[block].look;
    const double line = lineHeight(look, scaleOf(m_document.blocks()[block]));
    double done = 0;
    while (m_used + (height - done) > m_content.height()) {
        const double room = std::max(line, std::floor((m_content.height() - m_used) / line) * line);
        m_pages.back().push_back({block, done, room});
        done += room;
        m_pages.emplace_back();
        m_used = 0;
    }
    m_pages.back().push_back({block, done, height - done});
    m_used += height - done;
}

double ReportLayout::scaleOf(const ReportBlock &block) const
{
    if (block.kind != ReportBlock::Kind::Row)
        return 1;
    const double columns = ColumnsOfLine(block.look.pitch) * m_content.width() / m_portraitWidth;
    return std::min(1.0, columns / block.form->columns());
}

double ReportLayout::lineHeight(const TextLook &look, double scale) const
{
    return m_measure.height(look, scale);
}

double ReportLayout::heightOf(const ReportBlock &block) const
{
    TextLook look = block.look;
    if (block.kind == ReportBlock::Kind::Line)
        return cellHeight(m_measure, block.texts.value(0), look, m_content.width(), 1);
    const double scale = scaleOf(block);
    const double column = m_content.width() / block.form->columns();
    double height = lineHeight(look, scale);
    for (int cell = 0; cell < block.texts.size(); ++cell) {
        const double width = block.form->widths[static_cast<size_t>(cell)] * column - 2 * sidePadding;
        height = std::max(height, cellHeight(m_measure, block.texts[cell], look, width, scale));
    }
    return height + 2 * topPadding;
}

void ReportLayout::drawPage(QPainter &painter, int page) const
{
    double top = m_content.top();
    for (const Item &item : m_pages[static_cast<size_t>(page)]) {
        const ReportBlock &block = m_document.blocks()[item.block];
        const bool sliced = item.sliceTop > 0 || item.sliceHeight < heightOf(block);
        painter.save();
        if (sliced)
            painter.setClipRect(QRectF(0, top, m_pageSize.width(), item.sliceHeight));
        drawBlock(painter, block, top - item.sliceTop);
        painter.restore();
        top += item.sliceHeight;
    }
}

void ReportLayout::drawBlock(QPainter &painter, const ReportBlock &block, double top) const
{
    TextLook look = block.look;
    painter.setPen(Qt::black);
    if (block.kind == ReportBlock::Kind::Line) {
        CellLayout(block.texts.value(0), look, Qt::AlignLeft, m_content.width(), 1)
            .draw(painter, {m_content.left(), top});
        return;
    }
    const double scale = scaleOf(block);
    const double column = m_content.width() / block.form->columns();
    const double height = heightOf(block);
    double left = m_content.left();
    for (int cell = 0; cell < block.texts.size(); ++cell) {
        const double width = block.form->widths[static_cast<size_t>(cell)] * column;
        const Qt::Alignment alignment = alignmentOf(block.form->aligns[static_cast<size_t>(cell)]);
        CellLayout(block.texts[cell], look, alignment, width - 2 * sidePadding, scale)
            .draw(painter, {left + sidePadding, top + topPadding});
        drawEdges(painter, *block.form, cell, {left, top, width, height});
        left += width;
    }
}

void ReportLayout::drawEdges(QPainter &painter, const RowForm &form, int cell, const QRectF &box) const
{
    painter.setPen(QPen(Qt::black, rule));
    if (form.ruled(form.left, cell))
        painter.drawLine(box.topLeft(), box.bottomLeft());
    if (form.ruled(form.right, cell))
        painter.drawLine(box.topRight(), box.bottomRight());
    if (form.ruled(form.top, cell))
        painter.drawLine(box.topLeft(), box.topRight());
    if (form.ruled(form.bottom, cell))
        painter.drawLine(box.bottomLeft(), box.bottomRight());
    painter.setPen(Qt::black);
}
