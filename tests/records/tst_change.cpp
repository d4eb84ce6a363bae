#include "platform/recordset.h"
#include "records/change.h"
#include "records/clientrow.h"
#include "tests/support/testserver.h"

#include <QTest>

#include <thread>

Q_GLOBAL_STATIC(TestServer, server)

/// Changes of several statements, amid other users and a server that goes away.
class TestChange : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_cnn = std::make_unique<Connection>();
        m_faults.clear();
        server->openFreshSchema(*m_cnn);
        m_cnn->setFaultHandler([this](const Fault &fault) { m_faults.push_back(fault); });
        QVERIFY(m_cnn->Execute("Create Table T (Code Varchar(3), N Int(11))"));
    }

    void aRefusedGroupIsRunAgain_data()
    {
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<int>("refused"); // times
        QTest::addColumn<int>("run");
        QTest::addColumn<int>("faults");
        const QString deadlock = QStringLiteral("Signal Sqlstate '40001' Set MYSQL_ERRNO=1213");
        const QString wait = QStringLiteral("Signal Sqlstate '45000' Set MYSQL_ERRNO=1205");
        QTest::newRow("deadlock once") << deadlock << 1 << 2 << 0;
        QTest::newRow("wait four times") << wait << 4 << 5 << 0;
        QTest::newRow("deadlock always") << deadlock << 9 << 5 << 1;
        QTest::newRow("a fault of its own") << QStringLiteral("Insert into Nowhere Values (1)") << 1 << 1 << 1;
        QTest::newRow("a value that would leave its quotes") << QString() << 9 << 1 << 1;
    }
    void aRefusedGroupIsRunAgain()
    {
        QFETCH(QString, refusal);
        QFETCH(int, refused);
        int run = 0;
        const bool done = ChangeTogether(m_cnn.get(), [&](Change &change) {
            const bool first = change.write("Insert into T Values ('A',1)");
            if (++run > refused)
                return first;
            const SqlText hostile = Sql("Delete from T Where Code='", QStringLiteral("x' or 'a'='a"), "'");
            return first && change.write(refusal.isEmpty() ? hostile : SqlText(refusal));
        });
        QTEST(run, "run");
        QTEST(static_cast<int>(m_faults.size()), "faults");
        QCOMPARE(done, m_faults.empty());
        QCOMPARE(count(), done ? 1 : 0);
    }

    void aServerLostAmidAChangeCostsNothing()
    {
        int run = 0;
        QVERIFY(ChangeTogether(m_cnn.get(), [&](Change &change) {
            const bool first = change.write("Insert into T Values ('A',1)");
            if (++run == 1) {
                server->kill();
                server->restart();
            }
            return first && change.write("Insert into T Values ('A',2)");
        }));
        QCOMPARE(run, 2);
        QCOMPARE(count(), 2);
        QVERIFY(m_faults.empty());
    }

    void noNumberIsGivenTwice_data()
    {
        QTest::addColumn<int>("users");
        QTest::newRow("with lock rows") << 3;
        QTest::newRow("a database that has none yet") << 1;
    }
    void noNumberIsGivenTwice()
    {
        QFETCH(int, users);
        constexpr int rows = 100;
        if (users > 1)
            m_cnn->Execute("Create Table FBT_Lock (Tbl Varchar(64), Code Varchar(50), N Bigint Default 0, Primary Key "
                           "(Tbl,Code))");
        std::vector<std::thread> work;
        std::atomic<int> added = 0;
        for (int user = 0; user < users; ++user) {
            work.emplace_back([&] {
                Connection own;
                own.open(m_cnn->address());
                for (int i = 0; i < rows; ++i)
                    added += addRow(own) ? 1 : 0;
            });
        }
        for (std::thread &user : work)
            user.join();
        QCOMPARE(added.load(), users * rows);
        QCOMPARE(FirstField(m_cnn.get(), "Select Count(Distinct N) from T").whole(), users * rows);
        QCOMPARE(FirstField(m_cnn.get(), "Select Max(N) from T").whole(), users * rows);
    }

    void twoUsersWhoSaveAtOnceWriteOneRow()
    {
        constexpr ClientTable table{"T", "Code", "N"};
        m_cnn->Execute("Alter Table T Add X Varchar(3)");
        m_cnn->Execute(
            "Create Table FBT_Lock (Tbl Varchar(64), Code Varchar(50), N Bigint Default 0, Primary Key (Tbl,Code))");
        std::vector<std::thread> work;
        for (int user = 0; user < 3; ++user) {
            work.emplace_back([&] {
                Connection own;
                own.open(m_cnn->address());
                for (int year = 1; year <= 30; ++year)
                    SaveRow(&own, table, {"A", year}, {{"X", "1"}}, {});
            });
        }
        for (std::thread &user : work)
            user.join();
        QCOMPARE(count(), 30);
    }

private:
    static bool addRow(Connection &cnn)
    {
        return ChangeTogether(&cnn, [](Change &change) {
            const auto number =
                change.nextNumber(QStringLiteral("T"), QStringLiteral("A"), "Select Max(N) from T Where Code='A'");
            return number && change.write(Sql("Insert into T Values ('A',", *number, ")"));
        });
    }

    int count() { return FirstField(m_cnn.get(), "Select Count(*) from T").whole(); }

    std::unique_ptr<Connection> m_cnn;
    std::vector<Fault> m_faults;
};

QTEST_GUILESS_MAIN(TestChange)
#include "tst_change.moc"
