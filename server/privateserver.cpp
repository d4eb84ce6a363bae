#include "server/privateserver.h"

#include "platform/ownfiles.h"
#include "server/folderlock.h"
#include "server/keeper.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryFile>
#include <QThread>

#include <csignal>
#include <pwd.h>
#include <unistd.h>

namespace {

constexpr int patienceMs = 60'000; // a server that recovers after a power cut takes its time
constexpr int pollMs = 20;
constexpr auto ownFolder = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

QString userName()
{
    const passwd *entry = getpwuid(geteuid());
    return entry == nullptr ? QString::number(geteuid()) : QString::fromLocal8Bit(entry->pw_name);
}

bool processLives(qint64 pid)
{
    if (pid <= 0 || ::kill(static_cast<pid_t>(pid), 0) != 0)
        return false;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return true; // no such listing on this system: the signal's word counts
    const QByteArray line = stat.readAll();
    const qsizetype name = line.lastIndexOf(')');
    if (name < 0 || line.mid(name + 2, 1) != "Z")
        return true;
    // The first thread of a killed program can be gone before the others, which still hold its connections.
    constexpr int onlyTheFirst = 3; // with the entries of the folder itself and of the one above
    return QDir(QStringLiteral("/proc/%1/task").arg(pid)).entryList().size() > onlyTheFirst;
}

template<typename Condition>
bool waitUntil(Condition condition, int milliseconds = patienceMs)
{
    QDeadlineTimer deadline(milliseconds);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(pollMs);
    }
    return true;
}

QString lastErrorLine(const QString &path)
{
    QFile file(path);
    QString last;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return last;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.contains(u"[ERROR]") && !line.contains(u"Aborting"))
            last = line.mid(line.indexOf(u"[ERROR]") + 8);
    }
    return last;
}

} // namespace

QStringList PrivateServer::defaultProgramFolders()
{
    return {QStringLiteral("/usr/sbin"), QStringLiteral("/usr/bin"), QStringLiteral("/usr/libexec"),
            QStringLiteral("/usr/local/sbin"), QStringLiteral("/usr/local/bin")};
}

QString PrivateServer::lockFile(const QString &folder)
{
    return folder + QStringLiteral("/users.lock");
}

bool PrivateServer::knows(const QString &folder)
{
    return QFileInfo::exists(lockFile(folder));
}

bool PrivateServer::inUse(const QString &folder)
{
    const PrivateServer server(folder);
    return !server.m_use->take(FolderLock::Kind::Sole, 0) || processLives(server.serverPid());
}

PrivateServer::PrivateServer(const QString &folder, Durability durability, QStringList programFolders)
    : m_folder(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()))
    , m_durability(durability)
    , m_programFolders(std::move(programFolders))
    , m_use(std::make_unique<FolderLock>(lockFile(m_folder)))
{
    chooseSocketFolder();
}

PrivateServer::~PrivateServer()
{
    stop();
}

QString PrivateServer::dataFolder() const
{
    return m_folder + QStringLiteral("/data");
}

QString PrivateServer::pidFile() const
{
    return m_folder + QStringLiteral("/server.pid");
}

QString PrivateServer::logFile() const
{
    return m_folder + QStringLiteral("/server.log");
}

ServerAddress PrivateServer::address() const
{
    ServerAddress address;
    address.socket = m_socketFolder + QStringLiteral("/db.sock");
    address.user = userName();
    return address;
}

QString PrivateServer::socketNote() const
{
    return m_folder + QStringLiteral("/server.socket");
}

bool PrivateServer::usableSocketFolder(const QString &folder) const
{
    constexpr int longest = 90; // of about a hundred characters that the path of a socket may hold
    const QFileInfo info(folder);
    // Another user may have made a folder of that name first: then its owner could listen in our place.
    const bool ours = info.isDir() && !info.isSymLink() && info.ownerId() == geteuid();
    return folder.toLocal8Bit().size() <= longest && (ours || !info.exists());
}

