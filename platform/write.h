#pragma once

#include "platform/connection.h"

/// Carries out a statement that changes a table, and has the server write its tables out: the changes of a master are
/// then on the disk, however the program ends. The tables are written out after a fault too. False after a fault.
inline bool Write(Connection *cnn, const SqlText &statement)
{
    const bool done = cnn->Execute(statement);
    const bool flushed = cnn->Execute(QStringLiteral("Flush Tables"));
    return done && flushed;
}
