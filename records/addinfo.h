#pragma once

#include "platform/offer.h"
#include "records/clientrow.h"
#include "records/clientyear.h"
#include "records/reading.h"

class Change;
class Connection;

/// Additional information of a client and year, `FBT_AddInfo`: one row each.

/// The employees of a client and year.
struct Employees
{
    bool EmpBoth = false;  ///< employees both in and outside India
    bool SepBooks = false; ///< separate books are kept for the Indian part
    int IndiaEmp = 0;      ///< employees based in India
    int TotalEmp = 0;      ///< all employees; fewer than those in India is not checked

    bool operator==(const Employees &other) const = default;
};

/// The employees that a year's row states; `Null` counts as no and as 0. None without a row.
FBT_OFFERED Reading<Employees> EmployeesOfYear(Connection *cnn, const ClientYear &client);

/// What the row that a client starts with holds in all its columns after client and year: filed in time, all interest
/// computed, up to no date yet.
FBT_OFFERED ColumnValues AddInfoDefaults();

/// Writes that row.
/// @param filed the day on which the return was filed, `dd/mm/yyyy`; empty: not yet
FBT_OFFERED bool InsertDefaultAddInfo(Change &change, const ClientYear &client, const Employees &employees = {},
                                      const QString &filed = {});

/// Sees that the year has its row, and gives its employees. A year without a row gets one: what changes slowly is copied
/// from the year before, what belongs to one return starts anew; without a year before, the default row. Nothing is
/// written unless both readings show that it is missing. Failed also when the row could not be written: whoever saves the
/// year later would save it without what should have come from the year before.
FBT_OFFERED Reading<Employees> OpenAddInfoYear(Connection *cnn, const ClientYear &client);

/// Copies the bank accounts of the year before, all or none, when the year has none. False when an account could not be
/// read or written.
FBT_OFFERED bool CarryBanksForward(Connection *cnn, const ClientYear &client);
