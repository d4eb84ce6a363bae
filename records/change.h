#pragma once

#include "platform/connection.h"
#include "platform/offer.h"

#include <functional>
#include <optional>

/// Statements that change tables and belong together: all of them stay or none. Begun by `ChangeTogether`.
///
/// `Flush Tables` would end the transaction, so one flush goes out after the commit.
class FBT_OFFERED Change
{
public:
    /// Carries out one statement. False after a fault: the whole change is then given up.
    bool write(const SqlText &statement);

    /// Carries out a statement on one row that must be there. When the server finds none, since another user has deleted
    /// it, or several that share its number, that is reported, and the change given up as after a fault.
    bool rewrite(const SqlText &statement);

    /// The same for a row that is to go, and may have gone already.
    bool remove(const SqlText &statement);

    /// For rows that belong to a client: he must be there, and stays to the end of the change. Where another user has
    /// deleted him, or given him another code, the rows would be nobody's: that is reported, and the change given up as
    /// after a fault.
    bool holdClient(const QString &code);

    /// Writes the lock row of a table and client, which is held to the end of the change: what is read after it is not
    /// changed by another user who asks for the same. False, and the change given up, after a fault, or when the client is
    /// not there (`holdClient`).
    /// @param table as its `Create Table` spells it
    /// @param clientCode empty for a table whose rows count for all clients
    bool lock(const QString &table, const QString &clientCode);

    /// The number of a new row: the maximum that `query` finds (`Null` counts as 0) plus `step`. Without a value, and the
    /// change given up, when the query faulted: number 1 would then replace the row that has it.
    ///
    /// The table and client are locked first: two users never get the same number. A database that has no lock rows goes
    /// without.
    std::optional<int> nextNumber(const QString &table, const QString &clientCode, const SqlText &query, int step = 1);

    /// Reports a fault, and gives the change up.
    void giveUp(const Fault &fault);

    [[nodiscard]] Connection *connection() const { return m_connection; }

private:
    friend class ChangeTry;
    bool onOneRow(const SqlText &statement, bool mustBeThere);
    explicit Change(Connection *connection)
        : m_connection(connection)
    {
    }
    Change(const Change &) = delete;
    Change &operator=(const Change &) = delete;

    Connection *m_connection;
    bool m_written = false;
    bool m_given = true; // nothing has failed yet
};

/// Carries out `part` in one transaction. True when all of it was committed. False when a statement faulted, `part`
/// returned false or the commit failed: then the tables are as before.
///
/// A deadlock, a wait for a lock, or a connection lost before the commit was sent leaves nothing of the change: `part` is
/// run again, five times in all, and what it faulted with is reported of the last time only. `part` therefore begins from
/// the beginning each time, and keeps nothing from a time before. A commit that was lost under way is not repeated, since
/// the change may stay; it is reported as not known, and the result is false.
/// @param doing what is reported when any of its statements faults: a save that had to ask or to delete first was "not
/// saved". `Other`: each statement says for itself.
FBT_OFFERED bool ChangeTogether(Connection *connection, const std::function<bool(Change &)> &part,
                                Doing doing = Doing::Save);

/// Whether a query finds a row that stands against a change. Without a value after a fault, which is reported as one of
/// the change.
FBT_OFFERED std::optional<bool> FindsRowAgainst(Doing doing, Connection *connection, const QString &query);

/// One statement and its flush. True when the statement was carried out.
FBT_OFFERED bool WriteOne(Connection *connection, const SqlText &statement);

/// What is reported when a row that was to be changed or shown has gone, as when another user deleted it.
FBT_OFFERED Fault RowGoneFault(Doing doing);
