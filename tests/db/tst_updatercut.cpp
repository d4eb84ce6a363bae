#include "db/updater.h"
#include "records/updatemark.h"
#include "tests/db/dump.h"
#include "tests/support/testmodule.h"

#include <QTest>

/// An update that is cut off anywhere leaves a database that the next one completes: as if there had been no cut.
class TestUpdaterCut : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cutAnywhere_data();
    void cutAnywhere();
    void lostAtTheFirstStatements();
    void rowsLockedByAnother_data();
    void rowsLockedByAnother();

private:
    enum class Cut { OneStatement, ForGood, Kill, KillAndBack };

    void startFrom(TestModule &module, bool old);
    QStringList taken(TestModule &module);
    QString cutAndCompleted(bool old, qsizetype at, Cut cut);

    TestServer m_server;
    QString m_template;          // schema of the older database
    QStringList m_statements[2]; // of an uncut update of an empty and of the older database
    QStringList m_result[2];     // and what comes out
};

namespace {

// A database of the second year of the tax, with heads and items of the user's own in the way of the later law.
void makeOld(TestModule &module)
{
    UpdateDatabase(&module.connection);
    for (const char *year : {"2007", "2008", "2009", "2010"}) {
        for (const char *table : {"FBT_Head", "FBT_ExpHead", "FBT_ExpRate"})
            Carry(module, {Sql("Drop Table ", table, year)});
    }
    for (const char *table : {"FBT_Head", "FBT_ExpHead", "FBT_ExpRate"})
        Carry(module, {Sql("Create Table ", table, "2007 Select * From ", table)});
    Carry(module,
          {"Insert into FBT_Head2007 Values (20,'X','Own'),(21,'Y','Other')",
           "Insert into FBT_ExpHead2007 Values (135,20,'Own item'),(136,21,'Other item')",
           "Insert into FBT_ExpRate2007 Values (135,0,10),(136,0,15)",
           "Alter Table FBT_Info Drop Doi, Drop Email, Drop ResSt, Drop SexM, Drop FName, Drop SurApp",
           "Alter Table FBT_Challan Drop ChallanNo, Drop BSRCode, Drop ECAmt1",
           "Alter Table FBT_AddInfo Drop areacd, Drop aotyp, Drop aorng, Drop aono, Change NOB NOB Char(1)",
           "Alter Table FBT_AddInfo Drop Calc115WJ, Drop Amt115WJ, Drop Calc115WK, Drop Amt115WK",
           "Alter Table FBT_AddInfo Drop Calc115WJ5, Drop Amt115WJ5, Drop IntDt", "Drop Index IdxFBT on FBT_Info",
           "Drop Index IdxFBT on FBT_Challan",
           "Insert into FBT_Info (Code_no,ClStatus,SignP,SignD) Values ('A',2,'RAM','PARTNER')",
           "Insert into FBT_Info (Code_no,ClStatus,SignP,SignD) Values ('B',8,'',''),('C',0,'','')",
           "Insert into FBT_Challan (Code_No,quarter,paytype) Values ('A',2,'Self Assessment Tax (300)')",
           "Delete from DueDt_Master Where AssYear>2008 or StatC=4", "Delete from ChallanDt_Master Where AssYear>2007",
           "Delete from SRate Where yr=2007", "Delete from Bill_Type"});
    // An older server made its tables without transactions.
    for (const char *table : {"FBT_Head2007", "FBT_ExpHead2007", "FBT_ExpRate2007", "SRate", "DueDt_Master"})
        Carry(module, {Sql("Alter Table ", table, " Engine=MyISAM")});
}

QString schemaOf(TestModule &module)
{
    return module.rows("Select Database()").constFirst();
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

// Where a run of statements of one kind begins, and some places within it: the hundreds of inserts of a group are alike,
// and so are the flushes.
QList<qsizetype> places(const QStringList &statements)
{
    constexpr qsizetype kindLength = 12; // "Create Table", "Insert into "
    constexpr qsizetype stride = 25;
    QList<qsizetype> found;
    for (qsizetype at = 0; at < statements.size(); ++at) {
        const bool alike = at > 0 && statements[at - 1].left(kindLength) == statements[at].left(kindLength);
        if (at % stride == 0 || (!alike && statements[at] != u"Flush Tables"))
            found << at;
    }
    return found;
}

} // namespace

void TestUpdaterCut::startFrom(TestModule &module, bool old)
{
    // The program's own server keeps what it has confirmed, and so must the one that is killed here.
    Carry(module, {"Set Global innodb_flush_log_at_trx_commit=1"});
    if (!old)
        return;
    for (const QString &table : module.rows(Sql("Show Tables from ", m_template)))
        Carry(module, {Sql("Create Table ", table, " Like ", m_template, ".", table),
                       Sql("Insert into ", table, " Select * from ", m_template, ".", table)});
}

// Reads all of the schema and removes it.
QStringList TestUpdaterCut::taken(TestModule &module)
{
    QStringList result = StructureOf(module) + ContentOf(module);
    Carry(module, {Sql("Drop Database ", schemaOf(module))});
    return result;
}

void TestUpdaterCut::initTestCase()
{
    TestModule old(m_server);
    makeOld(old);
    m_template = schemaOf(old);
    for (const bool fromOld : {false, true}) {
        TestModule module(m_server);
        startFrom(module, fromOld);
        QVERIFY(update(module, [&](const QString &statement) { m_statements[fromOld] << statement; }));
        QVERIFY(!UpdateIsMarked(&module.connection)); // nothing is left to do
        m_result[fromOld] = taken(module);
    }
}

// Loses the connection or the server before a statement, starts the program again on a server that is there, and tells
// what is different. A server that is back at once costs nothing: the step in which it was lost is carried out again.
QString TestUpdaterCut::cutAndCompleted(bool old, qsizetype at, Cut cut)
{
    TestModule module(m_server);
    const ServerAddress address = module.connection.address();
    const bool gone = cut == Cut::ForGood || cut == Cut::Kill;
    const bool killed = cut == Cut::Kill || cut == Cut::KillAndBack;
    startFrom(module, old);
    qsizetype sent = 0;
    const bool ended = update(module, [&](const QString &) {
        if (sent == at && killed)
            m_server.kill();
        else if (sent == at)
            module.connection.close();
        if (sent == at && cut == Cut::KillAndBack)
            m_server.restart();
        if (sent == at + 1 && cut == Cut::OneStatement)
            module.connection.open(address);
        ++sent;
    });
    if (cut == Cut::Kill)
        m_server.restart();
    if (gone && !module.connection.open(address))
        qFatal("The server is gone.");
    const QString where = m_statements[old][at] + QString(": ");
    // Of the very last statement nothing depends: the mark is dropped already.
    if (ended == gone && at + 1 < m_statements[old].size())
        return where + (ended ? "counted as done" : "not done");
    // Before the mark stands nothing is begun, and the host's own flags are as before.
    if (!ended && at + 1 < m_statements[old].size() &&
        !(at == 0 ? UpdateDatabase(&module.connection) : completed(module)))
        return where + "not completed";
    const QString difference = Difference(taken(module), m_result[old]);
    return difference.isEmpty() ? difference : where + difference;
}

void TestUpdaterCut::cutAnywhere_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<Cut>("cut");
    QTest::addColumn<int>("first"); // the rows share the places among them
    QTest::addColumn<int>("every");
    QTest::newRow("empty database, one statement") << false << Cut::OneStatement << 0 << 12;
    QTest::newRow("older database, one statement") << true << Cut::OneStatement << 1 << 16;
    QTest::newRow("empty database, for good") << false << Cut::ForGood << 0 << 30;
    QTest::newRow("older database, for good") << true << Cut::ForGood << 3 << 30;
    QTest::newRow("empty database, server killed") << false << Cut::Kill << 4 << 60;
    QTest::newRow("older database, server killed") << true << Cut::Kill << 5 << 50;
    QTest::newRow("older database, server back at once") << true << Cut::KillAndBack << 6 << 50;
}

