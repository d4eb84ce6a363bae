#pragma once

#include "calc/rates.h"
#include "platform/offer.h"
#include "records/addinfo.h"

/// The value of a fringe benefit: Round(rate / 100 * amount), ties to the even number.
/// @param rate percentage of the expense that counts (section 115WC)
/// @param amount expense in rupees
FBT_OFFERED double BENEFITVALUE(double rate, double amount);

/// Whether only the India share of a value is taxed: there are employees in and outside India, without separate books.
FBT_OFFERED bool ProportionApplies(const Employees &employees);

/// Round(`IndiaEmp` / `TotalEmp` * value), ties to the even number.
/// @param employees in all not 0
FBT_OFFERED double IndiaShare(const Employees &employees, double value);

/// The taxed part of a value: the India share when the proportion applies, else the value.
FBT_OFFERED double TaxableValue(const Employees &employees, double value);

/// Tax with what is laid on it, in whole rupees.
struct FBT_OFFERED TaxParts
{
    double Tax = 0;
    double Surcharge = 0;
    double EduCess = 0;
    double SHECess = 0;

    [[nodiscard]] double total() const { return Tax + Surcharge + EduCess + SHECess; }
    TaxParts &operator+=(const TaxParts &other);
};

/// The tax on a taxable value. Each part is rounded by itself, ties to the even number: tax on the value, surcharge on
/// the tax, both cesses on tax and surcharge.
/// @param taxableValue rupees, the India share already taken
FBT_OFFERED TaxParts TaxOn(double taxableValue, const FBTRates &rates);
