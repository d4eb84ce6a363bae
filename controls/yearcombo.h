#pragma once

#include "platform/offer.h"

class QComboBox;

/// Fills a combo with the assessment years 2006-07 to 2010-11, their first calendar years as item data, and selects
/// `year`, or the last one when it is not among them.
FBT_OFFERED void LoadYears(QComboBox *combo, int year);
