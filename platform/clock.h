#pragma once

#include <QDate>
#include <QDateTime>

/// Today's date: due dates, interest and file names all ask here, so that a test or a script can set it.
QDate Today();

/// The present moment, on the day that Today() names.
QDateTime Now();

/// Sets today's date from here on; an invalid date gives it back to the machine's clock.
void SetToday(const QDate &date);
