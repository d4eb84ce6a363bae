#include "launcher/database.h"
#include "launcher/samplerun.h"
#include "officeserver.h"
#include "platform/recordset.h"
#include "tests/support/testmodule.h"

#include <QTcpServer>
#include <QTest>
#include <QTextStream>

#include <sys/socket.h>
#include <unistd.h>

#include <thread>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(ServerAddress::Tls)

namespace {

QString computed(Connection &connection, BaseObject &base, QString *why)
{
    QString printed;
    QTextStream out(&printed);
    const auto employers = ReadSamples(QFINDTESTDATA("../../launcher/samples"), why);
    RunSamples(connection, &base, employers, out, why);
    return printed;
}

QByteArray packet(char number, const QByteArray &content)
{
    return QByteArray(1, static_cast<char>(content.size())) + QByteArray(2, '\0') + number + content;
}

/// A server that greets as others do and then asks for the password itself. What the client sent to it.
QByteArray askForThePassword(int listening)
{
    const int client = ::accept(listening, nullptr, nullptr);
    std::array<char, 4096> heard{};
    const QByteArray greeting = QByteArray("\x0a"
                                           "5.5.5-10.11.0\0"
                                           "\1\0\0\0"
                                           "abcdefgh\0"
                                           "\0\xa2\x2d\2\0\x08\0\x15",
                                           36) +
                                QByteArray(10, '\0') + QByteArray("ijklmnopqrst\0mysql_native_password\0", 35);
    QByteArray all;
    for (const QByteArray &said : {packet(0, greeting), packet(2, QByteArray("\xfemysql_clear_password\0", 22))}) {
        [[maybe_unused]] const ssize_t sent = ::send(client, said.constData(), said.size(), MSG_NOSIGNAL);
        const ssize_t length = ::recv(client, heard.data(), heard.size(), 0);
        all.append(heard.data(), std::max<ssize_t>(length, 0));
    }
    ::close(client);
    return all;
}

} // namespace

class TestOfficeServer : public QObject
{
    Q_OBJECT

private slots:
    void namesDifferByCaseAndTheFiguresDoNot()
    {
        QCOMPARE(m_office.ask(u"Select @@lower_case_table_names"_s), u"0"_s);
        LauncherDatabase database(settings(), u"/proc/never"_s); // the private server's folder is not touched
        QVERIFY2(database.open(&m_why), qPrintable(m_why));
        TestServer own;
        TestModule module(own);
        const QString expected = computed(module.connection, module.base, &m_why);
        QVERIFY2(m_why.isEmpty(), qPrintable(m_why));
        QCOMPARE(expected.count(u"Assessment Year"), 16);
        TestModule again(own); // a fresh module state for the office's connection
        QCOMPARE(computed(database.connection(), again.base, &m_why), expected);
        QVERIFY2(m_why.isEmpty(), qPrintable(m_why + again.logLines().join(u'\n')));
        QCOMPARE(m_office.ask(u"Select count(*) from office.FBT_Info"_s), u"4"_s);
    }

    void encryption_data()
    {
        using Tls = ServerAddress::Tls;
        QTest::addColumn<bool>("offered");
        QTest::addColumn<Tls>("tls");
        QTest::addColumn<QString>("ca");
        QTest::addColumn<QString>("seen"); // encrypted, plain, or the beginning of the refusal
        QTest::newRow("offered") << true << Tls::Preferred << QString() << u"encrypted"_s;
        QTest::newRow("offered, by our authority") << true << Tls::Required << u"office.crt"_s << u"encrypted"_s;
        QTest::newRow("offered, by a stranger") << true << Tls::Preferred << u"stranger.crt"_s << u"TLS/SSL error"_s;
        QTest::newRow("offered, not wanted") << true << Tls::Off << QString() << u"plain"_s;
        QTest::newRow("not offered") << false << Tls::Preferred << QString() << u"plain"_s;
        QTest::newRow("not offered, required") << false << Tls::Required << QString() << u"The server offers no"_s;
    }
    void encryption()
    {
        QFETCH(bool, offered);
        QFETCH(ServerAddress::Tls, tls);
        QFETCH(QString, ca);
        QFETCH(QString, seen);
        ServerAddress address = (offered ? m_encrypting : m_office).address();
        address.tls = tls;
        address.ca = ca.isEmpty() ? QString() : QFINDTESTDATA(ca);
        Connection connection;
        Fault why;
        QString found = u"plain"_s;
        if (!connection.open(address, &why)) {
            found = why.description;
        } else {
            Recordset cipher;
            cipher.Open("Show Status like 'Ssl_cipher'", &connection);
            found = cipher.Fields(1).text().isEmpty() ? u"plain"_s : u"encrypted"_s;
        }
        QVERIFY2(!seen.isEmpty() && found.startsWith(seen), qPrintable(found));
    }

