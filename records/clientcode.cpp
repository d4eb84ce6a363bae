#include "records/clientcode.h"

#include "platform/connection.h"
#include "platform/recordset.h"
#include "records/clienttables.h"

QSet<QString> TableNames(Connection *cnn)
{
    QSet<QString> names;
    Recordset tables;
    tables.Open(QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()"
                               " and TABLE_TYPE='BASE TABLE'"),
                cnn);
    for (; !tables.Eof(); tables.MoveNext())
        names.insert(tables.Fields(0).text().toLower());
    return names;
}

namespace {

/// Whether a table is there, going by names in lower case.
bool has(const QSet<QString> &existing, const ClientTable &table)
{
    return existing.contains(QString::fromLatin1(table.name).toLower());
}

void removeRows(Connection *cnn, const ClientTable &table, const QString &clientCode)
{
    cnn->Execute(Sql("Delete from ", table.name, " Where ", table.codeColumn, "=", Quoted(clientCode)));
    cnn->Execute(QStringLiteral("Flush Tables"));
}

} // namespace

void ChangeClientCode(Connection *cnn, const QString &oldCode, const QString &newCode)
{
    const QSet<QString> existing = TableNames(cnn);
    for (const ClientTable &table : clientTables) {
        if (!has(existing, table))
            continue;
        cnn->Execute(Sql("Update ", table.name, " Set ", table.codeColumn, "=", Quoted(newCode), " Where ",
                         table.codeColumn, "=", Quoted(oldCode)));
        cnn->Execute(QStringLiteral("Flush Tables"));
    }
}

void DeleteClientRows(Connection *cnn, const QString &clientCode)
{
    const QSet<QString> existing = TableNames(cnn);
    for (const ClientTable &table : clientTables) {
        if (has(existing, table))
            removeRows(cnn, table, clientCode);
    }
    if (has(existing, clientMaster))
        removeRows(cnn, clientMaster, clientCode);
}
