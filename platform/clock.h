#pragma once

#include "platform/offer.h"

#include <QDate>
#include <QDateTime>

/// Today's date: due dates, interest and file names all ask here, so that a test or a script can set it.
FBT_OFFERED QDate Today();

/// The present moment, on the day that Today() names.
FBT_OFFERED QDateTime Now();

/// Sets today's date from here on; an invalid date gives it back to the machine's clock.
FBT_OFFERED void SetToday(const QDate &date);
