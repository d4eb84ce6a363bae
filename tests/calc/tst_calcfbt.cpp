#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "records/expenses.h"
#include "records/salaries.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QTest>

#include <cmath>
#include <memory>
#include <random>

using Lines = QMap<int, QPair<double, double>>; // amount and value of the lines that are not 0

namespace {

struct Rate
{
    int item;
    int nature;
    double percent;
};

/// A client's rows in memory, and the computation over them written down anew.
struct Model
{
    int year = 2008;
    std::vector<int> natures;
    std::vector<Rate> rates; // item i belongs to head i
    std::vector<Expense> expenses;
    std::vector<Salary> salaries;

    std::array<double, 32> amounts{};
    std::array<double, 32> values{};
    std::array<double, 5> quarters{};

    [[nodiscard]] double salary(int quarter, int nature) const
    {
        double found = 0;
        for (const Salary &row : salaries)
            found = row.quarter == quarter && row.natId == nature ? row.amount : found;
        return found;
    }
    [[nodiscard]] double shareOf(const Expense &expense, int nature) const
    {
        if (nature != natures.back()) {
            const double all = salary(expense.quarter, -1);
            return all == 0 ? 0 : std::rint(salary(expense.quarter, nature) / all * expense.amount);
        }
        double rest = expense.amount;
        for (const int other : natures)
            rest -= other == nature ? 0 : shareOf(expense, other);
        return std::rint(rest);
    }
    void count(const Expense &expense, int nature, double amount)
    {
        std::vector<double> percents;
        for (const Rate &rate : rates) {
            if (rate.item == expense.expId && (rate.nature == 0 || rate.nature == nature))
                percents.push_back(rate.percent);
        }
        if (percents.empty())
            percents.push_back(0);
        const int line = ComputationLine(expense.expId, year, nature, 0);
        for (const double percent : percents) {
            const double value = std::rint(percent / 100 * amount);
            amounts[line] += amount;
            values[line] += value;
            quarters[expense.quarter] += value;
        }
    }
    void compute()
    {
        for (const Expense &expense : expenses) {
            if (expense.natId != -1)
                count(expense, expense.natId, expense.amount);
            for (const int nature : natures) {
                if (expense.natId == -1 && shareOf(expense, nature) != 0)
                    count(expense, nature, shareOf(expense, nature));
            }
        }
        amounts[0] = values[0] = quarters[0] = 0; // no line, no quarter
    }
};

Model thrownModel(unsigned seed)
{
    std::mt19937 engine(seed);
    const auto dice = [&engine](int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine); };
    const auto oneIn = [&dice](int n) { return dice(1, n) == 1; };
    Model model;
    model.year = oneIn(3) ? 2006 : dice(2008, 2009);
    for (int nature = 7; nature >= 1; --nature) {
        if (oneIn(2))
            model.natures.insert(oneIn(2) ? model.natures.begin() : model.natures.end(), nature);
    }
    if (model.natures.empty())
        model.natures = {7};
    for (int item = 1; item <= 22; ++item) {
        if (!oneIn(3))
            model.rates.push_back({item, 0, dice(0, 8) * 12.5});
        for (int nature = 1; nature <= 7 && oneIn(2); ++nature)
            model.rates.push_back({item, nature, dice(1, 40) * 2.5});
    }
    for (int i = dice(0, 60); i > 0; --i)
        model.expenses.push_back(
            {dice(0, 4), oneIn(2) ? -1 : dice(1, 7), 0, dice(1, 22), 0, dice(-100, 40000) * 0.25, i});
    for (int i = dice(0, 40); i > 0; --i)
        model.salaries.push_back({dice(0, 4), oneIn(4) ? -1 : dice(1, 7), dice(0, 9) * 1000.5});
    return model;
}

/// Heads, items and percentages of a year that a test writes down itself, in place of the delivered law.
void writeLaw(int year, int firstItem, int items, const std::vector<Rate> &rates)
{
    for (const char *table : {"FBT_ExpHead", "FBT_ExpRate"})
        Cnn->Execute(Sql("Delete from ", table, year));
    for (int head = 1; head <= items; ++head)
        Cnn->Execute(Sql("Insert into FBT_ExpHead", year, " Values (", firstItem + head, ",", head, ",'')"));
    for (const Rate &rate : rates)
        Cnn->Execute(
            Sql("Insert into FBT_ExpRate", year, " Values (", rate.item, ",", rate.nature, ",", rate.percent, ")"));
}

