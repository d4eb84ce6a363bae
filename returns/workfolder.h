#pragma once

#include "platform/offer.h"

#include <QString>

/// Where the filled pages of a return are written.
struct WorkFolder
{
    QString TmpPath; ///< the folder; where it cannot be made, the one that was tried last
    bool made = false;
};

/// Makes an empty folder for a client and year in the temporary folder, or, where that cannot be had, in the application
/// folder; what an earlier preview left there goes. Only the user can read it.
/// @param code slashes in it become hyphens
FBT_OFFERED WorkFolder GETMYTEMPPATH(const QString &code, int year);
