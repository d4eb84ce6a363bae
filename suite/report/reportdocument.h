#pragma once

#include "host/reportobject.h"
#include "platform/offer.h"
#include "suite/report/reporttext.h"
#include "suite/report/richtext.h"

#include <QHash>
#include <QImage>
#include <QMarginsF>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// What rows of a table have in common. Rows of the same form share one.
struct FBT_OFFERED RowForm
{
    std::vector<double> widths; ///< shares of the line, in columns; one for each cell
    std::vector<int> aligns;    ///< values of ReportRow::Align; one for each cell
    QString left;               ///< as in ReportRow
    QString right;
    QString top;
    QString bottom;

    bool operator==(const RowForm &) const = default;
    [[nodiscard]] double columns() const; ///< sum of the widths, at least 1
    /// Whether that edge of a cell is ruled; a text shorter than the row rules none.
    [[nodiscard]] bool ruled(const QString &edge, int cell) const;
    [[nodiscard]] bool header() const; ///< all cells are centred headers
};

/// One piece of a report from top to bottom.
struct FBT_OFFERED ReportBlock
{
    enum class Kind { Line, Row, Break, Rich };

    Kind kind = Kind::Line;
    int table = 0;                       ///< number of the table that a row belongs to
    QStringList texts;                   ///< the line, or the cells of the row, with their tokens
    std::shared_ptr<const RowForm> form; ///< of a row
    TextLook look;                       ///< what holds at the start
    std::shared_ptr<RichPages> pages;    ///< the template document that a rich block is of
    size_t at = 0;                       ///< its number there

    [[nodiscard]] const RichBlock &rich() const { return pages->blocks[at]; }
    /// The texts without tokens: the line, or the cells; line ends inside are '\n'.
    [[nodiscard]] QStringList plainTexts() const;
};

/// The blocks of a report, or of its footer, as they are written.
class FBT_OFFERED ReportPart
{
public:
    void addLine(const QString &text);
    void beginTable() { ++m_table; }
    void addRow(const ReportRow &row);
    void addPages(RichPages pages);
    void addPageNumber(int row, int column, const QString &text);
    void replace(const QString &old, const QString &now);
    void resetLook() { m_look = {}; }

    [[nodiscard]] const std::vector<ReportBlock> &blocks() const { return m_blocks; }
    [[nodiscard]] double widest() const { return m_widest; }

private:
    std::shared_ptr<const RowForm> formOf(const ReportRow &row);

    std::vector<ReportBlock> m_blocks;
    std::shared_ptr<const RowForm> m_form; // of the row before
    std::vector<double> m_widths;          // told last
    std::vector<int> m_aligns;
    TextLook m_look;
    int m_table = 0;
    double m_widest = 0;
};

/// A report as it was written: lines, table rows, page breaks and template documents, and a footer. It knows nothing of
/// pages and printers.
class FBT_OFFERED ReportDocument
{
public:
    /// Adds a free line. A form feed in it breaks the page; a text of nothing but such tokens adds no line.
    void addLine(const QString &text) { target().addLine(text); }
    void beginTable() { target().beginTable(); }
    /// Adds a row to the table. Widths and alignments that are not given are those of the row before.
    void addRow(const ReportRow &row) { target().addRow(row); }
    /// Adds a template document.
    void addPages(RichPages pages) { m_body.addPages(std::move(pages)); }
    void resetLook() { target().resetLook(); }

    /// Whether what is added goes into the footer.
    void writeFooter(bool on) { m_inFooter = on; }
    /// The number of the page with a text around it, in that cell of the footer's last table, else on a line of its own.
    void addPageNumber(int row, int column, const QString &before, const QString &after);

    void setImage(const QString &token, const QImage &image) { m_images.insert(token, image); }
    [[nodiscard]] const QHash<QString, QImage> &images() const { return m_images; }
    void setTitle(const QString &title) { m_title = title; }
    [[nodiscard]] const QString &title() const { return m_title; } ///< may be empty

    void replaceTicks(); ///< each "_/" becomes the tick sign

    void setMargins(const QMarginsF &margins) { m_margins = margins; } ///< in twentieths of a point
    [[nodiscard]] const QMarginsF &margins() const { return m_margins; }

    [[nodiscard]] const std::vector<ReportBlock> &blocks() const { return m_body.blocks(); }
    [[nodiscard]] const std::vector<ReportBlock> &footer() const { return m_footer.blocks(); }
    /// Columns of the widest table in relation to the line of its pitch: above 1 it has to be made smaller.
    [[nodiscard]] double widest() const { return m_body.widest(); }

    /// The text alone: a line for each line and each row, cells tab separated, line ends inside a cell as "\n", a page
    /// break as a line with the form feed character. The footer is not in it.
    [[nodiscard]] QString asText() const;

private:
    ReportPart &target() { return m_inFooter ? m_footer : m_body; }

    ReportPart m_body;
    ReportPart m_footer;
    QString m_title;
    QHash<QString, QImage> m_images;
    QMarginsF m_margins{720, 720, 720, 720};
    bool m_inFooter = false;
};
