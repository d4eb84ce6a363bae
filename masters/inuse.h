#pragma once

#include "platform/recordset.h"

#include <optional>

/// Whether a query finds a row. Without a value after a fault: who asks so as to delete must not take it for a no.
inline std::optional<bool> FindsRow(Connection *cnn, const QString &query)
{
    Recordset found;
    if (!found.Open(query, cnn))
        return std::nullopt;
    return !found.empty();
}
