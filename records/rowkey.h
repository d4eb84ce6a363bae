#pragma once

#include "platform/offer.h"
#include <QString>

class Connection;

/// The hidden key that every table has after its columns as told: `Select *`, inserts without column names and counts of
/// columns do not see it. A server finds and tells rows apart by it, and rows without an order keep the order of writing.
constexpr const char *rowKey = "FbtRow";

/// The statement that gives a table the key. A server that knows no hidden columns refuses it, and goes without.
[[nodiscard]] FBT_OFFERED QString AddRowKey(const QString &table);

/// Gives the key to a table that lacks it; for tables that come into being after an update (`TableMP`, `TmpSchFBT`). To be
/// called after the statement that creates the table. False when the server refused it.
FBT_OFFERED bool GiveRowKey(Connection *connection, const QString &table);
