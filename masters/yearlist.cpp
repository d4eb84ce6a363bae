#include "masters/yearlist.h"

#include "platform/dates.h"
#include "platform/text.h"

#include <QComboBox>
#include <QSignalBlocker>

void FillYears(QComboBox *combo)
{
    const QSignalBlocker quiet(combo);
    combo->clear();
    for (int year = firstMasterYear; year <= lastMasterYear; ++year)
        combo->addItem(YearLabel(year));
    combo->setCurrentIndex(-1);
}

int SelectedYear(const QComboBox *combo)
{
    return static_cast<int>(Val(combo->currentText()));
}

void SelectYear(QComboBox *combo, int year)
{
    combo->setCurrentIndex(year - firstMasterYear);
}
