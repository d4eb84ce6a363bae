#pragma once

#include "platform/fault.h"

#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>
#include <vector>

struct ServerAddress;
struct st_mysql;
struct st_mysql_res;

/// The rows that a statement found, all of them read from the server. Before the first call of `next` there is no row.
class ResultRows
{
public:
    explicit ResultRows(st_mysql_res *result);
    ~ResultRows();
    ResultRows(const ResultRows &) = delete;
    ResultRows &operator=(const ResultRows &) = delete;

    [[nodiscard]] const QStringList &names() const { return m_names; }
    bool next();
    /// A value of the current row by the type of its column: whole number, number, date or text; null for `Null`.
    [[nodiscard]] QVariant value(int column) const;
    /// The bytes of a column of texts, in UTF-8, until the next row; nothing for `Null` and for a column of another type.
    [[nodiscard]] std::optional<QByteArrayView> textBytes(int column) const;

private:
    st_mysql_res *m_result; // null for a statement that finds no rows
    char **m_row = nullptr;
    unsigned long *m_lengths = nullptr;
    QStringList m_names;
    std::vector<QMetaType::Type> m_types;
};

/// One session with a database server, from its beginning to its loss. It takes one statement at a time, loads no file of
/// this machine for the server, and never sends a password that could be read on the way.
class Session
{
public:
    /// Null when the server cannot be reached or refuses; `why` tells.
    static std::unique_ptr<Session> open(const ServerAddress &address, Fault *why);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Sends a statement and reads its answer. Null after a fault.
    std::unique_ptr<ResultRows> send(const QString &statement);
    /// The rows that the last statement changed.
    [[nodiscard]] qint64 affectedRows() const { return m_affected; }
    [[nodiscard]] Fault fault() const;

    /// Whether the server has ended this session, or its last word is waiting; asked between two statements.
    [[nodiscard]] bool hungUp() const;
    [[nodiscard]] bool encrypted() const;

    [[nodiscard]] st_mysql *handle() const { return m_mysql; }

private:
    explicit Session(st_mysql *mysql)
        : m_mysql(mysql)
    {
    }
    bool connect(const ServerAddress &address);

    st_mysql *m_mysql;
    qint64 m_affected = 0;
};
