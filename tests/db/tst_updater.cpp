#include "db/updater.h"
#include "platform/recordset.h"
#include "records/updatemark.h"
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
    void convertsRows_data();
    void convertsRows();
    void refusedStatementCostsItself();
    void missingTableIsNoSuccess();
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

// As every reader sees it: without the hidden key.
int shownColumns(TestModule &module, const QString &table)
{
    Recordset rows;
    rows.Open(table, &module.connection);
    return rows.FieldCount();
}

} // namespace

void TestUpdater::sendsTheseStatementsToAnEmptyDatabase()
{
    TestModule module(m_server);
    QStringList sent;
    module.connection.setObserver([&](const QString &statement) { sent << statement; });
    QVERIFY(UpdateDatabase(&module.connection));
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
            QCOMPARE(name, spellings.value(name.toLower(), name));
            spellings[name.toLower()] = name;
        }
    }
    QVERIFY(spellings.contains("duedt_master") && spellings.contains("fbt_exprate2010"));
}

void TestUpdater::secondRunChangesNothing()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    Carry(module, {"Insert into FBT_Info (Code_no,ClStatus,SurApp) Values ('A',2,'01100')",
                   "Insert into FBT_ExpRate2009 Values (500,0,20)"});
    const QStringList before = StructureOf(module) + ContentOf(module);
    QVERIFY(UpdateDatabase(&module.connection));
    QCOMPARE(Difference(StructureOf(module) + ContentOf(module), before), QString());
    QCOMPARE(module.logLines(), QStringList());
}

void TestUpdater::olderShapeGrows_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("late");  // what later versions added
    QTest::addColumn<QString>("added"); // and what it holds in an old row
    const QString interest = "Calc115WJ Amt115WJ Calc115WK Amt115WK ";
    const QString deferred = "Calc115WJ5 Amt115WJ5 ";
    const auto row = [](const char *name, const char *table, int columns, const QString &late, const char *added) {
        QTest::newRow(name) << table << columns << late << added;
    };
    row("clients before dates", "FBT_Info", 17, "Doi Email ResSt SexM FName SurApp", "||0|0||00000");
    row("clients before surcharge", "FBT_Info", 22, "SurApp", "00000");
    row("payments before numbers", "FBT_Challan", 17, "ChallanNo BSRCode ECAmt1", "|0|0");
    row("payments before second cess", "FBT_Challan", 19, "ECAmt1", "0");
    row("payments of a shape of their own", "FBT_Challan", 18, "BSRCode ECAmt1", nullptr);
    row("additional before officer", "FBT_AddInfo", 25, "areacd aotyp aorng aono " + interest + deferred + "IntDt",
        "||||1|0|1|0|1|0|");
    row("additional before interest", "FBT_AddInfo", 29, interest + deferred + "IntDt", "1|0|1|0|1|0|");
    row("additional before deferment", "FBT_AddInfo", 33, deferred + "IntDt", "1|0|");
    row("additional before interest date", "FBT_AddInfo", 35, "IntDt", "");
    row("rates before second cess", "SRate", 6, "ECess1", "0");
}

void TestUpdater::olderShapeGrows()
{
    QFETCH(QString, table);
    QFETCH(int, columns);
    QFETCH(QString, late);
    QFETCH(QString, added);
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    const QStringList fresh = StructureOf(module);
    Carry(module, {Sql("Alter Table ", table, " Drop ", QString(late).replace(" ", ", Drop "))});
    if (columns == 25)
        Carry(module, {"Alter Table FBT_AddInfo Change NOB NOB Char(1)"});
    const QString row = table == u"SRate"      ? "Frm,Rate,yr,mon,dt,ECess) Values ('11/05/2007',12,2007,5,11,2)"
                        : table == u"FBT_Info" ? "Code_no) Values ('A')"
                                               : "Code_No) Values ('A')";
    Carry(module, {Sql("Delete from ", table), "Insert into " + table + " (" + row});
    QCOMPARE(shownColumns(module, table), columns);

    QVERIFY(UpdateDatabase(&module.connection));
    if (added.isNull()) { // nobody knows what was done to it
        QCOMPARE(shownColumns(module, table), columns);
        return;
    }
    QCOMPARE(Difference(StructureOf(module), fresh), QString());
    QCOMPARE(module.rows("Select Concat_ws('|'," + QString(late).replace(u' ', u',') + ") from " + table),
             QStringList{added});
    QCOMPARE(module.logLines(), QStringList());
}

