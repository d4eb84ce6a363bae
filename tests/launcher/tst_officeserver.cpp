#include "launcher/database.h"
#include "launcher/samplerun.h"
#include "officeserver.h"
#include "tests/support/testmodule.h"

#include <QTest>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QString computed(Connection &connection, BaseObject &base, QString *why)
{
    QString printed;
    QTextStream out(&printed);
    const auto employers = ReadSamples(QFINDTESTDATA("../../launcher/samples"), why);
    RunSamples(connection, base, employers, out, why);
    return printed;
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
    QString m_why;
};

QTEST_GUILESS_MAIN(TestOfficeServer)
#include "tst_officeserver.moc"
