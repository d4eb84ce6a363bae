#pragma once

#include "platform/connection.h"
#include "platform/offer.h"

#include <QByteArray>
#include <QString>

/// Reads the rows of queries one after the other in constant memory, on a connection of its own and all from one
/// snapshot of the data. For reading whole tables; screens use Recordset.
class FBT_OFFERED RowStream
{
public:
    RowStream();
    ~RowStream();
    RowStream(const RowStream &) = delete;
    RowStream &operator=(const RowStream &) = delete;

    /// Connects and takes the snapshot. False on failure; `error` tells.
    bool connect(const ServerAddress &address);

    /// Sends a query. The rows of one before are dropped.
    bool open(const SqlText &query);
    /// Goes to the next row, the first one at the first call. False after the last row and after a failure.
    bool next();

    [[nodiscard]] int columns() const { return m_columns; }
    /// A value as the server's text for it, in UTF-8; a null array for `Null`. It holds until the next row is read.
    [[nodiscard]] QByteArray value(int column) const;

    /// Why the last call failed; empty when it did not.
    [[nodiscard]] QString error() const;

private:
    void drop();

    std::unique_ptr<Session> m_session;
    QString m_refusal;        // why there is no session, or why a query was not sent
    void *m_result = nullptr; // the client library's own handle
    char **m_row = nullptr;
    int m_columns = 0;
};
