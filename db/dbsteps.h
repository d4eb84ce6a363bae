#pragma once

#include "platform/fault.h"

#include <QString>
#include <QStringList>

class Connection;

/// What the steps of the updater are made of. Faults go to the connection's handler; a step goes on behind them.

/// Tells the server to write out and reopen its tables, as behind every write.
void FlushTables(Connection *connection);

/// One statement and the flush behind it.
void Write(Connection *connection, const QString &statement);

/// Number of columns of a table; -1 when it cannot be opened.
[[nodiscard]] int ColumnCount(Connection *connection, const QString &table);

/// True when the query can be carried out and finds no row. A query that faults tells nothing, so it is false.
[[nodiscard]] bool FindsNone(Connection *connection, const QString &query);

/// `FindsNone` for all rows of a table.
[[nodiscard]] bool IsEmpty(Connection *connection, const QString &table);

/// A number behind the highest one in a column, 1 when there is none.
[[nodiscard]] int NextNumber(Connection *connection, const QString &table, const QString &column);

/// The server was lost within a group of statements, and trying again did not help. Later steps build on the rows that
/// are missing now, so the update stops here and the next one completes it.
class ServerLost : public FaultError
{
public:
    ServerLost();
};

/// Carries the statements out so that a lost server leaves all of them or none: the check whether rows are missing looks
/// at the first row only, and a table filled by half would stay so. A statement that the server refuses costs itself
/// only. A lost group is tried once more; throws `ServerLost`.
void WriteTogether(Connection *connection, const QStringList &statements);

/// Writes the rows of a table in which a probe found none, and the flush behind them.
void Fill(Connection *connection, const QStringList &rows);
