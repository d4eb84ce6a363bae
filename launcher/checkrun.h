#pragma once

#include "platform/offer.h"

#include <QString>

class BaseObject;
class Connection;
class QTextStream;

/// Writes and validates the returns of all clients of a year in a scratch folder and prints them: a line a client (code, name,
/// errors, tax, balance) and under it a line an error. Nothing in the database is changed.
/// @param csv file for the same as a table; empty for none
/// @param why one sentence when the returns could not all be checked
/// @return whether all returns were checked and are without errors
FBT_OFFERED bool RunCheck(Connection &connection, BaseObject &base, int year, const QString &csv, QTextStream &out,
                          QString *why);
