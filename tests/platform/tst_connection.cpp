#include "platform/recordset.h"
#include "tests/support/testserver.h"

#include <QTest>
#include <QThread>

#include <thread>

Q_GLOBAL_STATIC(TestServer, server)

/// The one connection and its recordsets on a real server.
class TestConnection : public QObject
{
    Q_OBJECT

    std::unique_ptr<Connection> m_cnn;
    std::vector<Fault> m_faults;

    QString text(const QString &query) { return FirstField(m_cnn.get(), query).text(); }

private slots:
    void init()
    {
        m_cnn = std::make_unique<Connection>();
        m_faults.clear();
        server->openFreshSchema(*m_cnn);
        m_cnn->setFaultHandler([this](const Fault &fault) { m_faults.push_back(fault); });
        QVERIFY(m_cnn->Execute(QStringLiteral("Create Table T (Code Varchar(3), N Int(11), D Double, Dt Date)")));
    }

    void readsThroughText()
    {
        m_cnn->Execute(QStringLiteral("Insert into T Values ('abcdef',Null,0.1+0.2e0,'2008-03-31')"));
        Recordset rows;
        QVERIFY(rows.Open(QStringLiteral("T"), m_cnn.get()));
        QCOMPARE(rows.FieldCount(), 4);
        QCOMPARE(rows.Fields(u"CODE").text(), QStringLiteral("abc")); // too long a value is cut, not refused
        QVERIFY(rows.Fields(u"n").isNull());
        QCOMPARE(rows.Fields(u"n").text(), QString());
        QCOMPARE(rows.Fields(u"n").num(), 0.0);
        QCOMPARE(rows.Fields(u"D").text(), QStringLiteral("0.3"));
        QCOMPARE(rows.Fields(u"D").num(), 0.3);
        QCOMPARE(rows.Fields(u"Dt").text(), QStringLiteral("31/03/2008"));
        QVERIFY(m_faults.empty());
    }