// Rows that a user may have, before; and what they have become.
void TestUpdater::convertsRows_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *name, const QStringList &before, const char *query, const char *after) {
        QTest::newRow(name) << before << query << after;
    };
    row("status and surcharge",
        {"Insert into FBT_Info (Code_no,ClStatus) Select seq,seq from seq_0_to_17",
         "Insert into FBT_Info (Code_no) Values ('none')"},
        "Select Concat(Code_no,':',ClStatus,If(SurApp='11111','+',SurApp)) from FBT_Info",
        "0:000000 1:100000 2:15+ 3:3+ 4:400000 5:5+ 6:600000 7:900000 8:9+ 9:900000 10:9+ 11:1100000 12:11+ 13:1300000 "
        "14:13+ 15:15+ 16:16+ 17:1700000 none:000000");
    row("converted clients stay, and a code is a code",
        {"Insert into FBT_Info (Code_no,ClStatus,SurApp) Values ('A',2,'01000'),('B',14,Null),('it''s',8,''),"
         "('X'' or ''a''=''a',2,''),('X\\\\Y',2,''),('XY',3,'1')"},
        "Select Concat(Code_no,':',ClStatus,':',Ifnull(SurApp,'-')) from FBT_Info",
        "A:2:01000 B:14:- it's:9:11111 X' or 'a'='a:15:11111 X\\Y:15:11111 XY:3:1");
    row("signatories",
        {"Insert into FBT_Info (Code_no,SignP,SignD,SexM,FName,SurApp) Values ('A','RAM','PARTNER','0','SHYAM','0'),"
         "('B','','','1','','0'),('C','','','1','HARI','0'),('D',Null,'OWNER','','','0')"},
        "Select Concat_ws('|',Code_no,AsYr,Nm,Relat,FaNm,PAN,Desig) from FBT_SignDet",
        "A|0|RAM|0|SHYAM||PARTNER C|0||1|HARI|| D|0||||OWNER");
    row("signatories only once",
        {"Insert into FBT_Info (Code_no,SignP,SurApp) Values ('A','RAM','0')",
         "Insert into FBT_SignDet (Code_no) Values "
         "('Z')"},
        "Select Code_no from FBT_SignDet", "Z");
    row("quarters",
        {"Insert into FBT_Challan (Code_No,quarter,paytype) Values ('A',3,'Advance Tax (100)'),"
         "('A',3,'Self Assessment Tax (300)'),('A',2,Null)"},
        "Select quarter from FBT_Challan", "3 0 2");
    row("due dates",
        {"Delete from DueDt_Master Where AssYear=2008 and StatC=4",
         "Update DueDt_Master Set DueDt='31/10/2008' Where AssYear=2008",
         "Update DueDt_Master Set DueDt='31/10/2009' Where AssYear=2009 and StatC=2",
         "Update DueDt_Master Set DueDt='05/10/2009' Where AssYear=2009 and StatC=1",
         "Update DueDt_Master Set DueDt='31/10/2010' Where AssYear=2010 and StatC=1"},
        "Select Concat(AssYear,'-',StatC,':',DueDt) from DueDt_Master Where AssYear>=2008 Order by AssYear,StatC",
        "2008-1:30/09/2008 2008-2:30/09/2008 2008-3:31/10/2008 2008-4:30/09/2008 "
        "2009-1:05/10/2009 2009-2:30/09/2009 2009-3:31/07/2009 2009-4:30/09/2009 "
        "2010-1:31/10/2010 2010-2:30/09/2010 2010-3:31/07/2010 2010-4:30/09/2010");
    row("a head of the user's own moves up",
        {"Delete from FBT_Head2007 Where HeadId=20", "Insert into FBT_Head2007 Values (20,'X','Own'),(25,'Y','Other')",
         "Update FBT_ExpHead2007 Set HeadId=9 Where HeadId=20", "Insert into FBT_ExpHead2007 Values (200,20,'Own')"},
        "Select Concat(HeadId,':',HeadDesc,':',(Select Group_concat(SrNo Order by SrNo) from FBT_ExpHead2007 i Where "
        "i.HeadId=h.HeadId)) from FBT_Head2007 h Where HeadId in (20,21) Order by HeadId",
        "20:Tour, Travel and Foreign Travel:58,59,60,63,64 21:Own:200");
    row("the law of a year is applied again, its copy inherits",
        {"Update FBT_ExpRate2009 Set IntRt=20 Where SrNo=95", "Update FBT_ExpRate2009 Set IntRt=50 Where SrNo=102",
         "Update FBT_ExpRate2009 Set IntRt=35 Where SrNo=103", "Update FBT_ExpRate2008 Set IntRt=33 Where SrNo=95",
         "Delete from FBT_Head2010", "Delete from FBT_ExpHead2010", "Delete from FBT_ExpRate2010"},
        "Select IntRt from FBT_ExpRate2009 Where SrNo in (95,102,103) Union all Select IntRt from FBT_ExpRate2010 "
        "Where "
        "SrNo=103 Union all Select IntRt from FBT_ExpRate2008 Where SrNo=95",
        "0 20 35 35 33");
    row("the heads alone tell whether a year was filled", {"Delete from FBT_ExpHead2006"},
        "Select Count(*) from FBT_ExpHead2006", "0");
    row("shares take the next free numbers",
        {"Delete from FBT_Head2008 Where HeadId=21", "Delete from FBT_ExpHead2008 Where SrNo=135",
         "Insert into FBT_Head2008 Values (30,'Z','Own')", "Insert into FBT_ExpHead2008 Values (150,30,'Own')",
         "Insert into FBT_ExpRate2008 Values (151,3,77)"}, // a rate that a deleted item left
        "Select Concat(i.SrNo,':',i.HeadId,':',NatId,':',IntRt) from FBT_Head2008 h,FBT_ExpHead2008 i,FBT_ExpRate2008 "
        "r "
        "Where Section='115WB(1)(d)' and i.HeadId=h.HeadId and r.SrNo=i.SrNo",
        "151:31:0:100");
    row("a head of shares without a number",
        {"Update FBT_Head2008 Set HeadId=Null Where HeadId=21", "Delete from FBT_ExpHead2008 Where HeadId=21"},
        "Select Concat(SrNo,':',HeadId) from FBT_ExpHead2008 Where SrNo>134", "135:0");
    row("service tax", {"Update SRate Set Rate=99 Where yr=2006", "Delete from SRate Where yr=2007"},
        "Select Concat(Frm,'=',Rate) from SRate",
        "01/07/1994=5 14/05/2003=8 10/09/2004=10 18/04/2006=12 11/05/2007=12");
}

