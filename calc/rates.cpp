#include "calc/rates.h"

#include "records/clientstatus.h"

namespace {

constexpr int lastStatusWithoutTax = 1;

double surchargeRate(int year, int status, const QString &surApp)
{
    constexpr int foreignCompany = 5;
    switch (SurchargeOf(status)) {
    case Surcharge::Always:
        return status == foreignCompany ? 2.5 : 10;
    case Surcharge::Chosen:
        return SurchargeChosen(year, surApp) ? 10 : 0;
    default:
        return 0;
    }
}

} // namespace

FBTRates RatesFor(int year, int status, const QString &surApp)
{
    if (year > lastTaxedYear || status <= lastStatusWithoutTax)
        return {};
    return {0, 30, surchargeRate(year, status, surApp), 2, year < firstYearWithSecondCess ? 0.0 : 1.0};
}
