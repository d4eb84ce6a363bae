#include "calc/lines.h"
#include "calc/rates.h"
#include "calc/sharing.h"
#include "calc/taxchain.h"
#include "platform/fault.h"

#include <QTest>

using Amounts = std::vector<double>;

/// The rules of the computation that need no database.
class TestCalcRules : public QObject
{
    Q_OBJECT
private slots:
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
            {"tax has ended", 2010, 16, "11111", {}},
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
};

QTEST_APPLESS_MAIN(TestCalcRules)
#include "tst_calcrules.moc"
