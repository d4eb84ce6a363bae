#pragma once

#include "platform/fault.h"

#include <QString>
#include <QStringList>

#include <functional>

class Connection;
class ErrorTail;
class Recordset;

/// What the steps of the updater are made of. Faults go to the connection's handler. A step goes on behind a statement
/// that the server refused; a server that was lost ends the update (`ServerLost`).

/// The server was lost, and what could be sent again was sent again without success. Later steps build on what is missing
/// now or could not be seen, so the update stops here and the next one completes it.
class ServerLost : public FaultError
{
public:
    ServerLost();
};

/// Carries out one statement. True when the server did it, false when it refused it; throws `ServerLost`.
bool Send(Connection *connection, const QString &statement);

/// Tells the server to write out and reopen its tables, as behind every write.
void FlushTables(Connection *connection);

/// One statement and the flush behind it.
void Write(Connection *connection, const QString &statement);

/// Opens the rows of a query. False when the server refused it; throws `ServerLost`.
bool Probe(Recordset &rows, const QString &query, Connection *connection);

/// Number of columns of a table; -1 when it cannot be opened.
[[nodiscard]] int ColumnCount(Connection *connection, const QString &table);

/// True when the query can be carried out and finds no row. A query that is refused tells nothing, so it is false.
[[nodiscard]] bool FindsNone(Connection *connection, const QString &query);

/// `FindsNone` for all rows of a table.
[[nodiscard]] bool IsEmpty(Connection *connection, const QString &table);

/// A number behind the highest one in a column, 1 when there is none.
[[nodiscard]] int NextNumber(Connection *connection, const QString &table, const QString &column);

/// Carries the statements out so that a lost server leaves all of them or none: the check whether rows are missing looks
/// at the first row only, and a table filled by half would stay so. A statement that the server refuses costs itself
/// only, unless it ended the group, as a deadlock does. A lost group is tried once more; throws `ServerLost`.
void WriteTogether(Connection *connection, const QStringList &statements);

/// `WriteTogether` and the flush behind it, which would end the group if it stood among the statements.
void Fill(Connection *connection, const QStringList &rows);

/// Carries out a part of the update under its tail. False when the server was lost in it, which the tail has logged.
bool CarryOut(ErrorTail &tail, const std::function<void()> &part);
