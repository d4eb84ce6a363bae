#include "calc/modfbtcalc.h"
#include "records/expenses.h"
#include "records/salaries.h"
#include "tests/support/employer.h"
#include "tests/support/lawdatabase.h"

#include <QTest>

#include <cmath>
#include <random>

namespace {

constexpr int heads = 22;

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
            if (expense.quarter <= 4)
                quarters[expense.quarter] += value;
        }
    }
    void compute()
    {
        for (const Expense &expense : expenses) {
            if (expense.expId > heads)
                continue;
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
    for (int item = 1; item <= heads; ++item) {
        if (!oneIn(3))
            model.rates.push_back({item, 0, dice(0, 8) * 12.5});
        for (int nature = 1; nature <= 7 && oneIn(2); ++nature)
            model.rates.push_back({item, nature, dice(1, 40) * 2.5});
    }
    for (int i = dice(0, 60); i > 0; --i) {
        const int nature = oneIn(2) ? -1 : dice(1, 7);
        const int quarter = dice(0, nature == -1 ? 4 : 7); // no quarter beyond the fourth counts
        const int item = dice(1, heads + 2);               // and no item without a head
        model.expenses.push_back({quarter, nature, 0, item, 0, dice(-100, 40000) * 0.25, i});
    }
    for (int i = dice(0, 40); i > 0; --i)
        model.salaries.push_back({dice(0, 4), oneIn(4) ? -1 : dice(1, 7), dice(0, 9) * 1000.5});
    return model;
}

void write(const Model &model)
{
    for (const char *table : {"FBT_ExpHead", "FBT_ExpRate"})
        Cnn->Execute(Sql("Delete from ", table, model.year));
    for (int head = 1; head <= heads; ++head)
        Cnn->Execute(Sql("Insert into FBT_ExpHead", model.year, " Values (", head, ",", head, ",'')"));
    for (const Rate &rate : model.rates)
        Cnn->Execute(Sql("Insert into FBT_ExpRate", model.year, " Values (", rate.item, ",", rate.nature, ",",
                         rate.percent, ")"));
    for (const char *table : {"FBT_Detail", "FBT_SalDet"})
        Cnn->Execute(Sql("Delete from ", table));
    employer(*Cnn, "A1").busnat(BusnatOf(model.natures));
    const ClientYear client{"A1", model.year};
    QVERIFY(ChangeTogether(Cnn, [&](Change &change) {
        for (const Expense &row : model.expenses)
            InsertExpense(change, client, row);
        for (const Salary &row : model.salaries)
            InsertSalary(change, client, row);
        return true;
    }));
}

} // namespace

/// The computation from rows in the database, against a plain model on clients and a law thrown by dice.
class TestCalcFbt : public QObject
{
    Q_OBJECT
private slots:
    void agreesWithTheModel()
    {
        LawDatabase law;
        TestModule &module = law.module;
        for (unsigned seed = 1; seed <= 60; ++seed) {
            Model model = thrownModel(seed);
            model.compute();
            write(model);
            module.base.code = "A1";
            module.base.TYear = model.year;
            QVERIFY(CALCFBT());
            const bool same = FBTExpAmt == model.amounts && FBTValue == model.values && FBTQtrValue == model.quarters;
            QVERIFY2(same, qPrintable(QString("seed %1").arg(seed)));
        }
        QCOMPARE(module.logLines(), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestCalcFbt)
#include "tst_calcfbt.moc"
