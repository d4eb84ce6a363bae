#pragma once

#include "platform/offer.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

/// The employer's status: the name that is shown, the place in the list of the client master, and the `ClStatus` that
/// is stored. Older databases hold a second code for some of them, which is read but never written.

/// The names in the order of the list.
FBT_OFFERED QStringList StatusNames();

/// The name of a stored `ClStatus`; empty for a code that stands for no status.
FBT_OFFERED QString StatusText(int clStatus);

/// The same without a text of its own, for the list of all employers; it holds as long as the program runs.
FBT_OFFERED QStringView StatusName(int clStatus);

/// The place in the list of a stored `ClStatus`, -1 for a code that stands for no status.
FBT_OFFERED int StatusPosition(int clStatus);

/// The `ClStatus` to store for a place in the list, -1 outside the list.
FBT_OFFERED int StatusCode(int position);

/// Surcharge of one assessment year: never, always, or by the user's choice where it hangs on the income.
struct FBT_OFFERED SurchargeRow
{
    QString year;      ///< "2006-07"
    QString threshold; ///< income from which it may apply; "N/A" where there is no choice
    QString applies;   ///< "0" not, any other number yes

    [[nodiscard]] bool hasChoice() const { return threshold != QStringLiteral("N/A"); }
};

/// The rows of the assessment years 2006-07 to 2010-11 for a place in the list of status; none for a place outside it.
/// `surApp` has one character a year ("0" or "1"), as far as the choices are known.
FBT_OFFERED std::vector<SurchargeRow> SurchargeRows(int position, const QString &surApp);

/// The text to store as `SurApp`: "1" for each value that is not 0, else "0".
FBT_OFFERED QString SurAppText(const QStringList &applies);
