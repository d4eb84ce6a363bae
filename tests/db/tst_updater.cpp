#include "db/updater.h"
#include "tests/db/dump.h"
#include "tests/support/testmodule.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

/// The update of empty and of older databases: what it sends, and what comes out.
class TestUpdater : public QObject
{
    Q_OBJECT

private slots:
    void sendsTheseStatementsToAnEmptyDatabase();
    void spellsEachTableInOneWay();
    void secondRunChangesNothing();
    void olderShapeGrows_data();
    void olderShapeGrows();
    void unknownShapeStays();
    void convertsStatus_data();
    void convertsStatus();
    void keepsConvertedClients();
    void movesSignatoriesOnce();
    void clearsQuarters();
    void correctsReturnDates();
    void replacesServiceTax();
    void refusedStatementCostsItself();
    void convertsEngines();

private:
    TestServer m_server;
};

namespace {

QStringList goldenStatements()
{
    QFile file(QFINDTESTDATA("updater_empty.golden"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void execute(TestModule &module, const QStringList &statements)
{
    for (const QString &statement : statements)
        QVERIFY2(module.connection.Execute(statement), qPrintable(statement));
}

} // namespace

void TestUpdater::sendsTheseStatementsToAnEmptyDatabase()
{
    TestModule module(m_server);
    QStringList sent;
    module.connection.setObserver([&](const QString &statement) { sent << statement; });
    UpdateDatabase(&module.connection);
    QCOMPARE(Difference(sent, goldenStatements()), QString());
    QCOMPARE(module.logLines(), QStringList());
}

// A server that tells capitals in names apart must find every table that was made.
void TestUpdater::spellsEachTableInOneWay()
{
    static const QRegularExpression word(QStringLiteral("\\b[A-Za-z][A-Za-z]*_[A-Za-z]+(20\\d\\d)?\\b|\\b(SRate|biller|"
                                                        "table3|AdvTaxDueDt|TmpUpdFBT)\\b"),
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression texts(QStringLiteral("'[^']*'|\\(.*\\)"));
    QMap<QString, QString> spellings;
    for (QString statement : goldenStatements()) {
        statement.remove(texts);
        for (auto found = word.globalMatch(statement); found.hasNext();) {
            const QString name = found.next().captured();
            const QString first = spellings.value(name.toLower(), name);
            QCOMPARE(name, first);
            spellings[name.toLower()] = name;
        }
    }
    QVERIFY(spellings.contains(QStringLiteral("duedt_master")));
    QVERIFY(spellings.contains(QStringLiteral("fbt_exprate2010")));
}

void TestUpdater::secondRunChangesNothing()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    execute(module, {QStringLiteral("Insert into FBT_Info (Code_no,ClStatus,SurApp) Values ('A',2,'01100')"),
                     QStringLiteral("Insert into FBT_ExpRate2009 Values (500,0,20)")});
    const QStringList structure = StructureOf(module);
    const QStringList content = ContentOf(module);
    UpdateDatabase(&module.connection);
    QCOMPARE(Difference(StructureOf(module), structure), QString());
    QCOMPARE(Difference(ContentOf(module), content), QString());
    QCOMPARE(module.logLines(), QStringList());
}

void TestUpdater::olderShapeGrows_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("lateColumns"); // what later versions added
    QTest::addColumn<QString>("added");       // and what they hold in an old row
    const QString interest = QStringLiteral("Calc115WJ Amt115WJ Calc115WK Amt115WK ");
    const QString deferred = QStringLiteral("Calc115WJ5 Amt115WJ5 ");
    QTest::newRow("clients before dates") << "FBT_Info" << 17 << "Doi Email ResSt SexM FName SurApp"
                                          << "||0|0||00000";
    QTest::newRow("clients before surcharge") << "FBT_Info" << 22 << "SurApp"
                                              << "00000";
    QTest::newRow("payments before numbers") << "FBT_Challan" << 17 << "ChallanNo BSRCode ECAmt1"
                                             << "|0|0";
    QTest::newRow("payments before second cess") << "FBT_Challan" << 19 << "ECAmt1"
                                                 << "0";
    QTest::newRow("additional before officer")
        << "FBT_AddInfo" << 25 << "areacd aotyp aorng aono " + interest + deferred + "IntDt"
        << "||||1|0|1|0|1|0|";
    QTest::newRow("additional before interest") << "FBT_AddInfo" << 29 << interest + deferred + "IntDt"
                                                << "1|0|1|0|1|0|";
    QTest::newRow("additional before deferment") << "FBT_AddInfo" << 33 << deferred + "IntDt"
                                                 << "1|0|";
    QTest::newRow("additional before interest date") << "FBT_AddInfo" << 35 << "IntDt"
                                                     << "";
    QTest::newRow("rates before second cess") << "SRate" << 6 << "ECess1"
                                              << "0";
}

void TestUpdater::olderShapeGrows()
{
    QFETCH(QString, table);
    QFETCH(int, columns);
    QFETCH(QString, lateColumns);
    QFETCH(QString, added);
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    const QStringList fresh = StructureOf(module);

    const QStringList late = lateColumns.split(u' ');
    for (const QString &column : late)
        execute(module, {Sql("Alter Table ", table, " Drop Column ", column)});
    if (table == u"FBT_AddInfo" && columns == 25)
        execute(module, {QStringLiteral("Alter Table FBT_AddInfo Change NOB NOB Char(1)")});
    const QString first = module.rows(Sql("Show Columns from ", table)).constFirst().section(u'\t', 0, 0);
    const QString one = table == u"SRate" ? QStringLiteral("'11/05/2007',12,2007,5,11,2") : QStringLiteral("'A'");
    const QString names = table == u"SRate" ? QStringLiteral("Frm,Rate,yr,mon,dt,ECess") : first;
    execute(module, {Sql("Delete from ", table), Sql("Insert into ", table, " (", names, ") Values (", one, ")")});
    QCOMPARE(module.rows(Sql("Show Columns from ", table)).size(), columns);

    UpdateDatabase(&module.connection);
    QCOMPARE(Difference(StructureOf(module), fresh), QString());
    QCOMPARE(module.rows(Sql("Select Concat_ws('|',", late.join(u','), ") from ", table)), QStringList{added});
    QCOMPARE(module.logLines(), QStringList());
}

void TestUpdater::unknownShapeStays()
{
    TestModule module(m_server);
    CREATETABLES(&module.connection);
    execute(module, {QStringLiteral("Alter Table FBT_Challan Drop Column ECAmt1"),
                     QStringLiteral("Alter Table FBT_Challan Drop Column BSRCode")});
    UpdateDatabase(&module.connection);
    QCOMPARE(module.rows(QStringLiteral("Show Columns from FBT_Challan")).size(), 18);
}

void TestUpdater::convertsStatus_data()
{
    QTest::addColumn<QString>("old");
    QTest::addColumn<QString>("converted");
    const QString none = QStringLiteral("\t00000");
    const QString all = QStringLiteral("\t11111");
    QTest::newRow("no status") << "Null"
                               << "0" + none;
    QTest::newRow("individual") << "0"
                                << "0" + none;
    QTest::newRow("family") << "1"
                            << "1" + none;
    QTest::newRow("old company") << "2"
                                 << "15" + all;
    QTest::newRow("firm") << "3"
                          << "3" + all;
    QTest::newRow("juridical person") << "4"
                                      << "4" + none;
    QTest::newRow("foreign company") << "5"
                                     << "5" + all;
    QTest::newRow("local authority") << "6"
                                     << "6" + none;
    QTest::newRow("old association") << "7"
                                     << "9" + none;
    QTest::newRow("old trusts") << "8"
                                << "9" + all;
    QTest::newRow("association") << "9"
                                 << "9" + none;
    QTest::newRow("association with surcharge") << "10"
                                                << "9" + all;
    QTest::newRow("trust") << "11"
                           << "11" + none;
    QTest::newRow("trust with surcharge") << "12"
                                          << "11" + all;
    QTest::newRow("body") << "13"
                          << "13" + none;
    QTest::newRow("body with surcharge") << "14"
                                         << "13" + all;
    QTest::newRow("public company") << "15"
                                    << "15" + all;
    QTest::newRow("private company") << "16"
                                     << "16" + all;
    QTest::newRow("society") << "17"
                             << "17" + none;
}

void TestUpdater::convertsStatus()
{
    QFETCH(QString, old);
    QFETCH(QString, converted);
    TestModule module(m_server);
    CREATETABLES(&module.connection);
    execute(module, {Sql("Insert into FBT_Info (Code_no,ClStatus) Values ('A',", old, ")")});
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows(QStringLiteral("Select ClStatus,SurApp from FBT_Info")), QStringList{converted});
}

// Only the empty text asks for conversion; a `Null` and a list that the user typed do not.
void TestUpdater::keepsConvertedClients()
{
    TestModule module(m_server);
    CREATETABLES(&module.connection);
    execute(module, {QStringLiteral("Insert into FBT_Info (Code_no,ClStatus,SurApp) Values ('A',2,'01000'),"
                                    "('B',14,Null),('it''s',8,''),('D',2,'')")});
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows(QStringLiteral("Select Code_no,ClStatus,SurApp from FBT_Info")),
             (QStringList{QStringLiteral("A\t2\t01000"), QStringLiteral("B\t14\tNULL"), QStringLiteral("it's\t8\t"),
                          QStringLiteral("D\t15\t11111")}));
    // The code with a quote ends the text of its statement early: that one is lost, the others go on.
    QCOMPARE(module.logLines().size(), 1);
    QVERIFY(module.logLines().constFirst().endsWith(u"UPDATEDB\tfrmupdatedb"));
}

