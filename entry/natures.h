#pragma once

#include "records/natures.h"

#include <QString>

class QComboBox;
class Screen;

/// The natures, as a screen tells that they could not be read.
inline const QString businessNatures = QStringLiteral("natures of business");

/// Fills a selector with the natures and, for more than one, "Consolidated Expenses" after them. Selects the one with
/// `selected` as number, else the first. The item data holds the number.
void FillNatures(QComboBox *combo, const std::vector<Nature> &natures, int selected = 0);

/// Whether the selector has a nature. Without one, tells the user of `screen` to select it, and goes there.
bool NatureChosen(Screen *screen, QComboBox *combo);
