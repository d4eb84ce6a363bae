#include "suite/report/pageview.h"

#include "suite/report/reportlayout.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace {
constexpr double gap = 12; // around the pages, in pixels
constexpr double smallest = 0.25;
constexpr double largest = 4;
} // namespace

PageView::PageView(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    viewport()->setBackgroundRole(QPalette::Dark);
    viewport()->setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
}

void PageView::setPages(const std::shared_ptr<ReportLayout> &pages)
{
    const bool again = m_pages && &m_pages->document() == &pages->document();
    m_pages = pages;
    m_foundPage = -1;
    if (m_fit)
        fitWidth();
    else
        updateRange();
    if (!again)
        showPage(1);
    viewport()->update();
    emit viewChanged();
}

void PageView::pagesAdded()
{
    updateRange();
    viewport()->update();
    emit viewChanged();
}

int PageView::pageCount() const
{
    return m_pages ? m_pages->pagesSoFar() : 0;
}

void PageView::showFound(int page, const QRectF &place)
{
    m_foundPage = page;
    m_found = place;
    viewport()->update();
    if (page < 0)
        return;
    updateRange();
    const double top = gap + page * step() + place.top() * scale();
    const int height = viewport()->height();
    const bool inView = top >= verticalScrollBar()->value() && top < verticalScrollBar()->value() + height - gap;
    scrollTo(inView ? verticalScrollBar()->value() : top - height / 3.0, page + 1);
}

double PageView::scale() const
{
    return m_zoom * logicalDpiX() / ReportLayout::unitsPerInch;
}

QSizeF PageView::pagePixels() const
{
    return m_pages ? m_pages->pageSize() * scale() : QSizeF();
}

double PageView::step() const
{
    return pagePixels().height() + gap;
}

int PageView::currentPage() const
{
    if (!m_pages)
        return 0;
    if (verticalScrollBar()->value() == m_wentToAt)
        return std::clamp(m_wentTo, 1, std::max(1, pageCount()));
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    return std::clamp(static_cast<int>((middle - gap) / step()) + 1, 1, pageCount());
}

void PageView::showPage(int page)
{
    const int shown = std::clamp(page, 1, std::max(1, pageCount()));
    scrollTo((shown - 1) * step(), shown);
}

/// Where several pages are in view, the scroll bar alone does not tell which of them was meant.
void PageView::scrollTo(double top, int page)
{
    verticalScrollBar()->setValue(static_cast<int>(top));
    m_wentTo = page;
    m_wentToAt = verticalScrollBar()->value();
    emit viewChanged();
}

void PageView::setZoom(double zoom)
{
    m_fit = false;
    applyZoom(zoom);
}

void PageView::fitWidth()
{
    m_fit = true;
    if (!m_pages)
        return;
    const double paper = m_pages->pageSize().width() * logicalDpiX() / ReportLayout::unitsPerInch;
    applyZoom((viewport()->width() - 2 * gap) / paper);
}

void PageView::applyZoom(double zoom)
{
    const double place = m_pages ? verticalScrollBar()->value() / step() : 0; // in pages
    const int page = currentPage();
    m_zoom = std::clamp(zoom, smallest, largest);
    updateRange();
    scrollTo(place * step(), page);
    viewport()->update();
}

void PageView::updateRange()
{
    const double height = gap + pageCount() * step();
    const double width = pagePixels().width() + 2 * gap;
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(height) - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(width) - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
}

void PageView::paintEvent(QPaintEvent * /*event*/)
{
    if (!m_pages)
        return;
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QSizeF size = pagePixels();
    const int scrolled = verticalScrollBar()->value();
    const double free = std::max(gap, (viewport()->width() - size.width()) / 2);
    const double left = free - horizontalScrollBar()->value();
    const int first = std::max(0, static_cast<int>((scrolled - gap) / step()));
    for (int page = first; page < pageCount() && gap + page * step() < scrolled + viewport()->height(); ++page) {
        const QPointF corner(left, gap + page * step() - scrolled);
        drawPage(painter, page, QRectF(corner, size));
    }
}

void PageView::drawPage(QPainter &painter, int page, const QRectF &place)
{
    const QColor marked(255, 235, 120);
    painter.fillRect(place, Qt::white);
    painter.save();
    painter.translate(place.topLeft());
    painter.scale(scale(), scale());
    if (page == m_foundPage)
        painter.fillRect(m_found, marked);
    m_pages->drawPage(painter, page);
    painter.restore();
}

void PageView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (m_fit)
        fitWidth();
    else
        updateRange();
}

void PageView::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    viewport()->update();
    emit viewChanged();
}

void PageView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Home)
        showPage(1);
    else if (event->key() == Qt::Key_End)
        showPage(pageCount());
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void PageView::wheelEvent(QWheelEvent *event)
{
    constexpr double zoomStep = 1.1;
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    setZoom(event->angleDelta().y() > 0 ? m_zoom * zoomStep : m_zoom / zoomStep);
}