void TestUpdater::movesSignatoriesOnce()
{
    TestModule module(m_server);
    CREATETABLES(&module.connection);
    execute(module, {QStringLiteral("Insert into FBT_Info (Code_no,SignP,SignD,SexM,FName,SurApp) Values "
                                    "('A','RAM','PARTNER','0','SHYAM','0'),('B','','','1','','0'),"
                                    "('C','','','1','HARI','0'),('D',Null,'OWNER','','','0')")});
    UPDATEDB(&module.connection);
    const QString signatories = QStringLiteral("Select * from FBT_SignDet");
    const QStringList moved{QStringLiteral("A\t0\tRAM\t0\tSHYAM\t\tPARTNER"), QStringLiteral("C\t0\t\t1\tHARI\t\t"),
                            QStringLiteral("D\t0\tNULL\t\t\t\tOWNER")};
    QCOMPARE(module.rows(signatories), moved);
    execute(module, {QStringLiteral("Update FBT_Info Set SignP='NEW' Where Code_no='B'")});
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows(signatories), moved);
}

void TestUpdater::clearsQuarters()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    execute(module, {QStringLiteral("Insert into FBT_Challan (Code_No,quarter,paytype) Values "
                                    "('A',3,'Advance Tax (100)'),('A',3,'Self Assessment Tax (300)'),('A',2,Null)")});
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows(QStringLiteral("Select quarter from FBT_Challan")),
             (QStringList{QStringLiteral("3"), QStringLiteral("0"), QStringLiteral("2")}));
}

