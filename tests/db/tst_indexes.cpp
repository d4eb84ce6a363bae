#include "db/indexes.h"
#include "db/updater.h"
#include "db/updaterun.h"
#include "tests/db/dump.h"
#include "tests/support/testmodule.h"

#include <QRandomGenerator>
#include <QTest>

/// The indexes change no answer and no order of one: every query of the program that reads a table with an index is asked
/// without and with them, on random rows with all the doubles that tables without keys can hold.
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
    void masters();
    void clientRows();

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

void Rows::masters()
{
    const QString suffix = QString::number(year);
    insert("FBT_ExpHead" + suffix, "SrNo,HeadId,ExpDesc", 60,
           [&] { return Sql(1 + below(150), ",", 1 + below(21), ",'Again ", below(1000), "'"); });
    insert("FBT_ExpRate" + suffix, "SrNo,NatId,IntRt", 200,
           [&] { return Sql(1 + below(150), ",", below(8), ",", below(100)); });
    insert("bank_master", "bank_code_no,bank_name", 20, [&] { return Sql(below(15), ",'Bank ", below(1000), "'"); });
}

void Rows::clientRows()
{
    const int count = m_clients * m_rowsEach;
    const auto client = [&] { return key(below(m_clients)); };
    insert("FBT_Info", "Code_no,Name,Busnat,ClStatus,SurApp", m_clients * 2, [&] {
        return Sql("'", code(below(m_clients)), "','Name ", below(1000), "','1,3',", below(18), ",'00000'");
    });
    insert("FBT_Detail", "Code_No,Tyear,Quarter,NatId,SrNo,ExpId,Amt", count, [&] {
        return Sql(client(), ",", below(6), ",", below(9) - 1, ",", below(12), ",", 1 + below(155), ",", amount());
    });
    insert("FBT_SalDet", "Code_No,Tyear,Quarter,NatId,Amt", count,
           [&] { return Sql(client(), ",", below(6), ",", below(9) - 1, ",", amount()); });
    insert("FBT_Challan", "Code_No,t_year,quarter,srno,paytype,challan_dt,TotAmt,ITAmt,BSRCode", count, [&] {
        return Sql(client(), ",", below(5), ",", below(5), ",'", below(2) == 0 ? "Advance Tax (100)" : "Other", "','",
                   10 + below(18), "/06/2007',", amount(), ",", amount(), ",", below(20));
    });
    for (const char *table : {"FBT_AddInfo", "FBT_RetDet", "FBT_MiscInf"})
        insert(table, "Code_No,Tyear", count / 4, client);
    insert("FBT_AddInfo", "Code_No,Tyear,EmpBoth,IndiaEmp", count / 4,
           [&] { return Sql(client(), ",'", below(2), "',", below(1000)); });
    insert("FBT_SignDet", "Code_no,AsYr,Nm", count / 4, [&] { return Sql(client(), ",'Sign ", below(1000), "'"); });
    insert("FBT_BankDet", "Code_No,Yr,SrNo,BankNm,DefBank", count / 4,
           [&] { return Sql(client(), ",", below(3), ",'Bank ", below(1000), "','", below(2) == 0 ? "Y" : "N", "'"); });
}

void Rows::fill()
{
    masters();
    clientRows();
}

