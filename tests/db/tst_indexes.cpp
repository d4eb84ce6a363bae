#include "calc/modfbtcalc.h"
#include "db/indexes.h"
#include "db/updater.h"
#include "db/updaterun.h"
#include "entry/frmannualfbt.h"
#include "entry/frmfbtdet.h"
#include "masters/frmclinfo.h"
#include "masters/frmfbtmas.h"
#include "tests/db/dump.h"
#include "tests/support/testmodule.h"

#include <QTest>

/// The indexes change no answer and no order of one: every query that the program is seen to send is asked without and
/// with them, on random rows with all the doubles that tables without keys can hold.
class TestIndexes : public QObject
{
    Q_OBJECT

private slots:
    void sameRowsInTheSameOrder_data();
    void sameRowsInTheSameOrder();
    void areUsed();
    void refuseNothing();

private:
    TestServer m_server;
};

namespace {

constexpr int year = 2008;

// Codes, of which some differ in capitals only or end in a blank: for the database they are the same client.
QString code(int client)
{
    const QString text = Sql("Code", client / 3);
    return client % 3 == 0 ? text : client % 3 == 1 ? text.toUpper() : text + u' ';
}

// Rows in no order, with doubles. Those that were deleted and written again stand elsewhere than their numbers say.
void fill(TestModule &module, int clients, int rowsEach)
{
    const QString client = Sql("Concat(Elt(1+seq*7919%", clients, "%3,'Code','CODE','Code'),seq*7919%", clients,
                               " div 3,If(seq*7919%", clients, "%3=2,' ',''))");
    const auto insert = [&](const QString &table, const QString &values, int count) {
        Carry(module, {Sql("Insert into ", table, " Select ", values, " from seq_1_to_", count),
                       Sql("Delete from ", table.section(u' ', 0, 0), " Where Rand(7)<0.1")});
    };
    const QString year4 = QStringLiteral(",2006+seq*31%4,");
    const int count = clients * rowsEach;
    insert(Sql("FBT_ExpHead", year, " (SrNo,HeadId,ExpDesc)"), "1+seq*53%150,1+seq%21,'Again'", 60);
    insert(Sql("FBT_ExpRate", year, " (SrNo,NatId,IntRt)"), "1+seq*97%150,seq%8,seq%100", 200);
    insert("FBT_Info (Code_no,Name,Busnat,ClStatus,SurApp)", client + ",'Name','1,3',seq%18,'00000'", clients * 2);
    insert("FBT_Detail (Code_No,Tyear,Quarter,NatId,SrNo,ExpId,Amt)",
           client + year4 + "seq*13%6,Cast(seq*17%9 as Signed)-1,seq*19%12,1+seq*23%155,seq*29%100000/100", count);
    insert("FBT_SalDet (Code_No,Tyear,Quarter,NatId,Amt)", client + year4 + "seq*13%6,Cast(seq*17%9 as Signed)-1,seq",
           count);
    insert("FBT_AddInfo (Code_No,Tyear,EmpBoth,IndiaEmp)", client + year4 + "seq%2,seq%1000", count / 4);
}

// What the program asks when it computes and shows the clients of the random rows.
QStringList queriesOfTheProgram(TestModule &module, int clients)
{
    QSet<QString> queries;
    module.connection.setObserver([&](const QString &statement) {
        if (statement.startsWith(u"select", Qt::CaseInsensitive) && !statement.contains(u"information_schema"))
            queries << statement;
    });
    for (int client = 0; client < clients; ++client) {
        Base->code = code(client);
        Base->TYear = year;
        CALCFBT();
        frmfbtdet(nullptr).Load();
        frmannualfbt(ClientYear{code(client), year}).Load();
    }
    frmclinfo(nullptr).Load();
    frmfbtmas(nullptr).Load();
    module.connection.setObserver({});
    QStringList sorted = queries.values();
    sorted.sort();
    return sorted;
}

QStringList answers(TestModule &module, const QStringList &queries)
{
    QStringList lines;
    for (const QString &query : queries)
        lines << query << module.rows(query);
    return lines;
}

void dropIndexes(TestModule &module)
{
    const QStringList tables = module.rows("Select distinct TABLE_NAME from information_schema.STATISTICS "
                                           "Where TABLE_SCHEMA=Database() and INDEX_NAME='IdxFBT'");
    QCOMPARE(tables.size(), 19);
    for (const QString &table : tables)
        QVERIFY(module.connection.Execute(Sql("Drop Index IdxFBT on ", table)));
}

} // namespace

