#pragma once

#include "calc/lines.h"
#include "calc/rates.h"
#include "calc/taxchain.h"
#include "platform/offer.h"

#include <array>

class ComputationSource;

/// The figures of the client and year in hand. Every reader calls `CALCFBT` first: the next call overwrites them, and
/// nothing stores a computed figure. All are rupees; all but `FBTExpAmt` are whole.

FBT_OFFERED extern std::array<double, lastComputationLine + 1> FBTExpAmt; ///< amount of expense by computation line
FBT_OFFERED extern std::array<double, lastComputationLine + 1>
    FBTValue;                                         ///< value of fringe benefit by computation line
FBT_OFFERED extern std::array<double, 5> FBTQtrValue; ///< value by quarter 1 to 4; index 0 stays 0
FBT_OFFERED extern double FBTTotalValue;              ///< sum of the four quarters
FBT_OFFERED extern double FBTTaxableValue;            ///< the total, or its India share
FBT_OFFERED extern double FBTTax;
FBT_OFFERED extern double FBTSurcharge;
FBT_OFFERED extern double FBTEduCess;
FBT_OFFERED extern double FBTSHECess;
FBT_OFFERED extern int ShipNatId; ///< the nature that carries by ship; 0 when the list of natures has none

/// What the computation is told beforehand: the percentages when client and year are chosen, the employees when the
/// quarterly screen reads its additional information.

FBT_OFFERED extern FBTRates FBTRate;
FBT_OFFERED extern bool EmpBoth;
FBT_OFFERED extern bool SepBooks;
FBT_OFFERED extern int IndiaEmp;
FBT_OFFERED extern int TotalEmp;

/// Computes the figures of `Base->code` and `Base->TYear` from the rows on disk with `FBTRate` and the employees.
///
/// Consolidated expenses are shared over the client's natures by salary. Up to the assessment year 2008-09 the tax is
/// worked out and rounded for each quarter and added up; from 2009-10 on once for the year. A client without natures
/// ends the computation after the expenses of natures: the totals are 0 and the four tax figures stay as they were.
/// A fault is logged as MODFBTCALC, CALCFBT and costs its statement only.
/// @return false when some of the rows could not be read: the figures are those of the rest
FBT_OFFERED bool CALCFBT();

/// The same from rows that `rows` hands out, for `Base->TYear`.
FBT_OFFERED bool CALCFBT(ComputationSource &rows);

/// Adds one expense to its computation line and to its quarter.
/// @param HeadId a head without a line counts in the quarter all the same
/// @param Amt rupees
/// @param Value value of the fringe benefit, whole rupees
/// @param Quarter 1 to 4; with another the expense counts in its line only
/// @param NatId nature of business
FBT_OFFERED void SETFBTVARS(int HeadId, double Amt, double Value, int Quarter, int NatId);

/// The employee figures in one piece.
FBT_OFFERED Employees EmployeesInHand();
FBT_OFFERED void TakeEmployees(const Employees &employees);

/// What `CALCFBT` leaves, in one piece.
struct ComputedFigures
{
    std::array<double, lastComputationLine + 1> FBTExpAmt{};
    std::array<double, lastComputationLine + 1> FBTValue{};
    std::array<double, 5> FBTQtrValue{};
    double FBTTotalValue = 0;
    double FBTTaxableValue = 0;
    TaxParts tax;
    int ShipNatId = 0;
};
FBT_OFFERED ComputedFigures FiguresInHand();
FBT_OFFERED void TakeFigures(const ComputedFigures &figures);

/// The tax on the value of one quarter, its India share taken first where that applies.
/// @param quarter 1 to 4
FBT_OFFERED TaxParts TaxOfQuarter(int quarter);

/// The four tax figures as 0. The computation of a client without natures leaves them as they were, which may be those of
/// another client: who takes them for an amount to pay calls this first.
FBT_OFFERED void ClearTax();

/// All figures and inputs as on a fresh module.
FBT_OFFERED void ResetCalculation();
