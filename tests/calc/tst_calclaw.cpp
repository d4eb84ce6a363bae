#include "calc/clientyear.h"
#include "calc/lines.h"
#include "calc/modfbtcalc.h"
#include "calc/sharing.h"
#include "db/updater.h"
#include "platform/fault.h"
#include "records/challans.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QTest>

#include <memory>

using Amounts = std::vector<double>;

/// The rules of the computation, and what it makes of the delivered law.
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

    void rates()
    {
        const struct
        {
            const char *name;
            int year;
            int status;
            const char *surApp;
            FBTRates rates;
        } rows[] = {
            {"firm, one cess before 2008", 2007, 3, "", {0, 30, 10, 2, 0}},
            {"private company, first year", 2006, 16, "", {0, 30, 10, 2, 0}},
            {"foreign company", 2009, 5, "", {0, 30, 2.5, 2, 1}},
            {"association, text too short", 2008, 9, "00", {0, 30, 0, 2, 1}},
            {"trust, first digit", 2006, 11, "1", {0, 30, 10, 2, 0}},
            {"family bears no tax", 2008, 1, "11111", {}},
            {"unknown status", 2006, -1, "11111", {}},
        };
        for (const auto &row : rows)
            QVERIFY2(RatesFor(row.year, row.status, row.surApp) == row.rates, row.name);
    }

    void lines()
    {
        const struct
        {
            int head, year;
            QList<int> lines; // of the natures 1 to 8, where 8 carries by ship
        } rows[] = {
            {5, 2006, {5, 4, 4, 4, 4, 4, 4, 4}},          {5, 2007, {5, 4, 4, 4, 4, 24, 4, 4}},
            {9, 2006, {9, 10, 10, 10, 9, 9, 9, 9}},       {9, 2009, {9, 26, 10, 27, 9, 9, 9, 9}},
            {10, 2006, {11, 11, 12, 12, 11, 11, 11, 11}}, {10, 2007, {11, 11, 12, 28, 11, 29, 11, 30}},
            {11, 2008, {13, 13, 13, 13, 14, 13, 13, 13}}, {20, 2006, {9, 10, 10, 10, 9, 9, 9, 9}},
            {20, 2007, {23, 23, 23, 23, 23, 23, 23, 23}},
        };
        const auto linesOf = [](int head, int year) {
            QList<int> found;
            for (int nature = 1; nature <= 8; ++nature)
                found << ComputationLine(head, year, nature, 8);
            return found;
        };
        for (const auto &row : rows)
            QVERIFY2(linesOf(row.head, row.year) == row.lines,
                     qPrintable(QString::number(row.head * 10000 + row.year)));
        // One line for all natures, the same in every year; 0: none.
        const QList<int> plain{2,  1,  3,  2,  4,  3,  6,  6,  7,  7,  8,  8,  12, 15, 13, 16, 14, 17, 15,
                               18, 16, 19, 17, 20, 18, 21, 19, 22, 21, 31, -1, 0,  0,  0,  1,  0,  22, 0};
        for (int i = 0; i < plain.size(); i += 2) {
            QCOMPARE(linesOf(plain[i], 2006), QList<int>(8, plain[i + 1]));
            QCOMPARE(linesOf(plain[i], 2007), QList<int>(8, plain[i + 1]));
        }
    }

    /// Stated by hand beside what the random clients show.
    void sharing()
    {
        QCOMPARE(ShareBySalary(100, {900, 100}, 500), (Amounts{180, -80})); // salary above the total
        QCOMPARE(ShareBySalary(10.75, {1, 1}, 2), (Amounts{5, 6}));         // paise are rounded off the last
        Salaries salaries({3, 1});
        salaries.set(3, 2, 10);
        salaries.set(3, 2, 25); // a later row replaces
        salaries.set(7, 9, 99); // not the client's, so its quarter does not matter
        salaries.set(-1, 2, 100);
        QCOMPARE(salaries.shares(200, 2), (Amounts{50, 150}));
        for (const int quarter : {-1, 5}) {
            QVERIFY_THROWS_EXCEPTION(FaultError, salaries.set(1, quarter, 1));
            QVERIFY_THROWS_EXCEPTION(FaultError, (void)salaries.shares(200, quarter));
            QCOMPARE(Salaries({3}).shares(200, quarter), (Amounts{200})); // no salary is looked at
        }
    }

    void tax()
    {
        const auto parts = [](double value, double surcharge) {
            const TaxParts tax = TaxOn(value, {0, 30, surcharge, 2, 1});
            return Amounts{tax.Tax, tax.Surcharge, tax.EduCess, tax.SHECess};
        };
        QCOMPARE(parts(100000, 10), (Amounts{30000, 3000, 660, 330})); // the cesses on 33,000
        QCOMPARE(parts(15, 10), (Amounts{4, 0, 0, 0}));                // 4.5 falls to the even number
        QCOMPARE(parts(85, 2.5), (Amounts{26, 1, 1, 0}));              // 25.5 rises to it; 0.65; 0.54; 0.27
    }

    void indiaShare()
    {
        QCOMPARE(TaxableValue({true, false, 1, 3}, 1000), 333.0);
        QCOMPARE(TaxableValue({true, false, 3, 2}, 1000), 1500.0); // more in India than in all
        QCOMPARE(TaxableValue({true, true, 1, 3}, 1000), 1000.0);  // separate books
        QCOMPARE(TaxableValue({true, false, 1, 0}, 1000), 1000.0); // none at all
    }

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
