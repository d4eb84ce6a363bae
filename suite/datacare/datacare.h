#pragma once

class BaseObject;
class QWidget;

/// Backup, restore and repair as the user meets them: the choice of the place, the questions, the bar, the result.

/// Asks for a folder, the one of the last backup first, and writes a backup there.
void BackUpWithUser(BaseObject &base);

/// Asks for a backup file, checks it whole, asks once more and restores it. True when the data was replaced.
bool RestoreWithUser(BaseObject &base);

/// Checks and repairs the tables, and says what was done.
void RepairWithUser(BaseObject &base, QWidget *form);
