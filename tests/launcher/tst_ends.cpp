#include "platform/recordset.h"
#include "server/privateserver.h"
#include "tests/support/caserow.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

using namespace Qt::StringLiterals;

/// Every way in which the program ends ends its process and its private server, in order.
class TestEnds : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The password "PP" is asked for from here on.
        PrivateServer server(m_home.filePath(u"db"_s));
        QString why;
        QVERIFY2(server.start(&why), qPrintable(why));
        ServerAddress address = server.address();
        Connection connection;
        QVERIFY(connection.open(address));
        QVERIFY(connection.Execute(u"Create Database pelkfbt"_s) && connection.Execute(u"Use pelkfbt"_s));
        QVERIFY(connection.Execute(u"Create Table TableMP (Val1 Varchar(10))"_s));
        QVERIFY(connection.Execute(u"Insert into TableMP Values ('!!')"_s));
    }

    void ends_data()
    {
        Columns<QString, QString, int>({"options", "steps", "signal"}); // after the last step; 0 for none
        const QString close = u";MainWindow close;QMessageBox &Yes;QMessageBox &No"_s;
        Case("SIGTERM while another program updates", u""_s, u"frmupdatedb shown"_s, SIGTERM);
        Case("cancelled login", u""_s, u"frmLogin escape"_s, 0);
        Case("SIGTERM at the login", u""_s, u"frmLogin shown"_s, SIGTERM);
        Case("SIGTERM at a question", u"--demo"_s, u"cmdfbtdet shown;MainWindow close;QMessageBox shown"_s, SIGTERM);
        Case("the demonstration killed", u"--demo"_s, u"cmdfbtdet shown"_s, SIGKILL); // the next one clears it away
        Case("window closed on the demonstration", u"--demo"_s,
             u"frmmain cmdfbtdet;frmsbase rows=4;frmsbase escape;cmdfbtdet shown"_s + close, 0);
    }

    void ends()
    {
        constexpr int patienceMs = 60'000;
        const auto [options, steps, signal] = Row<QString, QString, int>();
        PrivateServer server(m_home.filePath(u"db"_s));
        Connection other;
        QString why;
        if (steps.startsWith(u"frmupdatedb")) {
            QVERIFY2(server.start(&why) && other.open(server.address()), qPrintable(why));
            QVERIFY(other.Execute(u"Do Get_Lock(Concat('FBT-Update-',Md5('pelkfbt')),0)"_s));
        }
        QProcess program;
        start(program, options.split(u' ', Qt::SkipEmptyParts), steps);
        QByteArray printed;
        QTRY_VERIFY2_WITH_TIMEOUT((printed += program.readAllStandardOutput()).count('\n') == steps.count(u';') + 1 ||
                                      program.state() == QProcess::NotRunning,
                                  printed.constData(), patienceMs);
        if (signal != 0)
            ::kill(static_cast<pid_t>(program.processId()), signal);
        QVERIFY2(program.state() == QProcess::NotRunning || program.waitForFinished(patienceMs), printed.constData());
        printed += program.readAllStandardOutput();
        QCOMPARE(QString::fromUtf8(printed).trimmed().split(u'\n'), steps.split(u';'));
        if (signal == SIGKILL) {
            const QStringList left = QDir(m_home.path()).entryList({u"pelkfbt-demo-*"_s}, QDir::Dirs);
            QCOMPARE(left.size(), 1);
            QTRY_VERIFY_WITH_TIMEOUT(!PrivateServer::inUse(m_home.filePath(left.first() + u"/db"_s)), patienceMs);
            return;
        }
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        other.close();
        server.stop();
        QVERIFY2(!QFile::exists(m_home.filePath(u"db/server.pid"_s)), "the private server still runs");
        QVERIFY2(!QFile::exists(m_home.filePath(u"app/running.lock"_s)), "the next start would repair");
        QCOMPARE(QDir(m_home.path()).entryList({u"pelkfbt-*"_s}, QDir::Dirs), QStringList());
    }

private:
    void start(QProcess &program, const QStringList &options, const QString &steps) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"FBT_HAND"_s, steps);
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"hand"_s);
        environment.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(FBT_TEST_PLUGINS));
        environment.insert(u"TMPDIR"_s, m_home.path());
        environment.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u"config"_s));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        const QStringList places{u"--app"_s, m_home.filePath(u"app"_s), u"--data"_s, m_home.filePath(u"db"_s)};
        program.start(QCoreApplication::applicationDirPath() + u"/pelkfbt"_s, options.isEmpty() ? places : options);
    }

    QTemporaryDir m_home;
};

QTEST_GUILESS_MAIN(TestEnds)
#include "tst_ends.moc"
