#pragma once

#include "platform/offer.h"

#include <QString>
#include <QStringList>

/// The client and year that the user goes on with.

/// The assessment years that can be chosen, such as "2008-2009", in the order of the list.
FBT_OFFERED QStringList ChoosableYears();

/// Position of the year that the selection screen starts on: that of `tYear` when it is listed, else the last but one
/// up to 31 March 2010, the last from then on.
/// @param tYear assessment year chosen before by its first calendar year, 0 for none
FBT_OFFERED int FirstYearPosition(int tYear);

/// Takes a client and year for all later screens: `Base->code`, `TYear`, `status`, `Cap`, the rates, and the employee
/// figures cleared.
/// @param yearText such as "2008-2009"
/// @return false when the client could not be read: its percentages are unknown then, and what was in hand stays
FBT_OFFERED bool TakeClientAndYear(const QString &code, const QString &name, const QString &yearText);
