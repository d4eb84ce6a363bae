#include "entry/figures.h"

#include "platform/sqltext.h"

#include <cmath>

Figures &Figures::operator+=(const Figures &other)
{
    Amount += other.Amount;
    Value += other.Value;
    Taxable += other.Taxable;
    Tax += other.Tax;
    return *this;
}

Figures FiguresOn(double amount, double value, const Employees &employees, const FBTRates &rates)
{
    const double taxable = TaxableValue(employees, value);
    return {amount, value, taxable, TaxOn(taxable, rates)};
}

QString ProportionText(const Employees &employees, double value)
{
    if (!ProportionApplies(employees))
        return {};
    return QStringLiteral("(%1[Employees in India] \u00f7%2[Total Employees]) X %3[Value of Fringe Benefit]")
        .arg(QString::number(employees.IndiaEmp), QString::number(employees.TotalEmp), Money(value));
}

QString Money(double rupees)
{
    return Format(rupees, u"###0.00");
}

bool IsAmount(const QString &typed)
{
    // A number that no double holds would be taken as 0.
    return typed.isEmpty() || (IsNumeric(typed) && std::isfinite(typed.trimmed().toDouble()));
}

QString WithRate(const QString &caption, double percent)
{
    return caption + QStringLiteral(" (") + NumberText(percent) + QStringLiteral("%)");
}
