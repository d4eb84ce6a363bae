#include "suite/report/reportlayout.h"

#include <QElapsedTimer>
#include <QPainter>

#include <algorithm>

namespace {

constexpr double sidePadding = 40; // of a cell, two points
constexpr double topPadding = 20;
constexpr double unitsPerPoint = 20;

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
    if (block.kind == ReportBlock::Kind::Rich)
        return !block.rich().isParagraph() && block.rich().rows.front().header;
    return block.kind == ReportBlock::Kind::Row && block.form->header();
}

bool isRow(const ReportBlock &block)
{
    return block.kind == ReportBlock::Kind::Row ||
           (block.kind == ReportBlock::Kind::Rich && !block.rich().isParagraph());
}

bool isEmptyParagraph(const ReportBlock &block)
{
    return block.kind == ReportBlock::Kind::Rich && block.rich().isParagraph() && block.rich().paragraph.isEmpty();
}

bool beginsPage(const ReportBlock &block)
{
    return block.kind == ReportBlock::Kind::Break ||
           (block.kind == ReportBlock::Kind::Rich && block.rich().paragraph.breaksPage);
}

bool isEmptyLine(const ReportBlock &block)
{
    return isEmptyParagraph(block) ||
           (block.kind == ReportBlock::Kind::Line && block.plainTexts().join(QString()).isEmpty());
}

/// Whether a block may be the title of the next one: a line, a row of captions, one cell over a row of several.
bool mayBeTitle(const std::vector<ReportBlock> &blocks, size_t number)
{
    const ReportBlock &block = blocks[number];
    if (!isRow(block) || isHeader(block))
        return true;
    return block.texts.size() == 1 && number + 1 < blocks.size() && blocks[number + 1].texts.size() > 1;
}

/// Whether a row belongs to the table of the row before it. A table of captions alone may have a gap below it.
bool joinsTable(const std::vector<ReportBlock> &blocks, size_t number)
{
    const ReportBlock &block = blocks[number];
    const ReportBlock &before = blocks[number - 1];
    if (isEmptyParagraph(block))
        return isHeader(before);
    if (isRow(block) && isEmptyParagraph(before))
        return number > 1 && isHeader(blocks[number - 2]);
    return isRow(block) && isRow(before) && block.table == before.table;
}

/// The lowest place, not below `most`, where a page can end without cutting a line; `most` itself when there is none.
double cutBefore(const LineSpans &lines, double from, double most)
{
    double best = from;
    for (const auto &[top, bottom] : lines) {
        if (bottom > most || bottom <= best)
            continue;
        const double cut = bottom;
        const auto divides = [cut](const auto &line) { return line.first < cut - 1 && line.second > cut + 1; };
        if (std::none_of(lines.begin(), lines.end(), divides))
            best = cut;
    }
    return best > from ? best : most;
}

} // namespace

QPageLayout PageFor(const ReportDocument &document, bool mayLie)
{
    constexpr double much = 1.3;
    const std::vector<ReportBlock> &blocks = document.blocks();
    const bool form = !blocks.empty() && blocks.front().kind == ReportBlock::Kind::Rich;
    if (form) {
        const RichPages &pages = *blocks.front().pages;
        const bool lies = pages.paper.width() > pages.paper.height();
        const QSizeF upright = lies ? pages.paper.transposed() : pages.paper;
        return {QPageSize(upright / unitsPerPoint, QPageSize::Point, {}, QPageSize::FuzzyMatch),
                lies ? QPageLayout::Landscape : QPageLayout::Portrait, pages.margins / unitsPerPoint};
    }
    const bool lies = mayLie && document.widest() > much;
    return {QPageSize(QPageSize::A4), lies ? QPageLayout::Landscape : QPageLayout::Portrait,
            document.margins() / unitsPerPoint};
}

ReportLayout::ReportLayout(std::shared_ptr<const ReportDocument> document, const QPageLayout &page)
    : m_document(std::move(document))
    , m_page(page)
    , m_pageSize(page.fullRectPixels(unitsPerInch).size())
    , m_content(page.paintRectPixels(unitsPerInch))
    , m_pages(1)
{
    const double sides = m_pageSize.width() - m_content.width();
    m_portraitWidth = std::min(m_pageSize.width(), m_pageSize.height()) - sides;
    layOutFooter();
}

// --- laying out ---

bool ReportLayout::layOutFor(int milliseconds)
{
    constexpr int atOnce = 32;
    QElapsedTimer clock;
    clock.start();
    while (!isWhole() && clock.elapsed() < milliseconds) {
        for (int i = 0; i < atOnce && !isWhole(); ++i)
            layOutNext();
    }
    return isWhole();
}

double ReportLayout::partDone() const
{
    return isWhole() ? 1 : static_cast<double>(m_next) / static_cast<double>(m_document->blocks().size());
}

int ReportLayout::pageCount()
{
    while (!isWhole())
        layOutNext();
    return pagesSoFar();
}