    void aRestartBetweenTwoStatementsLosesNothing_data()
    {
        QTest::addColumn<bool>("encrypted");
        QTest::newRow("plain") << false;
        QTest::newRow("encrypted") << true;
    }
    void aRestartBetweenTwoStatementsLosesNothing()
    {
        QFETCH(bool, encrypted);
        OfficeServer &office = encrypted ? m_encrypting : m_office;
        office.ask(u"Create Database If Not Exists office"_s);
        ServerAddress address = office.address();
        address.schema = u"office"_s;
        Connection connection;
        QVERIFY(connection.open(address) && connection.Execute("Create Table T (A Int)"));
        std::vector<Fault> faults;
        connection.setFaultHandler([&](const Fault &fault) { faults.push_back(fault); });
        QVERIFY(connection.Execute("Insert into T Values (1)"));
        office.restart();
        QVERIFY(connection.Execute("Insert into T Values (2)"));
        office.restart();
        QCOMPARE(FirstField(&connection, "Select Count(*) from T").whole(), 2);
        QVERIFY(faults.empty());
        QVERIFY(connection.Execute("Drop Table T"));
    }

    void aPasswordIsNeverSentInTheClear()
    {
        QTcpServer impostor;
        QVERIFY(impostor.listen(QHostAddress::LocalHost));
        const qintptr listening = impostor.socketDescriptor();
        QByteArray heard;
        std::thread server([&] { heard = askForThePassword(static_cast<int>(listening)); });
        ServerAddress address = m_office.address();
        address.port = impostor.serverPort();
        Connection connection;
        QVERIFY(!connection.open(address));
        server.join();
        QVERIFY(heard.contains("fbt")); // the user
        QVERIFY(!heard.contains(address.password.toLatin1()));
    }

    void theSuitesSchemaMustBeThere()
    {
        LauncherSettings named = settings();
        named.suiteSchema = u"suite"_s;
        LauncherDatabase database(named, u"/proc/never"_s);
        QVERIFY(!database.open(&m_why));
        QVERIFY2(m_why.startsWith(u"The suite database suite cannot be opened: "_s), qPrintable(m_why));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("schema");
        QTest::addColumn<QString>("reason");
        QTest::newRow("unknown host") << u"nowhere.invalid"_s << u"secret"_s << u"office"_s << u"Unknown"_s;
        QTest::newRow("wrong password") << u"127.0.0.1"_s << u"guess"_s << u"office"_s << u"Access denied for user"_s;
        QTest::newRow("schema of others")
            << u"127.0.0.1"_s << u"secret"_s << u"payroll"_s << u"Access denied for user"_s;
    }

    void refusals()
    {
        QFETCH(QString, host);
        QFETCH(QString, password);
        QFETCH(QString, schema);
        QFETCH(QString, reason);
        LauncherSettings wrong = settings();
        wrong.server->host = host;
        wrong.server->password = password;
        wrong.schema = schema;
        LauncherDatabase database(wrong, u"/proc/never"_s);
        QVERIFY(!database.open(&m_why));
        const QString begin = u"The database server %1:%2 cannot be used: %3"_s.arg(host).arg(wrong.server->port);
        QVERIFY2(m_why.startsWith(begin.arg(reason)), qPrintable(m_why));
    }

private:
    [[nodiscard]] LauncherSettings settings() const
    {
        LauncherSettings settings;
        settings.server = m_office.address();
        settings.schema = u"office"_s;
        return settings;
    }

    OfficeServer m_office;
    OfficeServer m_encrypting{OfficeServer::Encrypts::Yes};
    QString m_why;
};

QTEST_GUILESS_MAIN(TestOfficeServer)
#include "tst_officeserver.moc"