    void faultsCostOneStatement_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<int>("number");
        QTest::newRow("no such table") << "Insert into Nowhere Values (1)" << 1146;
        QTest::newRow("broken text") << "Insert into T Values ('O'Neil',1,1,Null)" << 1064;
        QTest::newRow("a second statement") << "Select 1; Drop Table T" << 1064;
        QTest::newRow("too few values") << "Insert into T Values (1)" << 1136;
    }
    void faultsCostOneStatement()
    {
        QFETCH(QString, statement);
        QVERIFY(!m_cnn->Execute(statement));
        QCOMPARE(m_faults.size(), 1U);
        QTEST(m_faults[0].number, "number");
        QVERIFY(m_cnn->Execute(QStringLiteral("Insert into T Values ('A',1,1,Null)")));
    }

    void hostileTextsAreNotSent_data()
    {
        QTest::addColumn<QString>("value");
        for (const auto *value : {"1' #2", "x';delete from T; -- ", "X' or 'a'='a", "a\\", "O'Neil"})
            QTest::newRow(value) << QString::fromLatin1(value);
    }
    void hostileTextsAreNotSent()
    {
        QFETCH(QString, value);
        m_cnn->Execute("Insert into T Values ('A',1,1,Null),('B',2,2,Null)");
        int sent = 0;
        m_cnn->setObserver([&](const QString &) { ++sent; });
        Recordset rows;
        QVERIFY(!m_cnn->Execute(Sql("Update T Set Code='", value, "' Where N=", 1)));
        QVERIFY(!m_cnn->Execute(Sql("Delete from T Where Code='", value, "'")));
        QVERIFY(!rows.Open(Sql("Select * from T Where Code='", value, "'"), m_cnn.get()) && rows.empty());
        QCOMPARE(sent, 0);
        QCOMPARE(m_faults.size(), 3U);
        QCOMPARE(m_faults[1].number, FaultNumber::UnsafeText);
        QVERIFY(m_faults[0].doing == Doing::Save && m_faults[1].doing == Doing::Delete);
        QVERIFY(m_cnn->Execute(Sql("Delete from T Where Code=", Quoted(value))));
        QCOMPARE(text("Select Group_concat(Code,N) from T"), QStringLiteral("A1,B2"));
    }

    void emptyAndWrongRows()
    {
        Recordset rows;
        QVERIFY(rows.Open(QStringLiteral("Select * from T"), m_cnn.get()));
        QVERIFY(rows.Bof() && rows.Eof() && rows.State() == Connection::Open);
        QVERIFY(rows.Fields(u"Code").isNull());
        QCOMPARE(m_faults.back().number, FaultNumber::NoCurrentRow);
        m_cnn->Execute(QStringLiteral("Insert into T Values ('A',1,1,Null)"));
        rows.Open(QStringLiteral("Select * from T"), m_cnn.get());
        QVERIFY(rows.Fields(u"Nothing").isNull());
        QCOMPARE(m_faults.back().number, FaultNumber::NoSuchField);
        QVERIFY(!rows.Open(QStringLiteral("Select * from Nowhere"), m_cnn.get()));
        QVERIFY(rows.Eof() && rows.State() == Connection::Closed);
        QCOMPARE(m_faults.size(), 3U);
    }

    void wholeNumbersOverflowAsFault()
    {
        QCOMPARE(Field(2.5).whole(), 2);
        const std::size_t before = m_faults.size();
        QCOMPARE(Field(3e9, m_cnn.get()).whole(), 0);
        QCOMPARE(m_faults.size(), before + 1);
        QCOMPARE(m_faults.back().number, FaultNumber::Overflow);
    }

    void killedServerIsReopenedByTheNextStatement()
    {
        m_cnn->Execute(QStringLiteral("Insert into T Values ('A',1,1,Null)"));
        server->kill();
        QVERIFY(!m_cnn->Execute(QStringLiteral("Insert into T Values ('B',1,1,Null)")));
        QCOMPARE(m_faults.size(), 1U);
        server->restart();
        QVERIFY(m_cnn->Execute(QStringLiteral("Insert into T Values ('Clong',1,1,Null)"))); // session settings are back
        QCOMPARE(text(QStringLiteral("Select @@sql_mode")), QString());
        QCOMPARE(text(QStringLiteral("Select @@character_set_client")), QStringLiteral("utf8mb4"));
        QCOMPARE(m_faults.size(), 1U);
    }

    void serverRestartedBetweenStatementsIsNotNoticed()
    {
        server->kill();
        server->restart();
        QVERIFY(m_cnn->Execute(QStringLiteral("Insert into T Values ('B',1,1,Null)")));
        QCOMPARE(text(QStringLiteral("Select Count(*) from T Where Code='b '")), QStringLiteral("1"));
        QVERIFY(m_faults.empty());
    }

    void whatTheServerRefusesForALockIsSentAgain()
    {
        int sent = 0;
        Connection other;
        QVERIFY(other.open(m_cnn->address()));
        m_cnn->Execute(QStringLiteral("Insert into T Values ('A',1,1,Null)"));
        m_cnn->Execute(QStringLiteral("Set innodb_lock_wait_timeout=0"));
        QVERIFY(other.beginGroup() && other.Execute(QStringLiteral("Update T Set N=2")));
        m_cnn->setObserver([&](const QString &) { ++sent; });
        QVERIFY(!m_cnn->Execute(QStringLiteral("Update T Set N=3")));
        QCOMPARE(m_faults.size(), 1U); // of five times
        QCOMPARE(m_faults[0].number, 1205);
        QCOMPARE(sent, 1);
        QVERIFY(other.commitGroup());
        QVERIFY(m_cnn->Execute(QStringLiteral("Update T Set N=3")));
        QCOMPARE(text(QStringLiteral("Select @@tx_isolation")), QStringLiteral("READ-COMMITTED"));
    }

    void aQueryLostUnderWayIsAskedAgain()
    {
        Connection other;
        QVERIFY(other.open(m_cnn->address()));
        const QString id = text(QStringLiteral("Select Connection_id()"));
        std::thread killer([&] {
            QThread::msleep(200);
            other.Execute(QStringLiteral("Kill ") + id);
        });
        QCOMPARE(text(QStringLiteral("Select Sleep(1)")), QStringLiteral("0"));
        killer.join();
        QVERIFY(m_faults.empty());
    }

    void groupsNeedTransactions()
    {
        QVERIFY(m_cnn->Execute(QStringLiteral("Set Global default_storage_engine=MyISAM")));
        QVERIFY(m_cnn->open(m_cnn->address()));
        QCOMPARE(text(QStringLiteral("Select @@default_storage_engine")), QStringLiteral("InnoDB"));
        m_cnn->Execute(QStringLiteral("Set Global default_storage_engine=InnoDB"));
    }

    void refusalsThatEndAGroup_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<bool>("lost");
        QTest::newRow("deadlock") << "Signal Sqlstate '40001' Set MYSQL_ERRNO=1213" << true;
        QTest::newRow("wait for a lock") << "Signal Sqlstate '45000' Set MYSQL_ERRNO=1205" << true;
        QTest::newRow("no such table") << "Insert into Nowhere Values (1)" << false;
    }
    void refusalsThatEndAGroup()
    {
        QFETCH(QString, statement);
        QFETCH(bool, lost);
        const QString insert = QStringLiteral("Insert into T Values ('A',1,1,Null)");
        QVERIFY(m_cnn->beginGroup() && m_cnn->Execute(insert));
        QVERIFY(!m_cnn->Execute(statement));
        QVERIFY(!m_cnn->lastStatementLost());
        QTEST(m_cnn->groupLost(), "lost");
        QCOMPARE(m_cnn->commitGroup(), !lost);
        QVERIFY(m_cnn->beginGroup() && !m_cnn->groupLost() && m_cnn->Execute(insert) && m_cnn->commitGroup());
        QCOMPARE(text(QStringLiteral("Select Count(*) from T")), lost ? QStringLiteral("1") : QStringLiteral("2"));
        QCOMPARE(m_faults.size(), 1U);
    }

    void serverLostInAGroupIsToldOnce()
    {
        QVERIFY(m_cnn->beginGroup());
        server->kill();
        server->restart();
        QVERIFY(!m_cnn->Execute(QStringLiteral("Insert into T Values ('A',1,1,Null)")));
        QVERIFY(m_cnn->groupLost() && m_cnn->lastStatementLost());
        m_cnn->abandonGroup();
        QCOMPARE(m_faults.size(), 1U);
        QCOMPARE(m_faults[0].number, 2006);
        QVERIFY(m_cnn->Execute(QStringLiteral("Insert into T Values ('B',1,1,Null)")));
        QVERIFY(!m_cnn->groupLost() && !m_cnn->lastStatementLost());
        QCOMPARE(text(QStringLiteral("Select Code from T")), QStringLiteral("B"));
    }

    void statementLostUnderWay()
    {
        QVERIFY(!m_cnn->Execute(QStringLiteral("Kill Connection_id()"))); // the server has it and ends the connection
        QVERIFY(m_cnn->lastStatementLost());
        QCOMPARE(m_faults.size(), 1U);
        QVERIFY(m_cnn->Execute(QStringLiteral("Insert into T Values ('B',1,1,Null)")));
        QVERIFY(!m_cnn->lastStatementLost());
    }
};

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
