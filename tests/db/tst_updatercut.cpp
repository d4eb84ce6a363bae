#include "db/updater.h"
#include "records/updatemark.h"
#include "tests/db/dump.h"
#include "tests/support/caserow.h"

namespace {

// A database of the second year of the tax, with heads and items of the user's own in the way of the later law.
void makeOld(TestModule &module)
{
    UpdateDatabase(&module.connection);
    for (const QString table : {"FBT_Head", "FBT_ExpHead", "FBT_ExpRate"}) {
        for (const char *year : {"2007", "2008", "2009", "2010"})
            Carry(module, {"Drop Table " + table + year});
        // An older server made its tables without transactions.
        Carry(module, {"Create Table " + table + "2007 Engine=MyISAM Select * From " + table});
    }
    Carry(module, LinesOf("older.sql"));
}

bool update(TestModule &module, const std::function<void(const QString &)> &observer)
{
    module.connection.setObserver(observer);
    const bool ended = UpdateDatabase(&module.connection);
    module.connection.setObserver({});
    return ended;
}

// The next start in a host whose own flags say nothing. False when nothing was seen to do or it was not done.
bool completed(TestModule &module)
{
    return UpdateIsMarked(&module.connection) && UpdateDatabase(&module.connection);
}

// Where a run of statements of one kind begins: the hundreds of inserts of a group are alike, and so are the flushes.
QList<qsizetype> places(const QStringList &statements)
{
    QList<qsizetype> found{0, 1};
    for (qsizetype at = 2; at < statements.size(); ++at) {
        if (statements[at] != "Flush Tables" && statements[at - 1].left(12) != statements[at].left(12))
            found << at;
    }
    return found;
}

} // namespace

/// An update that is cut off anywhere leaves a database that the next one completes: as if there had been no cut.
class TestUpdaterCut : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TestModule older(m_server);
        makeOld(older);
        m_template = older.connection.address().schema;
        for (const bool old : {false, true}) {
            TestModule module(m_server);
            startFrom(module, old);
            QVERIFY(update(module, [&](const QString &statement) { m_statements[old] << statement; }));
            QVERIFY(!UpdateIsMarked(&module.connection)); // nothing is left to do
            m_result[old] = taken(module);
        }
    }

    void cutAnywhere_data()
    {
        Columns<bool, int, bool, int, int>(
            {"old", "lost", "killed", "first",
             "every"}); // statements, until the connection is there again // the rows share the places among them
        constexpr int all = 1'000'000;
        Case("empty database, two statements", false, 2, false, 0, 12);
        Case("older database, one statement", true, 1, false, 1, 16);
        Case("empty database, for good", false, all, false, 1, 30);
        Case("older database, for good", true, all, false, 3, 30);
        Case("empty database, server killed", false, all, true, 4, 60);
        Case("older database, server killed", true, all, true, 5, 50);
        Case("older database, server killed and back", true, 1, true, 6, 50);
    }
    void cutAnywhere()
    {
        const auto [old, lost, killed, first, every] = Row<bool, int, bool, int, int>();
        const QList<qsizetype> all = places(m_statements[old]);
        QVERIFY(all.size() > 100);
        for (qsizetype i = first; i < all.size(); i += every)
            QCOMPARE(cutAndCompleted(old, all[i], lost, killed), QString());
    }

    // Another user's open change makes the server refuse a group: it is sent again, and when the lock is still there, the
    // run goes on without it. The next start completes it.
    void rowsLockedByAnother_data()
    {
        Columns<int>({"refusals"});
        Case("for a moment", 1);
        Case("at each try", 5);
    }
    void rowsLockedByAnother()
    {
        QFETCH(int, refusals);
        TestModule module(m_server);
        UpdateDatabase(&module.connection);
        Carry(module, {"Delete from FBT_Head2008 Where HeadId>=20", "Delete from FBT_ExpHead2008 Where SrNo=135",
                       "Update FBT_ExpHead2008 Set HeadId=9 Where HeadId=20", "Delete from SRate Where yr=2007",
                       "Insert into FBT_Head2008 Values (25,'X','Own')", "Set Session innodb_lock_wait_timeout=0"});
        Connection another;
        QVERIFY(another.open(module.connection.address()));
        QVERIFY(another.beginGroup() && another.Execute("Update FBT_Head2008 Set HeadDesc='Theirs' Where HeadId=1"));
        const bool leftOpen = refusals == 5;
        int refused = 0;
        QVERIFY(update(module, [&](const QString &statement) {
            if (statement == u"Rollback" && ++refused == refusals)
                another.abandonGroup();
        }));
        QCOMPARE(refused, refusals);
        QCOMPARE(module.logLines().size(), leftOpen ? 1 : 0);
        QCOMPARE(module.logLines().join(u' ').contains("1205"), leftOpen);
        QCOMPARE(module.rows("Select count(*) from SRate"), QStringList{"5"}); // a later step
        QCOMPARE(completed(module), leftOpen);
        QCOMPARE(module.rows("Select HeadId,Section from FBT_Head2008 Where HeadId>=20 Order by 1").join(u' '),
                 "20\t115WB(2)(Q) 26\tX 27\t115WB(1)(d)");
    }

    void aQuestionThatWasRefusedIsAskedAgain()
    {
        TestModule module(m_server);
        UpdateDatabase(&module.connection);
        Carry(module,
              {"Insert into FBT_Info (Code_No,ClStatus,SurApp) Values ('A',8,'')", "Set Session lock_wait_timeout=0"});
        Connection another;
        QVERIFY(another.open(module.connection.address()));
        QVERIFY(update(module, [&](const QString &statement) {
            const bool asked = statement == "Select * from FBT_Info Where SurApp=''";
            another.Execute(asked ? "Lock Tables FBT_Info Write" : "Unlock Tables");
        }));
        QCOMPARE(module.logLines().size(), 1);
        QVERIFY(completed(module));
        QCOMPARE(module.rows("Select ClStatus,SurApp from FBT_Info"), QStringList{"9\t11111"});
    }

