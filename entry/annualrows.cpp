#include "entry/annualrows.h"

#include "calc/taxchain.h"
#include "records/change.h"

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

using Cell = std::optional<AnnualRow::Cell>;

/// What a line holds in a quarter, as a row of the table.
Expense expenseOf(const AnnualRow &line, int quarter)
{
    Expense expense;
    expense.quarter = quarter;
    expense.natId = line.natId;
    expense.expId = line.expId;
    if (const Cell &cell = line.quarters[quarter - 1]) {
        expense.amount = cell->amount;
        expense.srNo = cell->srNo;
    }
    return expense;
}

/// Whether a quarter holds something: a row without number and amount counts as nothing.
bool holdsRow(const Expense &row)
{
    return row.srNo != 0 || row.amount != 0;
}

bool deleteQuarter(Change &change, const ClientYear &client, const Expense &before)
{
    return !holdsRow(before) || DeleteExpense(change, client, before);
}

/// Writes a quarter of a line that held `before`. A row without a number gets one.
/// @return what the quarter holds now; without a value after a fault
std::optional<Expense> saveQuarter(Change &change, const ClientYear &client, const Expense &before, Expense expense)
{
    if (expense.amount == 0)
        return deleteQuarter(change, client, before) ? std::optional(expense) : std::nullopt;
    expense.srNo = before.srNo;
    if (before.srNo != 0)
        return ReplaceExpense(change, client, before, expense) ? std::optional(expense) : std::nullopt;
    const std::optional<int> srNo =
        deleteQuarter(change, client, before) ? NextExpenseNo(change, client, expense.quarter) : std::nullopt;
    expense.srNo = srNo.value_or(0);
    return srNo && AddExpense(change, client, expense) ? std::optional(expense) : std::nullopt;
}

template<typename Member>
double sumOf(const AnnualRow &row, Member member)
{
    return std::accumulate(row.quarters.begin(), row.quarters.end(), 0.0,
                           [member](double sum, const auto &cell) { return cell ? sum + (*cell).*member : sum; });
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
        line.natId = row.natId;
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
    const AnnualRow old = before.value_or(AnnualRow());
    AnnualRow written;
    written.natId = natId;
    written.expId = expId;
    const bool saved = ChangeTogether(cnn, [&](Change &change) {
        for (int quarter = 1; quarter <= quarterCount; ++quarter) {
            Cell &cell = written.quarters[quarter - 1];
            cell.reset();
            Expense wanted = expenseOf(written, quarter);
            wanted.amount = amounts[quarter - 1];
            const auto now = saveQuarter(change, client, expenseOf(old, quarter), wanted);
            if (!now)
                return false;
            if (now->amount != 0)
                cell = AnnualRow::Cell{now->amount, 0, now->srNo};
        }
        return true;
    });
    return saved ? std::optional(written) : std::nullopt;
}

bool DeleteAnnual(Connection *cnn, const ClientYear &client, const AnnualRow &line)
{
    const auto remove = [&](Change &change) {
        for (int quarter = 1; quarter <= quarterCount; ++quarter) {
            if (!deleteQuarter(change, client, expenseOf(line, quarter)))
                return false;
        }
        return true;
    };
    return ChangeTogether(cnn, remove, Doing::Delete);
}

int KeyOf(const AnnualRow &line)
{
    for (int i = 0; i < quarterCount; ++i) {
        if (const Cell &cell = line.quarters[i])
            return cell->srNo * quarterCount + i;
    }
    return 0;
}

bool IsLine(const AnnualRow &line, const AnnualRow &written)
{
    for (int i = 0; i < quarterCount; ++i) {
        if (written.quarters[i])
            return line.expId == written.expId && line.quarters[i] &&
                   line.quarters[i]->srNo == written.quarters[i]->srNo;
    }
    return false;
}
