#include "entry/consolidated.h"

#include "calc/sharing.h"
#include "context/modbase.h"

#include <QHash>

SharedFigures &SharedFigures::operator+=(const SharedFigures &other)
{
    if (ofNatures.size() < other.ofNatures.size())
        ofNatures.resize(other.ofNatures.size());
    for (std::size_t i = 0; i < other.ofNatures.size(); ++i)
        ofNatures[i] += other.ofNatures[i];
    total += other.total;
    return *this;
}

RowsRead<double> RatesOfItem(int year, int expId, const std::vector<Nature> &natures)
{
    std::vector<double> percent;
    for (const Nature &nature : natures) {
        const Reading<double> rate = RateOfItem(Cnn, year, expId, nature.srNo);
        if (rate.failed())
            return RowsRead<double>::failure();
        percent.push_back(rate.valueOr(0));
    }
    return percent;
}

SharedFigures ShareExpense(double amount, const std::vector<double> &percent, const QuarterSalary &salary,
                           const Employees &employees, const FBTRates &rates)
{
    SharedFigures shared;
    const std::vector<double> shares = ShareBySalary(amount, salary.ofNatures, salary.total);
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const double value = BENEFITVALUE(percent[i], shares[i]);
        shared.ofNatures.push_back(FiguresOn(shares[i], value, employees, rates));
        shared.total += shared.ofNatures.back();
    }
    return shared;
}

Reading<SharedFigures> ShareAll(const std::vector<Expense> &expenses, int year, const std::vector<Nature> &natures,
                                const QuarterSalary &salary, const Employees &employees, const FBTRates &rates)
{
    SharedFigures sum;
    sum.ofNatures.resize(natures.size());
    QHash<int, std::vector<double>> percentOf; // thousands of rows share a few dozen items
    for (const Expense &expense : expenses) {
        if (!percentOf.contains(expense.expId)) {
            const RowsRead<double> percent = RatesOfItem(year, expense.expId, natures);
            if (percent.failed())
                return Reading<SharedFigures>::failure();
            percentOf.insert(expense.expId, *percent);
        }
        sum += ShareExpense(expense.amount, percentOf[expense.expId], salary, employees, rates);
    }
    return sum;
}

std::vector<Expense> SharesOf(const std::vector<Expense> &expenses, std::size_t nature, const QuarterSalary &salary)
{
    std::vector<Expense> rows;
    for (Expense row : expenses) {
        row.amount = ShareBySalary(row.amount, salary.ofNatures, salary.total)[nature];
        row.srNo = shareSrNo;
        if (row.amount != 0)
            rows.push_back(row);
    }
    return rows;
}
