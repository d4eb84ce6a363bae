#pragma once

#include "platform/offer.h"

#include <QDate>
#include <QString>

/// The rules for the due dates of a year. A year is named by its first calendar year: 2008 is A.Y. 2008-09. Dates are
/// `dd/mm/yyyy` texts. A check gives the message for the user, or an empty text when all is well.

/// Both ends included.
struct DateWindow
{
    QDate from;
    QDate to;
    [[nodiscard]] bool holds(const QDate &date) const { return date >= from && date <= to; }
};

/// Up to 2007 the advance tax falls due by quarters of the year, from 2008 on by four instalments in it.
constexpr bool HasQuarterDates(int year)
{
    return year <= 2007;
}

/// Where the class of assessee (`StatC`, 1 to 4) stands in the list: 3, "Any Other Assessee", is the last. Works both
/// ways; 0 for what is no class.
constexpr int PlaceOfClass(int statC)
{
    constexpr int places[] = {0, 1, 2, 4, 3};
    return statC >= 1 && statC <= 4 ? places[statC] : 0;
}

/// From 1 April of the assessment year to 31 March of the next one: when a return of that year can fall due.
FBT_OFFERED DateWindow ReturnWindow(int year);

/// The days that the instalment 1 to 4 may be set to: from its due date to the end of that month.
FBT_OFFERED DateWindow InstalmentWindow(int year, int instalment);

/// @param column 1 the original date, which must be there; 2 the extended one, which may be empty
FBT_OFFERED QString CheckReturnDate(int year, int column, const QString &date);

/// The dates of a quarter: the original one must be there, the extended one may not be earlier.
/// @param column the date that is checked, 1 the original, 2 the extended one
FBT_OFFERED QString CheckQuarterDate(int column, const QString &original, const QString &extended);

FBT_OFFERED QString CheckInstalment(int year, int instalment, const QString &date);
