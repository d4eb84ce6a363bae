#pragma once

#include "calc/sharing.h"
#include "platform/offer.h"
#include "records/expenses.h"
#include "records/salaries.h"

class ErrorTail;

/// Consolidated expenses of a year shared over natures, as the computation and the annual report do it.

/// The salaries of a year by nature and quarter. A quarter outside 0 to 4 is a fault, and its row is left out.
/// @param natures by number; the last of them takes what the others leave; not empty
FBT_OFFERED Salaries SalariesOf(const RowsRead<Salary> &rows, const std::vector<int> &natures, ErrorTail &tail);

/// The shares of one expense, whole rupees. A quarter without a place among the salaries is a fault, and the amount then
/// falls on the last nature.
FBT_OFFERED std::vector<double> SharesOfExpense(const Expense &expense, const Salaries &salaries, ErrorTail &tail);