/// The user's own folder for such things, else the temporary folder, else the data folder.
void PrivateServer::chooseSocketFolder()
{
    const QByteArray mark = QCryptographicHash::hash(m_folder.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    const QString name = QStringLiteral("/pelkfbt-%1-%2").arg(geteuid()).arg(QString::fromLatin1(mark));
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    QStringList places{QDir::tempPath() + name, m_folder + QStringLiteral("/run")};
    if (QFileInfo(runtime).isDir() && QFileInfo(runtime).ownerId() == geteuid())
        places.prepend(runtime + name);
    m_socketFolder = places.first();
    for (const QString &place : places) {
        if (usableSocketFolder(place)) {
            m_socketFolder = place;
            return;
        }
    }
}

bool PrivateServer::start(QString *why)
{
    if (!prepareFolder(why))
        return false;
    // While a server is on its way down its keeper has the lock.
    if (!m_use->take(FolderLock::Kind::Shared, patienceMs)) {
        *why = QStringLiteral("The data folder %1 is in use by another program.").arg(m_folder);
        return false;
    }
    m_running = startOrJoin(why);
    if (!m_running)
        m_use->release();
    return m_running;
}

bool PrivateServer::startOrJoin(QString *why)
{
    FolderLock turn(m_folder + QStringLiteral("/start.lock"));
    if (!turn.take(FolderLock::Kind::Sole, patienceMs)) {
        *why = QStringLiteral("The data folder %1 is in use by another program.").arg(m_folder);
        return false;
    }
    // A server that runs may have its socket elsewhere: its program was started in another environment.
    QFile note(socketNote());
    const QString noted = note.open(QIODevice::ReadOnly) ? QString::fromUtf8(note.readAll()) : QString();
    const QString own = m_socketFolder;
    if (!noted.isEmpty() && usableSocketFolder(noted))
        m_socketFolder = noted;
    if (!answers()) // the note of a killed one may name a place that is no longer to be had
        m_socketFolder = own;
    if (!prepareSocketFolder(why))
        return false;
    dropOrphan();
    return answers() || (createData(why) && launch(why));
}

bool PrivateServer::revive()
{
    QString why;
    return m_running && prepareFolder(&why) && startOrJoin(&why);
}

/// A server whose data folder was removed under it still answers, but holds nothing that would stay.
void PrivateServer::dropOrphan()
{
    if (QFileInfo::exists(dataFolder()) || !answers())
        return;
    Connection last;
    if (last.open(address()))
        last.Execute(QStringLiteral("SHUTDOWN"));
    last.close();
    waitUntil([this] { return !answers(); });
}

bool PrivateServer::prepareFolder(QString *why)
{
    why->clear();
    const QFileInfo info(m_folder);
    if (info.exists() && !info.isDir())
        *why = QStringLiteral("The data folder %1 is a file.").arg(m_folder);
    else if (!QDir().mkpath(m_folder))
        *why = QStringLiteral("The data folder %1 cannot be made.").arg(m_folder);
    else if (!QFileInfo(m_folder).isWritable())
        *why = QStringLiteral("The data folder %1 cannot be written.").arg(m_folder);
    else
        KeepPrivate(m_folder);
    return why->isEmpty();
}

bool PrivateServer::prepareSocketFolder(QString *why)
{
    const bool ours = usableSocketFolder(m_socketFolder);
    QFile note(socketNote());
    if (!ours || !QDir().mkpath(m_socketFolder) || !QFile::setPermissions(m_socketFolder, ownFolder) ||
        !note.open(QIODevice::WriteOnly) || note.write(m_socketFolder.toUtf8()) < 0)
        *why = QStringLiteral("The folder %1 for the database socket cannot be used.").arg(m_socketFolder);
    return why->isEmpty();
}

QString PrivateServer::program(const QString &name) const
{
    return QStandardPaths::findExecutable(name, m_programFolders);
}

bool PrivateServer::createData(QString *why)
{
    if (QFileInfo::exists(dataFolder()))
        return true;
    const QString installer = program(QStringLiteral("mariadb-install-db"));
    if (installer.isEmpty()) {
        *why = QStringLiteral(
            "The program mariadb-install-db was not found. Please install the package mariadb-server-core.");
        return false;
    }
    // Made under another name and renamed when it is whole: a start that was cut short leaves nothing behind.
    const QString target = dataFolder() + QStringLiteral(".new");
    QDir(target).removeRecursively();
    if (!runInstaller(installer, target, why)) {
        QDir(target).removeRecursively();
        return false;
    }
    if (!QDir().rename(target, dataFolder()))
        *why = failureReason(QStringLiteral("made"));
    return why->isEmpty();
}

bool PrivateServer::runInstaller(const QString &installer, const QString &target, QString *why)
{
    QTemporaryFile accounts(m_socketFolder + QStringLiteral("/accounts-XXXXXX.sql"));
    const bool ready =
        accounts.open() &&
        accounts.write(QStringLiteral("DELETE FROM mysql.global_priv WHERE User NOT IN ('%1','mariadb.sys');\n")
                           .arg(userName())
                           .toUtf8()) > 0 &&
        accounts.flush();
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(installer,
                  {QStringLiteral("--no-defaults"), QStringLiteral("--datadir=") + target,
                   QStringLiteral("--auth-root-authentication-method=socket"),
                   QStringLiteral("--auth-root-socket-user=") + userName(), QStringLiteral("--user=") + userName(),
                   QStringLiteral("--skip-test-db"), QStringLiteral("--skip-name-resolve"), QStringLiteral("--force"),
                   QStringLiteral("--lower-case-table-names=1"), QStringLiteral("--innodb-log-file-size=16M"),
                   QStringLiteral("--tmpdir=") + m_socketFolder,
                   QStringLiteral("--extra-file=") + accounts.fileName()});
    if (!ready || !process.waitForFinished(patienceMs) || process.exitCode() != 0)
        *why = failureReason(QStringLiteral("made"));
    return why->isEmpty();
}

bool PrivateServer::launch(QString *why)
{
    const QString server = program(QStringLiteral("mariadbd"));
    if (server.isEmpty()) {
        *why = QStringLiteral("The program mariadbd was not found. Please install the package mariadb-server-core.");
        return false;
    }
    // A killed program's server may still be on its way down; two servers must not meet on one folder.
    // One that was told to end while it recovered may never do so; its log loses nothing that was saved.
    if (!waitUntil([this] { return !processLives(serverPid()) || answers(); }))
        kill();
    if (answers())
        return true;
    QFile::remove(logFile());
    QStringList arguments{
        QStringLiteral("--no-defaults"), QStringLiteral("--datadir=") + dataFolder(),
        QStringLiteral("--socket=") + address().socket, QStringLiteral("--pid-file=") + pidFile(),
        QStringLiteral("--log-error=") + logFile(), QStringLiteral("--user=") + userName(),
        // Temporary tables of servers that start at the same moment bear the same names.
        QStringLiteral("--tmpdir=") + m_socketFolder, QStringLiteral("--skip-networking"),
        QStringLiteral("--lower-case-table-names=1"), QStringLiteral("--character-set-server=utf8mb4"),
        QStringLiteral("--collation-server=utf8mb4_general_ci"), QStringLiteral("--innodb-log-file-size=16M"),
        QStringLiteral("--innodb-buffer-pool-size=64M")};
    if (m_durability == Durability::Full)
        arguments << QStringLiteral("--innodb-flush-log-at-trx-commit=1");
    else
        arguments << QStringLiteral("--innodb-flush-log-at-trx-commit=0")
                  << QStringLiteral("--skip-innodb-doublewrite");
    const qint64 pid = StartKept(server, arguments, lockFile(m_folder), {socketNote(), m_socketFolder});
    if (pid == 0) {
        *why = QStringLiteral("The program %1 could not be started.").arg(server);
        return false;
    }
    const bool up = waitUntil([this, pid] { return answers() || !processLives(pid); }) && answers();
    if (!up)
        *why = failureReason(QStringLiteral("opened"));
    return up;
}

QString PrivateServer::failureReason(const QString &action) const
{
    constexpr qint64 needed = 64LL * 1024 * 1024;
    const QStorageInfo disk(m_folder);
    if (disk.isValid() && disk.bytesAvailable() < needed)
        return QStringLiteral("The disk that holds the data folder %1 is full.").arg(m_folder);
    const QString detail = lastErrorLine(logFile());
    const QString sentence = QStringLiteral("The database in %1 could not be %2").arg(m_folder, action);
    return detail.isEmpty() ? sentence + u'.' : sentence + QStringLiteral(": ") + detail;
}

bool PrivateServer::answers() const
{
    if (!QFileInfo::exists(address().socket))
        return false;
    Connection probe;
    return probe.open(address());
}

qint64 PrivateServer::serverPid() const
{
    QFile file(pidFile());
    const qint64 pid = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    // A file that a crash left behind may name a process of somebody else by now.
    QFile command(QStringLiteral("/proc/%1/cmdline").arg(pid));
    const bool another = command.open(QIODevice::ReadOnly) && !command.readAll().contains(dataFolder().toLocal8Bit());
    return another ? 0 : pid;
}

void PrivateServer::stop()
{
    if (!m_running)
        return;
    m_running = false;
    // While others use the server the lock is not to be had.
    if (m_use->take(FolderLock::Kind::Sole, 0)) {
        const qint64 pid = serverPid();
        if (pid > 0)
            ::kill(static_cast<pid_t>(pid), SIGTERM);
        waitUntil([pid] { return !processLives(pid); });
        QFile::remove(socketNote());
        QDir(m_socketFolder).removeRecursively();
    }
    m_use->release();
}

void PrivateServer::kill()
{
    const qint64 pid = serverPid();
    if (pid > 0)
        ::kill(static_cast<pid_t>(pid), SIGKILL);
    waitUntil([pid] { return !processLives(pid); });
}
