#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QMarginsF>
#include <QSizeF>
#include <QString>
#include <QTextOption>

#include <array>
#include <vector>

/// The text of a template document as pages show it. Lengths are in twentieths of a point.

struct RichStyle
{
    QString family;
    double points = 12;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    bool capitals = false;
    int raised = 0;  ///< 1 superscript, -1 subscript
    QColor color;    ///< invalid: black
    QColor backdrop; ///< invalid: none

    bool operator==(const RichStyle &) const = default;
};

struct RichRun
{
    int start = 0;
    int length = 0;
    RichStyle style;
};

/// A picture in the place of one character of its paragraph.
struct RichPicture
{
    int at = 0;
    QImage image;
    QSizeF size;
};

struct RichEdge
{
    double width = 0; ///< 0: not ruled
    QColor color;
    bool doubled = false;
};

enum RichSide { TopSide, LeftSide, BottomSide, RightSide };
using RichEdges = std::array<RichEdge, 4>; ///< by RichSide

struct RichParagraph
{
    QString text; ///< line breaks as QChar::LineSeparator
    std::vector<RichRun> runs;
    std::vector<RichPicture> pictures;
    RichStyle endStyle; ///< gives an empty paragraph its height
    Qt::Alignment alignment = Qt::AlignLeft;
    double left = 0;
    double right = 0;
    double first = 0; ///< of the first line, beyond `left`; below 0 it hangs out
    double before = 0;
    double after = 0;
    double lineHeight = 0;   ///< above 0 at least, below 0 exactly; 0: as the letters need it
    double lineFactor = 1;   ///< of what the letters need
    bool breaksPage = false; ///< begins a page
    QList<QTextOption::Tab> tabs;
    RichEdges edges;

    [[nodiscard]] bool isEmpty() const { return text.isEmpty() && pictures.empty(); }
};

struct RichCell
{
    double left = 0; ///< edges of the cell from the left margin
    double right = 0;
    double paddingLeft = 0;
    double paddingRight = 0;
    double paddingTop = 0;
    double paddingBottom = 0;
    RichEdges edges;
    QColor shade;
    Qt::Alignment vertical = Qt::AlignTop;
    bool startsMerge = false; ///< goes on in the cells below it
    bool continued = false;   ///< belongs to the cell above it
    std::vector<RichParagraph> paragraphs;
};

struct RichRow
{
    std::vector<RichCell> cells;
    double height = 0; ///< above 0 at least, below 0 exactly
    bool header = false;
    Qt::Alignment alignment = Qt::AlignLeft;
};

/// A paragraph, or rows of a table that stay together: one, or those that a merged cell joins.
struct RichBlock
{
    std::vector<RichRow> rows; ///< empty: a paragraph
    RichParagraph paragraph;

    [[nodiscard]] bool isParagraph() const { return rows.empty(); }
    /// All paragraphs in reading order, those of the cells too.
    template<typename Visit>
    void eachParagraph(const Visit &visit)
    {
        if (isParagraph())
            visit(paragraph);
        for (RichRow &row : rows) {
            for (RichCell &cell : row.cells) {
                for (RichParagraph &one : cell.paragraphs)
                    visit(one);
            }
        }
    }
};

struct RichPages
{
    QSizeF paper;
    QMarginsF margins;
    std::vector<RichBlock> blocks;
};

/// The text alone: without pictures, line breaks as '\n'.
QString PlainText(const RichParagraph &paragraph);

/// Replaces a text in a paragraph; the new text takes the style of the old one's first character.
void ReplaceText(RichParagraph &paragraph, const QString &old, const QString &now);
