#pragma once

#include "calc/taxchain.h"
#include "platform/offer.h"

#include <QString>

/// The figures that the entry screens show for expenses, in rupees. They are an indication: `CALCFBT` alone makes the
/// figures of the year.
struct FBT_OFFERED Figures
{
    double Amount = 0;  ///< expenses
    double Value = 0;   ///< value of the fringe benefit, whole rupees
    double Taxable = 0; ///< the value, or its India share
    TaxParts Tax;

    [[nodiscard]] double total() const { return Tax.total(); } ///< tax with surcharge and cesses
    Figures &operator+=(const Figures &other);
};

/// Taxable value and tax on a value of benefits. Each part is rounded by itself, ties to the even number.
/// @param amount expenses in rupees
/// @param value their value in rupees
FBT_OFFERED Figures FiguresOn(double amount, double value, const Employees &employees, const FBTRates &rates);

/// How the India share comes about, for a tool tip; empty when the whole value is taxed.
/// @param value value of the fringe benefit in rupees
FBT_OFFERED QString ProportionText(const Employees &employees, double value);

/// An amount with two decimals, such as "1234.50"; 0 is "0.00".
FBT_OFFERED QString Money(double rupees);

/// Whether what was typed as an amount can be kept: a number that a double can hold. The empty text can, as 0.
FBT_OFFERED bool IsAmount(const QString &typed);

/// A caption with its percentage, such as "Surcharge (2.5%)".
FBT_OFFERED QString WithRate(const QString &caption, double percent);
