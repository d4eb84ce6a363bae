#pragma once

#include "platform/offer.h"
#include "records/clientyear.h"
#include "records/natures.h"

#include <optional>

class Change;
class Connection;

/// An expense of a client, a row of `FBT_Detail`, with what the year's law says of its item. Nothing is rounded.
struct FBT_OFFERED Expense
{
    int quarter = 0;   ///< 1 to 4
    int natId = 0;     ///< nature of business, or `consolidatedNature`
    int headId = 0;    ///< head of the item; 0 when the item is not among the year's items
    int expId = 0;     ///< item
    double rate = 0;   ///< percent of the expense that counts (section 115WC); 0 where the year's table has none
    double amount = 0; ///< rupees
    int srNo = 0;      ///< number within client, year and quarter; 0 for a row that has none
};

/// The readers join expenses with the rates of a year. The rate for all natures and the rate of the expense's own nature
/// have no precedence: a table that holds both gives two rows for the expense.

/// The expenses of the year that belong to a nature each, with the rates of that nature.
FBT_OFFERED RowsRead<Expense> ExpensesOfNatures(Connection *cnn, const ClientYear &client);

/// The consolidated expenses of the year with the rates of one nature; their own nature stays 0.
FBT_OFFERED RowsRead<Expense> ConsolidatedExpenses(Connection *cnn, const ClientYear &client, int rateOf);

/// The expenses of one quarter and nature.
/// @param natId a nature, or `consolidatedNature`
/// @param rateOf the nature whose rates go with them; `consolidatedNature` leaves the rate out
FBT_OFFERED RowsRead<Expense> ExpensesOfQuarter(Connection *cnn, const ClientYear &client, int quarter, int natId,
                                                int rateOf);

/// The expenses of one nature in all quarters, in the order in which they were written. Those of `consolidatedNature`
/// come without a rate.
FBT_OFFERED RowsRead<Expense> ExpensesOfYear(Connection *cnn, const ClientYear &client, int natId);

/// The percentage of an item for a nature: the row that the database gives first. None when the table has no such row.
FBT_OFFERED Reading<double> RateOfItem(Connection *cnn, int year, int expId, int natId);

/// The number of a new expense: the highest of the client's quarter, across natures, plus 1. Without a value after a
/// fault: a number that is in use would replace its row.
FBT_OFFERED std::optional<int> NextExpenseNo(Change &change, const ClientYear &client, int quarter);

/// Removes the row of an expense as it was read, and no other, whatever numbers other rows have. True also when it has
/// gone already.
FBT_OFFERED bool DeleteExpense(Change &change, const ClientYear &client, const Expense &row);

/// Writes one row: quarter, nature, number, item and amount. The amount goes in with up to 15 significant digits.
FBT_OFFERED bool InsertExpense(Change &change, const ClientYear &client, const Expense &expense);

/// Writes a new expense under the number that it was given (`NextExpenseNo`).
FBT_OFFERED bool AddExpense(Change &change, const ClientYear &client, const Expense &expense);

/// Puts an expense in the place of the row of another, `before` as it was read, and of no other row. False, and the
/// change given up, also when that row has gone.
FBT_OFFERED bool ReplaceExpense(Change &change, const ClientYear &client, const Expense &before,
                                const Expense &expense);

/// Takes all expenses of the quarter before, of all natures and the consolidated ones too, over into a quarter with
/// amount 0, all or none. One number is skipped; a second import brings the rows once more. False when none came.
/// @param quarter 2 to 4
FBT_OFFERED bool ImportLastQuarter(Connection *cnn, const ClientYear &client, int quarter);
