#include "records/change.h"

#include "platform/recordset.h"

namespace {

void flush(Connection *connection)
{
    connection->Execute(QStringLiteral("Flush Tables"));
}

} // namespace

bool Change::write(const QString &statement)
{
    m_given = m_given && m_connection->Execute(statement);
    m_written = true;
    return m_given;
}

std::optional<int> Change::nextNumber(const QString &query, int step)
{
    Recordset highest;
    m_given = m_given && highest.Open(query, m_connection);
    return m_given ? std::optional(highest.Fields(0).whole() + step) : std::nullopt;
}

bool ChangeTogether(Connection *connection, const std::function<bool(Change &)> &part)
{
    if (!connection->beginGroup())
        return false;
    Change change(connection);
    if (!part(change) || !change.m_given) {
        connection->abandonGroup();
        return false;
    }
    if (!connection->commitGroup())
        return false;
    if (change.m_written)
        flush(connection);
    return true;
}

bool WriteOne(Connection *connection, const QString &statement)
{
    const bool done = connection->Execute(statement);
    flush(connection);
    return done;
}
