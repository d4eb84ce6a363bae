#pragma once

#include "entry/figures.h"
#include "entry/quartersalary.h"
#include "platform/offer.h"
#include "records/expenses.h"

#include <vector>

/// Consolidated expenses shared over the natures by salary: what the consolidated panel shows and the figures of the
/// quarter are made of.

/// `srNo` of a row that is a share, and no row of the table.
constexpr int shareSrNo = -1;

/// A consolidated expense, or the sum of several, by nature.
struct FBT_OFFERED SharedFigures
{
    std::vector<Figures> ofNatures;
    Figures total; ///< the natures' figures added up, each already rounded

    SharedFigures &operator+=(const SharedFigures &other);
};

/// The percentage that an item has for each nature; 0 where the year's table has none. With a rate for all natures and
/// one of the nature's own, the row that the database gives first holds. Failed when one of them could not be read.
FBT_OFFERED RowsRead<double> RatesOfItem(int year, int expId, const std::vector<Nature> &natures);

/// Shares one expense and works out each nature's figures.
/// @param amount rupees
/// @param percent the item's percentage for each nature
FBT_OFFERED SharedFigures ShareExpense(double amount, const std::vector<double> &percent, const QuarterSalary &salary,
                                       const Employees &employees, const FBTRates &rates);

/// The figures of all consolidated expenses of a quarter: those of the single expenses added up. Failed when a percentage
/// could not be read.
FBT_OFFERED Reading<SharedFigures> ShareAll(const std::vector<Expense> &expenses, int year,
                                            const std::vector<Nature> &natures, const QuarterSalary &salary,
                                            const Employees &employees, const FBTRates &rates);

/// What one nature takes of consolidated expenses: their rows with the share as amount and `shareSrNo` as number. A row without a share is left
/// out; the last nature takes what the others leave.
/// @param expenses with the percentages of that nature
/// @param nature its position among the natures
FBT_OFFERED std::vector<Expense> SharesOf(const std::vector<Expense> &expenses, std::size_t nature,
                                          const QuarterSalary &salary);
