#include "db/updater.h"
#include "platform/recordset.h"
#include "records/challans.h"
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
        server->openFreshSchema(*m_cnn, &m_faults);
        QVERIFY(m_cnn->Execute("Create Table T (Code Varchar(3), N Int(11))"));
        QVERIFY(m_cnn->Execute("Create Table FBT_Info Select 'A' as Code_No"));
    }

    void aRefusedGroupIsRunAgain()
    {
        const QString deadlock = "Signal Sqlstate '40001' Set MYSQL_ERRNO=1213";
        const struct
        {
            QString refusal;
            int refused, run, faults; // times
        } rows[] = {{deadlock, 1, 2, 0},
                    {"Signal Sqlstate '45000' Set MYSQL_ERRNO=1205", 4, 5, 0}, // wait for a lock
                    {deadlock, 9, 5, 1},
                    {"Insert into Nowhere Values (1)", 1, 1, 1},
                    {"", 9, 1, 1}}; // a value that would leave its quotes
        for (const auto &row : rows) {
            m_faults.clear();
            m_cnn->Execute("Delete from T");
            int run = 0;
            const bool done = ChangeTogether(m_cnn.get(), [&](Change &change) {
                const bool first = change.write("Insert into T Values ('A',1)");
                if (++run > row.refused)
                    return first;
                const SqlText hostile = Sql("Delete from T Where Code='", QString("x' or 'a'='a"), "'");
                return first && change.write(row.refusal.isEmpty() ? hostile : SqlText(row.refusal));
            });
            QVERIFY2(run == row.run && static_cast<int>(m_faults.size()) == row.faults, qPrintable(row.refusal));
            QVERIFY2(done == m_faults.empty() && count() == (done ? 1 : 0), qPrintable(row.refusal));
        }
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

    void noNumberIsGivenTwice()
    {
        constexpr int rows = 100;
        for (const int users : {1, 3}) { // the one in a database that has no lock rows yet
            m_cnn->Execute("Delete from T");
            if (users > 1)
                makeLocks();
            std::atomic<int> added = 0;
            together(users, [&](Connection &own) {
                for (int i = 0; i < rows; ++i)
                    added += addRow(own) ? 1 : 0;
            });
            QCOMPARE(added.load(), users * rows);
            QCOMPARE(FirstField(m_cnn.get(), "Select Count(Distinct N) from T").whole(), users * rows);
            QCOMPARE(FirstField(m_cnn.get(), "Select Max(N) from T").whole(), users * rows);
        }
    }

    void challansAddedAtOnceAreNumbered()
    {
        CREATETABLES(m_cnn.get());
        makeLocks();
        m_cnn->Execute("Insert into FBT_Info (Code_no) Values ('A')");
        together(2, [](Connection &own) {
            for (int i = 0; i < 15; ++i)
                AddChallan(&own, {"A", 2008}, {});
        });
        QCOMPARE(FirstField(m_cnn.get(), "Select Count(Distinct srno) from FBT_Challan").whole(), 30);
    }

    void usersWhoSaveAtOnceWriteOneRow()
    {
        constexpr ClientTable table{"T", "Code", "N"};
        m_cnn->Execute("Alter Table T Add X Varchar(3)");
        makeLocks();
        together(3, [&](Connection &own) {
            for (int year = 1; year <= 30; ++year)
                SaveRow(&own, table, {"A", year}, {{"X", "1"}}, {});
        });
        QCOMPARE(count(), 30);
        QVERIFY(!SaveRow(m_cnn.get(), table, {"B", 1}, {{"X", "1"}}, {})); // his rows would be nobody's
        QCOMPARE(count(), 30);
    }

private:
    void makeLocks()
    {
        m_cnn->Execute(
            "Create Table FBT_Lock (Tbl Varchar(64), Code Varchar(50), N Bigint Default 0, Primary Key (Tbl,Code))");
    }
    void together(int users, const std::function<void(Connection &)> &work)
    {
        std::vector<std::thread> threads;
        for (int user = 0; user < users; ++user) {
            threads.emplace_back([&] {
                Connection own;
                own.open(m_cnn->address());
                work(own);
            });
        }
        for (std::thread &thread : threads)
            thread.join();
    }
    static bool addRow(Connection &cnn)
    {
        return ChangeTogether(&cnn, [](Change &change) {
            const auto number = change.nextNumber("T", "A", "Select Max(N) from T Where Code='A'");
            return number && change.write(Sql("Insert into T Values ('A',", *number, ")"));
        });
    }

    int count() { return FirstField(m_cnn.get(), "Select Count(*) from T").whole(); }

    std::unique_ptr<Connection> m_cnn;
    std::vector<Fault> m_faults;
};

QTEST_GUILESS_MAIN(TestChange)
#include "tst_change.moc"
