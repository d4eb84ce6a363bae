#include "launcher/database.h"
#include "launcher/samplerun.h"
#include "tests/launcher/officeserver.h"
#include "tests/support/caserow.h"
#include "tests/support/testmodule.h"

#include <QTextStream>

#include <poll.h>
#include <sys/socket.h>

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
    pollfd calls{listening, POLLIN, 0}; // the listening socket does not wait itself
    ::poll(&calls, 1, 10000);
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
        Columns<bool, Tls, QString, QString>(
            {"offered", "tls", "ca", "seen"}); // encrypted, plain, or the beginning of the refusal
        Case("offered", true, Tls::Preferred, QString(), u"encrypted"_s);
        Case("offered, by our authority", true, Tls::Required, u"office.crt"_s, u"encrypted"_s);
        Case("offered, by a stranger", true, Tls::Preferred, u"stranger.crt"_s, u"TLS/SSL error"_s);
        Case("offered, not wanted", true, Tls::Off, QString(), u"plain"_s);
        Case("not offered", false, Tls::Preferred, QString(), u"plain"_s);
        Case("not offered, required", false, Tls::Required, QString(), u"The server offers no"_s);
    }
    void encryption()
    {
        const auto [offered, tls, ca, seen] = Row<bool, ServerAddress::Tls, QString, QString>();
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

    void aRestartBetweenTwoStatementsLosesNothing()
    {
        m_encrypting.ask(u"Create Database office"_s);
        ServerAddress address = m_encrypting.address();
        address.schema = u"office"_s;
        Connection connection;
        QVERIFY(connection.open(address) && connection.Execute("Create Table T (A Int)"));
        bool fault = false;
        connection.setFaultHandler([&](const Fault &) { fault = true; });
        m_encrypting.restart();
        QVERIFY(connection.Execute("Insert into T Values (2)"));
        m_encrypting.restart();
        QCOMPARE(FirstField(&connection, "Select Count(*) from T").whole(), 1);
        QVERIFY(!fault);
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

    void refusals_data()
    {
        Columns<QString, QString, QString>({"wrong", "value", "why"}); // the setting, and its value // begins like this
        const auto row = [](const QString &wrong, const QString &value, const QString &why) {
            QTest::newRow(qPrintable(wrong)) << wrong << value << why;
        };
        row(u"host"_s, u"nowhere.invalid"_s, u"The database server nowhere.invalid:%1 cannot be used: Unknown"_s);
        const QString denied = u"The database server 127.0.0.1:%1 cannot be used: Access denied for user"_s;
        row(u"password"_s, u"guess"_s, denied);
        row(u"schema"_s, u"payroll"_s, denied);
        row(u"suite"_s, u"suite"_s, u"The suite database suite cannot be opened: "_s);
    }
    void refusals()
    {
        const auto [wrong, value, why] = Row<QString, QString, QString>();
        LauncherSettings refused = settings();
        (wrong == u"host"       ? refused.server->host
         : wrong == u"password" ? refused.server->password
         : wrong == u"schema"   ? refused.schema
                                : refused.suiteSchema) = value;
        LauncherDatabase database(refused, u"/proc/never"_s);
        QVERIFY(!database.open(&m_why));
        QVERIFY2(m_why.startsWith(QString(why).replace(u"%1"_s, QString::number(refused.server->port))),
                 qPrintable(m_why));
    }

private:
    [[nodiscard]] LauncherSettings settings() const
    {
        LauncherSettings settings;
        settings.server = m_office.address();
        settings.schema = u"office"_s;
        return settings;
    }

    OfficeServer m_office{false};
    OfficeServer m_encrypting{true};
    QString m_why;
};

QTEST_GUILESS_MAIN(TestOfficeServer)
#include "tst_officeserver.moc"
