#include "controls/yearcombo.h"

#include "platform/dates.h"

#include <QComboBox>

void LoadYears(QComboBox *combo, int year)
{
    for (int each = firstAssessmentYear; each <= lastAssessmentYear; ++each)
        combo->addItem(YearLabel(each), each);
    const int found = combo->findData(year);
    combo->setCurrentIndex(found >= 0 ? found : combo->count() - 1);
}
