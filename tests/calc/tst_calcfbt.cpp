#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "smalllaw.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QTest>

#include <memory>

using Lines = QMap<int, QPair<double, double>>; // amount and value of the lines that are not 0

namespace {

Lines linesInUse()
{
    Lines lines;
    for (int line = 0; line <= lastComputationLine; ++line) {
        if (FBTExpAmt[line] != 0 || FBTValue[line] != 0)
            lines[line] = {FBTExpAmt[line], FBTValue[line]};
    }
    return lines;
}

QList<double> quarters()
{
    return {FBTQtrValue.begin() + 1, FBTQtrValue.end()};
}

QList<double> taxFigures()
{
    return {FBTTax, FBTSurcharge, FBTEduCess, FBTSHECess};
}

} // namespace

/// The computation from rows in the database, under a small law of its own: item 100 + h belongs to head h.
class TestCalcFbt : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_server = std::make_unique<TestServer>(); }
    void init()
    {
        if (!m_module)
            newDatabase();
        for (const char *table : {"FBT_Info", "FBT_Detail", "FBT_SalDet"})
            m_module->connection.Execute(Sql("Delete from ", table));
        ResetCalculation();
        FBTRate = {0, 30, 10, 2, 1};
        use(QStringLiteral("A1"), 2008);
    }
    void cleanupTestCase() { m_module.reset(); }

    void oneExpense_data()
    {
        QTest::addColumn<int>("head");
        QTest::addColumn<int>("quarter");
        QTest::addColumn<double>("amount");
        QTest::addColumn<Lines>("lines");
        QTest::addColumn<QList<double>>("quarters");
        QTest::newRow("tie falls") << 4 << 1 << 5.0 << Lines{{3, {5, 2}}} << QList<double>{2, 0, 0, 0};
        QTest::newRow("tie rises") << 4 << 2 << 7.0 << Lines{{3, {7, 4}}} << QList<double>{0, 4, 0, 0};
        QTest::newRow("negative") << 4 << 4 << -7.0 << Lines{{3, {-7, -4}}} << QList<double>{0, 0, 0, -4};
        QTest::newRow("head without a line") << 1 << 4 << 8.0 << Lines{} << QList<double>{0, 0, 0, 4};
        QTest::newRow("quarter 7") << 4 << 7 << 8.0 << Lines{{3, {8, 4}}} << QList<double>{0, 0, 0, 0};
        QTest::newRow("item of no head") << 99 << 1 << 8.0 << Lines{} << QList<double>{0, 0, 0, 0};
    }
    void oneExpense()
    {
        QFETCH(int, head);
        QFETCH(int, quarter);
        QFETCH(double, amount);
        newEmployer().natures({7}).expense(2008, quarter, 7, 100 + head, amount);
        CALCFBT();
        QTEST(linesInUse(), "lines");
        QTEST(quarters(), "quarters");
        QVERIFY(m_module->logLines().isEmpty());
    }

    void taxOfFourQuarters_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<double>("amount"); // in each quarter; half of it is the value
        QTest::addColumn<int>("indiaEmp");  // of 3; 0: all are taxed
        QTest::addColumn<double>("taxable");
        QTest::addColumn<QList<double>>("tax");
        // 30 % of 8 is 2.4, so 2 a quarter; nothing on 2
        QTest::newRow("each quarter rounded") << 2008 << 16.0 << 0 << 32.0 << QList<double>{8, 0, 0, 0};
        // 30 % of 32 is 9.6, so 10; surcharge 1; 2 % of 11 is 0.22
        QTest::newRow("the year rounded") << 2009 << 16.0 << 0 << 32.0 << QList<double>{10, 1, 0, 0};
        // a third of 1,000 is 333, 30 % of it 99.9, so 100; 10; 2.2; 1.1 - a third of 4,000 is 1,333
        QTest::newRow("India share by quarter") << 2008 << 2000.0 << 1 << 1333.0 << QList<double>{400, 40, 8, 4};
        // 30 % of 1,333 is 399.9, so 400; 40; 2 % of 440 is 8.8, so 9; 4.4, so 4
        QTest::newRow("India share of the year") << 2009 << 2000.0 << 1 << 1333.0 << QList<double>{400, 40, 9, 4};
    }
    void taxOfFourQuarters()
    {
        QFETCH(int, year);
        QFETCH(double, amount);
        QFETCH(int, indiaEmp);
        use(QStringLiteral("A1"), year);
        Employer client = newEmployer().natures({7});
        for (int quarter = 1; quarter <= 4; ++quarter)
            client.expense(year, quarter, 7, 104, amount);
        EmpBoth = true;
        IndiaEmp = indiaEmp;
        TotalEmp = 3;
        CALCFBT();
        QCOMPARE(FBTTotalValue, 2 * amount);
        QCOMPARE(quarters(), QList<double>(4, amount / 2)); // unscaled
        QTEST(FBTTaxableValue, "taxable");
        QTEST(taxFigures(), "tax");
        QTEST((CALCFBT(), taxFigures()), "tax"); // a second call adds nothing
    }

    void clientWithoutNaturesKeepsTheTax()
    {
        newEmployer().natures({7}).expense(2008, 1, 7, 104, 2000);
        CALCFBT();
        const QList<double> before = taxFigures();
        QCOMPARE(before.first(), 300.0);
        use(QStringLiteral("A2"), 2008);
        newEmployer().busnat(QString()).expense(2008, 1, 7, 104, 50).expense(2008, 1, -1, 104, 50);
        CALCFBT();
        QCOMPARE(linesInUse(), (Lines{{3, {50, 25}}})); // not the consolidated one
        QCOMPARE(quarters(), (QList<double>{25, 0, 0, 0}));
        QCOMPARE(FBTTotalValue + FBTTaxableValue, 0.0);
        QCOMPARE(taxFigures(), before);
        use(QStringLiteral("nobody"), 2008);
        CALCFBT();
        QCOMPARE(linesInUse(), Lines());
        QCOMPARE(taxFigures(), before);
        ResetCalculation();
        CALCFBT();
        QCOMPARE(taxFigures(), QList<double>(4, 0.0));
    }

    void naturesByShip()
    {
        newEmployer().natures({8}).expense(2008, 1, 8, 110, 10);
        CALCFBT();
        QCOMPARE(ShipNatId, 0);
        QCOMPARE(linesInUse(), (Lines{{11, {10, 5}}}));
        m_module->connection.Execute(
            QStringLiteral("Insert into FBT_Nature Values (8,'Carry of Passengers/ Goods by Ship')"));
        CALCFBT();
        QCOMPARE(ShipNatId, 8);
        QCOMPARE(linesInUse(), (Lines{{30, {10, 5}}}));
    }

    void quarterBeyondTheBound()
    {
        newEmployer()
            .natures({1, 5})
            .salary(2008, 7, 1, 50)
            .salary(2008, 1, 1, 50)
            .salary(2008, 1, -1, 100)
            .expense(2008, 1, -1, 111, 10);
        CALCFBT();
        QCOMPARE(linesInUse(), (Lines{{13, {5, 2}}, {14, {5, 2}}}));
        QCOMPARE(places(), QStringList{QStringLiteral("MODFBTCALC\tCALCFBT")}); // the salary row of quarter 7
        employer(m_module->connection, QStringLiteral("A2")).natures({1, 5}).expense(2008, 7, -1, 111, 10);
        use(QStringLiteral("A2"), 2008);
        CALCFBT();
        QCOMPARE(linesInUse(), (Lines{{14, {10, 5}}})); // all on the last nature
        QCOMPARE(quarters(), QList<double>(4, 0.0));
        const QStringList faults = places();
        QVERIFY(faults.size() > 1);
        QCOMPARE(faults.count(QStringLiteral("MODFBTCALC\tCALCFBT")), faults.size());
        m_module.reset(); // its log is spent
    }

    void droppedTable_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<int>("faults");
        QTest::addColumn<Lines>("lines");
        QTest::addColumn<double>("tax");
        const Lines all{{3, {20, 10}}, {13, {50, 25}}, {14, {50, 25}}};
        QTest::newRow("natures: no ship") << "FBT_Nature" << 1 << all << 18.0;
        QTest::newRow("salaries: the last nature takes all")
            << "FBT_SalDet" << 1 << Lines{{3, {20, 10}}, {14, {100, 50}}} << 18.0;
        QTest::newRow("clients: ends without natures") << "FBT_Info" << 1 << Lines{{3, {20, 10}}} << 0.0;
        QTest::newRow("expenses: one fault a query") << "FBT_Detail" << 3 << Lines{} << 0.0;
    }
    void droppedTable()
    {
        QFETCH(QString, table);
        QFETCH(int, faults);
        newEmployer()
            .natures({1, 5})
            .salary(2008, 1, 1, 50)
            .salary(2008, 1, 5, 50)
            .salary(2008, 1, -1, 100)
            .expense(2008, 1, 1, 104, 20)
            .expense(2008, 1, -1, 111, 100);
        m_module->connection.Execute(Sql("Drop Table ", table));
        CALCFBT();
        QTEST(linesInUse(), "lines");
        QTEST(FBTTax, "tax");
        QCOMPARE(places(), QStringList(faults, QStringLiteral("MODFBTCALC\tCALCFBT")));
        m_module.reset();
    }

private:
    void newDatabase()
    {
        m_module = std::make_unique<TestModule>(*m_server);
        UpdateDatabase(&m_module->connection);
        for (const int year : {2008, 2009}) {
            SmallLaw law(m_module->connection, year);
            law.clear();
            for (int head = 1; head <= 21; ++head)
                law.item(100 + head, head).rate(100 + head, 0, 50);
        }
    }
    Employer newEmployer() { return employer(m_module->connection, m_module->base.code); }
    void use(const QString &code, int year)
    {
        m_module->base.code = code;
        m_module->base.TYear = year;
    }
    /// Where the faults happened: object and procedure of each log line.
    [[nodiscard]] QStringList places() const
    {
        QStringList found;
        for (const QString &line : m_module->logLines())
            found << line.section(u'\t', -2);
        return found;
    }

    std::unique_ptr<TestServer> m_server;
    std::unique_ptr<TestModule> m_module;
};

QTEST_GUILESS_MAIN(TestCalcFbt)
#include "tst_calcfbt.moc"
