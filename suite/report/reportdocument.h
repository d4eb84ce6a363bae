#pragma once

#include "host/reportobject.h"
#include "platform/offer.h"
#include "suite/report/reporttext.h"

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
    [[nodiscard]] double columns() const; ///< sum of the widths
    /// Whether that edge of a cell is ruled; a text shorter than the row rules none.
    [[nodiscard]] bool ruled(const QString &edge, int cell) const;
    [[nodiscard]] bool header() const; ///< all cells are centred headers
};

/// One piece of a report from top to bottom.
struct ReportBlock
{
    enum class Kind { Line, Row, Break };

    Kind kind = Kind::Line;
    int table = 0;                       ///< number of the table that a row belongs to
    QStringList texts;                   ///< the line, or the cells of the row, with their tokens
    std::shared_ptr<const RowForm> form; ///< of a row
    TextLook look;                       ///< what holds at the start
};

/// A report as it was written: lines, table rows and page breaks. It knows nothing of pages and printers.
class FBT_OFFERED ReportDocument
{
public:
    /// Adds a free line. A form feed in it breaks the page; a text of nothing but such tokens adds no line.
    void addLine(const QString &text);
    void beginTable();
    /// Adds a row to the table. Widths and alignments that are not given are those of the row before.
    void addRow(const ReportRow &row);

    [[nodiscard]] const std::vector<ReportBlock> &blocks() const { return m_blocks; }
    /// Columns of the widest table in relation to the line of its pitch: above 1 it has to be made smaller.
    [[nodiscard]] double widest() const { return m_widest; }

    /// The text alone: a line for each line and each row, cells tab separated, line ends inside a cell as "\n", a page
    /// break as a line with the form feed character.
    [[nodiscard]] QString asText() const;

private:
    std::shared_ptr<const RowForm> formOf(const ReportRow &row);

    std::vector<ReportBlock> m_blocks;
    std::shared_ptr<const RowForm> m_form;
    TextLook m_look;
    int m_table = 0;
    double m_widest = 0;
};
