#include "db/dbsteps.h"

#include "platform/connection.h"
#include "platform/recordset.h"

namespace {

// One row tells the columns and whether there are rows; a table can hold very many.
QString firstRowOf(const QString &table)
{
    return Sql("Select * from ", table, " Limit 1");
}

// Opens a group and sends its statements, but not its end. False when nothing of it can stay.
bool sendGroup(Connection *connection, const QStringList &statements)
{
    if (!connection->beginGroup())
        return false;
    for (const QString &statement : statements) {
        connection->Execute(statement);
        if (connection->groupLost())
            return false;
    }
    return true;
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

ServerLost::ServerLost()
    : FaultError(FaultNumber::ConnectionClosed,
                 QStringLiteral("The database server was lost. The next update completes this one."))
{
}

void WriteTogether(Connection *connection, const QStringList &statements)
{
    if (!sendGroup(connection, statements))
        sendGroup(connection, statements);
    // When the server is lost at the commit itself nobody knows what it did: that must not be sent again.
    if (!connection->commitGroup())
        throw ServerLost();
}

void Fill(Connection *connection, const QStringList &rows)
{
    WriteTogether(connection, rows);
    FlushTables(connection);
}