void TestUpdater::correctsReturnDates()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    execute(module, {QStringLiteral("Delete from DueDt_Master Where AssYear=2008 and StatC=4"),
                     QStringLiteral("Update DueDt_Master Set DueDt='31/10/2008' Where AssYear=2008"),
                     QStringLiteral("Update DueDt_Master Set DueDt='31/10/2009' Where AssYear=2009 and StatC=2"),
                     QStringLiteral("Update DueDt_Master Set DueDt='05/10/2009' Where AssYear=2009 and StatC=1"),
                     QStringLiteral("Update DueDt_Master Set DueDt='31/10/2010' Where AssYear=2010 and StatC=1")});
    UPDATEDB(&module.connection);
    QCOMPARE(module
                 .rows(QStringLiteral("Select Concat(AssYear,' ',StatC,' ',DueDt) from DueDt_Master "
                                      "Where AssYear>=2008 Order by AssYear,StatC"))
                 .join(u", "),
             QStringLiteral("2008 1 30/09/2008, 2008 2 30/09/2008, 2008 3 31/10/2008, 2008 4 30/09/2008, "
                            "2009 1 05/10/2009, 2009 2 30/09/2009, 2009 3 31/07/2009, 2009 4 30/09/2009, "
                            "2010 1 31/10/2010, 2010 2 30/09/2010, 2010 3 31/07/2010, 2010 4 30/09/2010"));
}

void TestUpdater::replacesServiceTax()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    const QStringList delivered = module.rows(QStringLiteral("Select * from SRate"));
    QCOMPARE(delivered.size(), 5);
    execute(module, {QStringLiteral("Update SRate Set Rate=99 Where yr=2006"),
                     QStringLiteral("Delete from SRate Where yr=2007")});
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows(QStringLiteral("Select * from SRate")), delivered);
}

void TestUpdater::refusedStatementCostsItself()
{
    TestModule module(m_server);
    execute(module, {QStringLiteral("Create View DueDt_Master as Select 1 as AssYear"), // takes no due dates
                     QStringLiteral("Create Table FBT_Nature (Srno Int(11), NatDesc Varchar(255), Extra Int(11))")});
    UpdateDatabase(&module.connection);
    QCOMPARE(module.rows(QStringLiteral("Select count(*) from FBT_ExpRate2010")), QStringList{QStringLiteral("327")});
    const QStringList log = module.logLines();
    // Seven natures; twenty due dates, two corrections of them, and the search for one.
    QCOMPARE(log.size(), 7 + 20 + 2 + 1);
    QCOMPARE(log.filter(QStringLiteral("UPDATEDB\tfrmupdatedb")).size(), log.size());
}

void TestUpdater::convertsEngines()
{
    TestModule module(m_server);
    execute(module, {QStringLiteral("Create Table Own (A Int) Engine=MyISAM"), // not of this module
                     QStringLiteral("Create Table FBT_Nature (Srno Int(11), NatDesc Varchar(255)) Engine=MyISAM"),
                     QStringLiteral("Insert into FBT_Nature Values (9,'Own'),(3,'Other'),(5,'Third')"),
                     QStringLiteral("Delete from FBT_Nature Where Srno=3"),
                     QStringLiteral("Create Table FBT_Head2009 (HeadId Int(11), Section Varchar(50), "
                                    "HeadDesc Varchar(255)) Engine=Aria")});
    UpdateDatabase(&module.connection);
    QCOMPARE(module.rows(QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where "
                                        "TABLE_SCHEMA=Database() and ENGINE<>'InnoDB'")),
             QStringList{QStringLiteral("own")});
    QCOMPARE(module.rows(QStringLiteral("Select Srno from FBT_Nature")),
             (QStringList{QStringLiteral("9"), QStringLiteral("5")}));
    QCOMPARE(module.logLines(), QStringList());
}

QTEST_GUILESS_MAIN(TestUpdater)
#include "tst_updater.moc"
