#pragma once

#include "platform/connection.h"
#include "platform/offer.h"

#include <QStringList>
#include <QVariant>

#include <memory>

class ResultRows;

/// One value of the current row. `Null` reads as the empty text and as 0.
class FBT_OFFERED Field
{
public:
    /// @param connection receives the fault of a value that cannot be read as asked
    explicit Field(QVariant value = {}, const Connection *connection = nullptr)
        : m_value(std::move(value))
        , m_connection(connection)
    {
    }

    [[nodiscard]] bool isNull() const { return m_value.isNull(); }
    /// The value as text; numbers by the default number-to-text rule.
    [[nodiscard]] QString text() const;
    /// The value as a number, read through its text: its leading number, 0 when there is none.
    [[nodiscard]] double num() const;
    /// `num()` as a whole number, ties to the even one; beyond the range of `int` it is a reported fault and 0.
    [[nodiscard]] int whole() const;

private:
    QVariant m_value;
    const Connection *m_connection;
};

/// The rows of a query, from the first to the last. Never throws: a fault goes to the connection's handler, and a
/// recordset that could not be opened has no rows. `Bof`/`Eof` are spelled so because `EOF` is a macro of the language.
class FBT_OFFERED Recordset
{
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset &) = delete;
    Recordset &operator=(const Recordset &) = delete;

    /// Opens a query, or a whole table when the text is one word. The first row is current.
    bool Open(const SqlText &source, Connection *connection);
    void Close();

    [[nodiscard]] int State() const;
    [[nodiscard]] bool Bof() const { return m_atStart; }
    [[nodiscard]] bool Eof() const { return m_atEnd; }
    [[nodiscard]] bool empty() const { return m_atStart && m_atEnd; }
    void MoveNext();

    [[nodiscard]] int FieldCount() const { return static_cast<int>(m_names.size()); }
    [[nodiscard]] QString FieldName(int index) const { return m_names.value(index); }
    /// Position of a field by name (without regard to case), -1 when there is none; for loops over many rows.
    [[nodiscard]] int FieldIndex(QStringView name) const;
    /// A field of the current row by name (without regard to case). A wrong name or no current row is a reported fault
    /// and reads as `Null`.
    [[nodiscard]] Field Fields(QStringView name) const;
    [[nodiscard]] Field Fields(int index) const;
    /// Puts the text of a field into `text`, whose memory is used again; for loops over very many rows.
    void readText(int index, QString &text) const;

private:
    [[nodiscard]] Field refuse(int number, const QString &description) const;

    Connection *m_connection = nullptr;
    std::unique_ptr<ResultRows> m_query;
    QStringList m_names;
    bool m_atStart = true;
    bool m_atEnd = true;
};

/// Whether a query finds a row.
FBT_OFFERED bool HasRows(Connection *connection, const SqlText &query);

/// The first field of the first row of a query; `Null` without one.
FBT_OFFERED Field FirstField(Connection *connection, const SqlText &query);
