#include "db/updater.h"
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

private:
    using Cut = std::function<void(Connection &)>;

    void startFrom(TestModule &module, bool old);
    QStringList taken(TestModule &module);
    void cutOff(TestModule &module, bool old, qsizetype at, const Cut &cut);
    QString wrong(TestModule &module, bool old, qsizetype at);
    QString cutAndCompleted(bool old, qsizetype at, const Cut &cut);

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
}

QString schemaOf(TestModule &module)
{
    return module.rows("Select Database()").constFirst();
}

// Reading, flushing and beginning a group change nothing, so a cut there is like one before the next write. Of a row of
// statements of one kind, such as the hundreds of inserts of a group, every tenth is enough.
bool worthACut(const QStringList &statements, qsizetype at)
{
    constexpr qsizetype kindLength = 12; // "Create Table", "Insert into "
    constexpr qsizetype stride = 10;
    const QString &statement = statements[at];
    if (statement.startsWith(u"Select") || statement == u"Flush Tables" || statement == u"Start Transaction")
        return false;
    return at == 0 || at % stride == 0 || statements[at - 1].left(kindLength) != statement.left(kindLength);
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
        module.connection.setObserver([&](const QString &statement) { m_statements[fromOld] << statement; });
        UpdateDatabase(&module.connection);
        module.connection.setObserver({});
        m_result[fromOld] = taken(module);
    }
}

// Runs the update with `cut` before a statement, runs it again on a server that is there, and tells what is different.
QString TestUpdaterCut::cutAndCompleted(bool old, qsizetype at, const Cut &cut)
{
    TestModule module(m_server);
    const ServerAddress address = module.connection.address();
    cutOff(module, old, at, cut);
    m_server.restart();
    if (module.connection.State() == Connection::Closed && !module.connection.open(address))
        qFatal("The server is gone.");
    UpdateDatabase(&module.connection);
    return wrong(module, old, at);
}

void TestUpdaterCut::cutOff(TestModule &module, bool old, qsizetype at, const Cut &cut)
{
    startFrom(module, old);
    qsizetype sent = 0;
    module.connection.setObserver([&](const QString &) {
        if (sent++ == at)
            cut(module.connection);
    });
    UpdateDatabase(&module.connection);
    module.connection.setObserver({});
}

QString TestUpdaterCut::wrong(TestModule &module, bool old, qsizetype at)
{
    const QString difference = Difference(taken(module), m_result[old]);
    return difference.isEmpty() ? difference : m_statements[old][at] + QStringLiteral(": ") + difference;
}

void TestUpdaterCut::cutAnywhere_data()
{
    QTest::addColumn<bool>("old");
    QTest::newRow("empty database") << false;
    QTest::newRow("older database") << true;
}

void TestUpdaterCut::cutAnywhere()
{
    QFETCH(bool, old);
    const auto cut = [](Connection &connection) { connection.close(); };
    qsizetype cuts = 0;
    for (qsizetype at = 0; at < m_statements[old].size(); ++at) {
        if (!worthACut(m_statements[old], at))
            continue;
        QCOMPARE(cutAndCompleted(old, at, cut), QString());
        ++cuts;
    }
    QVERIFY(cuts > 100);
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
    QCOMPARE(cutAndCompleted(old, at, [this](Connection &) { m_server.kill(); }), QString());
    const auto blink = [this](Connection &) {
        m_server.kill();
        m_server.restart();
    };
    // A server that is back at once costs nothing: what was lost with it is sent again in the same run.
    TestModule module(m_server);
    cutOff(module, old, at, blink);
    QCOMPARE(wrong(module, old, at), QString());
}

// The run ends there, and the connection is of use again.
void TestUpdaterCut::serverLostTwiceInAGroup()
{
    TestModule module(m_server);
    startFrom(module, false);
    int losses = 0;
    module.connection.setObserver([&](const QString &statement) {
        if (statement == u"Insert into FBT_ExpRate Values (100,0,20)" && ++losses <= 2) {
            m_server.kill();
            m_server.restart();
        }
    });
    UpdateDatabase(&module.connection);
    QCOMPARE(losses, 2);
    QCOMPARE(module.rows("Show Tables like 'FBT_Head2006'"), QStringList());
    QVERIFY(module.logLines().constLast().contains(u"The next update completes this one."));
    UpdateDatabase(&module.connection);
    QCOMPARE(Difference(taken(module), m_result[0]), QString());
}

QTEST_GUILESS_MAIN(TestUpdaterCut)
#include "tst_updatercut.moc"
