#pragma once

#include "platform/offer.h"
#include "records/clientyear.h"
#include "records/reading.h"

class Change;
class Connection;

/// Salary and wages of a client by year, quarter and nature of business, `FBT_SalDet`.
struct Salary
{
    int quarter = 0;   ///< 1 to 4
    int natId = 0;     ///< `consolidatedNature`: the total of the client, as the user stated it
    double amount = 0; ///< rupees
};

/// The salaries of the year, in the order in which they were written: of two for one nature and quarter the later holds.
FBT_OFFERED RowsRead<Salary> SalariesOfYear(Connection *cnn, const ClientYear &client);

/// The salaries of one quarter.
/// @param quarter 1 to 4
FBT_OFFERED RowsRead<Salary> SalariesOfQuarter(Connection *cnn, const ClientYear &client, int quarter);

/// Writes one row.
FBT_OFFERED bool InsertSalary(Change &change, const ClientYear &client, const Salary &salary);

/// Replaces the salaries of a quarter, all or none. `salaries` are of that quarter. False when the old ones stay.
FBT_OFFERED bool SaveSalaries(Connection *cnn, const ClientYear &client, int quarter,
                              const std::vector<Salary> &salaries);
