#pragma once

#include <QStringList>

/// The default law as the statements that write it, in the order of the rows. The texts are data that users and files
/// know by their letters, misspellings included.

/// `FBT_Nature`: the seven kinds of business that section 115WC tells apart.
[[nodiscard]] QStringList NatureInserts();

/// `FBT_Head`: the clauses of section 115WB as enacted for A.Y. 2006-07.
[[nodiscard]] QStringList HeadInserts();

/// `FBT_ExpHead` and `FBT_ExpRate`: each expense item, followed by its percentages under section 115WC. An item has one
/// row for all natures (`NatId` 0) or one for each of the seven.
[[nodiscard]] QStringList ItemInserts();

/// `DueDt_Master`: due dates of the return of a year (2006 to 2010) by class of assessee; other years have none.
[[nodiscard]] QStringList ReturnDateInserts(int year);

/// `ChallanDt_Master`: due dates of the four instalments of a year.
[[nodiscard]] QStringList InstalmentDateInserts(int year);

/// `SRate`: service tax rates in percent, each from its date on.
[[nodiscard]] QStringList ServiceTaxInserts();

/// `Bill_Type`: kinds of bills.
[[nodiscard]] QStringList BillTypeInserts();
