#include "calc/taxchain.h"

#include "platform/text.h"

double BENEFITVALUE(double rate, double amount)
{
    return Round(rate / 100 * amount);
}

bool ProportionApplies(const Employees &employees)
{
    return employees.EmpBoth && !employees.SepBooks && employees.IndiaEmp != 0 && employees.TotalEmp != 0;
}

double IndiaShare(const Employees &employees, double value)
{
    return Round(static_cast<double>(employees.IndiaEmp) / employees.TotalEmp * value);
}

double TaxableValue(const Employees &employees, double value)
{
    return ProportionApplies(employees) ? IndiaShare(employees, value) : value;
}

TaxParts &TaxParts::operator+=(const TaxParts &other)
{
    Tax += other.Tax;
    Surcharge += other.Surcharge;
    EduCess += other.EduCess;
    SHECess += other.SHECess;
    return *this;
}

TaxParts TaxOn(double taxableValue, const FBTRates &rates)
{
    TaxParts parts;
    parts.Tax = Round(rates[1] / 100 * taxableValue);
    parts.Surcharge = Round(rates[2] / 100 * parts.Tax);
    const double base = parts.Tax + parts.Surcharge;
    parts.EduCess = Round(rates[3] / 100 * base);
    parts.SHECess = Round(rates[4] / 100 * base);
    return parts;
}