void TestUpdater::convertsRows()
{
    QFETCH(QStringList, before);
    QFETCH(QString, query);
    QFETCH(QString, after);
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    Carry(module, before);
    QVERIFY(UPDATEDB(&module.connection));
    QCOMPARE(module.rows(query).join(u' '), after);
    QCOMPARE(module.logLines(), QStringList());
}

void TestUpdater::refusedStatementCostsItself()
{
    TestModule module(m_server);
    Carry(module, {"Create View DueDt_Master as Select 1 as AssYear", // takes no due dates
                   "Create Table FBT_Nature (Srno Int(11), NatDesc Varchar(255), Extra Int(11))"});
    QVERIFY(UpdateDatabase(&module.connection));
    QCOMPARE(module.rows("Select count(*) from FBT_ExpRate2010"), QStringList{"327"});
    const QStringList log = module.logLines();
    // Seven natures; twenty due dates, two corrections of them, and the search for one.
    QCOMPARE(log.filter("UPDATEDB\tfrmupdatedb").size(), 7 + 20 + 2 + 1);
    QVERIFY(!UpdateIsMarked(&module.connection));
}

void TestUpdater::missingTableIsNoSuccess()
{
    TestModule module(m_server);
    module.connection.setObserver([&](const QString &statement) {
        if (statement == u"Select * from Bill_Type")
            module.rows("Drop Table FBT_SalDet");
    });
    QVERIFY(!UpdateDatabase(&module.connection));
    module.connection.setObserver({});
    QVERIFY(UpdateIsMarked(&module.connection));
    QVERIFY(UpdateDatabase(&module.connection));
    QVERIFY(!UpdateIsMarked(&module.connection));
}

void TestUpdater::convertsEngines()
{
    TestModule module(m_server);
    Carry(module,
          {"Create Table Own (A Int) Engine=MyISAM", // not of this module
           "Create Table FBT_Nature (Srno Int(11), NatDesc Varchar(255)) Engine=MyISAM",
           "Insert into FBT_Nature Values (9,'Own'),(3,'Other'),(5,'Third')", "Delete from FBT_Nature Where Srno=3",
           "Create Table FBT_Head2009 (HeadId Int(11), Section Varchar(50), HeadDesc Varchar(255)) "
           "Engine=Aria"});
    UpdateDatabase(&module.connection);
    QCOMPARE(module.rows("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database() and "
                         "ENGINE<>'InnoDB'"),
             QStringList{"own"});
    QCOMPARE(module.rows("Select Srno from FBT_Nature"), (QStringList{"9", "5"}));
    QCOMPARE(module.logLines(), QStringList());
}

QTEST_GUILESS_MAIN(TestUpdater)
#include "tst_updater.moc"
