#include "platform/rowstream.h"

#include "platform/session.h"

#include <mysql.h>

namespace {

MYSQL_RES *result(void *handle)
{
    return static_cast<MYSQL_RES *>(handle);
}

} // namespace

RowStream::RowStream() = default;

RowStream::~RowStream()
{
    drop();
}

bool RowStream::connect(const ServerAddress &address)
{
    Fault why;
    m_session = Session::open(address, &why);
    m_refusal = why.description;
    return m_session != nullptr && open("Set Session Transaction Isolation Level Repeatable Read") &&
           open("Start Transaction With Consistent Snapshot");
}

void RowStream::drop()
{
    if (m_result != nullptr)
        mysql_free_result(result(m_result)); // reads what is left, so that the next query can be sent
    m_result = nullptr;
    m_row = nullptr;
    m_columns = 0;
}

bool RowStream::open(const SqlText &query)
{
    drop();
    if (!query.fault().isEmpty()) {
        m_refusal = query.fault();
        return false;
    }
    const QByteArray text = query.text().toUtf8();
    if (mysql_real_query(m_session->handle(), text.constData(), static_cast<unsigned long>(text.size())) != 0)
        return false;
    m_result = mysql_use_result(m_session->handle());
    m_columns = static_cast<int>(mysql_field_count(m_session->handle()));
    return m_result != nullptr || m_columns == 0;
}

bool RowStream::next()
{
    m_row = m_result != nullptr ? mysql_fetch_row(result(m_result)) : nullptr;
    return m_row != nullptr;
}

QByteArray RowStream::value(int column) const
{
    if (m_row == nullptr || m_row[column] == nullptr)
        return {};
    const unsigned long length = mysql_fetch_lengths(result(m_result))[column];
    return length == 0 ? QByteArray("") : QByteArray(m_row[column], static_cast<qsizetype>(length));
}

QString RowStream::error() const
{
    return m_refusal.isEmpty() ? QString::fromUtf8(mysql_error(m_session->handle())) : m_refusal;
}
