#include "db/dbsteps.h"

#include "context/errortail.h"
#include "platform/connection.h"
#include "platform/recordset.h"

namespace {

// One row tells the columns and whether there are rows; a table can hold very many.
QString firstRowOf(const QString &table)
{
    return Sql("Select * from ", table, " Limit 1");
}

enum class Outcome { Stays, NothingStays, Unknown };

Outcome sendGroup(Connection *connection, const QStringList &statements)
{
    if (!connection->beginGroup())
        return Outcome::NothingStays;
    for (const QString &statement : statements) {
        connection->Execute(statement);
        if (connection->groupLost()) {
            connection->abandonGroup();
            return Outcome::NothingStays;
        }
    }
    return connection->commitGroup() ? Outcome::Stays : Outcome::Unknown;
}

void endWhenLost(Connection *connection)
{
    if (connection->lastStatementLost())
        throw ServerLost();
}

} // namespace

ServerLost::ServerLost()
    : FaultError(FaultNumber::ConnectionClosed,
                 QStringLiteral("The database server was lost. The next update completes this one."))
{
}

bool Send(Connection *connection, const QString &statement)
{
    const bool done = connection->Execute(statement);
    endWhenLost(connection);
    return done;
}

void FlushTables(Connection *connection)
{
    Send(connection, QStringLiteral("Flush Tables"));
}

void Write(Connection *connection, const QString &statement)
{
    Send(connection, statement);
    FlushTables(connection);
}

bool Probe(Recordset &rows, const QString &query, Connection *connection)
{
    const bool opened = rows.Open(query, connection);
    endWhenLost(connection);
    return opened;
}

int ColumnCount(Connection *connection, const QString &table)
{
    Recordset rows;
    return Probe(rows, firstRowOf(table), connection) ? rows.FieldCount() : -1;
}

bool FindsNone(Connection *connection, const QString &query)
{
    Recordset rows;
    return Probe(rows, query, connection) && rows.empty();
}

bool IsEmpty(Connection *connection, const QString &table)
{
    return FindsNone(connection, firstRowOf(table));
}

int NextNumber(Connection *connection, const QString &table, const QString &column)
{
    Recordset rows;
    const bool opened = Probe(rows, Sql("Select Max(", column, ") from ", table), connection);
    return opened ? rows.Fields(0).whole() + 1 : 1;
}

void WriteTogether(Connection *connection, const QStringList &statements)
{
    Outcome outcome = sendGroup(connection, statements);
    if (outcome == Outcome::NothingStays)
        outcome = sendGroup(connection, statements);
    // When the server is lost at the commit itself nobody knows what it did: that must not be sent again.
    if (outcome != Outcome::Stays)
        throw ServerLost();
}

void Fill(Connection *connection, const QStringList &rows)
{
    WriteTogether(connection, rows);
    FlushTables(connection);
}

bool CarryOut(ErrorTail &tail, const std::function<void()> &part)
{
    bool lost = false;
    tail([&] {
        try {
            part();
        } catch (const ServerLost &) {
            lost = true;
            throw;
        }
    });
    return !lost;
}
