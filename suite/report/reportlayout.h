#pragma once

#include "platform/offer.h"
#include "suite/report/celllayout.h"
#include "suite/report/edges.h"
#include "suite/report/reportdocument.h"
#include "suite/report/richlayout.h"

#include <QPageLayout>
#include <QRectF>
#include <QSizeF>

#include <memory>
#include <unordered_map>
#include <vector>

class QPainter;

/// A report cut into pages. Lengths are in twentieths of a point, whatever the device, so that pages on the screen, on
/// paper and in a file are the same. The report must not change while a layout of it is in use. Pages are laid out as they are
/// asked for, so that the first page of a long report is there at once.
///
/// A table fills the width of the line, its widths being shares of it; one that has more columns than a line holds gets
/// smaller characters. Rows of centred headers at the start of a table are repeated at the top of each further page; a title
/// or captions do not stay at the foot of a page without the row that follows them.
/// A template document has the margins left and right that it tells itself. The footer is at the foot of each page.
class FBT_OFFERED ReportLayout
{
public:
    static constexpr int unitsPerInch = 1440;

    ReportLayout(std::shared_ptr<const ReportDocument> document, const QPageLayout &page);

    [[nodiscard]] const ReportDocument &document() const { return *m_document; }
    [[nodiscard]] const QPageLayout &page() const { return m_page; }
    [[nodiscard]] QSizeF pageSize() const { return m_pageSize; }

    /// Lays out further pages for about so long. True when the whole report is laid out.
    bool layOutFor(int milliseconds);
    [[nodiscard]] bool isWhole() const { return m_next == m_document->blocks().size(); }
    [[nodiscard]] int pagesSoFar() const { return static_cast<int>(m_pages.size()); }
    [[nodiscard]] double partDone() const; ///< from 0 to 1
    int pageCount();                       ///< lays out what is missing

    /// Whether there is such a page, counted from 0; lays out as far as it takes.
    bool hasPage(int page);
    /// The page that a block begins on, counted from 0, and the place of one of its cells there.
    int pageOf(size_t block);
    QRectF placeOf(size_t block, int cell);

    /// Draws one page, counted from 0. The painter's unit is the twentieth of a point, its origin the corner of the paper.
    void drawPage(QPainter &painter, int page);

private:
    /// A block on a page; one that is taller than a page lies on several, each showing a slice of it.
    struct Item
    {
        size_t block = 0;
        double top = 0; ///< of the slice, on the paper
        double sliceTop = 0;
        double sliceHeight = 0;
        bool whole = true;
    };
    using Page = std::vector<Item>;

    /// A block with its lines broken.
    struct Laid
    {
        double height = 0;
        double left = 0;
        std::vector<CellLayout> cells;
        std::unique_ptr<RichLayout> rich;
    };

    void layOutNext();
    void place(size_t block);
    void placeSlices(size_t block, const Laid &laid);
    void put(const Item &item);
    void newPage(size_t block);
    [[nodiscard]] bool wouldStandAlone(size_t block);
    void repeatHeader(size_t block);
    [[nodiscard]] double room() const { return m_content.height() - m_used; }
    const Laid &laid(size_t block);
    Laid layOut(const ReportBlock &block);
    Laid layOutRich(const ReportBlock &block);
    void layOutFooter();
    [[nodiscard]] double scaleOf(const ReportBlock &block) const;
    [[nodiscard]] QRectF boxOf(const ReportBlock &block, const Laid &laid, int cell) const;
    void drawItem(QPainter &painter, const Item &item, EdgeCollector &edges);
    void drawLaid(QPainter &painter, const ReportBlock &block, const Laid &laid, double top,
                  EdgeCollector &edges) const;
    static void drawEdges(EdgeCollector &edges, const RowForm &form, int cell, const QRectF &box);
    void drawFooter(QPainter &painter, int page, EdgeCollector &edges);

    std::shared_ptr<const ReportDocument> m_document;
    QPageLayout m_page;
    QSizeF m_pageSize;
    QRectF m_content;
    double m_portraitWidth = 0;
    double m_footerHeight = 0;
    size_t m_next = 0;       // first block that has no place yet
    size_t m_tableStart = 0; // first row of the table in work
    double m_used = 0;       // of the height of the page in work
    std::vector<Page> m_pages;
    std::vector<int> m_pageOfBlock;
    ReportFonts m_fonts;
    std::unordered_map<size_t, Laid> m_laid; // those used last
};

/// The page that suits a report: that of the template document it begins with; else A4 with the report's margins, upright,
/// or lying when `mayLie` and a table is much wider than a line.
FBT_OFFERED QPageLayout PageFor(const ReportDocument &document, bool mayLie);
