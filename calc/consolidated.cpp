#include "calc/consolidated.h"

#include "context/errortail.h"

Salaries SalariesOf(const RowsRead<Salary> &rows, const std::vector<int> &natures, ErrorTail &tail)
{
    Salaries salaries(natures);
    for (const Salary &salary : *rows)
        tail([&] { salaries.set(salary.natId, salary.quarter, salary.amount); });
    return salaries;
}

std::vector<double> SharesOfExpense(const Expense &expense, const Salaries &salaries, ErrorTail &tail)
{
    std::vector<double> shares;
    if (!tail([&] { shares = salaries.shares(expense.amount, expense.quarter); }))
        shares = salaries.sharesWithoutSalary(expense.amount);
    return shares;
}
