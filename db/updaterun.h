#pragma once

#include "platform/fault.h"
#include "platform/offer.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class Connection;
class ErrorTail;
class Recordset;
class UpdateLock;

/// The server was lost in a step. The step is carried out again: it looks at what is there, so that nothing is done
/// twice and nothing is left out.
class ServerLost : public FaultError
{
public:
    ServerLost();
};

/// The server has no room left. Later steps would build on what could not be written, so the update ends here.
class NoRoomLeft : public FaultError
{
public:
    NoRoomLeft();
};

/// One run of the update, and what its steps are made of. Faults go to the connection's handler.
///
/// A statement that the server refuses costs itself only. Where it was refused for now, as by a lock of another user or
/// on a damaged table, or a group of statements could not be placed, the run goes on and remembers that something was left
/// open (`leftOpen`). That holds for a query too: what it did not tell is still to be asked.
/// Every operation throws `ServerLost` when the server was lost in it, and `NoRoomLeft` when it has no room.
class FBT_OFFERED UpdateRun
{
public:
    /// @param lock the lock that the run must hold at each step; null: none
    explicit UpdateRun(Connection *connection, UpdateLock *lock = nullptr)
        : m_connection(connection)
        , m_lock(lock)
    {
    }

    /// Carries out one statement. False when the server refused it.
    bool send(const QString &statement);
    /// Tells the server to write out and reopen its tables, as after every write.
    void flush();
    /// One statement and the flush after it.
    void write(const QString &statement);

    /// Opens the rows of a query. False when the server refused it.
    bool probe(Recordset &rows, const QString &query);
    /// Number of columns of a table; -1 when it cannot be opened.
    [[nodiscard]] int columnCount(const QString &table);
    /// True when the query can be carried out and finds no row. A query that is refused tells nothing, so it is false.
    [[nodiscard]] bool findsNone(const QString &query);
    /// `findsNone` for all rows of a table.
    [[nodiscard]] bool isEmpty(const QString &table);
    /// The number after the highest one in a column, 1 when there is none; without a value when it could not be read.
    [[nodiscard]] std::optional<int> nextNumber(const QString &table, const QString &column);

    /// Carries the statements out so that all of them stay or none, and flushes: the check whether rows are missing looks
    /// at the first row only, and a table filled by half would stay so. A statement that is refused costs itself only,
    /// unless it ended the group, as a lock of another user does. A group that was ended is tried again as every
    /// change is; false when it was ended each time: then nothing of it stays and the check is still open.
    bool fill(const QStringList &statements) { return group(statements, Refused::CostsItself); }
    /// `fill` for statements of which none may stay without the others, such as a delete and the inserts that replace
    /// its rows: the first one that is refused ends the group.
    bool replace(const QStringList &statements) { return group(statements, Refused::EndsTheGroup); }

    /// Carries out a step under its tail. A step in which the server was lost is carried out again. False when the
    /// update must end here, which the tail has logged: also when another program has taken the update over meanwhile.
    bool carryOut(ErrorTail &tail, const std::function<void()> &step);

    /// Something was left open, for the next update to complete.
    [[nodiscard]] bool leftOpen() const { return m_leftOpen; }

private:
    enum class Refusal { CostsItself, ForNow, NoRoom };

    [[nodiscard]] Refusal lastRefusal();
    void judge(Refusal refusal);
    void endWhenLost() const;
    enum class Refused { CostsItself, EndsTheGroup };
    bool group(const QStringList &statements, Refused refused);
    bool sendGroup(const QStringList &statements, Refused refused);

    Connection *m_connection;
    UpdateLock *m_lock;
    bool m_leftOpen = false;
};
