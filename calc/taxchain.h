#pragma once

#include "calc/rates.h"

/// The value of a fringe benefit: Round(rate / 100 * amount), ties to the even number.
/// @param rate percentage of the expense that counts (section 115WC)
/// @param amount expense in rupees
double BENEFITVALUE(double rate, double amount);

/// The employees of a client and year, as its additional information states them.
struct Employees
{
    bool EmpBoth = false;  ///< employees both in and outside India
    bool SepBooks = false; ///< separate books are kept for the Indian part
    int IndiaEmp = 0;      ///< employees based in India
    int TotalEmp = 0;      ///< all employees; fewer than those in India is not checked

    /// Whether only the India share of the value is taxed.
    [[nodiscard]] bool proportionApplies() const { return EmpBoth && !SepBooks && IndiaEmp != 0 && TotalEmp != 0; }

    /// The taxed part of a value: Round(`IndiaEmp` / `TotalEmp` * value) when the proportion applies, else the value.
    [[nodiscard]] double taxable(double value) const;

    bool operator==(const Employees &other) const = default;
};

/// Tax with what is laid on it, in whole rupees.
struct TaxParts
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
TaxParts TaxOn(double taxableValue, const FBTRates &rates);
