#include "efile/errorreport.h"

#include "controls/grid.h"
#include "host/reporttable.h"
#include "platform/text.h"

namespace {

int alignOf(Qt::Alignment alignment)
{
    if (alignment.testFlag(Qt::AlignHCenter))
        return ReportRow::Centre;
    return alignment.testFlag(Qt::AlignRight) ? ReportRow::Right : ReportRow::Left;
}

std::vector<int> shownColumns(const Grid &list)
{
    std::vector<int> columns;
    for (int col = 0; col < list.Cols(); ++col) {
        if (!list.ColHidden(col))
            columns.push_back(col);
    }
    return columns;
}

QStringList textsOf(const Grid &list, int row, const std::vector<int> &columns)
{
    QStringList texts;
    for (const int col : columns)
        texts << list.shownText(row, col);
    return texts;
}

} // namespace

void WriteErrorReport(ReportObject &report, const Grid &list)
{
    constexpr double lineWidth = 130;
    const std::vector<int> columns = shownColumns(list);
    double total = 0;
    for (const int col : columns)
        total += list.ColWidth(col);
    std::vector<int> widths;
    std::vector<int> aligns;
    for (const int col : columns) {
        widths.push_back(static_cast<int>(Round(list.ColWidth(col) / total * lineWidth)));
        aligns.push_back(alignOf(list.gridModel()->column(col).alignment));
    }
    report.printtext(InBold(QStringLiteral("List of Errors")));
    ReportTable table(report, textsOf(list, 0, columns), widths, aligns);
    for (int row = list.FixedRows(); row < list.Rows(); ++row)
        table.add(textsOf(list, row, columns));
}
