#pragma once

#include "platform/offer.h"

#include <QStringView>

/// Compares two dotted versions by their numbers: below 0 when `left` is the lower one, 0 when they are equal.
/// Missing numbers count as 0 ("2.10" is "2.10.0"), and so does what is no number.
FBT_OFFERED int CompareVersions(QStringView left, QStringView right);
