#include "platform/connection.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

#include <mysql.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr int serverGone = 2006; // the statement was not sent

// Lost under way: by the network, by a server that goes down, by one that ends its connections.
constexpr int losses[] = {serverGone, 2013, 2055, 1053, 1927};

constexpr int deadlock = 1213;
constexpr int lockWait = 1205;

bool isLoss(const Fault &fault)
{
    return std::find(std::begin(losses), std::end(losses), fault.number) != std::end(losses);
}

Fault faultOf(const QSqlError &error)
{
    const int number = error.nativeErrorCode().toInt();
    const QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return {number != 0 ? number : FaultNumber::General, text, QStringLiteral("MariaDB")};
}

} // namespace

Connection::Connection()
    : m_name(QUuid::createUuid().toString(QUuid::Id128))
{
}

Connection::~Connection()
{
    close();
}

bool Connection::open(const ServerAddress &address, Fault *why)
{
    close();
    m_grouped = false;
    m_address = address;
    m_wanted = connectNow(why);
    return m_wanted;
}

void Connection::close()
{
    m_wanted = false;
    if (QSqlDatabase::contains(m_name))
        QSqlDatabase::removeDatabase(m_name);
}

bool Connection::connectNow(Fault *why)
{
    if (!QSqlDatabase::contains(m_name))
        QSqlDatabase::addDatabase(QStringLiteral("QMYSQL"), m_name);
    QSqlDatabase database = QSqlDatabase::database(m_name, false);
    database.close();
    database.setHostName(m_address.socket.isEmpty() ? m_address.host : QStringLiteral("localhost"));
    if (m_address.port != 0)
        database.setPort(m_address.port);
    database.setUserName(m_address.user);
    database.setPassword(m_address.password);
    database.setDatabaseName(m_address.schema);
    database.setConnectOptions(m_address.socket.isEmpty() ? QStringLiteral("MYSQL_OPT_CONNECT_TIMEOUT=10")
                                                          : QStringLiteral("UNIX_SOCKET=") + m_address.socket);
    m_lost = !database.open();
    if (m_lost && why != nullptr)
        *why = faultOf(database.lastError());
    if (!m_lost)
        sessionSettings();
    return !m_lost;
}

void Connection::sessionSettings()
{
    QSqlQuery query(QSqlDatabase::database(m_name, false));
    query.exec(QStringLiteral("SET NAMES utf8mb4"));
    query.exec(QStringLiteral("SET SESSION sql_mode=''"));
    query.exec(QStringLiteral("SET SESSION default_storage_engine=InnoDB")); // groups of statements need transactions
    // Joined rows come in the order of the left table, with an index and without one. The one name is MariaDB's,
    // the other MySQL's; a server refuses the one that it does not know, which does no harm.
    query.exec(QStringLiteral("SET SESSION join_cache_level=0"));
    query.exec(QStringLiteral("SET SESSION optimizer_switch='block_nested_loop=off'"));
}

bool Connection::serverHungUp() const
{
    const QVariant handle = QSqlDatabase::database(m_name, false).driver()->handle();
    if (qstrcmp(handle.typeName(), "MYSQL*") != 0)
        return false;
    MYSQL *mysql = *static_cast<MYSQL *const *>(handle.constData());
    // A server that has nothing to answer sends nothing: what can be read is its end or its last word. Only an
    // encrypted connection may hold a record of the encryption's own.
    const int socket = static_cast<int>(mysql_get_socket(mysql));
    char byte = 0;
    const ssize_t pending = recv(socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    if (pending > 0)
        return mysql_get_ssl_cipher(mysql) == nullptr;
    return pending == 0 || errno != EAGAIN;
}

bool Connection::ensureAlive()
{
    Fault why{FaultNumber::ConnectionClosed, QStringLiteral("The connection is closed."), QStringLiteral("FBT")};
    if (m_wanted && !m_lost && !serverHungUp())
        return true;
    if (m_wanted && m_grouped && !m_lost)
        why = {serverGone, QStringLiteral("The database server has gone away."), QStringLiteral("MariaDB")};
    m_lost = true;
    if (m_wanted && !m_grouped && connectNow(&why))
        return true;
    m_statementLost = true;
    report(why);
    return false;
}

bool Connection::attempt(QSqlQuery &query, const QString &statement)
{
    query.setForwardOnly(true);
    return query.exec(statement);
}

std::unique_ptr<QSqlQuery> Connection::run(const QString &statement)
{
    if (m_observer)
        m_observer(statement);
    m_statementLost = false;
    if (!ensureAlive())
        return nullptr;
    auto query = std::make_unique<QSqlQuery>(QSqlDatabase::database(m_name, false));
    bool done = attempt(*query, statement);
    if (!done && !m_grouped && faultOf(query->lastError()).number == serverGone) {
        query.reset();
        m_lost = true;
        if (!ensureAlive())
            return nullptr;
        query = std::make_unique<QSqlQuery>(QSqlDatabase::database(m_name, false));
        done = attempt(*query, statement);
    }
    if (done)
        return query;
    takeFault(faultOf(query->lastError()));
    return nullptr;
}

void Connection::takeFault(const Fault &fault)
{
    m_lost = isLoss(fault);
    m_statementLost = m_lost;
    m_groupBroken = m_groupBroken || (m_grouped && (fault.number == deadlock || fault.number == lockWait));
    report(fault);
}

bool Connection::Execute(const QString &statement)
{
    const std::unique_ptr<QSqlQuery> query = run(statement);
    if (query)
        m_affected = std::max<qint64>(query->numRowsAffected(), 0);
    return query != nullptr;
}

bool Connection::beginGroup()
{
    m_grouped = false; // a lost group is over, and the connection may be opened again
    m_groupBroken = false;
    m_grouped = Execute(QStringLiteral("Start Transaction"));
    return m_grouped;
}

bool Connection::commitGroup()
{
    const bool stays = m_grouped && !groupLost() && Execute(QStringLiteral("Commit"));
    if (stays)
        m_grouped = false;
    else
        abandonGroup();
    return stays;
}

void Connection::abandonGroup()
{
    if (m_grouped && m_wanted && !m_lost)
        Execute(QStringLiteral("Rollback"));
    m_grouped = false;
}

void Connection::report(const Fault &fault) const
{
    if (m_handler)
        m_handler(fault);
}