bool ReportLayout::hasPage(int page)
{
    // A page is done once the next one has begun.
    while (!isWhole() && page + 1 >= pagesSoFar())
        layOutNext();
    return page < pagesSoFar();
}

int ReportLayout::pageOf(size_t block)
{
    while (!isWhole() && m_next <= block)
        layOutNext();
    return m_pageOfBlock[block];
}

void ReportLayout::layOutNext()
{
    const size_t number = m_next++;
    const std::vector<ReportBlock> &blocks = m_document->blocks();
    const ReportBlock &block = blocks[number];
    if (number == 0 || !joinsTable(blocks, number))
        m_tableStart = number;
    const bool breaks = block.kind == ReportBlock::Kind::Break;
    if (breaks || (m_used > 0 && (beginsPage(block) || wouldStandAlone(number))))
        newPage(number);
    if (!breaks)
        place(number);
    m_pageOfBlock.resize(number + 1, pagesSoFar() - 1);
}

/// Whether a title, with those that follow it, would be left at the foot of a page without the row that it belongs to.
bool ReportLayout::wouldStandAlone(size_t block)
{
    constexpr size_t mostTitles = 12;
    constexpr double mostOfPage = 0.25;
    const std::vector<ReportBlock> &blocks = m_document->blocks();
    if (isEmptyLine(blocks[block]))
        return false;
    double height = 0;
    for (size_t at = block; at < std::min(blocks.size(), block + mostTitles); ++at) {
        if (height > mostOfPage * m_content.height() || (at > block && beginsPage(blocks[at])))
            return false;
        const double titles = height;
        height += laid(at).height;
        if (!mayBeTitle(blocks, at))
            return titles > 0 && height > room() && height <= m_content.height();
    }
    return false;
}

void ReportLayout::newPage(size_t block)
{
    m_pages.emplace_back();
    m_used = 0;
    repeatHeader(block);
}

void ReportLayout::repeatHeader(size_t block)
{
    const std::vector<ReportBlock> &blocks = m_document->blocks();
    if (!isRow(blocks[block]) || isHeader(blocks[block]))
        return;
    for (size_t header = m_tableStart; isHeader(blocks[header]); ++header) {
        const double height = laid(header).height;
        put({header, 0, 0, height, true});
    }
}

void ReportLayout::put(const Item &item)
{
    m_pages.back().push_back(item);
    m_pages.back().back().top = m_content.top() + m_used;
    m_used += item.sliceHeight;
}

void ReportLayout::place(size_t block)
{
    constexpr double rounding = 0.5;
    const double height = laid(block).height;
    if (height > room() + rounding && m_used > 0) {
        if (isEmptyParagraph(m_document->blocks()[block]))
            return; // no page for nothing
        newPage(block);
    }
    m_pageOfBlock.resize(block + 1, pagesSoFar() - 1);
    if (height <= room() + rounding)
        put({block, 0, 0, height, true});
    else
        placeSlices(block, laid(block));
}

void ReportLayout::placeSlices(size_t block, const Laid &laid)
{
    LineSpans lines;
    for (const CellLayout &cell : laid.cells)
        cell.addSpans(lines, m_document->blocks()[block].kind == ReportBlock::Kind::Row ? topPadding : 0);
    if (laid.rich)
        laid.rich->addSpans(lines);
    double done = 0;
    while (laid.height - done > room()) {
        const double cut = cutBefore(lines, done, done + std::max(1.0, room()));
        put({block, 0, done, cut - done, false});
        done = cut;
        m_pages.emplace_back();
        m_used = 0;
    }
    put({block, 0, done, laid.height - done, false});
}

// --- blocks ---

double ReportLayout::scaleOf(const ReportBlock &block) const
{
    if (block.kind != ReportBlock::Kind::Row)
        return 1;
    const double columns = ColumnsOfLine(block.look.pitch) * m_content.width() / m_portraitWidth;
    return std::min(1.0, columns / block.form->columns());
}

const ReportLayout::Laid &ReportLayout::laid(size_t block)
{
    constexpr size_t kept = 400; // more than a page holds
    const auto found = m_laid.find(block);
    if (found != m_laid.end())
        return found->second;
    if (m_laid.size() >= kept)
        m_laid.clear();
    return m_laid.emplace(block, layOut(m_document->blocks()[block])).first->second;
}

ReportLayout::Laid ReportLayout::layOut(const ReportBlock &block)
{
    if (block.kind == ReportBlock::Kind::Rich)
        return layOutRich(block);
    Laid laid;
    laid.left = m_content.left();
    TextLook look = block.look;
    if (block.kind == ReportBlock::Kind::Line) {
        laid.cells.emplace_back(m_fonts, m_document->images(), block.texts.value(0), look,
                                CellLayout::Form{Qt::AlignLeft, m_content.width(), 1});
        laid.height = laid.cells.back().height();
        return laid;
    }
    const double scale = scaleOf(block);
    const double column = m_content.width() / block.form->columns();
    laid.height = m_fonts.face(look, scale).height();
    laid.cells.reserve(static_cast<size_t>(block.texts.size()));
    for (size_t cell = 0; cell < static_cast<size_t>(block.texts.size()); ++cell) {
        const double width = block.form->widths[cell] * column - 2 * sidePadding;
        laid.cells.emplace_back(m_fonts, m_document->images(), block.texts[static_cast<qsizetype>(cell)], look,
                                CellLayout::Form{alignmentOf(block.form->aligns[cell]), width, scale});
        laid.height = std::max(laid.height, laid.cells.back().height());
    }
    laid.height += 2 * topPadding;
    return laid;
}

