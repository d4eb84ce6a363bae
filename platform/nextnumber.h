#pragma once

#include "platform/recordset.h"

#include <optional>

/// The number of a new row: the maximum that `query` finds (`Null` counts as 0), plus 1. Without a value when the query
/// faulted: number 1 then would replace the row that has it.
inline std::optional<int> NextNumber(Connection *cnn, const SqlText &query)
{
    Recordset highest;
    if (!highest.Open(query, cnn))
        return std::nullopt;
    return highest.Fields(0).whole() + 1;
}
