#include "platform/session.h"

#include "platform/connection.h"

#include <QDate>

#include <mysql.h>
#include <poll.h>

namespace {

constexpr unsigned connectSeconds = 10;
constexpr unsigned answerSeconds = 600; // the longest change of a large table's structure ends sooner

// None that hands the server the password itself, nor one that can be read out of what is sent.
constexpr const char *safePlugins = "mysql_native_password,caching_sha2_password,client_ed25519,auth_gssapi_client";

QMetaType::Type typeOf(const MYSQL_FIELD &field)
{
    switch (field.type) {
    case MYSQL_TYPE_TINY:
    case MYSQL_TYPE_SHORT:
    case MYSQL_TYPE_LONG:
    case MYSQL_TYPE_INT24:
    case MYSQL_TYPE_YEAR:
    case MYSQL_TYPE_LONGLONG:
        return QMetaType::LongLong;
    case MYSQL_TYPE_FLOAT:
    case MYSQL_TYPE_DOUBLE:
    case MYSQL_TYPE_DECIMAL:
    case MYSQL_TYPE_NEWDECIMAL:
        return QMetaType::Double;
    case MYSQL_TYPE_DATE:
        return QMetaType::QDate;
    default:
        return QMetaType::QString;
    }
}

Fault faultOf(MYSQL *mysql)
{
    const auto number = static_cast<int>(mysql_errno(mysql));
    return {number != 0 ? number : FaultNumber::General, QString::fromUtf8(mysql_error(mysql)),
            QStringLiteral("MariaDB")};
}

void setEncryption(MYSQL *mysql, const ServerAddress &address)
{
    using Tls = ServerAddress::Tls;
    if (address.tls == Tls::Off || (address.tls == Tls::Preferred && !address.socket.isEmpty()))
        return;
    const QByteArray authority = address.ca.toLocal8Bit();
    mysql_ssl_set(mysql, nullptr, nullptr, authority.isEmpty() ? nullptr : authority.constData(), nullptr, nullptr);
    const my_bool verify = authority.isEmpty() ? 0 : 1;
    mysql_options(mysql, MYSQL_OPT_SSL_VERIFY_SERVER_CERT, &verify);
}

} // namespace

ResultRows::ResultRows(st_mysql_res *result)
    : m_result(result)
{
    const unsigned columns = m_result == nullptr ? 0 : mysql_num_fields(m_result);
    for (unsigned i = 0; i < columns; ++i) {
        const MYSQL_FIELD &field = *mysql_fetch_field_direct(m_result, i);
        m_names << QString::fromUtf8(field.name);
        m_types.push_back(typeOf(field));
    }
}

ResultRows::~ResultRows()
{
    if (m_result != nullptr)
        mysql_free_result(m_result);
}

bool ResultRows::next()
{
    m_row = m_result == nullptr ? nullptr : mysql_fetch_row(m_result);
    m_lengths = m_row == nullptr ? nullptr : mysql_fetch_lengths(m_result);
    return m_row != nullptr;
}

QVariant ResultRows::value(int column) const
{
    if (m_row == nullptr || m_row[column] == nullptr)
        return {};
    const auto bytes = QByteArray::fromRawData(m_row[column], static_cast<qsizetype>(m_lengths[column]));
    switch (m_types[column]) {
    case QMetaType::LongLong:
        return bytes.toLongLong();
    case QMetaType::Double:
        return bytes.toDouble();
    case QMetaType::QDate:
        return QDate::fromString(QString::fromLatin1(bytes), Qt::ISODate);
    default:
        return QString::fromUtf8(bytes);
    }
}

std::optional<QByteArrayView> ResultRows::textBytes(int column) const
{
    if (m_row == nullptr || m_row[column] == nullptr || m_types[column] != QMetaType::QString)
        return std::nullopt;
    return QByteArrayView(m_row[column], static_cast<qsizetype>(m_lengths[column]));
}

std::unique_ptr<Session> Session::open(const ServerAddress &address, Fault *why)
{
    std::unique_ptr<Session> session(new Session(mysql_init(nullptr)));
    if (session->m_mysql == nullptr) {
        *why = {FaultNumber::General, QStringLiteral("There is no memory for a connection."), QStringLiteral("FBT")};
        return nullptr;
    }
    if (!session->connect(address)) {
        *why = session->fault();
        return nullptr;
    }
    if (address.tls == ServerAddress::Tls::Required && !session->encrypted()) {
        *why = {FaultNumber::General, QStringLiteral("The server offers no encryption (TLS)."), QStringLiteral("FBT")};
        return nullptr;
    }
    return session;
}

bool Session::connect(const ServerAddress &address)
{
    const unsigned loadsFiles = 0;
    mysql_options(m_mysql, MYSQL_OPT_CONNECT_TIMEOUT, &connectSeconds);
    mysql_options(m_mysql, MYSQL_OPT_READ_TIMEOUT, &answerSeconds);
    mysql_options(m_mysql, MYSQL_OPT_LOCAL_INFILE, &loadsFiles);
    mysql_options(m_mysql, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    mysql_options(m_mysql, MARIADB_OPT_RESTRICTED_AUTH, safePlugins);
    setEncryption(m_mysql, address);
    const QByteArray host = address.socket.isEmpty() ? address.host.toUtf8() : QByteArray("localhost");
    const QByteArray socket = address.socket.toLocal8Bit();
    const QByteArray schema = address.schema.toUtf8();
    // Found rows: a row that already holds what is saved counts as there, one that was deleted does not. No other flag: of
    // all that a client may ask for, several statements in one is the one thing that it must not.
    return mysql_real_connect(m_mysql, host.constData(), address.user.toUtf8().constData(),
                              address.password.toUtf8().constData(), schema.isEmpty() ? nullptr : schema.constData(),
                              static_cast<unsigned>(address.port), socket.isEmpty() ? nullptr : socket.constData(),
                              CLIENT_FOUND_ROWS) != nullptr &&
           mysql_set_server_option(m_mysql, MYSQL_OPTION_MULTI_STATEMENTS_OFF) == 0;
}

Session::~Session()
{
    if (m_mysql != nullptr)
        mysql_close(m_mysql);
}

std::unique_ptr<ResultRows> Session::send(const QString &statement)
{
    const QByteArray text = statement.toUtf8();
    if (mysql_real_query(m_mysql, text.constData(), static_cast<unsigned long>(text.size())) != 0)
        return nullptr;
    MYSQL_RES *result = mysql_store_result(m_mysql);
    if (result == nullptr && mysql_errno(m_mysql) != 0)
        return nullptr;
    m_affected = result == nullptr ? static_cast<qint64>(mysql_affected_rows(m_mysql)) : 0;
    while (mysql_next_result(m_mysql) == 0) { // the end of a stored procedure
        if (MYSQL_RES *more = mysql_store_result(m_mysql))
            mysql_free_result(more);
    }
    return std::make_unique<ResultRows>(result);
}

Fault Session::fault() const
{
    return faultOf(m_mysql);
}

bool Session::hungUp() const
{
    // A server that has nothing to answer sends nothing: what can be read is its end or its last word. Only an
    // encrypted session may hold a record of the encryption's own.
    pollfd socket{static_cast<int>(mysql_get_socket(m_mysql)), POLLIN | POLLRDHUP, 0};
    if (poll(&socket, 1, 0) == 0)
        return false;
    const bool ended = (socket.revents & (POLLRDHUP | POLLHUP | POLLERR | POLLNVAL)) != 0;
    return ended || !encrypted();
}

bool Session::encrypted() const
{
    return mysql_get_ssl_cipher(m_mysql) != nullptr;
}
