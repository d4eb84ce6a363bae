#pragma once

#include "platform/offer.h"

#include <QDate>
#include <QString>
#include <QStringView>

/// Dates are kept as `dd/mm/yyyy` text and compared after parsing by position, never in SQL.

/// The date of a `dd/mm/yyyy` text: day at 1-2, month at 4-5, year in the last four characters.
/// An invalid date when the text is none.
FBT_OFFERED QDate DateFromText(QStringView text);

/// As DateFromText, but a text that is no date is a fault (FaultError, type mismatch).
FBT_OFFERED QDate DateOrFault(QStringView text);

/// A date as `dd/mm/yyyy`; an invalid date is the empty text.
FBT_OFFERED QString DateText(const QDate &date);

/// A typed date as `dd/mm/yyyy`, or empty when it is no date: d/m/y with '/', '-', '.' or blanks, or 6 or 8 digits;
/// one-digit day and month; two-digit years 00-29 are 20xx, 30-99 are 19xx.
FBT_OFFERED QString ConvertTypedDate(QStringView text);

/// The first and the last assessment year of the module, by their first calendar years.
constexpr int firstAssessmentYear = 2006;
constexpr int lastAssessmentYear = 2010;

/// "2006-07" for 2006: an assessment year by its first calendar year.
FBT_OFFERED QString YearLabel(int year);

/// "2006-2007" for 2006.
FBT_OFFERED QString LongYearLabel(int year);
