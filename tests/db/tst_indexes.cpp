#include "calc/modfbtcalc.h"
#include "db/indexes.h"
#include "db/updater.h"
#include "db/updaterun.h"
#include "entry/frmannualfbt.h"
#include "entry/frmfbtdet.h"
#include "frame/frmsbase.h"
#include "masters/frmclinfo.h"
#include "masters/frmfbtmas.h"
#include "tests/db/dump.h"
#include "tests/support/testmodule.h"

#include <QRandomGenerator>
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

/// Random rows, the same at each run.
class Rows
{
public:
    Rows(TestModule &module, int clients, int rowsEach)
        : m_module(module)
        , m_clients(clients)
        , m_rowsEach(rowsEach)
    {
    }

    void fill();

    /// Codes, of which some differ in capitals only or end in a blank: for the database they are the same client.
    [[nodiscard]] static QString code(int client)
    {
        constexpr int forms = 3;
        const QString text = Sql("Code", client / forms);
        return client % forms == 0 ? text : client % forms == 1 ? text.toUpper() : text + u' ';
    }

private:
    int below(int bound) { return static_cast<int>(m_random.bounded(bound)); }
    QString amount() { return NumberText(below(1'000'000) / 100.0); }
    QString key(int client) { return Sql("'", code(client), "',", 2006 + below(4)); }
    void insert(const QString &table, const QString &columns, int count, const std::function<QString()> &values);

    TestModule &m_module;
    int m_clients;
    int m_rowsEach;
    QRandomGenerator m_random{20080401};
};

void Rows::insert(const QString &table, const QString &columns, int count, const std::function<QString()> &values)
{
    constexpr int batch = 500;
    QStringList rows;
    for (int i = 1; i <= count; ++i) {
        rows << u'(' + values() + u')';
        if (rows.size() == batch || i == count) {
            QVERIFY(
                m_module.connection.Execute(Sql("Insert into ", table, " (", columns, ") Values ", rows.join(u','))));
            rows.clear();
        }
    }
    // Rows that were deleted and written again stand elsewhere than their numbers say.
    QVERIFY(m_module.connection.Execute(Sql("Delete from ", table, " Where Rand(7)<0.1")));
}

void Rows::fill()
{
    const int count = m_clients * m_rowsEach;
    const auto client = [&] { return key(below(m_clients)); };
    insert(Sql("FBT_ExpHead", year), "SrNo,HeadId,ExpDesc", 60,
           [&] { return Sql(1 + below(150), ",", 1 + below(21), ",'Again ", below(1000), "'"); });
    insert(Sql("FBT_ExpRate", year), "SrNo,NatId,IntRt", 200,
           [&] { return Sql(1 + below(150), ",", below(8), ",", below(100)); });
    insert("FBT_Info", "Code_no,Name,Busnat,ClStatus,SurApp", m_clients * 2, [&] {
        return Sql("'", code(below(m_clients)), "','Name ", below(1000), "','1,3',", below(18), ",'00000'");
    });
    insert("FBT_Detail", "Code_No,Tyear,Quarter,NatId,SrNo,ExpId,Amt", count, [&] {
        return Sql(client(), ",", below(6), ",", below(9) - 1, ",", below(12), ",", 1 + below(155), ",", amount());
    });
    insert("FBT_SalDet", "Code_No,Tyear,Quarter,NatId,Amt", count,
           [&] { return Sql(client(), ",", below(6), ",", below(9) - 1, ",", amount()); });
    insert("FBT_AddInfo", "Code_No,Tyear,EmpBoth,IndiaEmp", count / 4,
           [&] { return Sql(client(), ",'", below(2), "',", below(1000)); });
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
        Base->code = Rows::code(client);
        Base->TYear = year;
        CALCFBT();
        frmfbtdet(nullptr).Load();
        frmannualfbt(nullptr).Load();
    }
    frmclinfo(nullptr).Load();
    frmfbtmas(nullptr).Load();
    frmsbase(nullptr).Load();
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
    Rows(module, clients, rowsEach).fill();
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
    Rows(module, 300, 40).fill();
    const QString computation =
        Sql("Explain select * from FBT_Detail LEFT JOIN FBT_ExpHead", year, " ON FBT_Detail.ExpId=FBT_ExpHead", year,
            ".SrNo LEFT JOIN FBT_ExpRate", year, " ON FBT_ExpHead", year, ".SrNo=FBT_ExpRate", year,
            ".SrNo Where Code_No='", Rows::code(3), "' and Tyear=", year);
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
