#pragma once

#include "platform/offer.h"

#include <QString>

class QEvent;
class QWidget;

/// Small letters a to z become capitals as they are typed or pasted; others stay as they are.

/// The text with the letters a to z raised.
FBT_OFFERED QString Capitals(QString text);

/// Looks at a key or input-method event for `target`, and when it carries small letters (or pastes them) hands the
/// raised text to the widget instead. True when the event is dealt with. Only single-line fields, plain text boxes and
/// editable combo boxes without "keepCase" are touched.
FBT_OFFERED bool TypeCapitals(QWidget *target, QEvent *event);

/// Raises what comes into a single-line field by other ways than keys, such as its context menu. To be called once for
/// a field; further calls do nothing.
FBT_OFFERED void WatchCapitals(QWidget *target);
