#include "db/updater.h"
#include "suite/wexamain.h"
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
    void serverKilled_data();
    void serverKilled();
    void serverLostTwiceInAGroup();
    void rowsLockedByAnother();

private:
    void startFrom(TestModule &module, bool old);
    QStringList taken(TestModule &module);
    QString wrong(TestModule &module, bool old, qsizetype at);
    QString cutAndCompleted(bool old, qsizetype at, bool forGood);

    TestServer m_server;
    QString m_template;          // schema of the older database
    QStringList m_statements[2]; // of an uncut update of an empty and of the older database
    QStringList m_result[2];     // and what comes out
};

namespace {

void execute(TestModule &module, const QStringList &statements)
{
    for (const QString &statement : statements) {
        if (!module.connection.Execute(statement))
            qFatal("%s: %s", qPrintable(statement), qPrintable(module.logLines().join(u'\n')));
    }
}

// A database of the second year of the tax, with heads and items of the user's own in the way of the later law.
void makeOld(TestModule &module)
{
    UpdateDatabase(&module.connection);
    for (const char *year : {"2007", "2008", "2009", "2010"}) {
        for (const char *table : {"FBT_Head", "FBT_ExpHead", "FBT_ExpRate"})
            execute(module, {Sql("Drop Table ", table, year)});
    }
    for (const char *table : {"FBT_Head", "FBT_ExpHead", "FBT_ExpRate"})
        execute(module, {Sql("Create Table ", table, "2007 Select * From ", table)});
    execute(module, {"Insert into FBT_Head2007 Values (20,'X','Own'),(21,'Y','Other')",
                     "Insert into FBT_ExpHead2007 Values (135,20,'Own item'),(136,21,'Other item')",
                     "Insert into FBT_ExpRate2007 Values (135,0,10),(136,0,15)",
                     "Alter Table FBT_Info Drop Doi, Drop Email, Drop ResSt, Drop SexM, Drop FName, Drop SurApp",
                     "Alter Table FBT_Challan Drop ChallanNo, Drop BSRCode, Drop ECAmt1",
                     "Alter Table FBT_AddInfo Drop areacd, Drop aotyp, Drop aorng, Drop aono, Change NOB NOB Char(1)",
                     "Alter Table FBT_AddInfo Drop Calc115WJ, Drop Amt115WJ, Drop Calc115WK, Drop Amt115WK",
                     "Alter Table FBT_AddInfo Drop Calc115WJ5, Drop Amt115WJ5, Drop IntDt",
                     "Drop Index IdxFBT on FBT_Info", "Drop Index IdxFBT on FBT_Challan",
                     "Insert into FBT_Info (Code_no,ClStatus,SignP,SignD) Values ('A',2,'RAM','PARTNER')",
                     "Insert into FBT_Info (Code_no,ClStatus,SignP,SignD) Values ('B',8,'',''),('C',0,'','')",
                     "Insert into FBT_Challan (Code_No,quarter,paytype) Values ('A',2,'Self Assessment Tax (300)')",
                     "Delete from DueDt_Master Where AssYear>2008 or StatC=4",
                     "Delete from ChallanDt_Master Where AssYear>2007", "Delete from SRate Where yr=2007",
                     "Delete from Bill_Type"});
    // An older server made its tables without transactions.
    for (const char *table : {"FBT_Head2007", "FBT_ExpHead2007", "FBT_ExpRate2007", "SRate", "DueDt_Master"})
        execute(module, {Sql("Alter Table ", table, " Engine=MyISAM")});
}

QString schemaOf(TestModule &module)
{
    return module.rows("Select Database()").constFirst();
}

using Observer = std::function<void(const QString &)>;

// What the program does at a start. False when it saw nothing to do.
bool startProgram(TestModule &module, const Observer &observer = {})
{
    SuiteContext context;
    context.cnn = &module.connection;
    context.appPath = module.base.AppPath;
    context.version = QStringLiteral("2.10.1");
    const WexaMain main(context);
    if (!main.CreateDbFlag() && !main.UpdateDbFlag())
        return false;
    module.connection.setObserver(observer);
    UpdateDatabase(&module.connection);
    module.connection.setObserver({});
    module.connection.Execute("Delete From VerInfo");
    module.connection.Execute("Insert Into VerInfo Values ('2.10.1')");
    return true;
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
    execute(module, {"Set Global innodb_flush_log_at_trx_commit=1"});
    if (!old)
        return;
    for (const QString &table : module.rows(Sql("Show Tables from ", m_template)))
        execute(module, {Sql("Create Table ", table, " Like ", m_template, ".", table),
                         Sql("Insert into ", table, " Select * from ", m_template, ".", table)});
}

// Reads all of the schema and removes it.
QStringList TestUpdaterCut::taken(TestModule &module)
{
    QStringList result = StructureOf(module) + ContentOf(module);
    execute(module, {Sql("Drop Database ", schemaOf(module))});
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
        QVERIFY(startProgram(module, [&](const QString &statement) { m_statements[fromOld] << statement; }));
        QVERIFY(!startProgram(module)); // nothing is left to do
        m_result[fromOld] = taken(module);
    }
}

