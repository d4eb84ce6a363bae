#pragma once

#include <QString>

#include <array>

class Connection;

/// The due dates of a year in the database: of the return (`DueDt_Master`), of the quarters (`ChallanDt_Master`) and of
/// the instalments (`AdvTaxDueDt`). Dates are `dd/mm/yyyy` texts; a year is named by its first calendar year.

struct DueDateRow
{
    QString original;
    QString extended;     ///< empty when it was not extended
    QString notification; ///< authority of the extension
};

using DueDateRows = std::array<DueDateRow, 4>;
using InstalmentDates = std::array<QString, 4>;

/// By the place in the list of the screen (PlaceOfClass), not by class. What has no row is empty; a notification that
/// is `Null` reads as "0".
DueDateRows ReturnDueDates(Connection *cnn, int year);

/// By quarter, April to June first.
DueDateRows QuarterDueDates(Connection *cnn, int year);

/// The four dates of the instalments; those of the law when the year has no row.
InstalmentDates InstalmentDueDates(Connection *cnn, int year);

/// Each of these replaces the rows of the year. False at the first statement that faults; what was done till then stays
/// done, so the year can be left without rows.
bool SaveReturnDueDates(Connection *cnn, int year, const DueDateRows &rows);
bool SaveQuarterDueDates(Connection *cnn, int year, const DueDateRows &rows);

/// As the others, but a year with the dates of the law keeps no row.
bool SaveInstalmentDueDates(Connection *cnn, int year, const InstalmentDates &dates);
