#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

#include <array>
#include <optional>

class Connection;

/// The due dates of an assessment year: of the return (`DueDt_Master`), of the quarters (`ChallanDt_Master`) and of the
/// instalments (`AdvTaxDueDt`). Dates are `dd/mm/yyyy` texts; a year is named by its first calendar year.

struct DueDateRow
{
    QString original;
    QString extended;     ///< empty when it was not extended
    QString notification; ///< authority of the extension

    bool operator==(const DueDateRow &) const = default;
};

using DueDateRows = std::array<DueDateRow, 4>;
using InstalmentDates = std::array<QString, 4>;

/// By class of assessee (`StatC` 1 to 4). What has no row is empty; a notification that is `Null` reads as "0".
FBT_OFFERED Reading<DueDateRows> ReturnDueDates(Connection *cnn, int year);

/// By quarter, April to June first.
FBT_OFFERED Reading<DueDateRows> QuarterDueDates(Connection *cnn, int year);

/// The due dates of the instalments by section 115WJ: 15 June, 15 September, 15 December, 15 March.
FBT_OFFERED InstalmentDates LawInstalments(int year);

/// The four dates of the instalments; those of the law when the year has no row.
FBT_OFFERED Reading<InstalmentDates> InstalmentDueDates(Connection *cnn, int year);

/// All due dates of a year, as one change of them replaces them: each that is there, the others stay.
struct DueDates
{
    DueDateRows returns; ///< by class
    std::optional<DueDateRows> quarters;
    std::optional<InstalmentDates> instalments; ///< those of the law leave no row

    bool operator==(const DueDates &) const = default;
};

/// False after a fault: then all dates are as before.
FBT_OFFERED bool SaveDueDates(Connection *cnn, int year, const DueDates &dates);
