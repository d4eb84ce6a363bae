#pragma once

#include "platform/offer.h"

class Connection;
class UpdateLock;

/// The update of the structure and of the law in the masters. It looks at what is there and keeps no version: every
/// step can run again and does nothing where its work is done. A failed statement costs itself only and is logged; the
/// step whose check is still open is tried again at the next run.
///
/// Rows and changes that one check guards (a year of due dates, the items with their percentages, the masters of a year,
/// the tour clause of a year) are written together or not at all. A step in which the server was lost is carried out
/// again. The run ends when the server is gone for good or has no room left: what comes after would be built on what is
/// missing. The table `updateMark` stands from the beginning of the update until nothing is left open, so that the next
/// start of the program runs the update again, which completes it.
///
/// The procedures return false when they could not come to their end.

/// Makes each table that is missing, in its current shape.
FBT_OFFERED bool CREATETABLES(Connection *connection);

/// Adds the columns of later versions to older tables, converts older rows, and fills the masters that are empty.
FBT_OFFERED bool UPDATEDB(Connection *connection);

/// The whole update: engines, tables, rows, indexes and hidden keys, between the setting of the mark and its removal. True when it
/// came to its end and all tables are there with their columns: the database can be worked with.
/// @param lock the lock that is held and kept; null for a database that no other program can reach
FBT_OFFERED bool UpdateDatabase(Connection *connection, UpdateLock *lock = nullptr);
