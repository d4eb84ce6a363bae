#include "records/clientrow.h"

#include "records/change.h"
#include "records/readrows.h"

#include <QStringList>

#include <algorithm>

namespace {

SqlText condition(const ClientTable &table, const ClientYear &client)
{
    return Sql(" Where ", table.codeColumn, "=", Quoted(client.code), " and ", table.yearColumn, "=", client.year);
}

SqlText updateText(const ClientTable &table, const ClientYear &client, const ColumnValues &values)
{
    QStringList pieces;
    for (const auto &[column, value] : values)
        pieces << Sql(column, "=", Quoted(value));
    return Sql("Update ", table.name, " Set ", pieces.join(u','), condition(table, client));
}

SqlText insertText(const ClientTable &table, const ClientYear &client, const ColumnValues &values)
{
    QStringList columns{QLatin1String(table.codeColumn), QLatin1String(table.yearColumn)};
    QStringList texts{Quoted(client.code), QString::number(client.year)};
    for (const auto &[column, value] : values) {
        columns << column;
        texts << Quoted(value);
    }
    return Sql("Insert into ", table.name, " (", columns.join(u','), ") Values (", texts.join(u','), ")");
}

/// What `values` has, and of `defaults` those columns that it has not.
ColumnValues withDefaults(const ColumnValues &values, const ColumnValues &defaults)
{
    ColumnValues all = values;
    std::copy_if(defaults.begin(), defaults.end(), std::back_inserter(all), [&values](const auto &fallback) {
        return std::none_of(values.begin(), values.end(), [&fallback](const auto &value) {
            return value.first.compare(fallback.first, Qt::CaseInsensitive) == 0;
        });
    });
    return all;
}

} // namespace

Reading<RowValues> ReadRow(Connection *cnn, const ClientTable &table, const ClientYear &client)
{
    return ReadFirst(cnn, Sql("Select * from ", table.name, condition(table, client)), [](const Recordset &row) {
        RowValues values;
        for (int i = 0; i < row.FieldCount(); ++i)
            values.insert(row.FieldName(i).toLower(), row.Fields(i).text());
        return values;
    });
}

bool SaveRow(Connection *cnn, const ClientTable &table, const ClientYear &client, const ColumnValues &values,
             const ColumnValues &defaults)
{
    return ChangeTogether(cnn, [&](Change &change) {
        if (!change.lock(QLatin1String(table.name), client.code))
            return false;
        const auto row = ReadRow(cnn, table, client);
        return !row.failed() && change.write(row.found() ? updateText(table, client, values)
                                                         : insertText(table, client, withDefaults(values, defaults)));
    });
}
