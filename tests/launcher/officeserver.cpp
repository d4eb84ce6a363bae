#include "officeserver.h"

#include "platform/recordset.h"
#include "server/privateserver.h"

#include <QDeadlineTimer>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTest>
#include <QThread>

#include <csignal>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int patienceMs = 60'000;

QString program(const QString &name)
{
    return QStandardPaths::findExecutable(name, PrivateServer::defaultProgramFolders());
}

QString userOption()
{
    const passwd *entry = getpwuid(geteuid());
    return QStringLiteral("--user=") + QString::fromLocal8Bit(entry == nullptr ? "mysql" : entry->pw_name);
}

int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

} // namespace

OfficeServer::OfficeServer(Encrypts encrypts)
    : m_encrypts(encrypts)
{
    m_address.host = QStringLiteral("127.0.0.1");
    m_address.port = freePort();
    m_address.user = QStringLiteral("fbt");
    m_address.password = QStringLiteral("secret");
    install();
    launch();
    makeAccount();
}

OfficeServer::~OfficeServer()
{
    stop();
}

void OfficeServer::restart()
{
    stop();
    launch();
}

void OfficeServer::stop()
{
    m_administrator.Execute(QStringLiteral("SHUTDOWN"));
    m_administrator.close();
    m_process.waitForFinished(patienceMs);
}

void OfficeServer::install()
{
    QProcess installer;
    installer.start(program(QStringLiteral("mariadb-install-db")),
                    {QStringLiteral("--no-defaults"), QStringLiteral("--datadir=") + m_folder.filePath("data"),
                     QStringLiteral("--auth-root-authentication-method=normal"), QStringLiteral("--skip-test-db"),
                     QStringLiteral("--force"), QStringLiteral("--innodb-log-file-size=16M"), userOption()});
    if (!installer.waitForFinished(patienceMs) || installer.exitCode() != 0)
        qFatal("The office server cannot be set up: %s", installer.readAllStandardError().constData());
}

void OfficeServer::launch()
{
    const QString socket = m_folder.filePath("db.sock");
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); }); // a broken test leaves none behind
    QStringList arguments{QStringLiteral("--no-defaults"),
                          QStringLiteral("--datadir=") + m_folder.filePath("data"),
                          QStringLiteral("--socket=") + socket,
                          QStringLiteral("--bind-address=127.0.0.1"),
                          QStringLiteral("--port=%1").arg(m_address.port),
                          QStringLiteral("--lower-case-table-names=0"),
                          QStringLiteral("--innodb-log-file-size=16M"),
                          QStringLiteral("--innodb-buffer-pool-size=32M"),
                          QStringLiteral("--innodb-flush-log-at-trx-commit=0"),
                          userOption()};
    if (m_encrypts == Encrypts::Yes)
        arguments << QStringLiteral("--ssl-cert=") + QFINDTESTDATA("office.crt")
                  << QStringLiteral("--ssl-key=") + QFINDTESTDATA("office.key");
    m_process.start(program(QStringLiteral("mariadbd")), arguments);
    ServerAddress root;
    root.socket = socket;
    root.user = QStringLiteral("root");
    const QDeadlineTimer deadline(patienceMs);
    while (!m_administrator.open(root)) {
        if (deadline.hasExpired())
            qFatal("The office server does not answer: %s", m_process.readAllStandardError().constData());
        QThread::msleep(20);
    }
}

void OfficeServer::makeAccount()
{
    for (const auto *statement :
         {"CREATE USER 'fbt'@'%' IDENTIFIED BY 'secret'",
          "GRANT SELECT, INSERT, UPDATE, DELETE, CREATE, ALTER, DROP, INDEX ON office.* TO 'fbt'@'%'",
          "GRANT RELOAD ON *.* TO 'fbt'@'%'"})
        m_administrator.Execute(QString::fromLatin1(statement));
}

QString OfficeServer::ask(const QString &query)
{
    return FirstField(&m_administrator, query).text();
}
