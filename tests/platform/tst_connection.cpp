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

    bool insert(const QString &code) { return m_cnn->Execute(Sql("Insert into T (Code,N) Values ('", code, "',1)")); }
    QString text(const char *query) { return FirstField(m_cnn.get(), query).text(); }
    QString codes() { return text("Select Group_concat(Code) from T"); }

private slots:
    void init()
    {
        m_cnn = std::make_unique<Connection>();
        server->openFreshSchema(*m_cnn, &m_faults);
        QVERIFY(m_cnn->Execute("Create Table T (Code Varchar(3), N Int(11), D Double, Dt Date)"));
    }

    void readsThroughText()
    {
        m_cnn->Execute("Insert into T Values ('abcdef',Null,0.1+0.2e0,'2008-03-31')");
        Recordset rows;
        QVERIFY(rows.Open("T", m_cnn.get()));
        QCOMPARE(rows.Fields(u"CODE").text(), "abc"); // too long a value is cut, not refused
        QVERIFY(rows.Fields(u"n").isNull());
        QCOMPARE(rows.Fields(u"n").num(), 0.0);
        QCOMPARE(rows.Fields(u"D").text(), "0.3");
        QCOMPARE(rows.Fields(u"D").num(), 0.3);
        QCOMPARE(rows.Fields(u"Dt").text(), "31/03/2008");
        QVERIFY(m_faults.empty());
    }

    void faultsCostOneStatement()
    {
        QVERIFY(!m_cnn->Execute("Insert into T Values ('O'Neil',1,1,Null)"));
        QVERIFY(!m_cnn->Execute("Select 1; Drop Table T"));
        QVERIFY(!m_cnn->Execute("Insert into T Values (1)"));
        QCOMPARE(m_faults.size(), 3U);
        QCOMPARE(m_faults[1].number, 1064);
        QVERIFY(insert("A"));
    }

    void hostileTextsAreNotSent()
    {
        const QString value = "x' or 'a'='a";
        QVERIFY(insert("A") && insert("B"));
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
        QCOMPARE(codes(), "A,B");
    }

    void emptyAndWrongRows()
    {
        Recordset rows;
        QVERIFY(rows.Open("Select * from T", m_cnn.get()));
        QVERIFY(rows.Bof() && rows.Eof() && rows.State() == Connection::Open);
        QVERIFY(rows.Fields(u"Code").isNull());
        QCOMPARE(m_faults.back().number, FaultNumber::NoCurrentRow);
        insert("A");
        rows.Open("Select * from T", m_cnn.get());
        QVERIFY(rows.Fields(u"Nothing").isNull());
        QCOMPARE(m_faults.back().number, FaultNumber::NoSuchField);
        QVERIFY(!rows.Open("Select * from Nowhere", m_cnn.get()));
        QVERIFY(rows.Eof() && rows.State() == Connection::Closed);
        QCOMPARE(Field(3e9, m_cnn.get()).whole(), 0);
        QCOMPARE(m_faults.size(), 4U);
        QCOMPARE(m_faults.back().number, FaultNumber::Overflow);
    }

    void aLostServerIsOpenedAgainByTheNextStatement()
    {
        server->kill();
        QVERIFY(!insert("A"));
        QCOMPARE(m_faults.size(), 1U);
        server->restart();
        QVERIFY(insert("Clong")); // session settings are back
        m_cnn->Execute("Set Global default_storage_engine=MyISAM");
        m_cnn->Execute("Kill Connection_id()");
        QCOMPARE(text("Select Concat(@@sql_mode,@@character_set_client,@@default_storage_engine)"), "utf8mb4InnoDB");
        server->kill();
        server->restart(); // between two statements: nobody notices
        QVERIFY(insert("B"));
        QCOMPARE(m_faults.size(), 2U);
        QCOMPARE(text("Select Count(*) from T Where Code='b '"), "1");
    }

    void whatTheServerRefusesForALockIsSentAgain()
    {
        Connection other;
        QVERIFY(other.open(m_cnn->address()) && insert("A"));
        m_cnn->Execute("Set innodb_lock_wait_timeout=0");
        QVERIFY(other.beginGroup() && other.Execute("Update T Set N=2"));
        QVERIFY(!m_cnn->Execute("Update T Set N=3"));
        QCOMPARE(m_faults.size(), 1U); // of five times
        QCOMPARE(m_faults[0].number, 1205);
        QVERIFY(other.commitGroup());
        QVERIFY(m_cnn->Execute("Update T Set N=3"));
    }

    void lostUnderWay()
    {
        Connection other;
        QVERIFY(other.open(m_cnn->address()));
        const QString kill = "Kill " + text("Select Connection_id()");
        std::thread killer([&] {
            QThread::msleep(200);
            other.Execute(kill);
        });
        QCOMPARE(text("Select Sleep(1)"), "0"); // what only reads is asked again
        killer.join();
        QVERIFY(m_faults.empty());
        QVERIFY(!m_cnn->Execute("Kill Connection_id()")); // the server has it and ends the connection
        QVERIFY(m_cnn->lastStatementLost());
        QCOMPARE(m_faults.size(), 1U);
        QVERIFY(insert("B") && !m_cnn->lastStatementLost());
    }

    void refusalsThatEndAGroup()
    {
        const QPair<QString, QString> rows[] = {
            {"Signal Sqlstate '40001' Set MYSQL_ERRNO=1213", "B"}, // deadlock
            {"Signal Sqlstate '45000' Set MYSQL_ERRNO=1205", "B"}, // wait for a lock
            {"Insert into Nowhere Values (1)", "A,B"}};
        for (const auto &[statement, left] : rows) {
            m_faults.clear();
            m_cnn->Execute("Delete from T");
            QVERIFY(m_cnn->beginGroup() && insert("A"));
            QVERIFY(!m_cnn->Execute(statement) && !m_cnn->lastStatementLost());
            QCOMPARE(m_cnn->groupLost(), left == "B");
            QCOMPARE(m_cnn->commitGroup(), left != "B");
            QVERIFY(m_cnn->beginGroup() && !m_cnn->groupLost() && insert("B") && m_cnn->commitGroup());
            QCOMPARE(codes(), left);
            QCOMPARE(m_faults.size(), 1U);
        }
    }

    void serverLostInAGroupIsToldOnce()
    {
        QVERIFY(m_cnn->beginGroup());
        server->kill();
        server->restart();
        QVERIFY(!insert("A"));
        QVERIFY(m_cnn->groupLost() && m_cnn->lastStatementLost());
        m_cnn->abandonGroup();
        QCOMPARE(m_faults.size(), 1U);
        QCOMPARE(m_faults[0].number, 2006);
        QVERIFY(insert("B") && !m_cnn->groupLost());
        QCOMPARE(codes(), "B");
    }
};

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
