#include "platform/clock.h"

namespace {
QDate setDate; // invalid: the machine's clock
}

QDate Today()
{
    return setDate.isValid() ? setDate : QDate::currentDate();
}

QDateTime Now()
{
    return {Today(), QTime::currentTime()};
}

void SetToday(const QDate &date)
{
    setDate = date;
}
