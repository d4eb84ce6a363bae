#pragma once

#include "platform/offer.h"

#include <QString>

class QWidget;

/// What the user puts into a field is changed before it arrives there: the field then never holds what it should not, its
/// undo history and caret stay its own, and nobody who follows the field sees a text that is still to be changed.
///
/// All ways in pass here: keys, input methods, pasting by key, context menu and middle button, and dropping. What the
/// program itself sets is left as it is, and so is what undo brings back.

/// The text with the letters a to z raised; others stay as they are.
FBT_OFFERED QString Capitals(QString text);

/// From now on what is put into `field` passes its rule: for a `MaskedDate` what can stand in a date, for other
/// single-line fields and editable combo boxes without the property "keepCase" capitals. Further calls do nothing.
void FilterTypedText(QWidget *field);
