#pragma once

#include "platform/connection.h"

/// All rows of a query, a line each, fields tab separated, `NULL` for null.
QStringList RowsOf(Connection &connection, const QString &query);

/// The names of all tables in small letters, each before its rows in the order in which they are stored.
QStringList ContentOf(Connection &connection);

/// The first line in which two dumps differ, empty when they are equal.
QString Difference(const QStringList &actual, const QStringList &expected);
