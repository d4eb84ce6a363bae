#include "platform/connection.h"

#include "platform/session.h"

#include <QThread>

#include <algorithm>

namespace {

constexpr int serverGone = 2006; // the statement was not sent
constexpr int lostUnderWay = 2013;
constexpr int nodeNotReady = 1047; // a cluster's node that takes no statement at present
constexpr int deadlock = 1213;
constexpr int lockWait = 1205;

// Lost by the network, by a server that goes down, by one that ends its connections.
constexpr int losses[] = {serverGone, lostUnderWay, nodeNotReady, 2055, 1053, 1927};

constexpr int tries = 5;

bool isLoss(const Fault &fault)
{
    return std::find(std::begin(losses), std::end(losses), fault.number) != std::end(losses);
}

bool isRefusedLock(const Fault &fault)
{
    return fault.number == deadlock || fault.number == lockWait;
}

Doing doingOf(const QString &statement)
{
    const QString word = statement.trimmed().section(u' ', 0, 0).toLower();
    if (word == u"select" || word == u"show" || word == u"explain")
        return Doing::Read;
    if (word == u"delete")
        return Doing::Delete;
    const bool saves = word == u"insert" || word == u"update" || word == u"replace" || word == u"commit";
    return saves ? Doing::Save : Doing::Other;
}

bool canBeSentAgain(const Fault &fault, const QString &statement)
{
    if (fault.number == serverGone || fault.number == nodeNotReady || isRefusedLock(fault))
        return true;
    return isLoss(fault) && doingOf(statement) == Doing::Read;
}

} // namespace

Connection::Connection() = default;

Connection::~Connection() = default;

bool Connection::open(const ServerAddress &address, Fault *why)
{
    close();
    m_grouped = false;
    m_address = address;
    Fault fault;
    m_wanted = connectNow(&fault);
    if (why != nullptr && !m_wanted)
        *why = fault;
    return m_wanted;
}

void Connection::close()
{
    m_wanted = false;
    m_session.reset();
}

bool Connection::connectNow(Fault *why)
{
    m_session = Session::open(m_address, why);
    if (m_session && !sessionSettings()) {
        *why = m_session->fault();
        m_session.reset();
    }
    return m_session != nullptr;
}

bool Connection::sessionSettings()
{
    const auto set = [this](const char *setting) { return m_session->send(QString::fromLatin1(setting)) != nullptr; };
    // Joined rows come in the order of the left table, with an index and without one. The one name is MariaDB's,
    // the other MySQL's; a server refuses the one that it does not know, which does no harm.
    set("SET SESSION join_cache_level=0");
    set("SET SESSION optimizer_switch='block_nested_loop=off'");
    set("SET SESSION innodb_lock_wait_timeout=2"); // a change takes milliseconds; it is tried again
    // A server that logs statements as texts carries no change out under READ COMMITTED.
    const auto log = m_session->send(QStringLiteral("Select @@log_bin and @@binlog_format='STATEMENT'"));
    if (log && log->next() && log->value(0).toInt() == 0)
        set("SET SESSION TRANSACTION ISOLATION LEVEL READ COMMITTED");
    // Groups of statements need transactions; the other two decide how a statement is read.
    return set("SET NAMES utf8mb4") && set("SET SESSION sql_mode=''") &&
           set("SET SESSION default_storage_engine=InnoDB");
}

bool Connection::reconnect(Fault *why)
{
    return connectNow(why) || (m_reviver && m_reviver() && connectNow(why));
}

bool Connection::ensureAlive(Fault *why)
{
    if (m_wanted && m_session && !m_session->hungUp())
        return true;
    if (!m_wanted)
        *why = {FaultNumber::ConnectionClosed, QStringLiteral("The connection is closed."), QStringLiteral("FBT")};
    else if (m_grouped)
        *why = {serverGone, QStringLiteral("The database server has gone away."), QStringLiteral("MariaDB")};
    m_session.reset();
    return m_wanted && !m_grouped && reconnect(why);
}

std::unique_ptr<ResultRows> Connection::sendUntilTaken(const QString &statement, Fault *fault)
{
    for (int tried = 1;; ++tried) {
        m_statementLost = true;
        if (!ensureAlive(fault))
            return nullptr;
        m_statementLost = false;
        if (auto rows = m_session->send(statement))
            return rows;
        *fault = m_session->fault();
        m_statementLost = isLoss(*fault);
        if (m_statementLost)
            m_session.reset();
        if (m_grouped || tried == tries || !canBeSentAgain(*fault, statement))
            return nullptr;
        QThread::msleep(tried); // lets the other one get on
    }
}

std::unique_ptr<ResultRows> Connection::run(const SqlText &statement)
{
    if (!statement.fault().isEmpty()) {
        m_statementLost = false;
        fail({FaultNumber::UnsafeText, statement.fault(), QStringLiteral("FBT")}, statement.text());
        return nullptr;
    }
    if (m_observer)
        m_observer(statement.text());
    Fault fault;
    auto rows = sendUntilTaken(statement.text(), &fault);
    if (rows)
        return rows;
    m_commitUnknown = m_grouped && isLoss(fault) && fault.number != serverGone && statement.text() == u"Commit";
    if (m_commitUnknown)
        fault.description += QStringLiteral(" It is not known whether the change was saved.");
    m_groupBroken = m_groupBroken || (m_grouped && isRefusedLock(fault));
    fail(std::move(fault), statement.text());
    return nullptr;
}

void Connection::fail(Fault fault, const QString &statement)
{
    fault.doing = m_commitUnknown ? Doing::Unknown : doingOf(statement);
    report(fault);
}

bool Connection::Execute(const SqlText &statement)
{
    const std::unique_ptr<ResultRows> done = run(statement);
    if (done)
        m_affected = std::max<qint64>(m_session->affectedRows(), 0);
    return done != nullptr;
}

bool Connection::beginGroup()
{
    m_grouped = false; // a lost group is over, and the connection may be opened again
    m_groupBroken = m_commitUnknown = false;
    m_grouped = Execute("Start Transaction");
    return m_grouped;
}

bool Connection::commitGroup()
{
    const bool stays = m_grouped && !groupLost() && Execute("Commit");
    if (stays)
        m_grouped = false;
    else
        abandonGroup();
    return stays;
}

void Connection::abandonGroup()
{
    if (m_grouped && m_session)
        Execute("Rollback");
    m_grouped = false;
}

void Connection::reportDone() const
{
    if (m_doneHandler)
        m_doneHandler();
}

void Connection::report(const Fault &fault) const
{
    if (m_handler)
        m_handler(fault);
}