// Loses the connection before a statement, for good or for this statement only, starts the program again on a server that
// is there, and tells what is different.
QString TestUpdaterCut::cutAndCompleted(bool old, qsizetype at, bool forGood)
{
    TestModule module(m_server);
    const ServerAddress address = module.connection.address();
    startFrom(module, old);
    qsizetype sent = 0;
    startProgram(module, [&](const QString &) {
        if (sent == at)
            module.connection.close();
        else if (sent == at + 1 && !forGood)
            module.connection.open(address);
        ++sent;
    });
    const bool closed = module.connection.State() == Connection::Closed;
    if (closed && !module.connection.open(address))
        qFatal("The server is gone.");
    if (!startProgram(module) && closed)
        return QStringLiteral("The next start saw nothing to do behind ") + m_statements[old][at];
    return wrong(module, old, at);
}

QString TestUpdaterCut::wrong(TestModule &module, bool old, qsizetype at)
{
    const QString difference = Difference(taken(module), m_result[old]);
    return difference.isEmpty() ? difference : m_statements[old][at] + QStringLiteral(": ") + difference;
}

void TestUpdaterCut::cutAnywhere_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<bool>("forGood");
    QTest::addColumn<int>("first"); // the rows share the places among them
    QTest::addColumn<int>("every");
    QTest::newRow("empty database, one statement") << false << false << 0 << 6;
    QTest::newRow("older database, one statement") << true << false << 1 << 8;
    QTest::newRow("empty database, for good") << false << true << 2 << 20;
    QTest::newRow("older database, for good") << true << true << 3 << 20;
}

void TestUpdaterCut::cutAnywhere()
{
    QFETCH(bool, old);
    QFETCH(bool, forGood);
    QFETCH(int, first);
    QFETCH(int, every);
    const QList<qsizetype> all = places(m_statements[old]);
    QVERIFY(all.size() > 100);
    for (qsizetype i = first; i < all.size(); i += every)
        QCOMPARE(cutAndCompleted(old, all[i], forGood), QString());
}

void TestUpdaterCut::serverKilled_data()
{
    QTest::addColumn<bool>("old");
    QTest::addColumn<QString>("statement"); // the server is gone before this one
    QTest::newRow("while tables are made") << false << "Create Table If Not Exists FBT_Nature (";
    QTest::newRow("among items and rates") << false << "Insert into FBT_ExpRate Values (100,0";
    QTest::newRow("between heads and items") << false << "Insert Into FBT_ExpHead2008 ";
    QTest::newRow("between renumbered heads and items") << true << "Update FBT_ExpHead2007 Set HeadId=HeadId+1";
    QTest::newRow("before new rates") << true << "Insert into FBT_ExpRate2007 Values (58";
    QTest::newRow("before the rate of shares") << true << "Insert into FBT_ExpRate2008 Values (";
}

void TestUpdaterCut::serverKilled()
{
    QFETCH(bool, old);
    QFETCH(QString, statement);
    qsizetype at = 0;
    while (!m_statements[old].value(at, statement).startsWith(statement))
        ++at;
    QVERIFY(at < m_statements[old].size());
    for (const bool backAtOnce : {false, true}) {
        TestModule module(m_server);
        startFrom(module, old);
        qsizetype sent = 0;
        startProgram(module, [&](const QString &) {
            if (sent++ != at)
                return;
            m_server.kill();
            if (backAtOnce)
                m_server.restart();
        });
        if (!backAtOnce)
            m_server.restart();
        // A server that is back at once costs nothing: what was lost with it is sent again in the same run.
        QCOMPARE(startProgram(module), !backAtOnce);
        QCOMPARE(wrong(module, old, at), QString());
    }
}

// The run ends there, tells each loss once, and the connection is of use again.
void TestUpdaterCut::serverLostTwiceInAGroup()
{
    TestModule module(m_server);
    startFrom(module, false);
    int losses = 0;
    startProgram(module, [&](const QString &statement) {
        if (statement == u"Insert into FBT_ExpRate Values (100,0,20)" && ++losses <= 2) {
            m_server.kill();
            m_server.restart();
        }
    });
    QCOMPARE(losses, 2);
    const QStringList log = module.logLines();
    QCOMPARE(log.size(), 3);
    QVERIFY(log[0].startsWith(u"2006") && log[1].startsWith(u"2006"));
    QVERIFY(log[2].contains(u"The next update completes this one."));
    QCOMPARE(module.rows("Show Tables like 'FBT_Head2006'"), QStringList());
    QCOMPARE(module.rows("Select @@in_transaction"), QStringList{"0"});
    QVERIFY(startProgram(module));
    QCOMPARE(Difference(taken(module), m_result[0]), QString());
}

// Another user's open change makes the server refuse a statement within a group: the group is sent again.
void TestUpdaterCut::rowsLockedByAnother()
{
    TestModule module(m_server);
    startFrom(module, true);
    Connection another;
    QVERIFY(another.open(module.connection.address()));
    QVERIFY(another.Execute("Alter Table FBT_ExpHead2007 Engine=InnoDB"));
    QVERIFY(module.connection.Execute("Set Session innodb_lock_wait_timeout=0"));
    bool locked = false;
    startProgram(module, [&](const QString &statement) {
        if (!locked && statement == u"Update FBT_Head2007 Set HeadId=HeadId+1 Where HeadId>=20")
            locked =
                another.beginGroup() && another.Execute("Update FBT_ExpHead2007 Set HeadId=HeadId Where HeadId>=20");
        else if (statement == u"Rollback")
            another.commitGroup();
    });
    QVERIFY(locked);
    QCOMPARE(module.logLines().size(), 1);
    QVERIFY(module.logLines().constFirst().startsWith(u"1205"));
    QCOMPARE(Difference(taken(module), m_result[1]), QString());
}

QTEST_GUILESS_MAIN(TestUpdaterCut)
#include "tst_updatercut.moc"
