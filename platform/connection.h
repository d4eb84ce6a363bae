#pragma once

#include "platform/fault.h"
#include "platform/offer.h"
#include "platform/sqltext.h"

#include <QString>

#include <functional>
#include <memory>

class ResultRows;
class Session;

/// Where a database lies. Either a socket or a host with a port.
struct ServerAddress
{
    /// Encryption: whenever the server offers it, only with it, or never. A socket of this machine needs none.
    enum class Tls { Preferred, Required, Off };

    QString host;
    int port = 0; ///< 0: the server's usual port
    QString user;
    QString password;
    QString socket;
    QString schema; ///< empty: no schema is chosen at connect
    Tls tls = Tls::Preferred;
    QString
        ca; ///< file with the authority that must have signed the server's certificate; empty: any certificate will do
};

/// The one shared database connection. Statements never throw: a fault goes to the handler and costs that statement only.
///
/// A lost server is noticed before a statement is sent, and the connection is opened again with the same session
/// settings. A statement is sent again only when nothing of it can have been carried out: the server never got it, it
/// refused it (a deadlock, a wait for a lock), or it only reads. Of a change that was lost under way nobody knows.
class FBT_OFFERED Connection
{
public:
    enum StateValue { Closed = 0, Open = 1 };

    Connection();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the connection and makes the session settings (empty `sql_mode`, `utf8mb4`, InnoDB for new tables, committed
    /// rows of others are seen at once). On failure `why` tells.
    bool open(const ServerAddress &address, Fault *why = nullptr);
    void close();

    [[nodiscard]] int State() const { return m_wanted ? Open : Closed; }
    [[nodiscard]] const ServerAddress &address() const { return m_address; }

    /// Is called when a lost server cannot be reached, before the last try: it may start the server again.
    void setReviver(std::function<bool()> reviver) { m_reviver = std::move(reviver); }

    /// Carries out one statement. False after a fault, which the handler has received.
    bool Execute(const SqlText &statement);

    /// The last statement or query was lost with the connection: it was not sent, or nobody knows whether it was carried
    /// out. False after one that the server carried out or refused.
    [[nodiscard]] bool lastStatementLost() const { return m_statementLost; }

    /// Begins and ends a group of statements of which all stay or none. While a group is open a lost connection is not
    /// opened again: the rest of the group would stay without its beginning. True when the server took it. `commitGroup`
    /// ends the group in any case.
    bool beginGroup();
    bool commitGroup();
    /// Ends the open group so that nothing of it stays.
    void abandonGroup();
    /// The last `commitGroup` was lost under way: nobody knows whether the group stays.
    [[nodiscard]] bool commitUnknown() const { return m_commitUnknown; }
    /// The connection was lost in the open group, or the server ended the group by a deadlock or a wait for a lock that
    /// took too long: nothing of it can stay.
    [[nodiscard]] bool groupLost() const { return m_grouped && (m_groupBroken || !m_session); }

    /// Number of rows that the last successful Execute found to change, whether or not they held the same before.
    [[nodiscard]] qint64 affectedRows() const { return m_affected; }

    /// Who receives the faults of this connection and of the recordsets opened on it.
    void setFaultHandler(FaultHandler handler) { m_handler = std::move(handler); }
    [[nodiscard]] const FaultHandler &faultHandler() const { return m_handler; }
    void report(const Fault &fault) const;

    /// Who is told that a change of the user's rows was carried out.
    void setDoneHandler(std::function<void()> handler) { m_doneHandler = std::move(handler); }
    void reportDone() const;

    /// Sees the text of every statement before it is sent.
    void setObserver(std::function<void(const QString &)> observer) { m_observer = std::move(observer); }

private:
    friend class Recordset;

    /// Sends a statement, opening a lost connection first. Null after a reported fault.
    std::unique_ptr<ResultRows> run(const SqlText &statement);
    std::unique_ptr<ResultRows> sendUntilTaken(const QString &statement, Fault *fault);
    bool ensureAlive(Fault *why);
    bool connectNow(Fault *why);
    bool reconnect(Fault *why);
    bool sessionSettings();
    void fail(Fault fault, const QString &statement);

    std::unique_ptr<Session> m_session; // null while there is none
    ServerAddress m_address;
    bool m_wanted = false;
    bool m_statementLost = false;
    bool m_grouped = false;
    bool m_groupBroken = false; // by the server
    bool m_commitUnknown = false;
    qint64 m_affected = 0;
    FaultHandler m_handler;
    std::function<void()> m_doneHandler;
    std::function<bool()> m_reviver;
    std::function<void(const QString &)> m_observer;
};