ReportLayout::Laid ReportLayout::layOutRich(const ReportBlock &block)
{
    Laid laid;
    const QMarginsF &margins = block.pages->margins;
    laid.left = margins.left();
    laid.rich = std::make_unique<RichLayout>(block.rich(), m_pageSize.width() - margins.left() - margins.right());
    laid.height = laid.rich->height();
    return laid;
}

void ReportLayout::layOutFooter()
{
    double height = 0;
    for (const ReportBlock &block : m_document->footer())
        height += layOut(block).height;
    m_footerHeight = std::min(height, m_content.height() / 2);
    m_content.setHeight(m_content.height() - m_footerHeight);
}

// --- drawing ---

QRectF ReportLayout::boxOf(const ReportBlock &block, const Laid &laid, int cell) const
{
    if (block.kind != ReportBlock::Kind::Row)
        return {laid.left, 0, m_pageSize.width() - 2 * laid.left, laid.height};
    const double column = m_content.width() / block.form->columns();
    double left = m_content.left();
    for (size_t i = 0; i < static_cast<size_t>(cell); ++i)
        left += block.form->widths[i] * column;
    return {left, 0, block.form->widths[static_cast<size_t>(cell)] * column, laid.height};
}

QRectF ReportLayout::placeOf(size_t block, int cell)
{
    const Page &page = m_pages[static_cast<size_t>(pageOf(block))];
    const auto item = std::find_if(page.begin(), page.end(), [block](const Item &one) { return one.block == block; });
    const double top = item == page.end() ? m_content.top() : item->top;
    return boxOf(m_document->blocks()[block], laid(block), cell).translated(0, top);
}

void ReportLayout::drawPage(QPainter &painter, int page)
{
    if (!hasPage(page))
        return;
    EdgeCollector edges;
    painter.setPen(Qt::black);
    for (const Item &item : m_pages[static_cast<size_t>(page)])
        drawItem(painter, item, edges);
    drawFooter(painter, page, edges);
    edges.draw(painter);
}

void ReportLayout::drawItem(QPainter &painter, const Item &item, EdgeCollector &edges)
{
    const ReportBlock &block = m_document->blocks()[item.block];
    const double top = item.top - item.sliceTop;
    if (item.whole) {
        drawLaid(painter, block, laid(item.block), top, edges);
        return;
    }
    EdgeCollector own; // cut off with the text
    painter.save();
    painter.setClipRect(QRectF(0, item.top, m_pageSize.width(), item.sliceHeight));
    drawLaid(painter, block, laid(item.block), top, own);
    own.draw(painter);
    painter.restore();
}

void ReportLayout::drawLaid(QPainter &painter, const ReportBlock &block, const Laid &laid, double top,
                            EdgeCollector &edges) const
{
    if (laid.rich) {
        laid.rich->draw(painter, {laid.left, top}, edges);
        return;
    }
    const bool row = block.kind == ReportBlock::Kind::Row;
    const double column = row ? m_content.width() / block.form->columns() : 0;
    double left = laid.left;
    for (size_t cell = 0; cell < laid.cells.size(); ++cell) {
        if (!row) {
            laid.cells[cell].draw(painter, {left, top});
            continue;
        }
        const double width = block.form->widths[cell] * column;
        laid.cells[cell].draw(painter, {left + sidePadding, top + topPadding});
        drawEdges(edges, *block.form, static_cast<int>(cell), {left, top, width, laid.height});
        left += width;
    }
}

void ReportLayout::drawEdges(EdgeCollector &edges, const RowForm &form, int cell, const QRectF &box)
{
    if (form.ruled(form.top, cell))
        edges.addHorizontal(box.top(), box.left(), box.right());
    if (form.ruled(form.bottom, cell))
        edges.addHorizontal(box.bottom(), box.left(), box.right());
    if (form.ruled(form.left, cell))
        edges.addVertical(box.left(), box.top(), box.bottom());
    if (form.ruled(form.right, cell))
        edges.addVertical(box.right(), box.top(), box.bottom());
}

void ReportLayout::drawFooter(QPainter &painter, int page, EdgeCollector &edges)
{
    double top = m_content.bottom();
    for (ReportBlock block : m_document->footer()) {
        for (QString &text : block.texts)
            text.replace(pageNumberMark, QString::number(page + 1));
        const Laid one = layOut(block);
        drawLaid(painter, block, one, top, edges);
        top += one.height;
    }
}
