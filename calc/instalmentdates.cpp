#include "calc/instalmentdates.h"

#include "context/modbase.h"

Reading<InstalmentDates> InstalmentDatesOfYear(int year)
{
    Reading<InstalmentDates> stored = InstalmentDueDates(Cnn, year);
    if (stored.failed())
        return stored;
    InstalmentDates dates = LawInstalments(year);
    for (std::size_t i = 0; i < dates.size(); ++i) {
        if (!(*stored)[i].isEmpty())
            dates[i] = (*stored)[i];
    }
    return dates;
}
