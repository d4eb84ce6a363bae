#pragma once

#include "platform/offer.h"
#include "suite/report/celllayout.h"
#include "suite/report/edges.h"
#include "suite/report/richtext.h"

#include <QTextLayout>

#include <memory>
#include <vector>

/// A paragraph of a template document broken into lines of a width.
class ParagraphLayout
{
public:
    ParagraphLayout(const RichParagraph &paragraph, double width);

    [[nodiscard]] double height() const { return m_height; } ///< with the space before and after it
    void draw(QPainter &painter, const QPointF &corner) const;
    void addSpans(LineSpans &spans, double top) const;

private:
    struct Part
    {
        double top = 0;
        double height = 0;
        std::unique_ptr<QTextLayout> text; // or a picture
        QImage image;
        QRectF place;
    };

    void addText(int from, int to);
    void addPicture(const RichPicture &picture);
    [[nodiscard]] double lineHeight(double natural) const;
    [[nodiscard]] QList<QTextLayout::FormatRange> formats(int from, int to) const;
    void drawEdges(QPainter &painter, const QPointF &corner) const;

    const RichParagraph &m_paragraph;
    double m_width;
    double m_height = 0;
    std::vector<Part> m_parts;
};

/// A block of a template document laid out; the block must outlive it.
class FBT_OFFERED RichLayout
{
public:
    /// @param width of the text between the margins
    RichLayout(const RichBlock &block, double width);

    [[nodiscard]] double height() const { return m_height; }
    /// Draws text, shades and pictures, and hands over the edges.
    void draw(QPainter &painter, const QPointF &corner, EdgeCollector &edges) const;
    void addSpans(LineSpans &spans) const;

private:
    struct Cell
    {
        const RichCell *form = nullptr;
        size_t row = 0;
        size_t lastRow = 0; // of a merged cell
        bool mergedBelow = false;
        double left = 0;
        double right = 0;
        double height = 0; // of what is in it, paddings included
        std::vector<ParagraphLayout> paragraphs;
    };

    void addRow(const RichRow &row, size_t index, double width);
    void findMerged();
    void setHeights();
    [[nodiscard]] double topOf(const Cell &cell) const; // of its text

    const RichBlock &m_block;
    std::vector<ParagraphLayout> m_paragraph; // one or none
    std::vector<Cell> m_cells;
    std::vector<double> m_tops; // of the rows, and the bottom of the last
    double m_height = 0;
};
