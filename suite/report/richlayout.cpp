#include "suite/report/richlayout.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr double unitsPerPoint = 20;

QTextCharFormat formatOf(const RichStyle &style)
{
    constexpr double small = 0.65; // of letters that are raised or lowered
    QFont font(style.family.isEmpty() ? QStringLiteral("DejaVu Sans") : style.family);
    font.setHintingPreference(QFont::PreferNoHinting);
    const double size = style.points * unitsPerPoint * (style.raised != 0 ? small : 1);
    font.setPixelSize(std::max(1, static_cast<int>(size)));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setUnderline(style.underline);
    font.setStrikeOut(style.strike);
    QTextCharFormat format;
    format.setFont(font);
    format.setForeground(style.color.isValid() ? style.color : QColor(Qt::black));
    if (style.backdrop.isValid())
        format.setBackground(style.backdrop);
    return format;
}

EdgePen penOf(const RichEdge &edge)
{
    return {edge.width, edge.color, edge.doubled};
}

double sumOfHeights(const std::vector<ParagraphLayout> &paragraphs)
{
    return std::accumulate(paragraphs.begin(), paragraphs.end(), 0.0,
                           [](double sum, const ParagraphLayout &one) { return sum + one.height(); });
}

} // namespace

// --- paragraphs ---

ParagraphLayout::ParagraphLayout(const RichParagraph &paragraph, double width)
    : m_paragraph(paragraph)
    , m_width(std::max(unitsPerPoint, width - paragraph.left - paragraph.right))
    , m_height(paragraph.before)
{
    int from = 0;
    for (const RichPicture &picture : paragraph.pictures) {
        if (picture.at > from)
            addText(from, picture.at);
        addPicture(picture);
        from = picture.at + 1;
    }
    if (from < paragraph.text.size() || from == 0)
        addText(from, static_cast<int>(paragraph.text.size()));
    m_height += paragraph.after;
}

QList<QTextLayout::FormatRange> ParagraphLayout::formats(int from, int to) const
{
    QList<QTextLayout::FormatRange> ranges;
    for (const RichRun &run : m_paragraph.runs) {
        const int start = std::max(run.start, from);
        const int end = std::min(run.start + run.length, to);
        if (start < end)
            ranges.append({start - from, end - start, formatOf(run.style)});
    }
    return ranges;
}

double ParagraphLayout::lineHeight(double natural) const
{
    if (m_paragraph.lineHeight < 0)
        return -m_paragraph.lineHeight;
    return std::max(m_paragraph.lineHeight, natural * m_paragraph.lineFactor);
}

void ParagraphLayout::addText(int from, int to)
{
    auto layout =
        std::make_unique<QTextLayout>(m_paragraph.text.mid(from, to - from), formatOf(m_paragraph.endStyle).font());
    QTextOption option(m_paragraph.alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    constexpr double usualTab = 720;
    option.setTabStopDistance(usualTab);
    QList<QTextOption::Tab> tabs = m_paragraph.tabs;
    for (QTextOption::Tab &tab : tabs)
        tab.position = std::max(0.0, tab.position - m_paragraph.left);
    option.setTabs(tabs);
    layout->setTextOption(option);
    layout->setFormats(formats(from, to));
    layout->beginLayout();
    double height = 0;
    bool first = from == 0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        const double indent = first ? std::max(m_paragraph.first, -m_paragraph.left) : 0;
        first = false;
        line.setLineWidth(std::max(unitsPerPoint, m_width - indent));
        const double whole = lineHeight(line.height());
        line.setPosition({indent, height + (whole - line.height())});
        height += whole;
    }
    layout->endLayout();
    m_parts.push_back({m_height, height, std::move(layout), {}, {}});
    m_height += height;
}

void ParagraphLayout::addPicture(const RichPicture &picture)
{
    QSizeF size = picture.size;
    if (size.width() > m_width)
        size *= m_width / size.width();
    const double free = m_width - size.width();
    const double left = m_paragraph.alignment.testFlag(Qt::AlignRight)     ? free
                        : m_paragraph.alignment.testFlag(Qt::AlignHCenter) ? free / 2
                                                                           : 0;
    m_parts.push_back({m_height, size.height(), nullptr, picture.image, QRectF({left, 0}, size)});
    m_height += size.height();
}

void ParagraphLayout::draw(QPainter &painter, const QPointF &corner) const
{
    for (const Part &part : m_parts) {
        const QPointF at = corner + QPointF(m_paragraph.left, part.top);
        if (part.text)
            part.text->draw(&painter, at);
        else
            painter.drawImage(part.place.translated(at), part.image);
    }
    drawEdges(painter, corner);
}

void ParagraphLayout::drawEdges(QPainter &painter, const QPointF &corner) const
{
    constexpr double away = 20; // of the text
    const QRectF box(corner.x() + m_paragraph.left - away, corner.y() + m_paragraph.before, m_width + 2 * away,
                     m_height - m_paragraph.before - m_paragraph.after);
    EdgeCollector edges;
    edges.addHorizontal(box.top(), box.left(), box.right(), penOf(m_paragraph.edges[TopSide]));
    edges.addHorizontal(box.bottom(), box.left(), box.right(), penOf(m_paragraph.edges[BottomSide]));
    edges.addVertical(box.left(), box.top(), box.bottom(), penOf(m_paragraph.edges[LeftSide]));
    edges.addVertical(box.right(), box.top(), box.bottom(), penOf(m_paragraph.edges[RightSide]));
    edges.draw(painter);
}

