#pragma once

#include "platform/recordset.h"
#include "records/reading.h"

#include <optional>
#include <type_traits>

/// The rows of a query, each made by `make` from the current row of the recordset.
template<typename Make>
auto ReadRows(Connection *cnn, const QString &query, Make make)
    -> RowsRead<std::invoke_result_t<Make, const Recordset &>>
{
    using Row = std::invoke_result_t<Make, const Recordset &>;
    Recordset rows;
    if (!rows.Open(query, cnn))
        return RowsRead<Row>::failure();
    std::vector<Row> found;
    for (; !rows.Eof(); rows.MoveNext())
        found.push_back(make(rows));
    return found;
}

/// The first row of a query, made by `make`.
template<typename Make>
auto ReadFirst(Connection *cnn, const QString &query, Make make)
    -> Reading<std::invoke_result_t<Make, const Recordset &>>
{
    using Row = std::invoke_result_t<Make, const Recordset &>;
    Recordset row;
    if (!row.Open(query, cnn))
        return Reading<Row>::failure();
    return row.Eof() ? Reading<Row>::nothing() : Reading<Row>(make(row));
}

/// Whether a query finds a row. Without a value after a fault: who asks so as to delete must not take it for a no.
inline std::optional<bool> FindsRow(Connection *cnn, const QString &query)
{
    Recordset found;
    return found.Open(query, cnn) ? std::optional(!found.empty()) : std::nullopt;
}
