#pragma once

#include "platform/offer.h"

#include <QString>
#include <QStringView>

/// The number and text rules that every figure on a screen, in a statement and on a form goes through.

/// The leading number of a text, 0 when there is none. Blanks count for nothing, a comma ends the number.
FBT_OFFERED double Val(QStringView text);

/// Rounds to a whole number, ties to the even number: 0.5 gives 0, 1.5 gives 2, 2.5 gives 2.
FBT_OFFERED double Round(double value);

/// The remainder of `amount`, taken as a whole number (ties to even), on division by 100.
FBT_OFFERED double RemainderOf100(double amount);

/// Default number-to-text: whole numbers without a point, else up to 15 significant digits with a leading 0.
FBT_OFFERED QString NumberText(double value);

/// A number by a pattern of `#`, `0` and one point, such as "###0.00" or "0.00". The value is taken with its
/// 15 significant digits and rounded half away from zero at the last place of the pattern.
FBT_OFFERED QString Format(double value, QStringView pattern);

/// Whether the whole text is one number (blanks around it allowed, an empty text is none).
FBT_OFFERED bool IsNumeric(QStringView text);

/// An amount in words on the Indian scale, whole rupees: "Twelve Lakh Five Rupee Only"; 0 is "Nil Rupee Only".
/// Paise are rounded away (ties to even); a negative amount starts with "Minus ".
FBT_OFFERED QString AmountInWords(double rupees);
