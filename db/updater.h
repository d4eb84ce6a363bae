#pragma once

class Connection;

/// The update of the structure and of the law in the masters. It looks at what is there and keeps no version: every
/// step can run again and does nothing where its work is done. A failed statement costs itself only and is logged; the
/// step whose check is still open is tried again at the next run.
///
/// Rows that a check sees as one (a year of due dates, the heads, the items with their percentages) are written together
/// or not at all, so that a database whose server was lost under way is completed by the next run. When a group is lost
/// for good, the run ends there: what comes behind would be built on rows that are missing.

/// Makes each table that is missing, in its current shape.
void CREATETABLES(Connection *connection);

/// Adds the columns of later versions to older tables, converts older rows, and fills the masters that are empty.
void UPDATEDB(Connection *connection);

/// The whole update: tables, rows and indexes.
void UpdateDatabase(Connection *connection);
