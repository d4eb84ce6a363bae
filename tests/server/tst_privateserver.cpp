#include "platform/recordset.h"
#include "server/privateserver.h"
#include "tests/support/caserow.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <csignal>

namespace {

const QString holdServer = "--hold-server";

qint64 pidIn(const QTemporaryDir &folder)
{
    QFile file(folder.filePath("server.pid"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
}

/// This program once more, holding a data folder until it is killed.
class OtherProgram : public QProcess
{
public:
    explicit OtherProgram(const QTemporaryDir &folder)
    {
        start(QCoreApplication::applicationFilePath(), {holdServer, folder.path()});
    }
    [[nodiscard]] bool ready() { return (bytesAvailable() > 0 || waitForReadyRead(60'000)) && peek(5) == "ready"; }
    void end()
    {
        kill();
        waitForFinished();
    }
};

/// The other program's part.
int hold(const QString &folder)
{
    PrivateServer server(folder, PrivateServer::Durability::Relaxed);
    QString why;
    QTextStream(stdout) << (server.start(&why) ? QStringLiteral("ready") : why) << Qt::endl;
    return QCoreApplication::exec();
}

} // namespace

class TestPrivateServer : public QObject
{
    Q_OBJECT

private slots:
    void whatWasWrittenStays()
    {
        const QTemporaryDir scratch;
        PrivateServer server(scratch.path());
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
        Connection connection;
        QVERIFY(connection.open(server.address()));
        connection.setReviver([&] { return server.revive(); });
        QVERIFY(connection.Execute("Create Database kept") && connection.Execute("Create Table kept.t (a Int)"));
        QVERIFY(connection.Execute("Insert into kept.t Values (7)"));
        server.kill();
        QVERIFY(connection.Execute("Insert into kept.t Values (8)")); // and the server is there again
        QVERIFY(pidIn(scratch) > 0);
        connection.close();
        server.stop();
        QCOMPARE(pidIn(scratch), 0); // the server itself takes the file away, at the end of an orderly stop
        QVERIFY(!QFile::exists(server.address().socket));
        QVERIFY(server.start(&m_why) && connection.open(server.address()));
        QCOMPARE(FirstField(&connection, "Select Group_concat(a Order by a) from kept.t").text(), "7,8");
    }

    void onlyTheUserMayEnter()
    {
        const QTemporaryDir runtime;
        const QTemporaryDir scratch;
        const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
        PrivateServer server(scratch.path(), PrivateServer::Durability::Relaxed);
        before.isEmpty() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", before);
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
        const QString socket = server.address().socket;
        QVERIFY(socket.startsWith(runtime.path()));
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                            QFile::WriteOther | QFile::ExeOther;
        QCOMPARE(QFileInfo(QFileInfo(socket).path()).permissions() & others, QFile::Permissions());
        Connection connection;
        QVERIFY(connection.open(server.address()));
        QVERIFY(!HasRows(&connection, "Select * from mysql.global_priv Where User not in "
                                      "('mariadb.sys',substring_index(user(),'@',1))"));
        QCOMPARE(FirstField(&connection, "Select @@skip_networking").num(), 1.0);
        PrivateServer elsewhere(scratch.path()); // started without that folder, it finds the server all the same
        QVERIFY2(elsewhere.start(&m_why), qPrintable(m_why));
        QCOMPARE(elsewhere.address().socket, socket);
        server.stop();
        QVERIFY2(connection.Execute("Select 1"), "the first one took the server along");
        connection.close();
        elsewhere.stop();
        QCOMPARE(pidIn(scratch), 0);
    }

    void theServerEndsWithTheLastProgramEvenAKilledOne()
    {
        const QTemporaryDir scratch;
        OtherProgram first(scratch); // both start at once, and share one server
        OtherProgram second(scratch);
        QVERIFY(first.ready() && second.ready());
        const qint64 pid = pidIn(scratch);
        first.end();
        QTest::qWait(1000);
        QVERIFY2(::kill(static_cast<pid_t>(pid), 0) == 0, "it took the server from under the other program");
        second.end();
        QTRY_COMPARE_WITH_TIMEOUT(pidIn(scratch), 0, 10'000);
        QFile left(scratch.filePath("server.pid")); // after a power cut its number may be another program's: ours
        QVERIFY(left.open(QIODevice::WriteOnly) &&
                left.write(QByteArray::number(QCoreApplication::applicationPid())) > 0);
        left.close();
        PrivateServer server(scratch.path(), PrivateServer::Durability::Relaxed);
        QVERIFY2(server.start(&m_why), qPrintable(m_why));
    }

    void refusals_data()
    {
        // Of a scratch folder with the file "plain" and the empty data folder of "db"; %1 stands for the folder.
        Columns<QString, QString, QString>({"folder", "programs", "why"});
        Case("a file", "plain", "", "The data folder %1 is a file.");
        Case("below a file", "plain/db", "", "The data folder %1 cannot be made.");
        Case("where nobody may write", "/proc/pelkfbt", "", "The data folder %1 cannot be made.");
        Case("no installer", "new", "/nowhere",
             "The program mariadb-install-db was not found. Please install the package mariadb-server-core.");
        Case("no server program", "db", "/nowhere",
             "The program mariadbd was not found. Please install the package mariadb-server-core.");
        Case("data that is none", "db", "", "The database in %1 could not be opened: ");
    }
    void refusals()
    {
        const auto [folder, programs, why] = Row<QString, QString, QString>();
        const QTemporaryDir scratch;
        QVERIFY(QFile(scratch.filePath("plain")).open(QIODevice::WriteOnly));
        QVERIFY(QDir(scratch.path()).mkpath("db/data"));
        const QString path = QDir(scratch.path()).filePath(folder);
        PrivateServer server(path, PrivateServer::Durability::Full,
                             programs.isEmpty() ? PrivateServer::defaultProgramFolders() : QStringList(programs));
        QVERIFY(!server.start(&m_why));
        QVERIFY2(m_why.startsWith(QString(why).replace("%1", path)), qPrintable(m_why));
    }

private:
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
