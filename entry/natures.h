#pragma once

#include "masters/naturelist.h"

#include <vector>

class QComboBox;
class Screen;

/// `NatId` of what is kept for all natures of the client together.
constexpr int consolidatedNature = -1;

/// The client's natures of business in the order of their numbers; none without a client or without natures.
std::vector<Nature> ClientNatures(const QString &code);

/// Fills a selector with the natures and, for more than one, "Consolidated Expenses" behind them. Selects the one with
/// `selected` as number, else the first. The item data holds the number.
void FillNatures(QComboBox *combo, const std::vector<Nature> &natures, int selected = 0);

/// Whether the selector has a nature. Without one, tells the user of `screen` to select it, and goes there.
bool NatureChosen(Screen *screen, QComboBox *combo);
