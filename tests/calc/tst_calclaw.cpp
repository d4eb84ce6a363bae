#include "calc/clientyear.h"
#include "calc/lines.h"
#include "calc/modfbtcalc.h"
#include "calc/sharing.h"
#include "platform/fault.h"
#include "tests/support/employer.h"
#include "tests/support/lawdatabase.h"

#include <QTest>

using Amounts = std::vector<double>;
using Lines = QMap<int, QPair<double, double>>; // amount and value of the lines that are not 0

namespace {

constexpr int car = 71;   // 20 percent, 5 for nature 5, which has a line of its own
constexpr int gift = 109; // 50 percent in all years

Lines linesInUse()
{
    Lines lines;
    for (int line = 0; line <= lastComputationLine; ++line) {
        if (FBTExpAmt[line] != 0 || FBTValue[line] != 0)
            lines[line] = {FBTExpAmt[line], FBTValue[line]};
    }
    return lines;
}

Amounts taxFigures()
{
    return {FBTTax, FBTSurcharge, FBTEduCess, FBTSHECess};
}

} // namespace

/// The rules of the computation, and what it makes of the delivered law.
class TestCalcLaw : public QObject
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
            {"festival 2009: 20 %", 2009, 7, 102, 18, 202},
            {"sweat equity 2008: all", 2008, 7, 135, 31, 1010},
        };
        for (const auto &row : rows) {
            newEmployer(row.name).natures({row.nature}).expense(row.year, 3, row.nature, row.item, 1010);
            QVERIFY(TakeClientYear(row.name, row.year) && CALCFBT());
            QVERIFY2(linesInUse() == (Lines{{row.line, {1010, row.value}}}), row.name);
            QVERIFY2(FBTQtrValue[3] == row.value && FBTTotalValue == row.value, row.name);
        }
    }

    void taxOfFourQuarters()
    {
        const struct
        {
            const char *name;
            int year;
            double amount; // in each quarter; half of it is the value
            int indiaEmp;  // of 3; 0: all are taxed
            double taxable;
            Amounts tax;
        } rows[] = {
            // 30 % of 8 is 2.4, so 2 a quarter; nothing on 2
            {"each quarter rounded", 2008, 16, 0, 32, {8, 0, 0, 0}},
            // 30 % of 32 is 9.6, so 10; surcharge 1; 2 % of 11 is 0.22
            {"the year rounded", 2009, 16, 0, 32, {10, 1, 0, 0}},
            // a third of 1,000 is 333, 30 % of it 99.9, so 100; 10; 2.2; 1.1 - a third of 4,000 is 1,333
            {"India share by quarter", 2008, 2000, 1, 1333, {400, 40, 8, 4}},
            // 30 % of 1,333 is 399.9, so 400; 40; 2 % of 440 is 8.8, so 9; 4.4, so 4
            {"India share of the year", 2009, 2000, 1, 1333, {400, 40, 9, 4}},
        };
        for (const auto &row : rows) {
            Employer client = newEmployer(row.name).natures({7});
            for (int quarter = 1; quarter <= 4; ++quarter)
                client.expense(row.year, quarter, 7, gift, row.amount);
            QVERIFY(TakeClientYear(row.name, row.year));
            TakeEmployees({true, false, row.indiaEmp, 3});
            CALCFBT();
            CALCFBT(); // a second call adds nothing
            QVERIFY2(FBTTaxableValue == row.taxable && taxFigures() == row.tax, row.name);
        }
    }

    void clientWithoutNaturesKeepsTheTax()
    {
        newEmployer("Taxed").natures({7}).expense(2008, 1, 7, gift, 2000);
        QVERIFY(TakeClientYear("Taxed", 2008) && CALCFBT());
        const Amounts before = taxFigures();
        newEmployer("None").natures({}).expense(2008, 1, 7, gift, 50).expense(2008, 1, -1, gift, 50);
        m_module.base.code = "None";
        QVERIFY(CALCFBT());
        QCOMPARE(linesInUse(), (Lines{{19, {50, 25}}})); // not the consolidated one
        QCOMPARE(FBTTotalValue + FBTTaxableValue, 0.0);
        QVERIFY(before[0] > 0 && taxFigures() == before);
    }

    /// A table that cannot be read costs its rows, and the figures are known not to be whole.
    void whatCannotBeRead()
    {
        const std::vector<std::tuple<const char *, QString, Lines>> rows{
            {"no ship", "FBT_Nature", {{19, {20, 10}}, {13, {50, 10}}, {14, {50, 2}}}},
            {"the last nature takes all", "FBT_SalDet", {{19, {20, 10}}, {14, {100, 5}}}},
            {"ends without natures", "FBT_Info", {{19, {20, 10}}}},
            {"no expenses", "FBT_Detail", {}}};
        for (const auto &[name, table, lines] : rows) {
            newEmployer(name).natures({1, 5}).expense(2008, 1, 1, gift, 20).expense(2008, 1, -1, car, 100);
            newEmployer(name).natures({1, 5}).salary(2008, 1, 1, 50).salary(2008, 1, 5, 50).salary(2008, 1, -1, 100);
            QVERIFY(TakeClientYear(name, 2008));
            const WithoutTable gone(table);
            QVERIFY2(!CALCFBT() && linesInUse() == lines, name);
            QVERIFY2(faultInTheComputation(), name);
        }
    }

    /// A salary of such a quarter costs itself alone.
    void quarterBeyondTheBound()
    {
        newEmployer("Seven").natures({1, 5}).salary(2008, 7, 1, 50).salary(2008, 1, 1, 50).salary(2008, 1, -1, 100);
        newEmployer("Seven").natures({1, 5}).expense(2008, 1, -1, car, 100);
        QVERIFY(TakeClientYear("Seven", 2008));
        CALCFBT();
        QCOMPARE(linesInUse(), (Lines{{13, {50, 10}}, {14, {50, 2}}}));
        QVERIFY(faultInTheComputation());
    }

    /// A company that runs hotels and builds, first quarter of 2008-09. Its code is read by the letter everywhere.
    void companyOfTwoNatures()
    {
        const QString code = "O\\'B";
        newEmployer("O'B").natures({1}).expense(2008, 1, 1, 18, 7000);
        newEmployer(code)
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
        QVERIFY(m_module.logLines().isEmpty());
    }

private:
    [[nodiscard]] bool faultInTheComputation() const
    {
        const QStringList lines = m_module.logLines();
        m_module.clearLog();
        return lines.value(0).endsWith("\tMODFBTCALC\tCALCFBT");
    }
    Employer newEmployer(const QString &code) { return employer(m_module.connection, code); }

    LawDatabase m_law;
    TestModule &m_module = m_law.module;
};

QTEST_GUILESS_MAIN(TestCalcLaw)
#include "tst_calclaw.moc"