void TestUpdaterCut::cutAnywhere()
{
    QFETCH(bool, old);
    QFETCH(Cut, cut);
    QFETCH(int, first);
    QFETCH(int, every);
    const QList<qsizetype> all = places(m_statements[old]);
    QVERIFY(all.size() > 100);
    for (qsizetype i = first; i < all.size(); i += every)
        QCOMPARE(cutAndCompleted(old, all[i], cut), QString());
}

// Nothing may be begun that no later start can see.
void TestUpdaterCut::lostAtTheFirstStatements()
{
    TestModule module(m_server);
    startFrom(module, false);
    const ServerAddress address = module.connection.address();
    int sent = 0;
    const bool ended = update(module, [&](const QString &) {
        if (++sent <= 2)
            module.connection.close();
        else if (sent == 3)
            module.connection.open(address);
    });
    QVERIFY(ended);
    QCOMPARE(Difference(taken(module), m_result[0]), QString());
}

// Another user's open change makes the server refuse a group: it is sent again, and when the lock is still there, the run
// goes on without it. The next start completes it.
void TestUpdaterCut::rowsLockedByAnother_data()
{
    QTest::addColumn<int>("refusals");
    QTest::addColumn<bool>("leftOpen");
    QTest::newRow("for a moment") << 1 << false;
    QTest::newRow("at each try") << 5 << true;
}

void TestUpdaterCut::rowsLockedByAnother()
{
    QFETCH(int, refusals);
    QFETCH(bool, leftOpen);
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    Carry(module, {"Delete from FBT_Head2008 Where HeadId>=20", "Delete from FBT_ExpHead2008 Where SrNo=135",
                   "Update FBT_ExpHead2008 Set HeadId=9 Where HeadId=20", "Delete from SRate Where yr=2007",
                   "Insert into FBT_Head2008 Values (25,'X','Own')", "Set Session innodb_lock_wait_timeout=0"});
    Connection another;
    QVERIFY(another.open(module.connection.address()));
    QVERIFY(another.beginGroup() && another.Execute("Update FBT_Head2008 Set HeadDesc='Theirs' Where HeadId=1"));
    int refused = 0;
    QVERIFY(update(module, [&](const QString &statement) {
        if (statement == u"Rollback" && ++refused == refusals)
            another.abandonGroup();
    }));
    QCOMPARE(refused, refusals);
    const QStringList log = module.logLines();
    QCOMPARE(log.size(), leftOpen ? 1 : 0);
    QCOMPARE(log.filter("1205").size(), log.size());
    QCOMPARE(module.rows("Select count(*) from SRate"), QStringList{"5"}); // a later step
    QCOMPARE(completed(module), leftOpen);
    QCOMPARE(module.rows("Select HeadId,Section from FBT_Head2008 Where HeadId>=20 Order by 1").join(u' '),
             QString("20\t115WB(2)(Q) 26\tX 27\t115WB(1)(d)"));
}

QTEST_GUILESS_MAIN(TestUpdaterCut)
#include "tst_updatercut.moc"
