#include "records/change.h"

#include "platform/recordset.h"
#include "records/readrows.h"

#include <QThread>

namespace {

constexpr int tries = 5;
constexpr int noSuchTable = 1146;

void flush(Connection *connection)
{
    connection->Execute("Flush Tables");
}

/// Stands between the connection and its fault handler while it lives.
class FaultFilter
{
public:
    /// @param passes whether a fault goes on to the handler, and as what
    FaultFilter(Connection *connection, const std::function<bool(Fault &)> &passes)
        : m_connection(connection)
        , m_outer(connection->faultHandler())
    {
        m_connection->setFaultHandler([outer = m_outer, passes](Fault fault) {
            if (passes(fault) && outer)
                outer(fault);
        });
    }
    ~FaultFilter() { m_connection->setFaultHandler(m_outer); }
    FaultFilter(const FaultFilter &) = delete;
    FaultFilter &operator=(const FaultFilter &) = delete;

private:
    Connection *m_connection;
    FaultHandler m_outer;
};

/// Has every fault told as one of what the statements are for, unless nobody knows what it did.
FaultFilter toldAs(Doing doing, Connection *connection)
{
    return {connection, [doing](Fault &fault) {
                if (doing != Doing::Other && fault.doing != Doing::Unknown)
                    fault.doing = doing;
                return true;
            }};
}

Fault clientGoneFault()
{
    return {FaultNumber::RowGone, QStringLiteral("the client is no longer in the database under this code"),
            QStringLiteral("FBT"), Doing::Save};
}

/// Takes the lock row of a table and client. False after a fault.
bool lockRow(Connection *connection, const QString &table, const QString &clientCode)
{
    bool without = false;
    const FaultFilter filter(connection, [&without](const Fault &fault) {
        without = fault.number == noSuchTable;
        return !without;
    });
    return connection->Execute(Sql("Insert into FBT_Lock (Tbl,Code) Values (", Quoted(table), ",", Quoted(clientCode),
                                   ") On Duplicate Key Update N=N+1")) ||
           without;
}

} // namespace

bool Change::write(const SqlText &statement)
{
    m_given = m_given && m_connection->Execute(statement);
    m_written = true;
    return m_given;
}

bool Change::rewrite(const SqlText &statement)
{
    return onOneRow(statement, true);
}

bool Change::remove(const SqlText &statement)
{
    return onOneRow(statement, false);
}

bool Change::onOneRow(const SqlText &statement, bool mustBeThere)
{
    if (!write(statement))
        return false;
    const qint64 rows = m_connection->affectedRows();
    if (rows == 0 && mustBeThere)
        giveUp(RowGoneFault(Doing::Save));
    else if (rows > 1)
        giveUp({FaultNumber::RowNotAlone, QStringLiteral("other rows have the same number"), QStringLiteral("FBT"),
                Doing::Save});
    return m_given;
}

void Change::giveUp(const Fault &fault)
{
    m_given = false;
    m_connection->report(fault);
}

bool Change::lock(const QString &table, const QString &clientCode)
{
    m_given = m_given && lockRow(m_connection, table, clientCode);
    return clientCode.isEmpty() ? m_given : holdClient(clientCode);
}

bool Change::holdClient(const QString &code)
{
    Recordset client;
    m_given =
        m_given && client.Open(Sql("Select Code_No from FBT_Info Where Code_No=", Quoted(code), " Lock in Share Mode"),
                               m_connection);
    if (m_given && client.Eof())
        giveUp(clientGoneFault());
    return m_given;
}

std::optional<int> Change::nextNumber(const QString &table, const QString &clientCode, const SqlText &query, int step)
{
    lock(table, clientCode);
    Recordset highest;
    m_given = m_given && highest.Open(query, m_connection);
    return m_given ? std::optional(highest.Fields(0).whole() + step) : std::nullopt;
}

/// One try of a change.
class ChangeTry
{
public:
    ChangeTry(Connection *connection, bool last)
        : m_connection(connection)
        , m_last(last)
    {
    }

    bool run(const std::function<bool(Change &)> &part)
    {
        const FaultFilter filter(m_connection, [this](const Fault &) { return !holds(); });
        Change change(m_connection);
        m_done = part(change) && change.m_given && m_connection->commitGroup();
        m_again = m_again || (!m_last && m_connection->groupLost());
        if (!m_done)
            m_connection->abandonGroup();
        if (m_done && change.m_written) {
            flush(m_connection);
            m_connection->reportDone();
        }
        return m_done;
    }
    [[nodiscard]] bool again() const { return m_again; }

private:
    bool holds()
    {
        const bool held = !m_last && m_connection->groupLost() && !m_connection->commitUnknown();
        m_again = m_again || held;
        return held;
    }

    Connection *m_connection;
    bool m_last;
    bool m_done = false;
    bool m_again = false; // nothing of it stays, and the next time may do better
};

bool ChangeTogether(Connection *connection, const std::function<bool(Change &)> &part, Doing doing)
{
    const FaultFilter told = toldAs(doing, connection);
    for (int tried = 1; connection->beginGroup(); ++tried) {
        ChangeTry once(connection, tried == tries);
        if (once.run(part))
            return true;
        if (!once.again())
            return false;
        QThread::msleep(tried); // lets the other one get on
    }
    return false;
}

std::optional<bool> FindsRowAgainst(Doing doing, Connection *connection, const QString &query)
{
    const FaultFilter told = toldAs(doing, connection);
    return FindsRow(connection, query);
}

Fault RowGoneFault(Doing doing)
{
    return {FaultNumber::RowGone, QStringLiteral("it is no longer in the database"), QStringLiteral("FBT"), doing};
}

bool WriteOne(Connection *connection, const SqlText &statement)
{
    const bool done = connection->Execute(statement);
    flush(connection);
    if (done)
        connection->reportDone();
    return done;
}
