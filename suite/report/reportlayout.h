#pragma once

#include "platform/offer.h"
#include "suite/report/celllayout.h"
#include "suite/report/reportdocument.h"

#include <QPageLayout>
#include <QRectF>
#include <QSizeF>

#include <vector>

class QPainter;

/// A report cut into pages. Lengths are in twentieths of a point, whatever the device, so that pages on the screen, on
/// paper and in a file are the same. The document must outlive the layout and not change.
///
/// A table fills the width of the line, its widths being shares of it; one that has more columns than a line holds gets
/// smaller characters. Rows of centred headers at the start of a table are repeated at the top of each further page.
class FBT_OFFERED ReportLayout
{
public:
    static constexpr int unitsPerInch = 1440;

    ReportLayout(const ReportDocument &document, const QPageLayout &page);

    [[nodiscard]] int pageCount() const { return static_cast<int>(m_pages.size()); }
    [[nodiscard]] QSizeF pageSize() const { return m_pageSize; }

    /// Draws one page, counted from 0. The painter's unit is the twentieth of a point, its origin the corner of the paper.
    void drawPage(QPainter &painter, int page) const;

private:
    /// A block on a page; one that is taller than a page lies on several, each showing a slice of it.
    struct Item
    {
        size_t block = 0;
        double sliceTop = 0;
        double sliceHeight = 0;
    };
    using Page = std::vector<Item>;

    void paginate();
    void place(size_t block);
    void newPage(size_t block);
    void repeatHeader(size_t block);
    [[nodiscard]] double heightOf(const ReportBlock &block) const;
    [[nodiscard]] double scaleOf(const ReportBlock &block) const;
    [[nodiscard]] double lineHeight(const TextLook &look, double scale) const;
    void drawBlock(QPainter &painter, const ReportBlock &block, double top) const;
    void drawEdges(QPainter &painter, const RowForm &form, int cell, const QRectF &box) const;

    const ReportDocument &m_document;
    QSizeF m_pageSize;
    QRectF m_content;
    double m_portraitWidth = 0;
    size_t m_tableStart = 0; // first row of the table in work
    double m_used = 0;       // of the height of the page in work
    std::vector<Page> m_pages;
    mutable FontMeasure m_measure; // a memory of the last font only
};

/// The page that suits a report: A4 upright, or lying when `mayLie` and a table is much wider than a line.
FBT_OFFERED QPageLayout PageFor(const ReportDocument &document, bool mayLie);
