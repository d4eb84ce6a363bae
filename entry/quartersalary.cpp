#include "entry/quartersalary.h"

#include <algorithm>
#include <cmath>
#include <numeric>

double QuarterSalary::sum() const
{
    return std::accumulate(ofNatures.begin(), ofNatures.end(), 0.0);
}

bool QuarterSalary::totalTooSmall() const
{
    constexpr double paise = 100;
    return std::round(total * paise) < std::round(sum() * paise);
}

QuarterSalary SalaryByNature(const std::vector<Salary> &rows, const std::vector<Nature> &natures)
{
    QuarterSalary salary;
    salary.ofNatures.assign(natures.size(), 0.0);
    for (const Salary &row : rows) {
        if (row.natId == consolidatedNature)
            salary.total = row.amount;
        const auto nature =
            std::find_if(natures.begin(), natures.end(), [&row](const Nature &one) { return one.srNo == row.natId; });
        if (nature != natures.end())
            salary.ofNatures[nature - natures.begin()] = row.amount;
    }
    return salary;
}

std::vector<Salary> SalaryRows(const QuarterSalary &salary, int quarter, const std::vector<Nature> &natures)
{
    std::vector<Salary> rows;
    for (std::size_t i = 0; i < natures.size(); ++i)
        rows.push_back({quarter, natures[i].srNo, salary.ofNatures[i]});
    rows.push_back({quarter, consolidatedNature, salary.total});
    return rows;
}
