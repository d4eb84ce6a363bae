#include "entry/natures.h"

#include "controls/screen.h"

#include <QComboBox>

#include <algorithm>

void FillNatures(QComboBox *combo, const std::vector<Nature> &natures, int selected)
{
    combo->clear();
    for (const Nature &nature : natures)
        combo->addItem(nature.text, nature.srNo);
    if (natures.size() > 1)
        combo->addItem(QStringLiteral("Consolidated Expenses"), consolidatedNature);
    combo->setCurrentIndex(std::max(0, combo->findData(selected)));
}

bool NatureChosen(Screen *screen, QComboBox *combo)
{
    if (combo->currentData().toInt() != 0)
        return true;
    MsgBox(screen, QStringLiteral("Select a Nature of Business."), Buttons::Ok, Icon::Exclamation);
    combo->setFocus(Qt::OtherFocusReason);
    return false;
}
