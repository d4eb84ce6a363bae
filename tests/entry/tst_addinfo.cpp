#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "entry/addinfo.h"
#include "tests/support/testmodule.h"

#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

namespace {

constexpr auto allRows = "Select * from FBT_AddInfo Order by TYear";
constexpr auto allBanks = "Select * from FBT_BankDet Order by Yr, SrNo";

/// A row whose columns tell which column they were.
constexpr auto rowOf2007 =
    "insert into FBT_AddInfo values('A1',2007,'1','Ward','Old','2','1','Rec','01/02/2007','3','1','0','02/02/2007','1',"
    "'03/02/2007','1','0','1','0','1','0',12,34,'04/02/2007','Ack','area','typ','rng','no','0',5,'0',6,'0',7,"
    "'05/02/2007')";

} // namespace

/// The row of additional information that a new year starts with.
class TestAddInfo : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<TestModule> m_module;

    bool open(int year) { return LOADADDINFO({QStringLiteral("A1"), year}); }

private slots:
    void init()
    {
        m_module.reset();
        m_module = std::make_unique<TestModule>(*server);
        CREATETABLES(Cnn);
    }

    void firstYearOfAll()
    {
        EmpBoth = SepBooks = true;
        IndiaEmp = TotalEmp = 9;
        open(2006);
        QVERIFY(!EmpBoth && !SepBooks && IndiaEmp == 0 && TotalEmp == 0);
        const QStringList expected{"A1\t2006\t0\t\t\t1\t0\t\t\t0\t0\t0\t\t0\t\t0\t0\t0\t0\t0\t0\t0\t0\t\t\t\t\t\t\t"
                                   "1\t0\t1\t0\t1\t0\t"};
        QCOMPARE(m_module->rows(allRows), expected);
        open(2006);
        QCOMPARE(m_module->rows(allRows), expected);
    }

    void newYearCopiesWhatStays()
    {
        Cnn->Execute(rowOf2007);
        Cnn->Execute("insert into FBT_BankDet values('A1',2007,1,'Bank A','Addr','123','Savings','9','1','Y')");
        Cnn->Execute("insert into FBT_BankDet values('A1',2007,4,'Bank B',Null,'','','8',0,'N')");
        open(2008);
        QVERIFY(EmpBoth && !SepBooks && IndiaEmp == 12 && TotalEmp == 34);
        QCOMPARE(m_module->rows(allRows).value(1),
                 "A1\t2008\t0\tWard\tOld\t2\t0\t\t\t3\t1\t0\t\t1\t\t1\t0\t1\t0\t1\t0\t12\t34\t\t\tarea\ttyp\trng\tno\t"
                 "1\t0\t1\t0\t1\t0\t");
        QCOMPARE(m_module->rows(allBanks).mid(2), QStringList({"A1\t2008\t1\tBank A\tAddr\t123\tSavings\t9\t1\tY",
                                                               "A1\t2008\t4\tBank B\t\t\t\t8\t0\tN"}));
    }

    void secondOpeningCopiesNothing()
    {
        Cnn->Execute("insert into FBT_AddInfo (Code_No, TYear) values('A1',2007)"); // all else is Null
        Cnn->Execute("insert into FBT_BankDet values('A1',2007,1,'Bank A','','','','9',0,'Y')");
        open(2008);
        QVERIFY(!EmpBoth && IndiaEmp == 0);
        Cnn->Execute("Update FBT_AddInfo Set IndiaEmp=1, SepBooks='1' Where TYear=2008");
        Cnn->Execute("Update FBT_BankDet Set BankNm='Other' Where Yr=2008");
        const QStringList rows = m_module->rows(allRows) + m_module->rows(allBanks);
        open(2008);
        QCOMPARE(m_module->rows(allRows) + m_module->rows(allBanks), rows);
        QVERIFY(!EmpBoth && SepBooks && IndiaEmp == 1 && TotalEmp == 0);
    }

    /// A reading that failed has not seen that the row is missing.
    void failedReadingWritesNothing()
    {
        Cnn->Execute(rowOf2007);
        Cnn->setObserver([](const QString &statement) {
            if (statement.startsWith(u"Select * from FBT_AddInfo"))
                server->kill();
        });
        Cnn->Execute("Select 1");
        QVERIFY(!open(2007));
        Cnn->setObserver({});
        server->restart();
        QCOMPARE(m_module->rows(allRows).size(), 1);
        QVERIFY(m_module->logLines().value(0).endsWith(u"\tfrmfbtdet\tLOADADDINFO"));
    }

    /// Without the year before at hand nothing is written: the default row would stand in its place for good.
    void failedReadingOfTheYearBefore()
    {
        Cnn->Execute(rowOf2007);
        Cnn->setObserver([](const QString &statement) {
            if (statement.startsWith(u"Select * from FBT_AddInfo") && statement.endsWith(u"2007"))
                Cnn->Execute("Rename Table FBT_AddInfo to Elsewhere");
            else if (statement.startsWith(u"insert into FBT_AddInfo"))
                Cnn->Execute("Rename Table Elsewhere to FBT_AddInfo");
        });
        QVERIFY(!open(2008));
        Cnn->setObserver({});
        Cnn->Execute("Rename Table if exists Elsewhere to FBT_AddInfo");
        QCOMPARE(m_module->rows(allRows).size(), 1);
    }

    void apostrophe()
    {
        Cnn->Execute(rowOf2007);
        Cnn->Execute("Update FBT_AddInfo Set Ward='King''s \\\\ 4'");
        Cnn->Execute("insert into FBT_BankDet values('A1',2007,1,'Bank','O''NEIL ROAD','','','9',0,'Y')");
        open(2008);
        QCOMPARE(m_module->rows("Select TYear, Ward from FBT_AddInfo Order by TYear"),
                 QStringList({"2007\tKing's \\ 4", "2008\tKing's \\ 4"}));
        QCOMPARE(m_module->rows("Select Yr, BankAdd from FBT_BankDet Order by Yr"),
                 QStringList({"2007\tO'NEIL ROAD", "2008\tO'NEIL ROAD"}));
        QCOMPARE(m_module->logLines(), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestAddInfo)
#include "tst_addinfo.moc"
