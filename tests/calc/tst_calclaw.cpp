#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "records/challans.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QTest>

#include <memory>

/// The computation under the delivered law.
class TestCalcLaw : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_server = std::make_unique<TestServer>();
        m_module = std::make_unique<TestModule>(*m_server);
        UpdateDatabase(&m_module->connection);
    }
    void cleanupTestCase() { m_module.reset(); }

    void oneExpense()
    {
        const struct
        {
            const char *name;
            int year, nature, item, line;
            double value; // of 1,010
        } rows[] = {
            {"food outside, hotel: 5 %", 2008, 1, 18, 5, 50},
            {"food outside, aircraft 2006: 20 %", 2006, 6, 18, 4, 202},
            {"food outside, aircraft 2007: 5 %", 2007, 6, 18, 24, 50},
            {"foreign travel 2006, software: 5 %", 2006, 4, 60, 10, 50},
            {"foreign travel 2007: 5 % for all", 2007, 7, 60, 23, 50},
            {"hotel, pharmaceuticals: 5 %", 2008, 3, 65, 12, 50},
            {"fuel of cars, carrier by car: 5 %", 2009, 5, 71, 14, 50},
            {"fuel of aircraft, carrier by air: nothing", 2006, 6, 80, 15, 0},
            {"guest house 2009: nothing", 2009, 7, 97, 17, 0},
            {"festival 2008: 50 %", 2008, 7, 102, 18, 505},
            {"festival 2009: 20 %", 2009, 7, 102, 18, 202},
            {"sweat equity 2008: all", 2008, 7, 135, 31, 1010},
            {"sweat equity 2007: no such item", 2007, 7, 135, 0, 0},
        };
        for (const auto &row : rows) {
            employer(m_module->connection, row.name)
                .natures({row.nature})
                .expense(row.year, 3, row.nature, row.item, 1010);
            QVERIFY(TakeClientYear(row.name, row.year) && CALCFBT());
            QVERIFY2(FBTQtrValue[3] == row.value && FBTTotalValue == row.value, row.name);
            QVERIFY2(row.line == 0 || (FBTExpAmt[row.line] == 1010 && FBTValue[row.line] == row.value), row.name);
            QVERIFY2(std::count(FBTExpAmt.begin(), FBTExpAmt.end(), 0.0) == (row.line == 0 ? 32 : 31), row.name);
        }
    }

    /// A company that runs hotels and builds, first quarter of 2008-09. Its code is read by the letter everywhere.
    void companyOfTwoNatures()
    {
        const QString code = QStringLiteral("O\\'B");
        employer(m_module->connection, QStringLiteral("O'B")).natures({1}).expense(2008, 1, 1, 18, 7000);
        employer(m_module->connection, code)
            .natures({1, 2})
            .salary(2008, 1, 1, 250000)
            .salary(2008, 1, 2, 500000)
            .salary(2008, 1, -1, 750000)
            .expense(2008, 1, 1, 18, 40000)   // food: 5 %, 2,000
            .expense(2008, 1, 2, 57, 12345)   // conveyance: 5 %, 617.25
            .expense(2008, 1, -1, 18, 100000) // 33,333 at 5 %, 1,666.65; 66,667 at 20 %, 13,333.4
            .expense(2008, 1, -1, 87, 1000);  // telephone at 20 %: 333, 66.6; 667, 133.4
        QVERIFY(TakeClientYear(code, 2008) && CALCFBT());
        QCOMPARE(FBTValue[5], 2000.0 + 1667);
        QCOMPARE(FBTValue[4], 13333.0);
        QCOMPARE(FBTValue[26], 617.0);
        QCOMPARE(FBTValue[16], 67.0 + 133);
        QCOMPARE(FBTTax, 5345.0);      // 30 % of 17,817: 5,345.1
        QCOMPARE(FBTSurcharge, 534.0); // 534.5, to the even number
        QCOMPARE(FBTEduCess, 118.0);   // 2 % of 5,879: 117.58
        QCOMPARE(FBTSHECess, 59.0);    // 58.79
        QVERIFY(m_module->logLines().isEmpty());
    }

    /// A payment counts with the parts that it has.
    void paymentsWithoutAllParts()
    {
        const auto pay = [](int no, const char *parts, const char *cess) {
            Cnn->Execute(Sql("Insert into FBT_Challan Values ('P',2008,0,", no, ",'Self Assessment Tax (300)','',",
                             parts, ",5,5,5,0,'','','','','',0,", cess, ")"));
        };
        QCOMPARE(TaxPaid(Cnn, {QStringLiteral("P"), 2008}).valueOr(-1), 0.0);
        pay(1, "100,10,4", "2");
        pay(2, "50,Null,2", "Null");
        QCOMPARE(TaxPaid(Cnn, {QStringLiteral("P"), 2008}).valueOr(-1), 168.0);
    }

private:
    std::unique_ptr<TestServer> m_server;
    std::unique_ptr<TestModule> m_module;
};

QTEST_GUILESS_MAIN(TestCalcLaw)
#include "tst_calclaw.moc"
