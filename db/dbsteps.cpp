#include "db/dbsteps.h"

#include "platform/connection.h"
#include "platform/recordset.h"

namespace {

// One row tells the columns and whether there are rows; a table can hold very many.
QString firstRowOf(const QString &table)
{
    return Sql("Select * from ", table, " Limit 1");
}

} // namespace

void FlushTables(Connection *connection)
{
    connection->Execute(QStringLiteral("Flush Tables"));
}

void Write(Connection *connection, const QString &statement)
{
    connection->Execute(statement);
    FlushTables(connection);
}

int ColumnCount(Connection *connection, const QString &table)
{
    Recordset probe;
    return probe.Open(firstRowOf(table), connection) ? probe.FieldCount() : -1;
}

bool FindsNone(Connection *connection, const QString &query)
{
    Recordset probe;
    return probe.Open(query, connection) && probe.empty();
}

bool IsEmpty(Connection *connection, const QString &table)
{
    return FindsNone(connection, firstRowOf(table));
}

int NextNumber(Connection *connection, const QString &table, const QString &column)
{
    return FirstField(connection, Sql("Select Max(", column, ") from ", table)).whole() + 1;
}

bool WriteTogether(Connection *connection, const QStringList &statements)
{
    if (!connection->beginGroup())
        return false;
    for (const QString &statement : statements) {
        connection->Execute(statement);
        if (connection->groupLost())
            break; // each further statement would only be refused
    }
    return connection->commitGroup();
}

void Fill(Connection *connection, const QStringList &rows)
{
    WriteTogether(connection, rows);
    FlushTables(connection);
}
