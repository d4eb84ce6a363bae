#include "entry/quartersalary.h"

QuarterSalary SalaryByNature(const std::vector<Salary> &rows, const std::vector<Nature> &natures)
{
    QuarterSalary salary;
    salary.ofNatures.assign(natures.size(), 0.0);
    std::vector<int> numbers;
    numbers.reserve(natures.size());
    for (const Nature &nature : natures)
        numbers.push_back(nature.srNo);
    for (const Salary &row : rows)
        salary.set(numbers, row.natId, row.amount);
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
