#pragma once

#include "platform/recordset.h"
#include "server/privateserver.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <csignal>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

/// A server as an office has it: on the network (of this machine), with accounts and passwords, set up by its
/// administrator, telling table names apart by case.
class OfficeServer
{
public:
    /// The account that the program gets has the rights that the README names, on the schema `office`.
    /// @param encrypts with the certificate of `tests/launcher`
    explicit OfficeServer(bool encrypts)
        : m_encrypts(encrypts)
    {
        QTcpServer probe; // for a free port
        probe.listen(QHostAddress::LocalHost);
        m_address.port = probe.serverPort();
        probe.close();
        m_address.host = "127.0.0.1";
        m_address.user = "fbt";
        m_address.password = "secret";
        QProcess installer;
        installer.start(program("mariadb-install-db"),
                        usual({"--auth-root-authentication-method=normal", "--skip-test-db", "--force"}));
        if (!installer.waitForFinished(patienceMs) || installer.exitCode() != 0)
            qFatal("The office server cannot be set up: %s", installer.readAllStandardError().constData());
        launch();
        m_administrator.Execute("CREATE USER 'fbt'@'%' IDENTIFIED BY 'secret'");
        m_administrator.Execute(
            "GRANT SELECT, INSERT, UPDATE, DELETE, CREATE, ALTER, DROP, INDEX ON office.* TO 'fbt'@'%'");
        m_administrator.Execute("GRANT RELOAD ON *.* TO 'fbt'@'%'");
    }
    ~OfficeServer() { stop(); }
    OfficeServer(const OfficeServer &) = delete;
    OfficeServer &operator=(const OfficeServer &) = delete;

    /// Host, port, user and password of the program's account.
    [[nodiscard]] ServerAddress address() const { return m_address; }

    /// Stops it in order and starts it again.
    void restart()
    {
        stop();
        launch();
    }

    /// First field of a query, asked as the administrator.
    QString ask(const QString &query) { return FirstField(&m_administrator, query).text(); }

private:
    static constexpr int patienceMs = 60'000;

    static QString program(const QString &name)
    {
        return QStandardPaths::findExecutable(name, PrivateServer::defaultProgramFolders());
    }
    [[nodiscard]] QStringList usual(const QStringList &more) const
    {
        const passwd *entry = getpwuid(geteuid());
        return QStringList{"--no-defaults", "--datadir=" + m_folder.filePath("data"), "--innodb-log-file-size=16M",
                           "--user=" + QString::fromLocal8Bit(entry == nullptr ? "mysql" : entry->pw_name)} +
               more;
    }
    void launch()
    {
        ServerAddress root;
        root.socket = m_folder.filePath("db.sock");
        root.user = "root";
        QStringList arguments = usual({"--socket=" + root.socket, "--bind-address=127.0.0.1",
                                       QString("--port=%1").arg(m_address.port), "--lower-case-table-names=0",
                                       "--innodb-buffer-pool-size=32M", "--innodb-flush-log-at-trx-commit=0"});
        if (m_encrypts)
            arguments << "--ssl-cert=" + QFINDTESTDATA("office.crt") << "--ssl-key=" + QFINDTESTDATA("office.key");
        m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); }); // a broken test leaves none behind
        m_process.start(program("mariadbd"), arguments);
        const QDeadlineTimer deadline(patienceMs);
        while (!m_administrator.open(root)) {
            if (deadline.hasExpired())
                qFatal("The office server does not answer: %s", m_process.readAllStandardError().constData());
            QThread::msleep(20);
        }
    }
    void stop()
    {
        m_administrator.Execute("SHUTDOWN");
        m_administrator.close();
        m_process.waitForFinished(patienceMs);
    }

    bool m_encrypts;
    QTemporaryDir m_folder;
    QProcess m_process;
    ServerAddress m_address;
    Connection m_administrator;
};
