#include "suite/clientinfo/rowstore.h"

#include "platform/recordset.h"

#include <algorithm>

namespace {

QString condition(const RowKey &key)
{
    return Sql(" Where ", key.table.codeColumn, "=", Quoted(key.code), " and ", key.table.yearColumn, "=", key.year);
}

QString updateText(const RowKey &key, const ColumnValues &values)
{
    QStringList pieces;
    for (const auto &[column, value] : values)
        pieces << Sql(column, "=", Quoted(value));
    return Sql("Update ", key.table.name, " Set ", pieces.join(u','), condition(key));
}

QString insertText(const RowKey &key, const ColumnValues &values)
{
    QStringList columns{QLatin1String(key.table.codeColumn), QLatin1String(key.table.yearColumn)};
    QStringList texts{Quoted(key.code), QString::number(key.year)};
    for (const auto &[column, value] : values) {
        columns << column;
        texts << Quoted(value);
    }
    return Sql("Insert into ", key.table.name, " (", columns.join(u','), ") Values (", texts.join(u','), ")");
}

} // namespace

std::optional<RowValues> ReadRow(Connection *cnn, const RowKey &key)
{
    Recordset row;
    if (!row.Open(Sql("Select * from ", key.table.name, condition(key)), cnn) || row.Eof())
        return std::nullopt;
    RowValues values;
    for (int i = 0; i < row.FieldCount(); ++i)
        values.insert(row.FieldName(i).toLower(), row.Fields(i).text());
    return values;
}

bool SaveRow(Connection *cnn, const RowKey &key, const ColumnValues &values, const ColumnValues &defaults)
{
    const bool there = HasRows(cnn, Sql("Select * from ", key.table.name, condition(key)));
    const bool taken = cnn->Execute(there ? updateText(key, values) : insertText(key, WithDefaults(values, defaults)));
    cnn->Execute(QStringLiteral("Flush Tables"));
    return taken;
}

ColumnValues WithDefaults(const ColumnValues &values, const ColumnValues &defaults)
{
    ColumnValues all = values;
    for (const auto &fallback : defaults) {
        const bool given = std::any_of(values.begin(), values.end(), [&fallback](const auto &value) {
            return value.first.compare(fallback.first, Qt::CaseInsensitive) == 0;
        });
        if (!given)
            all.append(fallback);
    }
    return all;
}