void write(const Model &model)
{
    writeLaw(model.year, 0, 22, model.rates);
    employer(*Cnn, QStringLiteral("A1")).busnat(BusnatOf(model.natures));
    const ClientYear client{QStringLiteral("A1"), model.year};
    QVERIFY(ChangeTogether(Cnn, [&](Change &change) {
        for (const Expense &row : model.expenses)
            InsertExpense(change, client, row);
        for (const Salary &row : model.salaries)
            InsertSalary(change, client, row);
        return true;
    }));
}

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
        clearClients();
        ResetCalculation();
        FBTRate = {0, 30, 10, 2, 1};
        use(QStringLiteral("A1"), 2008);
    }
    void cleanupTestCase() { m_module.reset(); }

    void oneExpense()
    {
        const struct
        {
            const char *name;
            int head, quarter;
            double amount;
            Lines lines;
            QList<double> quarters;
        } rows[] = {
            {"head without a line", 1, 4, 8, {}, {0, 0, 0, 4}},
            {"quarter 7", 4, 7, 8, {{3, {8, 4}}}, {0, 0, 0, 0}},
            {"item of no head", 99, 1, 8, {}, {0, 0, 0, 0}},
        };
        for (const auto &row : rows) {
            clearClients();
            newEmployer().natures({7}).expense(2008, row.quarter, 7, 100 + row.head, row.amount);
            QVERIFY(CALCFBT());
            QVERIFY2(linesInUse() == row.lines && quarters() == row.quarters, row.name);
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
            QList<double> tax;
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
            clearClients();
            use(QStringLiteral("A1"), row.year);
            Employer client = newEmployer().natures({7});
            for (int quarter = 1; quarter <= 4; ++quarter)
                client.expense(row.year, quarter, 7, 104, row.amount);
            TakeEmployees({true, false, row.indiaEmp, 3});
            CALCFBT();
            CALCFBT(); // a second call adds nothing
            QVERIFY2(FBTTaxableValue == row.taxable && taxFigures() == row.tax, row.name);
        }
    }

    /// The computation against a plain model on clients thrown by dice.
    void agreesWithTheModel()
    {
        for (unsigned seed = 1; seed <= 60; ++seed) {
            clearClients();
            Model model = thrownModel(seed);
            model.compute();
            write(model);
            use(QStringLiteral("A1"), model.year);
            QVERIFY(CALCFBT());
            const bool same = FBTExpAmt == model.amounts && FBTValue == model.values && FBTQtrValue == model.quarters;
            QVERIFY2(same, qPrintable(QStringLiteral("seed %1").arg(seed)));
        }
        QVERIFY(m_module->logLines().isEmpty());
        m_module.reset(); // it has the law of the dice
    }

    void clientWithoutNaturesKeepsTheTax()
    {
        newEmployer().natures({7}).expense(2008, 1, 7, 104, 2000);
        CALCFBT();
        const QList<double> before = taxFigures();
        use(QStringLiteral("A2"), 2008);
        newEmployer().natures({}).expense(2008, 1, 7, 104, 50).expense(2008, 1, -1, 104, 50);
        QVERIFY(CALCFBT());
        QCOMPARE(linesInUse(), (Lines{{3, {50, 25}}})); // not the consolidated one
        QCOMPARE(FBTTotalValue + FBTTaxableValue, 0.0);
        QCOMPARE(taxFigures(), before);
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
        m_module.reset();                                                       // its log is spent
    }

    /// A table that cannot be read costs its rows, and the figures are known not to be whole.
    void droppedTable_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<Lines>("lines");
        QTest::newRow("no ship") << "FBT_Nature" << Lines{{3, {20, 10}}, {13, {50, 25}}, {14, {50, 25}}};
        QTest::newRow("the last nature takes all") << "FBT_SalDet" << Lines{{3, {20, 10}}, {14, {100, 50}}};
        QTest::newRow("ends without natures") << "FBT_Info" << Lines{{3, {20, 10}}};
        QTest::newRow("no expenses") << "FBT_Detail" << Lines{};
    }
    void droppedTable()
    {
        QFETCH(QString, table);
        newEmployer()
            .natures({1, 5})
            .salary(2008, 1, 1, 50)
            .salary(2008, 1, 5, 50)
            .salary(2008, 1, -1, 100)
            .expense(2008, 1, 1, 104, 20)
            .expense(2008, 1, -1, 111, 100);
        m_module->connection.Execute(Sql("Drop Table ", table));
        QVERIFY(!CALCFBT());
        QTEST(linesInUse(), "lines");
        QCOMPARE(places().value(0), QStringLiteral("MODFBTCALC\tCALCFBT"));
        m_module.reset();
    }

private:
    void newDatabase()
    {
        m_module = std::make_unique<TestModule>(*m_server);
        UpdateDatabase(&m_module->connection);
        std::vector<Rate> half;
        for (int head = 1; head <= 21; ++head)
            half.push_back({100 + head, 0, 50});
        for (const int year : {2008, 2009})
            writeLaw(year, 100, 21, half);
    }
    void clearClients()
    {
        for (const char *table : {"FBT_Info", "FBT_Detail", "FBT_SalDet"})
            m_module->connection.Execute(Sql("Delete from ", table));
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
