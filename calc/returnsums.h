#pragma once

#include "calc/interest.h"
#include "calc/taxchain.h"
#include "platform/offer.h"

#include <optional>

/// What was paid towards the tax of a year, in rupees as stored.
struct TaxesPaid
{
    double advance = 0;        ///< advance tax, whatever the dates
    double selfAssessment = 0; ///< every other payment
};

/// The closing lines of a return, in whole rupees. Each line is rounded by itself, ties to the even number, and the
/// totals are added up from rounded lines, as the form has them; only the two totals that say otherwise are not.
struct FBT_OFFERED ReturnSums
{
    double tax = 0;
    double surcharge = 0;
    double cess = 0;           ///< both cesses, rounded as one
    double totalTax = 0;       ///< the three lines above
    double interest115WJ = 0;  ///< section 115WJ(3), (4) and (5), rounded as one
    double interest115WK = 0;  ///< section 115WK
    double totalInterest = 0;  ///< one rounding of all interest: it can differ by one from the two lines above
    double aggregate = 0;      ///< `totalTax` with the two lines of interest
    double advance = 0;        ///< advance tax paid
    double selfAssessment = 0; ///< self-assessment tax paid
    double totalPaid = 0;      ///< one rounding of all that was paid: it can differ by one from the two lines above
    double balance = 0;        ///< `aggregate` less the two lines of tax paid; below 0 a refund

    [[nodiscard]] double payable() const { return balance > 0 ? balance : 0; }
    [[nodiscard]] double refund() const { return balance < 0 ? -balance : 0; }

    /// The balance of form 3B before interest: tax less advance tax; may be negative.
    [[nodiscard]] double balanceBeforeInterest() const { return totalTax - advance; }
};

/// The lines from the tax, the interest and the payments of a year.
FBT_OFFERED ReturnSums SumsOfReturn(const TaxParts &tax, const InterestOfYear &interest, const TaxesPaid &paid);

/// A client's year as its return states it.
struct FBT_OFFERED ReturnFiguresOfYear
{
    TaxParts tax;
    InterestOfYear interest;
    TaxesPaid paid;
    ReturnSums sums;
    bool computed = true; ///< the rows of the computation could be read
    bool paidKnown = true;

    [[nodiscard]] bool known() const { return computed && interest.known() && paidKnown; }
    /// Tax and interest less payments, before any rounding: what decides on a refund.
    [[nodiscard]] double plainBalance() const
    {
        return tax.total() + interest.total() - paid.advance - paid.selfAssessment;
    }
};

/// Computes the client and year in hand, whose rates and employees must have been taken: `CALCFBT` with its results,
/// `CALCINTEREST`, and what was paid. A client without natures has no tax here. What could not be read counts as 0.
FBT_OFFERED ReturnFiguresOfYear FiguresOfYear();
