#include "entry/annualrows.h"

#include "calc/taxchain.h"
#include "records/change.h"

#include <QHash>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr int quarterCount = 4;

/// The lines of one item, and how many of them each quarter has filled so far.
struct ItemLines
{
    std::vector<std::size_t> lines;
    std::array<std::size_t, quarterCount> filled{};
};

using Cell = std::optional<AnnualRow::Cell>;

/// Whether a quarter holds a row that can be told from others. One without number and amount is left alone: its number
/// would take all rows without one along.
bool holdsRow(const Cell &cell)
{
    return cell && (cell->srNo != 0 || cell->amount != 0);
}

bool deleteQuarter(Change &change, const ClientYear &client, int quarter, const Cell &cell)
{
    return !holdsRow(cell) || DeleteExpense(change, client, quarter, cell->srNo);
}

/// The number under which a quarter is written; none when no number could be had.
std::optional<int> numberFor(Change &change, const ClientYear &client, int quarter, const Cell &before)
{
    if (before && before->srNo != 0)
        return before->srNo;
    if (!deleteQuarter(change, client, quarter, before)) // a row without a number gets one
        return std::nullopt;
    return NextExpenseNo(change, client, quarter);
}

/// Writes one quarter of a line; `cell` is what it held before, and afterwards what it holds now.
bool saveQuarter(Change &change, const ClientYear &client, Expense expense, Cell &cell)
{
    const Cell before = std::exchange(cell, std::nullopt);
    if (expense.amount == 0)
        return deleteQuarter(change, client, expense.quarter, before);
    const std::optional<int> srNo = numberFor(change, client, expense.quarter, before);
    if (!srNo)
        return false;
    expense.srNo = *srNo;
    cell = AnnualRow::Cell{expense.amount, 0, expense.srNo};
    return ReplaceExpense(change, client, expense);
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

std::vector<AnnualRow> LineUp(const std::vector<Expense> &rows)
{
    std::vector<AnnualRow> lines;
    QHash<int, ItemLines> items;
    for (const Expense &row : rows) {
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

std::optional<AnnualRow> SaveAnnual(Connection *cnn, const ClientYear &client, int natId, int expId,
                                    const QuarterAmounts &amounts, const std::optional<AnnualRow> &before)
{
    AnnualRow written = before.value_or(AnnualRow());
    written.expId = expId;
    const bool saved = ChangeTogether(cnn, [&](Change &change) {
        for (int i = 0; i < quarterCount; ++i) {
            Expense expense;
            expense.quarter = i + 1;
            expense.natId = natId;
            expense.expId = expId;
            expense.amount = amounts[i];
            if (!saveQuarter(change, client, expense, written.quarters[i]))
                return false;
        }
        return true;
    });
    return saved ? std::optional(written) : std::nullopt;
}

bool DeleteAnnual(Connection *cnn, const ClientYear &client, const AnnualRow &line)
{
    return ChangeTogether(cnn, [&](Change &change) {
        for (int i = 0; i < quarterCount; ++i) {
            if (!deleteQuarter(change, client, i + 1, line.quarters[i]))
                return false;
        }
        return true;
    });
}

int FindLine(const std::vector<AnnualRow> &lines, const AnnualRow &written)
{
    const auto found =
        std::find_if(lines.begin(), lines.end(), [&](const AnnualRow &line) { return sameRow(line, written); });
    return found == lines.end() ? -1 : static_cast<int>(found - lines.begin());
}
