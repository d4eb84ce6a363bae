#pragma once

#include "platform/offer.h"

class Connection;

/// The update of the structure and of the law in the masters. It looks at what is there and keeps no version: every
/// step can run again and does nothing where its work is done. A failed statement costs itself only and is logged; the
/// step whose check is still open is tried again at the next run.
///
/// Rows and changes that one check guards (a year of due dates, the items with their percentages, the masters of a year,
/// the tour clause of a year) are written together or not at all. A group that was lost with the server, or that a
/// deadlock or the wait for a lock ended, is sent once more. When that fails too, or any other statement or check was
/// lost with the server, the run ends there: what comes behind would be built on what is missing. The table `updateMark`
/// stands from the beginning of the update to its end, so that the next start of the program sees a run that was cut off
/// and runs the update again, which completes it.
///
/// The procedures return false when the server was lost in them.

/// Makes each table that is missing, in its current shape.
FBT_OFFERED bool CREATETABLES(Connection *connection);

/// Adds the columns of later versions to older tables, converts older rows, and fills the masters that are empty.
FBT_OFFERED bool UPDATEDB(Connection *connection);

/// The whole update: engines, tables, rows and indexes, between the setting of the mark and its removal.
FBT_OFFERED void UpdateDatabase(Connection *connection);
