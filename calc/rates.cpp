#include "calc/rates.h"

#include "platform/dates.h"

namespace {

constexpr int lastStatusWithoutTax = 1;

bool surchargeChosen(int year, const QString &surApp)
{
    const int position = year - firstAssessmentYear;
    return position >= 0 && position < surApp.size() && surApp[position] == u'1';
}

double surchargeRate(int year, int status, const QString &surApp)
{
    switch (status) {
    case 3:  // firm
    case 15: // public limited company
    case 16: // private limited company
        return 10;
    case 5: // foreign company
        return 2.5;
    case 4:  // artificial juridical person
    case 9:  // association of persons
    case 11: // trust
    case 13: // body of individuals
        return surchargeChosen(year, surApp) ? 10 : 0;
    default:
        return 0;
    }
}

} // namespace

FBTRates RatesFor(int year, int status, const QString &surApp)
{
    if (year > lastTaxedYear || status <= lastStatusWithoutTax)
        return {};
    constexpr int firstYearOfSecondCess = 2008;
    return {0, 30, surchargeRate(year, status, surApp), 2, year < firstYearOfSecondCess ? 0.0 : 1.0};
}
