#include "reports/annuallines.h"

#include "calc/taxchain.h"

#include <algorithm>

namespace {

void add(AnnualLine::Quarter &sum, const std::optional<AnnualLine::Quarter> &part)
{
    sum.amount += part.value_or(AnnualLine::Quarter()).amount;
    sum.value += part.value_or(AnnualLine::Quarter()).value;
}

AnnualLine &lineOf(std::vector<AnnualLine> &lines, const Expense &expense)
{
    const auto found = std::find_if(lines.begin(), lines.end(),
                                    [&expense](const AnnualLine &line) { return line.expId == expense.expId; });
    return found != lines.end() ? *found
                                : lines.emplace_back(AnnualLine{expense.headId, expense.expId, expense.rate, {}});
}

} // namespace

AnnualLine::Quarter AnnualLine::total() const
{
    Quarter sum;
    for (const auto &quarter : quarters)
        add(sum, quarter);
    return sum;
}

void AddToLines(std::vector<AnnualLine> &lines, const Expense &expense, double amount)
{
    AnnualLine &line = lineOf(lines, expense);
    if (expense.quarter < 1 || expense.quarter > quartersOfYear)
        return;
    auto &quarter = line.quarters.at(static_cast<std::size_t>(expense.quarter) - 1);
    AnnualLine::Quarter sum{amount, BENEFITVALUE(expense.rate, amount)};
    add(sum, quarter);
    quarter = sum;
}

AnnualLine::Quarter SumOfQuarter(const std::vector<AnnualLine> &lines, int quarter)
{
    AnnualLine::Quarter sum;
    for (const AnnualLine &line : lines)
        add(sum, line.quarters.at(static_cast<std::size_t>(quarter) - 1));
    return sum;
}
