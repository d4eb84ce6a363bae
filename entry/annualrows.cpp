#include "entry/annualrows.h"

#include "calc/taxchain.h"

#include <QHash>

#include <algorithm>
#include <numeric>

namespace {

constexpr int quarterCount = 4;

/// The lines of one item, and how many of them each quarter has filled so far.
struct ItemLines
{
    std::vector<std::size_t> lines;
    std::array<std::size_t, quarterCount> filled{};
};

/// The number under which a quarter is written; none when no number could be had.
std::optional<int> numberFor(const ClientYear &client, int quarter, const std::optional<AnnualRow::Cell> &before)
{
    if (before && before->srNo != 0)
        return before->srNo;
    if (before) // a row without a number gets one
        DeleteDetail(client, quarter, 0);
    return NextSrNo(client, quarter);
}

/// Writes one quarter of a line, and gives what it holds afterwards.
std::optional<AnnualRow::Cell> saveQuarter(const ClientYear &client, int quarter, int natId, int expId, double amount,
                                           const std::optional<AnnualRow::Cell> &before)
{
    if (amount == 0) {
        // A row without number and amount is left alone: its number would take all rows without one along.
        if (before && (before->srNo != 0 || before->amount != 0))
            DeleteDetail(client, quarter, before->srNo);
        return std::nullopt;
    }
    const std::optional<int> srNo = numberFor(client, quarter, before);
    if (!srNo)
        return std::nullopt;
    ReplaceDetail(client, quarter, natId, *srNo, expId, amount);
    return AnnualRow::Cell{amount, 0, *srNo};
}

template<typename Member>
double sumOf(const AnnualRow &row, Member member)
{
    return std::accumulate(row.quarters.begin(), row.quarters.end(), 0.0,
                           [member](double sum, const auto &cell) { return cell ? sum + (*cell).*member : sum; });
}

bool sameRow(const AnnualRow &line, const AnnualRow &written)
{
    for (int i = 0; i < quarterCount; ++i) {
        if (written.quarters[i])
            return line.expId == written.expId && line.quarters[i] &&
                   line.quarters[i]->srNo == written.quarters[i]->srNo;
    }
    return false;
}

} // namespace

double AnnualRow::amount() const
{
    return sumOf(*this, &Cell::amount);
}

double AnnualRow::value() const
{
    return sumOf(*this, &Cell::value);
}

std::vector<AnnualRow> LineUp(const std::vector<DetailRow> &rows)
{
    std::vector<AnnualRow> lines;
    QHash<int, ItemLines> items;
    for (const DetailRow &row : rows) {
        if (row.quarter < 1 || row.quarter > quarterCount)
            continue;
        ItemLines &item = items[row.expId];
        const std::size_t nth = item.filled[row.quarter - 1]++;
        if (nth == item.lines.size()) {
            item.lines.push_back(lines.size());
            lines.emplace_back();
        }
        AnnualRow &line = lines[item.lines[nth]];
        line.headId = row.headId;
        line.expId = row.expId;
        line.rate = row.rate;
        line.quarters[row.quarter - 1] = {row.amount, BENEFITVALUE(row.rate, row.amount), row.srNo};
    }
    return lines;
}

AnnualRow SaveAnnual(const ClientYear &client, int natId, int expId, const QuarterAmounts &amounts,
                     const std::optional<AnnualRow> &before)
{
    AnnualRow written;
    written.expId = expId;
    for (int i = 0; i < quarterCount; ++i) {
        const std::optional<AnnualRow::Cell> cell = before ? before->quarters[i] : std::nullopt;
        written.quarters[i] = saveQuarter(client, i + 1, natId, expId, amounts[i], cell);
    }
    return written;
}

void DeleteAnnual(const ClientYear &client, const AnnualRow &line)
{
    for (int i = 0; i < quarterCount; ++i) {
        if (line.quarters[i])
            DeleteDetail(client, i + 1, line.quarters[i]->srNo);
    }
}

int FindLine(const std::vector<AnnualRow> &lines, const AnnualRow &written)
{
    const auto found =
        std::find_if(lines.begin(), lines.end(), [&](const AnnualRow &line) { return sameRow(line, written); });
    return found == lines.end() ? -1 : static_cast<int>(found - lines.begin());
}
