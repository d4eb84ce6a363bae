#pragma once

#include "platform/offer.h"

#include "calc/interestlaw.h"
#include "calc/rates.h"
#include "records/challans.h"

#include <array>
#include <optional>

class ErrorTail;

/// How the year's tax divides into what is to be paid, by head of payment and by instalment. Amounts are rupees.

/// The tax of a quarter by head as a challan states it; with quarter 0 the tax of the year. `CALCFBT` must have run.
/// Interest is 0.
FBT_OFFERED HeadAmounts TaxByHead(int quarter);

/// What a head of payment comes to by the due date of an instalment; the amounts count from the year's beginning.
struct InstalmentHead
{
    std::optional<double> due; ///< none when its share could not be worked out
    double paid = 0;
    double balance = 0;
};

/// One instalment by head: tax, surcharge and the two cesses, and all of them together.
struct InstalmentFigures
{
    std::array<InstalmentHead, 4> heads;
    InstalmentHead total;
};

/// Divides an instalment over the heads by their weight in the tax; the tax takes what the others leave, so that the heads
/// add up to the total. With rates that are all 0 a weight is a division by zero: a fault of `tail`, which leaves that share
/// unknown.
/// @param annual tax with surcharge and cesses of the year
/// @param share of it that is due
/// @param paid by the due date
FBT_OFFERED InstalmentFigures FiguresOfInstalment(double annual, double share, const FBTRates &rates,
                                                  const HeadAmounts &paid, ErrorTail &tail);

/// Advance tax of the client in hand by head, paid up to and including a due date. A challan without date does not count,
/// and a due date that is empty finds nothing. A date that is none is a logged fault.
/// @param DueDate `dd/mm/yyyy`
FBT_OFFERED Reading<HeadAmounts> GETDEPAMT(const QString &DueDate);
