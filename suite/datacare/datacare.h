#pragma once

#include "platform/offer.h"

class BaseObject;
class QWidget;

/// Backup, restore and repair as the user meets them: the choice of the place, the questions, the bar, the result.

/// Asks for a folder, the one of the last backup first, and writes a backup there.
FBT_OFFERED void BackUpWithUser(BaseObject &base);

/// Asks for a backup file, checks it whole, asks once more and restores it. True when the data was replaced.
FBT_OFFERED bool RestoreWithUser(BaseObject &base);

/// Checks and repairs the tables, and says what was done.
FBT_OFFERED void RepairWithUser(BaseObject &base, QWidget *form);
