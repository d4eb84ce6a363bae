#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

class Connection;

/// The table that stands in the database while an update of it is under way, and after one that left something open.
/// Where a program finds it at its start, the update is run again, whatever version is stored. It holds no rows. A backup
/// takes it along, so that what is restored is completed too.
constexpr const char *updateMark = "TmpUpdFBT";

/// Whether the mark stands. Throws `FaultError` when that could not be read: neither answer would be safe, since "no" lets
/// the version be written over an open update.
FBT_OFFERED bool UpdateIsMarked(Connection *connection);

/// Makes `VerInfo`, which holds the version of the database, where it is missing. False after a fault.
FBT_OFFERED bool CreateVersionTable(Connection *connection);

/// Writes the one row of `VerInfo`; the row before stays when it cannot be written. False after a fault.
FBT_OFFERED bool StoreVersion(Connection *connection, const QString &version);

/// The version that `VerInfo` holds, `Null` as empty; none in a new database, whose table has no row.
FBT_OFFERED Reading<QString> StoredVersion(Connection *connection);
