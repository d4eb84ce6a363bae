#include "records/clientcode.h"

#include "records/change.h"
#include "records/readrows.h"

#include <algorithm>

Reading<QSet<QString>> TableNames(Connection *cnn)
{
    const auto tables =
        ReadRows(cnn,
                 QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()"
                                " and TABLE_TYPE='BASE TABLE'"),
                 [](const Recordset &row) { return row.Fields(0).text().toLower(); });
    if (tables.failed())
        return Reading<QSet<QString>>::failure();
    return QSet<QString>(tables->begin(), tables->end());
}

RowsRead<ClientTable> TablesOfClients(Connection *cnn)
{
    const Reading<QSet<QString>> existing = TableNames(cnn);
    if (existing.failed())
        return RowsRead<ClientTable>::failure();
    std::vector<ClientTable> tables;
    std::copy_if(clientTables.begin(), clientTables.end(), std::back_inserter(tables), [&](const ClientTable &table) {
        return !table.comesLater || existing->contains(QString::fromLatin1(table.name).toLower());
    });
    return tables;
}

bool MoveClientRows(Change &change, const std::vector<ClientTable> &tables, const QString &oldCode,
                    const QString &newCode)
{
    return std::all_of(tables.begin(), tables.end(), [&](const ClientTable &table) {
        return change.write(Sql("Update ", table.name, " Set ", table.codeColumn, "=", Quoted(newCode), " Where ",
                                table.codeColumn, "=", Quoted(oldCode)));
    });
}

bool ChangeClientCode(Connection *cnn, const QString &oldCode, const QString &newCode)
{
    const auto tables = TablesOfClients(cnn);
    return !tables.failed() &&
           ChangeTogether(cnn, [&](Change &change) { return MoveClientRows(change, *tables, oldCode, newCode); });
}

bool DeleteClientRows(Connection *cnn, const QString &clientCode)
{
    const auto found = TablesOfClients(cnn);
    if (found.failed())
        return false;
    std::vector<ClientTable> tables = *found;
    tables.push_back(clientMaster);
    const auto remove = [&](Change &change) {
        return std::all_of(tables.begin(), tables.end(), [&](const ClientTable &table) {
            return change.write(Sql("Delete from ", table.name, " Where ", table.codeColumn, "=", Quoted(clientCode)));
        });
    };
    return ChangeTogether(cnn, remove, Doing::Delete);
}
