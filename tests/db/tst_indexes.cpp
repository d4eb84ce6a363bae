#include "calc/modfbtcalc.h"
#include "db/indexes.h"
#include "db/updater.h"
#include "db/updaterun.h"
#include "entry/frmannualfbt.h"
#include "entry/frmfbtdet.h"
#include "masters/frmclinfo.h"
#include "masters/frmfbtmas.h"
#include "tests/db/dump.h"
#include "tests/support/caserow.h"

namespace {

// Codes, of which some differ in capitals only or end in a blank: for the database they are the same client.
QString code(int client)
{
    const QString text = Sql("Code", client / 3);
    return client % 3 == 0 ? text : client % 3 == 1 ? text.toUpper() : text + u' ';
}

// Rows in no order, with doubles. Those that were deleted and written again stand elsewhere than their numbers say.
void fill(TestModule &module, int clients, int rowsEach)
{
    const QString client = QString("Concat(Elt(1+seq*7919%N%3,'Code','CODE','Code'),seq*7919%N div 3,"
                                   "If(seq*7919%N%3=2,' ',''))")
                               .replace(u'N', QString::number(clients));
    for (QString line : LinesOf("random.sql")) {
        line.replace("<client>", client).replace("<clients>", QString::number(clients * 2));
        line.replace("<rows>", QString::number(clients * rowsEach));
        Carry(module, {"Insert into " + line, "Delete from " + line.section(u' ', 0, 0) + " Where Rand(7)<0.1"});
    }
}

// What the program asks when it computes and shows the clients of the random rows.
QStringList queriesOfTheProgram(TestModule &module, int clients)
{
    QStringList queries;
    module.connection.setObserver([&](const QString &statement) {
        if (statement.startsWith(u"select", Qt::CaseInsensitive) && !statement.contains(u"information_schema"))
            queries << statement;
    });
    for (int client = 0; client < clients; ++client) {
        Base->code = code(client);
        Base->TYear = 2008;
        CALCFBT();
        frmfbtdet(nullptr).Load();
        frmannualfbt(ClientYear{code(client), 2008}).Load();
    }
    frmclinfo(nullptr).Load();
    frmfbtmas(nullptr).Load();
    module.connection.setObserver({});
    queries.sort();
    queries.removeDuplicates();
    return queries;
}

QStringList answers(TestModule &module, const QStringList &queries)
{
    QStringList lines;
    for (const QString &query : queries)
        lines << query << module.rows(query);
    return lines;
}

} // namespace

/// The indexes change no answer and no order of one: every query that the program is seen to send is asked without and
/// with them, on random rows with all the doubles that tables without keys can hold.
class TestIndexes : public QObject
{
    Q_OBJECT

private slots:
    void sameRowsInTheSameOrder_data()
    {
        Columns<int, int, bool>({"clients", "rowsEach", "analysed"}); // whether the server has counted the keys
        Case("one large client", 3, 2000, true);
        Case("many clients", 300, 40, false);
    }
    void sameRowsInTheSameOrder()
    {
        const auto [clients, rowsEach, analysed] = Row<int, int, bool>();
        TestModule module(m_server);
        UpdateDatabase(&module.connection);
        const QStringList tables = module.rows("Select distinct TABLE_NAME from information_schema.STATISTICS "
                                               "Where TABLE_SCHEMA=Database() and INDEX_NAME='IdxFBT'");
        for (const QString &table : tables)
            Carry(module, {Sql("Drop Index IdxFBT on ", table)});
        fill(module, clients, rowsEach);
        const QStringList queries = queriesOfTheProgram(module, qMin(clients, 20));
        for (const char *table : {"FBT_Info", "FBT_Detail", "FBT_SalDet", "FBT_AddInfo", "FBT_ExpHead", "FBT_ExpRate"})
            QVERIFY2(!queries.filter(table, Qt::CaseInsensitive).isEmpty(), table);
        const QStringList without = answers(module, queries);
        UpdateRun run(&module.connection);
        CREATEINDEXES(run);
        if (analysed)
            module.rows("Analyze Table FBT_Detail,FBT_SalDet,FBT_Info,FBT_ExpHead2008,FBT_ExpRate2008");
        QCOMPARE(Difference(answers(module, queries), without), QString());
        QCOMPARE(module.logLines(), QStringList());
        // Otherwise the comparison would show nothing.
        const QStringList plan =
            module.rows("Explain Select * from FBT_Detail d Left Join FBT_ExpHead2008 h on d.ExpId=h.SrNo Left Join "
                        "FBT_ExpRate2008 r on h.SrNo=r.SrNo Where Code_No='Code1' and Tyear=2008");
        QVERIFY2(plan.filter("IdxFBT").size() == 3 || clients == 3, qPrintable(plan.join(u'\n')));
    }

private:
    TestServer m_server;
};

QTEST_MAIN(TestIndexes)
#include "tst_indexes.moc"
