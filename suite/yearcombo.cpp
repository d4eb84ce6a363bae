#include "suite/yearcombo.h"

#include "platform/dates.h"

#include <QComboBox>

void LoadYears(QComboBox *combo, int year)
{
    constexpr int firstYear = 2006;
    constexpr int lastYear = 2010;
    for (int each = firstYear; each <= lastYear; ++each)
        combo->addItem(YearLabel(each), each);
    const int found = combo->findData(year);
    combo->setCurrentIndex(found >= 0 ? found : combo->count() - 1);
}
