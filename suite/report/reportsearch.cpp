#include "suite/report/reportsearch.h"

#include "suite/report/reportdocument.h"

namespace {

/// The first cell of a block from `cell` on that holds the text; -1 when none does.
int cellWith(const QStringList &cells, const QString &text, int cell, int step)
{
    for (; cell >= 0 && cell < cells.size(); cell += step) {
        if (cells[cell].contains(text, Qt::CaseInsensitive))
            return cell;
    }
    return -1;
}

} // namespace

std::optional<ReportPlace> FindInReport(const ReportDocument &document, const QString &text,
                                        const std::optional<ReportPlace> &from, bool forward)
{
    const std::vector<ReportBlock> &blocks = document.blocks();
    if (text.isEmpty() || blocks.empty())
        return std::nullopt;
    const int step = forward ? 1 : -1;
    const size_t count = blocks.size();
    size_t block = from ? from->block : forward ? 0 : count - 1;
    // Each block once, and the one that the search began in once more, for its other cells.
    for (size_t seen = 0; seen <= count; ++seen) {
        const QStringList cells = blocks[block].plainTexts();
        const int start = seen == 0 && from ? from->cell + step : forward ? 0 : static_cast<int>(cells.size()) - 1;
        const int cell = cellWith(cells, text, start, step);
        if (cell >= 0)
            return ReportPlace{block, cell};
        block = forward ? (block + 1) % count : (block + count - 1) % count;
    }
    return std::nullopt;
}