private:
    void startFrom(TestModule &module, bool old)
    {
        // The program's own server keeps what it has confirmed, and so must the one that is killed here.
        Carry(module, {"Set Global innodb_flush_log_at_trx_commit=1"});
        for (const QString &table : old ? module.rows("Show Tables from " + m_template) : QStringList())
            Carry(module, {Sql("Create Table ", table, " Like ", m_template, ".", table),
                           Sql("Insert into ", table, " Select * from ", m_template, ".", table)});
    }

    // Reads all of the schema and removes it.
    static QStringList taken(TestModule &module)
    {
        QStringList result = StructureOf(module) + ContentOf(module.connection);
        Carry(module, {"Drop Database " + module.connection.address().schema});
        return result;
    }

    // Loses the connection, or the server, before a statement, starts the program again on a server that is there, and
    // tells what is different. A server that is back soon costs nothing: the step in which it was lost is run again.
    QString cutAndCompleted(bool old, qsizetype at, int lost, bool killed)
    {
        TestModule module(m_server);
        const ServerAddress address = module.connection.address();
        startFrom(module, old);
        qsizetype sent = 0;
        const bool ended = update(module, [&](const QString &) {
            if (sent == at && killed)
                m_server.kill();
            if (sent == at && killed && lost == 1)
                m_server.restart();
            if (sent >= at && sent < at + lost && !killed)
                module.connection.close();
            if (sent == at + lost && !killed)
                module.connection.open(address);
            ++sent;
        });
        const bool gone = sent <= at + lost && lost > 2;
        if (killed && gone)
            m_server.restart();
        if (gone && !module.connection.open(address))
            qFatal("The server is gone.");
        const QString where = m_statements[old][at] + ": ";
        const bool last = at + 1 == m_statements[old].size(); // nothing depends on it: the mark is dropped already
        if (ended == gone && !last)
            return where + (ended ? "counted as done" : "not done");
        // Before the mark stands nothing is begun, and the host's own flags are as before.
        if (!ended && !last && !(at == 0 ? UpdateDatabase(&module.connection) : completed(module)))
            return where + "not completed";
        const QString difference = Difference(taken(module), m_result[old]);
        return difference.isEmpty() ? difference : where + difference;
    }

    TestServer m_server;
    QString m_template;          // schema of the older database
    QStringList m_statements[2]; // of an uncut update of an empty and of the older database
    QStringList m_result[2];     // and what comes out
};

QTEST_GUILESS_MAIN(TestUpdaterCut)
#include "tst_updatercut.moc"