void ParagraphLayout::addSpans(LineSpans &spans, double top) const
{
    for (const Part &part : m_parts) {
        if (!part.text)
            spans.emplace_back(top + part.top, top + part.top + part.height);
        for (int i = 0; part.text && i < part.text->lineCount(); ++i) {
            const QRectF line = part.text->lineAt(i).rect();
            spans.emplace_back(top + part.top + line.top(), top + part.top + line.bottom());
        }
    }
}

// --- blocks ---

RichLayout::RichLayout(const RichBlock &block, double width)
    : m_block(block)
{
    if (block.isParagraph()) {
        m_paragraph.emplace_back(block.paragraph, width);
        m_height = m_paragraph.front().height();
        return;
    }
    for (size_t i = 0; i < block.rows.size(); ++i)
        addRow(block.rows[i], i, width);
    findMerged();
    setHeights();
}

void RichLayout::addRow(const RichRow &row, size_t index, double width)
{
    const double whole = row.cells.back().right - row.cells.front().left;
    const double free = width - whole;
    const double shift = row.alignment.testFlag(Qt::AlignHCenter) ? free / 2 - row.cells.front().left
                         : row.alignment.testFlag(Qt::AlignRight) ? free - row.cells.front().left
                                                                  : 0;
    for (const RichCell &form : row.cells) {
        Cell cell;
        cell.form = &form;
        cell.row = cell.lastRow = index;
        cell.left = form.left + shift;
        cell.right = form.right + shift;
        const double room = cell.right - cell.left - form.paddingLeft - form.paddingRight;
        if (!form.continued) {
            for (const RichParagraph &paragraph : form.paragraphs)
                cell.paragraphs.emplace_back(paragraph, room);
        }
        cell.height = sumOfHeights(cell.paragraphs) + form.paddingTop + form.paddingBottom;
        m_cells.push_back(std::move(cell));
    }
}

/// A cell that goes on below reaches down to the last of the cells that continue it.
void RichLayout::findMerged()
{
    constexpr double near = 30; // word processors place edges of one column a little apart
    for (size_t i = 0; i < m_cells.size(); ++i) {
        if (!m_cells[i].form->continued)
            continue;
        for (size_t above = i; above-- > 0;) {
            if (m_cells[above].row + 1 < m_cells[i].row)
                break;
            if (m_cells[above].row + 1 == m_cells[i].row && std::abs(m_cells[above].left - m_cells[i].left) < near)
                m_cells[above].mergedBelow = true;
        }
    }
    for (Cell &cell : m_cells) {
        if (!cell.form->startsMerge)
            continue;
        for (const Cell &below : m_cells) {
            if (below.row == cell.lastRow + 1 && below.form->continued && std::abs(below.left - cell.left) < near)
                cell.lastRow = below.row;
        }
    }
}

void RichLayout::setHeights()
{
    std::vector<double> heights;
    for (const RichRow &row : m_block.rows)
        heights.push_back(std::abs(row.height));
    for (const Cell &cell : m_cells) {
        if (cell.lastRow == cell.row && !cell.form->continued && m_block.rows[cell.row].height >= 0)
            heights[cell.row] = std::max(heights[cell.row], cell.height);
    }
    for (const Cell &cell : m_cells) {
        const auto first = heights.begin() + static_cast<qsizetype>(cell.row);
        const auto last = heights.begin() + static_cast<qsizetype>(cell.lastRow);
        if (cell.lastRow > cell.row)
            *last += std::max(0.0, cell.height - std::accumulate(first, last + 1, 0.0));
    }
    m_tops.push_back(0);
    for (const double height : heights)
        m_tops.push_back(m_tops.back() + height);
    m_height = m_tops.back();
}

double RichLayout::topOf(const Cell &cell) const
{
    const double room = m_tops[cell.lastRow + 1] - m_tops[cell.row] - cell.height;
    const double free = std::max(0.0, room);
    const double shift = cell.form->vertical == Qt::AlignVCenter  ? free / 2
                         : cell.form->vertical == Qt::AlignBottom ? free
                                                                  : 0;
    return m_tops[cell.row] + cell.form->paddingTop + shift;
}

void RichLayout::draw(QPainter &painter, const QPointF &corner, EdgeCollector &edges) const
{
    for (const ParagraphLayout &paragraph : m_paragraph)
        paragraph.draw(painter, corner);
    for (const Cell &cell : m_cells) {
        const QRectF box(corner.x() + cell.left, corner.y() + m_tops[cell.row], cell.right - cell.left,
                         m_tops[cell.lastRow + 1] - m_tops[cell.row]);
        if (cell.form->shade.isValid() && !cell.form->continued)
            painter.fillRect(box, cell.form->shade);
        double top = corner.y() + topOf(cell);
        for (const ParagraphLayout &paragraph : cell.paragraphs) {
            paragraph.draw(painter, {box.left() + cell.form->paddingLeft, top});
            top += paragraph.height();
        }
        const double bottom = corner.y() + m_tops[cell.row + 1];
        const RichEdges &ruled = cell.form->edges;
        if (!cell.form->continued)
            edges.addHorizontal(box.top(), box.left(), box.right(), penOf(ruled[TopSide]));
        if (!cell.mergedBelow)
            edges.addHorizontal(bottom, box.left(), box.right(), penOf(ruled[BottomSide]));
        edges.addVertical(box.left(), box.top(), bottom, penOf(ruled[LeftSide]));
        edges.addVertical(box.right(), box.top(), bottom, penOf(ruled[RightSide]));
    }
}

void RichLayout::addSpans(LineSpans &spans) const
{
    for (const ParagraphLayout &paragraph : m_paragraph)
        paragraph.addSpans(spans, 0);
    for (const Cell &cell : m_cells) {
        double top = topOf(cell);
        for (const ParagraphLayout &paragraph : cell.paragraphs) {
            paragraph.addSpans(spans, top);
            top += paragraph.height();
        }
    }
}