// The queries as the program builds them, for client C, year Y, quarter Q, nature N, item E and head H.
const char *const queries[] = {
    // computation
    "select FBT_ExpHeadY.HeadId, FBT_ExpRateY.IntRt, FBT_Detail.Quarter, FBT_Detail.Srno, FBT_Detail.ExpId, "
    "FBT_Detail.NatId, FBT_Detail.Amt from FBT_Detail LEFT JOIN FBT_ExpHeadY ON FBT_Detail.ExpId=FBT_ExpHeadY.SrNo "
    "LEFT "
    "JOIN FBT_ExpRateY ON FBT_ExpHeadY.SrNo=FBT_ExpRateY.SrNo And (FBT_ExpRateY.Natid=0 Or "
    "FBT_ExpRateY.Natid=FBT_Detail.Natid) Where FBT_Detail.Code_No='C' and FBT_Detail.Tyear=Y and FBT_Detail.NatId<>-1",
    "select FBT_ExpHeadY.HeadId, FBT_ExpRateY.IntRt, FBT_Detail.Quarter, FBT_Detail.Srno, FBT_Detail.ExpId, "
    "FBT_Detail.Amt from FBT_Detail LEFT JOIN FBT_ExpHeadY ON FBT_Detail.ExpId=FBT_ExpHeadY.SrNo LEFT JOIN "
    "FBT_ExpRateY "
    "ON FBT_ExpHeadY.SrNo=FBT_ExpRateY.SrNo And (FBT_ExpRateY.Natid=0 Or FBT_ExpRateY.Natid=#N) Where "
    "FBT_Detail.Code_No='C' and FBT_Detail.Tyear=Y and FBT_Detail.NatId=-1",
    "select * from FBT_Info Where Code_No='C'",
    "Select * from FBT_SalDet Where Code_No='C' and Tyear=Y",
    // quarterly and annual entry
    "select FBT_ExpHeadY.HeadId, FBT_Detail.Srno, FBT_Detail.ExpId, FBT_Detail.Amt from FBT_Detail LEFT JOIN "
    "FBT_ExpHeadY ON FBT_Detail.ExpId=FBT_ExpHeadY.SrNo Where FBT_Detail.Code_No='C' and FBT_Detail.Tyear=Y and "
    "FBT_Detail.Quarter=#Q and FBT_Detail.NatId=-1",
    "select FBT_ExpHeadY.HeadId, FBT_Detail.Srno, FBT_Detail.ExpId, FBT_Detail.Amt, FBT_ExpRateY.IntRt from FBT_Detail "
    "LEFT JOIN FBT_ExpHeadY ON FBT_Detail.ExpId=FBT_ExpHeadY.SrNo LEFT JOIN FBT_ExpRateY ON "
    "FBT_ExpHeadY.SrNo=FBT_ExpRateY.SrNo And (FBT_ExpRateY.Natid=0 Or FBT_ExpRateY.Natid=#N) Where "
    "FBT_Detail.Code_No='C' and FBT_Detail.Tyear=Y and FBT_Detail.Quarter=#Q and FBT_Detail.NatId=#N",
    "select FBT_ExpHeadY.HeadId, FBT_Detail.Srno, FBT_Detail.ExpId, FBT_Detail.Amt, FBT_ExpRateY.IntRt from FBT_Detail "
    "LEFT JOIN FBT_ExpHeadY ON FBT_Detail.ExpId=FBT_ExpHeadY.SrNo LEFT JOIN FBT_ExpRateY ON "
    "FBT_ExpHeadY.SrNo=FBT_ExpRateY.SrNo And (FBT_ExpRateY.Natid=0 Or FBT_ExpRateY.Natid=#N) Where "
    "FBT_Detail.Code_No='C' and FBT_Detail.Tyear=Y and FBT_Detail.Quarter=#Q and FBT_Detail.NatId=-1",
    "Select * from FBT_ExpHeadY Where HeadId=#H",
    "Select Max(SrNo) as MaxSr from FBT_Detail Where Code_No='C' and tyear=Y and quarter=#Q",
    "Select * from FBT_Detail Where Code_No='C' and tyear=Y and quarter=#Q order by srno",
    "Select * from FBT_SalDet Where Code_No='C' and Tyear=Y and Quarter=#Q",
    "Select * from FBT_ExpRateY Where (NatId=#N or NatId=0) and SrNo=#E",
    "Select * from FBT_AddInfo Where Code_No='C' and TYear=Y",
    "Select * from FBT_BankDet Where Code_No='C' and Yr=Y",
    // payments and interest
    "Select * from FBT_Challan Where Code_No='C' and T_year=Y",
    "Select * from FBT_Challan Where Code_No='C' and T_year=Y and PayType='Advance Tax (100)'",
    "Select * from FBT_Challan Where code_no='C' and t_year=Y and paytype<>'Advance Tax (100)' Order by Quarter,SrNo",
    "Select sum(TotAmt) as TotAmt from FBT_Challan Where code_no='C' and t_year=Y and paytype='Advance Tax (100)'",
    "Select sum(ITAmt) as TotIT, sum(TotAmt) as Tot from FBT_Challan Where code_no='C' and t_year=Y and quarter=#Q",
    "Select max(srno) as maxsr from FBT_Challan where code_no='C' and t_year=Y and quarter=#Q",
    "Select quarter, sum(TotAmt) as TotAmt from FBT_Challan Where code_no='C' and t_year=Y group by quarter order by "
    "quarter",
    "Select * From FBT_Challan Left Join bank_master on FBT_Challan.BSRCode=bank_master.bank_code_no Where "
    "FBT_Challan.code_no='C' and FBT_Challan.t_year=Y order by Quarter,SrNo",
    // masters
    "select * from FBT_HeadY order by Section",
    "select * from FBT_ExpHeadY Left Join FBT_ExpRateY on FBT_ExpHeadY.SrNo=FBT_ExpRateY .SrNo Where "
    "FBT_ExpHeadY.HeadId=#H order by FBT_ExpHeadY.SrNo",
    "Select * from FBT_Info",
    "Select * from FBT_Info Order by Name",
    // returns
    "Select * From FBT_SignDet Where Code_No='C' and AsYr=Y",
    "select * from FBT_BankDet where code_no='C' and Yr=Y and DefBank='Y'",
    "select * from FBT_BankDet where code_no='C' and Yr=Y order by SrNo",
    "Select * from FBT_RetDet Where code_no='C' and TYear=Y",
    "select * from FBT_MiscInf where code_no='C' and tyear=Y",
};

QStringList answers(TestModule &module, int clients)
{
    QStringList lines;
    for (int i = 0; i < clients; ++i) {
        for (const char *query : queries) {
            QString text = QString::fromUtf8(query);
            text.replace("#Q", Sql(i % 5))
                .replace("#N", Sql(i % 8))
                .replace("#E", Sql(i % 150))
                .replace("#H", Sql(i % 22));
            text.replace("'C'", u'\'' + Rows::code(i) + u'\'').replace("=Y", Sql("=", year));
            for (const char *table : {"FBT_Head", "FBT_ExpHead", "FBT_ExpRate"})
                text.replace(Sql(table, "Y"), Sql(table, year));
            lines << text << module.rows(text);
        }
    }
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
    QTest::newRow("many clients") << 300 << 40 << false;
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
    const int asked = qMin(clients, 60);
    const QStringList without = answers(module, asked);
    UpdateRun run(&module.connection);
    CREATEINDEXES(run);
    if (analysed)
        module.rows(Sql("Analyze Table FBT_Detail,FBT_SalDet,FBT_Challan,FBT_Info,FBT_BankDet,FBT_ExpHead", year,
                        ",FBT_ExpRate", year));
    QCOMPARE(Difference(answers(module, asked), without), QString());
    QVERIFY(without.size() > 100LL * asked);
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
    for (const char *query : {"FBT_Info Where Code_no='Code1'", "FBT_Challan Where Code_No='Code1' and t_year=2008",
                              "FBT_SalDet Where Code_No='Code1' and Tyear=2008"})
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

QTEST_GUILESS_MAIN(TestIndexes)
#include "tst_indexes.moc"
