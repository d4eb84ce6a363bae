#include "platform/recordset.h"
#include "server/privateserver.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <csignal>

namespace {

const QString holdServer = QStringLiteral("--hold-server");

qint64 pidIn(const QString &folder)
{
    QFile file(folder + QStringLiteral("/server.pid"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
}

/// This program once more, holding a data folder until it is killed.
class OtherProgram
{
public:
    enum class Wait { Now, Later };
    explicit OtherProgram(const QString &folder, Wait wait = Wait::Now)
    {
        m_process.start(QCoreApplication::applicationFilePath(), {holdServer, folder});
        if (wait == Wait::Now)
            m_process.waitForReadyRead(60'000);
    }
    ~OtherProgram() { kill(); }
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

    [[nodiscard]] bool ready()
    {
        return (m_process.bytesAvailable() > 0 || m_process.waitForReadyRead(60'000)) &&
               m_process.peek(5) == QByteArray("ready");
    }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

/// The other program's part.
int hold(const QString &folder)
{
    PrivateServer server(folder, PrivateServer::Durability::Relaxed);
    QString why;
    const bool held = server.start(&why);
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
        write(server, QStringLiteral("Create Database kept"));
        QVERIFY(pidIn(folder) > 0);
        server.stop();
        QCOMPARE(pidIn(folder), 0); // the server itself takes the file away, at the end of an orderly stop
        QVERIFY(!QFile::exists(server.address().socket));
        QVERIFY(server.start(&m_why));
        QVERIFY(hasSchema(server, QStringLiteral("kept")));
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
        {
            Connection working;
            QVERIFY(working.open(second.address()));
            first.stop();
            QVERIFY2(working.Execute(QStringLiteral("Select 1")), "the first one took the server along");
        }
        second.stop();
        QCOMPARE(pidIn(scratch.path()), 0);
    }

    void theServerEndsWithTheLastProgramEvenAKilledOne()
    {
        QTemporaryDir scratch;
        auto first = std::make_unique<OtherProgram>(scratch.path());
        OtherProgram second(scratch.path());
        QVERIFY(first->ready() && second.ready());
        const qint64 pid = pidIn(scratch.path());
        first->kill();
        QTest::qWait(1000);
        QVERIFY2(::kill(static_cast<pid_t>(pid), 0) == 0, "it took the server from under the other program");
        second.kill();
        QTRY_COMPARE_WITH_TIMEOUT(pidIn(scratch.path()), 0, 10'000);
        PrivateServer server(scratch.path(), PrivateServer::Durability::Relaxed);
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
    }

    void programsThatStartAtOnceShareOneServer()
    {
        for (int round = 0; round < 3; ++round) {
            QTemporaryDir scratch;
            OtherProgram one(scratch.path(), OtherProgram::Wait::Later);
            OtherProgram other(scratch.path(), OtherProgram::Wait::Later);
            QVERIFY(one.ready() && other.ready());
        }
    }

    void aKilledServerIsRevivedByTheNextStatement()
    {
        QTemporaryDir scratch;
        PrivateServer server(scratch.path());
        QVERIFY(server.start(&m_why));
        Connection connection;
        QVERIFY(connection.open(server.address()));
        connection.setReviver([&] { return server.revive(); });
        QVERIFY(connection.Execute("Create Database kept"));
        server.kill();
        QElapsedTimer since;
        since.start();
        QVERIFY(connection.Execute("Create Table kept.t (a Int)"));
        QVERIFY2(since.elapsed() < 5000, qPrintable(QString::number(since.elapsed())));
    }

    void theSocketLiesWhereNobodyElseMayMakeFolders()
    {
        QTemporaryDir runtime;
        QTemporaryDir scratch;
        const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
        PrivateServer server(scratch.path(), PrivateServer::Durability::Relaxed);
        before.isEmpty() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", before);
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
        QVERIFY(server.address().socket.startsWith(runtime.path()));
        PrivateServer elsewhere(scratch.path()); // started without that folder, it finds the server all the same
        QVERIFY2(elsewhere.start(&m_why), qPrintable(m_why));
        QCOMPARE(elsewhere.address().socket, server.address().socket);
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
    if (arguments.size() == 3 && arguments[1] == holdServer)
        return hold(arguments[2]);
    TestPrivateServer test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_privateserver.moc"
