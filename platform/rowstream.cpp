#include "platform/rowstream.h"

#include <mysql.h>

namespace {

MYSQL *session(void *handle)
{
    return static_cast<MYSQL *>(handle);
}

MYSQL_RES *result(void *handle)
{
    return static_cast<MYSQL_RES *>(handle);
}

} // namespace

RowStream::~RowStream()
{
    drop();
    if (m_session != nullptr)
        mysql_close(session(m_session));
}

bool RowStream::connect(const ServerAddress &address)
{
    m_session = mysql_init(nullptr);
    if (m_session == nullptr)
        return false;
    mysql_options(session(m_session), MYSQL_SET_CHARSET_NAME, "utf8mb4");
    const QByteArray host = address.socket.isEmpty() ? address.host.toUtf8() : QByteArray("localhost");
    const QByteArray socket = address.socket.toLocal8Bit();
    const MYSQL *opened =
        mysql_real_connect(session(m_session), host.constData(), address.user.toUtf8().constData(),
                           address.password.toUtf8().constData(), address.schema.toUtf8().constData(),
                           static_cast<unsigned>(address.port), socket.isEmpty() ? nullptr : socket.constData(), 0);
    return opened != nullptr && open(QStringLiteral("Set Session Transaction Isolation Level Repeatable Read")) &&
           open(QStringLiteral("Start Transaction With Consistent Snapshot"));
}

void RowStream::drop()
{
    if (m_result != nullptr)
        mysql_free_result(result(m_result)); // reads what is left, so that the next query can be sent
    m_result = nullptr;
    m_row = nullptr;
    m_columns = 0;
}

bool RowStream::open(const QString &query)
{
    drop();
    const QByteArray text = query.toUtf8();
    if (mysql_real_query(session(m_session), text.constData(), static_cast<unsigned long>(text.size())) != 0)
        return false;
    m_result = mysql_use_result(session(m_session));
    m_columns = static_cast<int>(mysql_field_count(session(m_session)));
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
    if (m_session == nullptr)
        return QStringLiteral("The client library of the database could not be started.");
    return QString::fromUtf8(mysql_error(session(m_session)));
}
