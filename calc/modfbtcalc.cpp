#include "calc/modfbtcalc.h"

#include "calc/consolidated.h"
#include "calc/source.h"
#include "context/errortail.h"
#include "context/modbase.h"

#include <numeric>

std::array<double, lastComputationLine + 1> FBTExpAmt{};
std::array<double, lastComputationLine + 1> FBTValue{};
std::array<double, 5> FBTQtrValue{};
double FBTTotalValue = 0;
double FBTTaxableValue = 0;
double FBTTax = 0;
double FBTSurcharge = 0;
double FBTEduCess = 0;
double FBTSHECess = 0;
int ShipNatId = 0;
FBTRates FBTRate{};
bool EmpBoth = false;
bool SepBooks = false;
int IndiaEmp = 0;
int TotalEmp = 0;

namespace {

/// The four tax figures are left alone: a client without natures keeps those of the call before.
void clearFigures()
{
    FBTExpAmt = {};
    FBTValue = {};
    FBTQtrValue = {};
    FBTTotalValue = FBTTaxableValue = 0;
    ShipNatId = 0;
}

bool addExpensesOfNatures(ComputationSource &rows)
{
    const RowsRead<Expense> expenses = rows.expensesOfNatures();
    for (const Expense &expense : *expenses)
        SETFBTVARS(expense.headId, expense.amount, BENEFITVALUE(expense.rate, expense.amount), expense.quarter,
                   expense.natId);
    return !expenses.failed();
}

/// Each nature visits all consolidated expenses, with the rates that hold for it, and takes its own share.
bool addConsolidatedExpenses(ComputationSource &rows, const std::vector<int> &natures, std::size_t v,
                             const Salaries &salaries, ErrorTail &tail)
{
    const RowsRead<Expense> expenses = rows.consolidatedExpenses(natures[v]);
    for (const Expense &expense : *expenses) {
        const double share = SharesOfExpense(expense, salaries, tail)[v];
        if (share != 0)
            SETFBTVARS(expense.headId, share, BENEFITVALUE(expense.rate, share), expense.quarter, natures[v]);
    }
    return !expenses.failed();
}

TaxParts taxOfYear()
{
    if (Base->TYear >= firstYearTaxedWhole)
        return TaxOn(FBTTaxableValue, FBTRate);
    TaxParts sum;
    for (int quarter = 1; quarter <= 4; ++quarter)
        sum += TaxOfQuarter(quarter);
    return sum;
}

void setTax(const TaxParts &parts)
{
    FBTTax = parts.Tax;
    FBTSurcharge = parts.Surcharge;
    FBTEduCess = parts.EduCess;
    FBTSHECess = parts.SHECess;
}

} // namespace

bool CALCFBT()
{
    TableSource rows(Cnn, {Base->code, Base->TYear});
    return CALCFBT(rows);
}

bool CALCFBT(ComputationSource &rows)
{
    ErrorTail tail(QStringLiteral("MODFBTCALC"));
    clearFigures();
    const Reading<int> ship = rows.shipNature();
    ShipNatId = ship.valueOr(0);
    bool whole = addExpensesOfNatures(rows) && !ship.failed();
    const RowsRead<int> natures = rows.natures();
    if (natures->empty())
        return whole && !natures.failed();
    const RowsRead<Salary> read = rows.salaries();
    whole = whole && !read.failed();
    const Salaries salaries = SalariesOf(read, *natures, tail);
    for (std::size_t v = 0; v < natures->size(); ++v)
        whole = addConsolidatedExpenses(rows, *natures, v, salaries, tail) && whole;
    FBTTotalValue = std::accumulate(FBTQtrValue.begin() + 1, FBTQtrValue.end(), 0.0);
    FBTTaxableValue = TaxableValue(EmployeesInHand(), FBTTotalValue);
    setTax(taxOfYear());
    return whole;
}

// Nothing in it can fault: every line of the table of lines lies within the arrays.
void SETFBTVARS(int HeadId, double Amt, double Value, int Quarter, int NatId)
{
    const int line = ComputationLine(HeadId, Base->TYear, NatId, ShipNatId);
    if (line != 0) {
        FBTExpAmt[line] += Amt;
        FBTValue[line] += Value;
    }
    if (Quarter >= 1 && Quarter <= 4)
        FBTQtrValue[Quarter] += Value;
}

Employees EmployeesInHand()
{
    return {EmpBoth, SepBooks, IndiaEmp, TotalEmp};
}

void TakeEmployees(const Employees &employees)
{
    EmpBoth = employees.EmpBoth;
    SepBooks = employees.SepBooks;
    IndiaEmp = employees.IndiaEmp;
    TotalEmp = employees.TotalEmp;
}

TaxParts TaxOfQuarter(int quarter)
{
    return TaxOn(TaxableValue(EmployeesInHand(), FBTQtrValue[quarter]), FBTRate);
}

ComputedFigures FiguresInHand()
{
    return {FBTExpAmt,     FBTValue,        FBTQtrValue,
            FBTTotalValue, FBTTaxableValue, {FBTTax, FBTSurcharge, FBTEduCess, FBTSHECess},
            ShipNatId};
}

void TakeFigures(const ComputedFigures &figures)
{
    FBTExpAmt = figures.FBTExpAmt;
    FBTValue = figures.FBTValue;
    FBTQtrValue = figures.FBTQtrValue;
    FBTTotalValue = figures.FBTTotalValue;
    FBTTaxableValue = figures.FBTTaxableValue;
    setTax(figures.tax);
    ShipNatId = figures.ShipNatId;
}

void ClearTax()
{
    setTax({});
}

void ResetCalculation()
{
    clearFigures();
    setTax({});
    FBTRate = {};
    TakeEmployees({});
}
