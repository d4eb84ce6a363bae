#pragma once

#include "platform/dates.h"
#include "records/law.h"

/// Heads of the law, which cannot be deleted: 1 to 19 in 2006, 1 to 20 from 2007 on. Head 21, the clause of section
/// 115WB(1)(d), is not among them.
constexpr bool IsStatutoryHead(int year, int headId)
{
    return headId <= (year == firstAssessmentYear ? 19 : 20);
}

/// Items of the base list, which cannot be deleted.
constexpr bool IsSeededItem(int srNo)
{
    return srNo <= 134;
}

/// The percentage of an item for a nature: its own rate or the one for all natures, whichever is stored last; empty
/// without one.
inline QString RateFor(const RatedItem &item, int natId)
{
    QString percent;
    for (const NatureRate &rate : item.rates) {
        if (rate.natId == natId || rate.natId == 0)
            percent = rate.percent;
    }
    return percent;
}
