#include "calc/lines.h"
#include "calc/rates.h"
#include "calc/sharing.h"
#include "calc/taxchain.h"
#include "platform/fault.h"

#include <QTest>

using Amounts = QList<double>;

namespace {

Amounts listOf(const std::vector<double> &amounts)
{
    return {amounts.begin(), amounts.end()};
}

} // namespace

/// The rules of the computation that need no database.
class TestCalcRules : public QObject
{
    Q_OBJECT
private slots:
    void rates_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("surApp");
        QTest::addColumn<Amounts>("rates");
        QTest::newRow("firm, one cess before 2008") << 2007 << 3 << "" << Amounts{0, 30, 10, 2, 0};
        QTest::newRow("private company, first year") << 2006 << 16 << "" << Amounts{0, 30, 10, 2, 0};
        QTest::newRow("foreign company") << 2009 << 5 << "" << Amounts{0, 30, 2.5, 2, 1};
        QTest::newRow("association, text too short") << 2008 << 9 << "00" << Amounts{0, 30, 0, 2, 1};
        QTest::newRow("trust, first digit") << 2006 << 11 << "1" << Amounts{0, 30, 10, 2, 0};
        QTest::newRow("family bears no tax") << 2008 << 1 << "11111" << Amounts{0, 0, 0, 0, 0};
        QTest::newRow("unknown status") << 2006 << -1 << "11111" << Amounts{0, 0, 0, 0, 0};
        QTest::newRow("tax has ended") << 2010 << 16 << "11111" << Amounts{0, 0, 0, 0, 0};
    }
    void rates()
    {
        QFETCH(int, year);
        QFETCH(int, status);
        QFETCH(QString, surApp);
        const FBTRates rates = RatesFor(year, status, surApp);
        QTEST(Amounts(rates.begin(), rates.end()), "rates");
    }

    void lines_data()
    {
        QTest::addColumn<int>("head");
        QTest::addColumn<int>("year");
        QTest::addColumn<QList<int>>("lines"); // of the natures 1 to 8, where 8 carries by ship
        const auto same = [](int line) { return QList<int>(8, line); };
        const QList<int> plain{2,  1,  3,  2,  4,  3,  6,  6,  7,  7,  8,  8,  12, 15, 13,
                               16, 14, 17, 15, 18, 16, 19, 17, 20, 18, 21, 19, 22, 21, 31};
        for (int i = 0; i < plain.size(); i += 2) {
            for (const int year : {2006, 2007})
                QTest::addRow("head %d, %d", plain[i], year) << plain[i] << year << same(plain[i + 1]);
        }
        QTest::newRow("hospitality 2006") << 5 << 2006 << QList<int>{5, 4, 4, 4, 4, 4, 4, 4};
        QTest::newRow("hospitality 2007") << 5 << 2007 << QList<int>{5, 4, 4, 4, 4, 24, 4, 4};
        QTest::newRow("conveyance 2006") << 9 << 2006 << QList<int>{9, 10, 10, 10, 9, 9, 9, 9};
        QTest::newRow("conveyance 2009") << 9 << 2009 << QList<int>{9, 26, 10, 27, 9, 9, 9, 9};
        QTest::newRow("hotel 2006") << 10 << 2006 << QList<int>{11, 11, 12, 12, 11, 11, 11, 11};
        QTest::newRow("hotel 2007") << 10 << 2007 << QList<int>{11, 11, 12, 28, 11, 29, 11, 30};
        QTest::newRow("motor car 2008") << 11 << 2008 << QList<int>{13, 13, 13, 13, 14, 13, 13, 13};
        QTest::newRow("travel 2006") << 20 << 2006 << QList<int>{9, 10, 10, 10, 9, 9, 9, 9};
        QTest::newRow("travel 2007") << 20 << 2007 << same(23);
        for (const int head : {-1, 0, 1, 22})
            QTest::addRow("head %d has no line", head) << head << 2008 << same(0);
    }
    void lines()
    {
        QFETCH(int, head);
        QFETCH(int, year);
        QList<int> found;
        for (int nature = 1; nature <= 8; ++nature)
            found << ComputationLine(head, year, nature, 8);
        QTEST(found, "lines");
    }
    void shipNatureComesLast()
    {
        QCOMPARE(ComputationLine(10, 2008, 3, 3), 12);
        QCOMPARE(ComputationLine(10, 2008, 4, 4), 28);
        QCOMPARE(ComputationLine(10, 2008, 6, 6), 29);
        QCOMPARE(ComputationLine(10, 2008, 1, 1), 30);
    }

    /// Stated by hand beside what the random clients show.
    void sharing()
    {
        QCOMPARE(listOf(ShareBySalary(100, {900, 100}, 500)), (Amounts{180, -80})); // salary above the total
        QCOMPARE(listOf(ShareBySalary(10.75, {1, 1}, 2)), (Amounts{5, 6}));         // paise are rounded off the last
    }

    void salaries()
    {
        Salaries salaries({3, 1});
        salaries.set(1, 2, 50);
        salaries.set(3, 2, 10);
        salaries.set(3, 2, 25); // a later row replaces
        salaries.set(7, 2, 99); // not the client's
        salaries.set(7, 9, 99); // its quarter does not matter
        salaries.set(-1, 2, 100);
        QCOMPARE(listOf(salaries.shares(200, 2)), (Amounts{50, 150}));
        QCOMPARE(listOf(salaries.shares(200, 1)), (Amounts{0, 200}));
        for (const int quarter : {-1, 5}) {
            QVERIFY_THROWS_EXCEPTION(FaultError, salaries.set(1, quarter, 1));
            QVERIFY_THROWS_EXCEPTION(FaultError, salaries.set(-1, quarter, 1));
            QVERIFY_THROWS_EXCEPTION(FaultError, (void)salaries.shares(200, quarter));
            QCOMPARE(listOf(Salaries({3}).shares(200, quarter)), (Amounts{200})); // no salary is looked at
        }
    }

    void tax_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("surcharge");
        QTest::addColumn<Amounts>("parts");
        // 30,000; 10 % 3,000; 2 % and 1 % of 33,000
        QTest::newRow("whole") << 100000.0 << 10.0 << Amounts{30000, 3000, 660, 330};
        // 4.5 falls to 4; 0.4 to 0; 0.08 to 0
        QTest::newRow("tie falls to the even number") << 15.0 << 10.0 << Amounts{4, 0, 0, 0};
        // 25.5 rises to 26; 2.5 % is 0.65, so 1; 2 % of 27 is 0.54, so 1; 1 % is 0.27, so 0
        QTest::newRow("tie rises to the even number") << 85.0 << 2.5 << Amounts{26, 1, 1, 0};
        // 50; surcharge none; 2 % is 1; 1 % is 0.5, so 0
    }
    void tax()
    {
        QFETCH(double, value);
        QFETCH(double, surcharge);
        const TaxParts parts = TaxOn(value, {0, 30, surcharge, 2, 1});
        QTEST((Amounts{parts.Tax, parts.Surcharge, parts.EduCess, parts.SHECess}), "parts");
    }

    void indiaShare_data()
    {
        QTest::addColumn<bool>("both");
        QTest::addColumn<bool>("sepBooks");
        QTest::addColumn<int>("india");
        QTest::addColumn<int>("total");
        QTest::addColumn<double>("taxed"); // of 1,000
        QTest::newRow("one third") << true << false << 1 << 3 << 333.0;
        QTest::newRow("more in India than in all") << true << false << 3 << 2 << 1500.0;
        QTest::newRow("separate books") << true << true << 1 << 3 << 1000.0;
        QTest::newRow("none at all") << true << false << 1 << 0 << 1000.0;
    }
    void indiaShare()
    {
        QFETCH(bool, both);
        QFETCH(bool, sepBooks);
        QFETCH(int, india);
        QFETCH(int, total);
        QTEST((TaxableValue(Employees{both, sepBooks, india, total}, 1000)), "taxed");
    }
};

QTEST_APPLESS_MAIN(TestCalcRules)
#include "tst_calcrules.moc"
