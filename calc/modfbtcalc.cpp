#include "calc/modfbtcalc.h"

#include "calc/expenserows.h"
#include "calc/sharing.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "platform/recordset.h"
#include "platform/text.h"

#include <QStringList>

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

void findShipNature(ErrorTail &tail)
{
    Recordset rs;
    rs.Open(QStringLiteral("Select * from FBT_Nature Where NatDesc='Carry of Passengers/ Goods by Ship'"), Cnn);
    if (!rs.Eof())
        tail([&] { ShipNatId = rs.Fields(u"SrNo").whole(); });
}

void addExpensesOfNatures(ErrorTail &tail)
{
    ExpenseRows rows(ExpensesOfNatures(Base->TYear, Base->code), Cnn);
    const int natId = rows.column(u"NatId");
    for (; !rows.Eof(); rows.MoveNext()) {
        tail([&] {
            const double amount = rows.amount();
            SETFBTVARS(rows.headId(), amount, BENEFITVALUE(rows.rate(), amount), rows.quarter(),
                       rows.Fields(natId).whole());
        });
    }
}

/// The client's natures of business as texts, none without a client or without natures.
QStringList naturesOfClient()
{
    Recordset rs;
    rs.Open(Sql("select * from FBT_Info Where Code_No='", Base->code, "'"), Cnn);
    const QString busnat = rs.Eof() ? QString() : rs.Fields(u"busnat").text();
    return busnat.isEmpty() ? QStringList() : busnat.split(u',');
}

Salaries readSalaries(const QStringList &natures, ErrorTail &tail)
{
    std::vector<double> numbers;
    for (const QString &nature : natures)
        numbers.push_back(Val(nature));
    Salaries salaries(std::move(numbers));
    Recordset rs;
    rs.Open(Sql("Select * from FBT_SalDet Where Code_No='", Base->code, "' and Tyear=", Base->TYear), Cnn);
    for (; !rs.Eof(); rs.MoveNext()) {
        tail([&] { salaries.set(rs.Fields(u"NatId").num(), rs.Fields(u"Quarter").whole(), rs.Fields(u"Amt").num()); });
    }
    return salaries;
}

/// A quarter without a place among the salaries is a fault; the amount then falls on the last nature.
std::vector<double> sharesOf(const ExpenseRows &rows, const Salaries &salaries, ErrorTail &tail)
{
    std::vector<double> shares;
    if (!tail([&] { shares = salaries.shares(rows.amount(), rows.quarter()); }))
        shares = salaries.sharesWithoutSalary(rows.amount());
    return shares;
}

/// Each nature visits all consolidated expenses, with the rates that hold for it, and takes its own share.
void addConsolidatedExpenses(const QStringList &natures, int v, const Salaries &salaries, ErrorTail &tail)
{
    const Field nature(natures[v]);
    ExpenseRows rows(ConsolidatedExpenses(Base->TYear, Base->code, nature.num()), Cnn);
    for (; !rows.Eof(); rows.MoveNext()) {
        const double share = sharesOf(rows, salaries, tail)[v];
        if (share == 0)
            continue;
        tail([&] {
            SETFBTVARS(rows.headId(), share, BENEFITVALUE(rows.rate(), share), rows.quarter(), nature.whole());
        });
    }
}

TaxParts taxOfYear()
{
    constexpr int lastYearByQuarter = 2008;
    if (Base->TYear > lastYearByQuarter)
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

void CALCFBT()
{
    ErrorTail tail(QStringLiteral("MODFBTCALC"), QStringLiteral("CALCFBT"));
    clearFigures();
    findShipNature(tail);
    addExpensesOfNatures(tail);
    const QStringList natures = naturesOfClient();
    if (natures.isEmpty())
        return;
    const Salaries salaries = readSalaries(natures, tail);
    for (int v = 0; v < static_cast<int>(natures.size()); ++v)
        addConsolidatedExpenses(natures, v, salaries, tail);
    FBTTotalValue = std::accumulate(FBTQtrValue.begin() + 1, FBTQtrValue.end(), 0.0);
    FBTTaxableValue = EmployeesInHand().taxable(FBTTotalValue);
    setTax(taxOfYear());
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

TaxParts TaxOfQuarter(int quarter)
{
    return TaxOn(EmployeesInHand().taxable(FBTQtrValue[quarter]), FBTRate);
}

void ResetCalculation()
{
    clearFigures();
    setTax({});
    FBTRate = {};
    EmpBoth = SepBooks = false;
    IndiaEmp = TotalEmp = 0;
}
