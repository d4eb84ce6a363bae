#pragma once

#include "platform/offer.h"

#include "records/duedates.h"

/// The due dates of the four instalments of advance tax of a year (by its first calendar year), as `dd/mm/yyyy` texts: those
/// stored, and for each that is not, the one of section 115WJ(2).
FBT_OFFERED Reading<InstalmentDates> InstalmentDatesOfYear(int year);
