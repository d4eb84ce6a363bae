#pragma once

#include "platform/offer.h"

class Connection;

/// The table that stands in the database while an update of it is under way, and after one that left something open.
/// Where a program finds it at its start, the update is run again, whatever version is stored. It holds no rows. A backup
/// takes it along, so that what is restored is completed too.
constexpr const char *updateMark = "TmpUpdFBT";

/// Whether the mark stands. False too when that could not be read: the fault has been reported.
FBT_OFFERED bool UpdateIsMarked(Connection *connection);
