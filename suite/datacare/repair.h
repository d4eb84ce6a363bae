#pragma once

#include "platform/offer.h"
#include "suite/datacare/backup.h"

#include <QStringList>

/// What a look at all tables came to.
struct FBT_OFFERED RepairReport
{
    int checked = 0;        ///< number of tables
    QStringList repaired;   ///< had a fault and are in order now
    QStringList unrepaired; ///< have a fault still, with the server's word on it

    [[nodiscard]] QString text() const; ///< for the user
};

/// Checks every base table of the schema, rebuilds those with a fault, and brings the server's statistics up to date.
/// Deletes no row.
FBT_OFFERED RepairReport RepairTables(Connection *cnn, const Progress &progress);