void TestIndexes::sameRowsInTheSameOrder_data()
{
    QTest::addColumn<int>("clients");
    QTest::addColumn<int>("rowsEach");
    QTest::addColumn<bool>("analysed"); // whether the server has counted the keys
    QTest::newRow("few rows") << 6 << 8 << false;
    QTest::newRow("one large client") << 3 << 2000 << true;
    QTest::newRow("many clients, counted") << 300 << 40 << true;
}

void TestIndexes::sameRowsInTheSameOrder()
{
    QFETCH(int, clients);
    QFETCH(int, rowsEach);
    QFETCH(bool, analysed);
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    dropIndexes(module);
    fill(module, clients, rowsEach);
    const int asked = qMin(clients, 20);
    const QStringList queries = queriesOfTheProgram(module, asked);
    for (const char *table : {"FBT_Info", "FBT_Detail", "FBT_SalDet", "FBT_AddInfo", "FBT_ExpHead", "FBT_ExpRate"})
        QVERIFY2(!queries.filter(table, Qt::CaseInsensitive).isEmpty(), table);
    const QStringList without = answers(module, queries);
    UpdateRun run(&module.connection);
    CREATEINDEXES(run);
    if (analysed)
        module.rows(Sql("Analyze Table FBT_Detail,FBT_SalDet,FBT_Challan,FBT_Info,FBT_BankDet,FBT_ExpHead", year,
                        ",FBT_ExpRate", year));
    QCOMPARE(Difference(answers(module, queries), without), QString());
    QVERIFY(without.size() > 20LL * asked);
    QCOMPARE(module.logLines(), QStringList());
}

// Otherwise the comparison would show nothing.
void TestIndexes::areUsed()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    fill(module, 300, 40);
    const QString computation =
        Sql("Explain select * from FBT_Detail LEFT JOIN FBT_ExpHead", year, " ON FBT_Detail.ExpId=FBT_ExpHead", year,
            ".SrNo LEFT JOIN FBT_ExpRate", year, " ON FBT_ExpHead", year, ".SrNo=FBT_ExpRate", year,
            ".SrNo Where Code_No='", code(3), "' and Tyear=", year);
    const QStringList plan = module.rows(computation);
    QCOMPARE(plan.size(), 3);
    QCOMPARE(plan.filter("IdxFBT").size(), 3);
    for (const char *query : {"FBT_Info Where Code_no='Code1'", "FBT_SalDet Where Code_No='Code1' and Tyear=2008"})
        QCOMPARE(module.rows(Sql("Explain Select * from ", query)).filter("IdxFBT").size(), 1);
}

void TestIndexes::refuseNothing()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    QCOMPARE(module.rows("Select * from information_schema.STATISTICS Where TABLE_SCHEMA=Database() and NON_UNIQUE=0 "
                         "and COLUMN_NAME<>'FbtRow' and TABLE_NAME<>'FBT_Lock'"),
             QStringList());
    for (int i = 0; i < 2; ++i)
        QVERIFY(module.connection.Execute("Insert into FBT_Detail Values('A',2008,1,1,1,1,100)"));
    QVERIFY(module.connection.Execute("Insert into FBT_Detail Values(Null,Null,1,1,1,1,100)"));
    QCOMPARE(module.rows("Select count(*) from FBT_Detail"), QStringList{"3"});
}

QTEST_MAIN(TestIndexes)
#include "tst_indexes.moc"
