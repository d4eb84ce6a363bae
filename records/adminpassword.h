#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

class Connection;

/// The administrator's password as the table `TableMP` keeps it: one row, one text, already scrambled.

/// The stored text, empty without a password; never `none()`. The table and its row are made where they are missing.
FBT_OFFERED Reading<QString> ReadAdminPassword(Connection *connection);

/// Replaces the stored text. False when that failed: the one before is then still there.
/// @param scrambled at most 10 characters, none of them a single quote
FBT_OFFERED bool WriteAdminPassword(Connection *connection, const QString &scrambled);
