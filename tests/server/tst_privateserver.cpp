#include "platform/recordset.h"
#include "server/privateserver.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <csignal>

namespace {

const QString holdServer = QStringLiteral("--hold-server");
const QString holdLock = QStringLiteral("--hold-lock");

qint64 pidIn(const QString &folder)
{
    QFile file(folder + QStringLiteral("/server.pid"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
}

/// This program once more, holding a data folder until it is killed.
class OtherProgram
{
public:
    OtherProgram(const QString &what, const QString &folder)
    {
        m_process.start(QCoreApplication::applicationFilePath(), {what, folder});
        m_ready = m_process.waitForStarted() && m_process.waitForReadyRead(60'000);
    }
    ~OtherProgram() { kill(); }
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

    [[nodiscard]] bool ready() const { return m_ready; }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    bool m_ready = false;
};

/// The other program's part.
int hold(const QString &what, const QString &folder)
{
    PrivateServer server(folder, PrivateServer::Durability::Relaxed);
    QLockFile lock(folder + QStringLiteral("/pelkfbt.lock"));
    QString why;
    const bool held = what == holdServer ? server.start(&why) : lock.tryLock(0);
    QTextStream(stdout) << (held ? QStringLiteral("ready") : why) << Qt::endl;
    return QCoreApplication::exec();
}

} // namespace

class TestPrivateServer : public QObject
{
    Q_OBJECT

private slots:
    void firstStartMakesTheFolderAndStopEndsInOrder()
    {
        QTemporaryDir scratch;
        const QString folder = scratch.filePath(QStringLiteral("new/db"));
        PrivateServer server(folder);
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
        QVERIFY(server.ownsFolder());
        write(server, QStringLiteral("Create Database kept"));
        QVERIFY(pidIn(folder) > 0);
        server.stop();
        QCOMPARE(pidIn(folder), 0); // the server itself takes the file away, at the end of an orderly stop
        QVERIFY(!QFile::exists(server.address().socket));
        QVERIFY(server.start(&m_why));
        QVERIFY(hasSchema(server, QStringLiteral("kept")));
    }

    void aConnectionClosedAMomentAgoDoesNotKeepTheServer()
    {
        QTemporaryDir scratch;
        PrivateServer server(scratch.path(), PrivateServer::Durability::Relaxed);
        for (int round = 0; round < 3; ++round) {
            QVERIFY2(server.start(&m_why), qPrintable(m_why));
            std::array<Connection, 8> connections;
            for (Connection &connection : connections)
                QVERIFY(connection.open(server.address()));
            for (Connection &connection : connections)
                connection.close();
            server.stop();
            QCOMPARE(pidIn(scratch.path()), 0);
        }
    }

    void onlyTheUserMayEnter()
    {
        QTemporaryDir scratch;
        PrivateServer server(scratch.path(), PrivateServer::Durability::Relaxed);
        QVERIFY(server.start(&m_why));
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                            QFile::WriteOther | QFile::ExeOther;
        QCOMPARE(QFileInfo(QFileInfo(server.address().socket).path()).permissions() & others, QFile::Permissions());
        Connection connection;
        QVERIFY(connection.open(server.address()));
        QCOMPARE(FirstField(&connection, QStringLiteral("Select count(*) from mysql.global_priv Where User not in "
                                                        "('mariadb.sys',substring_index(user(),'@',1))"))
                     .num(),
                 0.0);
        QCOMPARE(FirstField(&connection, QStringLiteral("Select @@skip_networking")).num(), 1.0);
    }

    void aSecondProgramJoinsAndTheLastOneStopsTheServer()
    {
        QTemporaryDir scratch;
        PrivateServer first(scratch.path(), PrivateServer::Durability::Relaxed);
        PrivateServer second(scratch.path(), PrivateServer::Durability::Relaxed);
        QVERIFY(first.start(&m_why));
        QVERIFY2(second.start(&m_why), qPrintable(m_why));
        QVERIFY(!second.ownsFolder());
        {
            Connection working;
            QVERIFY(working.open(second.address()));
            first.stop();
            QVERIFY2(working.Execute(QStringLiteral("Select 1")), "the first one took the server along");
        }
        second.stop();
        QCOMPARE(pidIn(scratch.path()), 0);
    }

    void theServerOfAKilledProgramIsTakenOver()
    {
        QTemporaryDir scratch;
        OtherProgram other(holdServer, scratch.path());
        QVERIFY(other.ready());
        const qint64 pid = pidIn(scratch.path());
        other.kill();
        QVERIFY(::kill(static_cast<pid_t>(pid), 0) == 0);
        PrivateServer server(scratch.path(), PrivateServer::Durability::Relaxed);
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
        QVERIFY(server.ownsFolder());
        QCOMPARE(pidIn(scratch.path()), pid);
        server.stop();
        QCOMPARE(pidIn(scratch.path()), 0);
    }

    void aCommittedRowSurvivesTheKilledServer()
    {
        QTemporaryDir scratch;
        PrivateServer server(scratch.path());
        QVERIFY(server.start(&m_why));
        write(server, QStringLiteral("Create Database kept"));
        write(server, QStringLiteral("Create Table kept.t (a Int)"));
        write(server, QStringLiteral("Insert into kept.t Values (7)"));
        server.kill();
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
        Connection connection;
        QVERIFY(connection.open(server.address()));
        QCOMPARE(FirstField(&connection, QStringLiteral("Select a from kept.t")).num(), 7.0);
    }

    void aFolderHeldWithoutAServerIsInUse()
    {
        QTemporaryDir scratch;
        OtherProgram other(holdLock, scratch.path());
        QVERIFY(other.ready());
        PrivateServer server(scratch.path());
        QVERIFY(!server.start(&m_why));
        QCOMPARE(m_why, QStringLiteral("The data folder %1 is in use by another program.").arg(scratch.path()));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("folder"); // %1 stands for a scratch folder that holds the file "plain"
        QTest::addColumn<QStringList>("programs");
        QTest::addColumn<QString>("why");
        const QStringList usual = PrivateServer::defaultProgramFolders();
        QTest::newRow("a file") << "%1/plain" << usual << "The data folder %1/plain is a file.";
        QTest::newRow("below a file") << "%1/plain/db" << usual << "The data folder %1/plain/db cannot be made.";
        QTest::newRow("where nobody may write")
            << "/proc/pelkfbt" << usual << "The data folder /proc/pelkfbt cannot be made.";
        QTest::newRow("no installer")
            << "%1/db" << QStringList{QStringLiteral("/nowhere")}
            << "The program mariadb-install-db was not found. Please install the package mariadb-server-core.";
    }

    void refusals()
    {
        QFETCH(QString, folder);
        QFETCH(QStringList, programs);
        QFETCH(QString, why);
        QTemporaryDir scratch;
        QFile plain(scratch.filePath(QStringLiteral("plain")));
        QVERIFY(plain.open(QIODevice::WriteOnly));
        const auto placed = [&](const QString &text) {
            return QString(text).replace(QStringLiteral("%1"), scratch.path());
        };
        PrivateServer server(placed(folder), PrivateServer::Durability::Full, programs);
        QVERIFY(!server.start(&m_why));
        QCOMPARE(m_why, placed(why));
    }

    void aMissingServerProgramIsNamed()
    {
        QTemporaryDir scratch;
        QVERIFY(QDir(scratch.path()).mkpath(QStringLiteral("db/data")));
        PrivateServer server(scratch.filePath(QStringLiteral("db")), PrivateServer::Durability::Full, {scratch.path()});
        QVERIFY(!server.start(&m_why));
        QCOMPARE(m_why,
                 QStringLiteral("The program mariadbd was not found. Please install the package mariadb-server-core."));
    }

    void dataThatIsNoneIsReported()
    {
        QTemporaryDir scratch;
        QVERIFY(QDir(scratch.path()).mkpath(QStringLiteral("data")));
        PrivateServer server(scratch.path());
        QVERIFY(!server.start(&m_why));
        QVERIFY2(m_why.startsWith(QStringLiteral("The database in %1 could not be opened: ").arg(scratch.path())),
                 qPrintable(m_why));
        QVERIFY(!server.ownsFolder());
    }

private:
    static void write(const PrivateServer &server, const QString &statement)
    {
        Connection connection;
        QVERIFY(connection.open(server.address()));
        QVERIFY(connection.Execute(statement));
    }

    static bool hasSchema(const PrivateServer &server, const QString &name)
    {
        Connection connection;
        return connection.open(server.address()) &&
               HasRows(&connection, Sql("Select * from information_schema.SCHEMATA Where SCHEMA_NAME='", name, "'"));
    }

    QString m_why;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && (arguments[1] == holdServer || arguments[1] == holdLock))
        return hold(arguments[1], arguments[2]);
    TestPrivateServer test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_privateserver.moc"
