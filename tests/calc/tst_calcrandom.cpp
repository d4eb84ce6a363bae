#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "records/expenses.h"
#include "records/salaries.h"
#include "smalllaw.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QTest>

#include <cmath>
#include <random>

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

class Dice
{
public:
    explicit Dice(unsigned seed)
        : m_engine(seed)
    {
    }
    int operator()(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_engine); }
    bool oneIn(int n) { return (*this)(1, n) == 1; }

private:
    std::mt19937 m_engine;
};

Model thrownModel(unsigned seed)
{
    Dice dice(seed);
    Model model;
    model.year = dice.oneIn(3) ? 2006 : dice(2008, 2009);
    for (int nature = 7; nature >= 1; --nature) {
        if (dice.oneIn(2))
            model.natures.insert(dice.oneIn(2) ? model.natures.begin() : model.natures.end(), nature);
    }
    if (model.natures.empty())
        model.natures = {7};
    for (int item = 1; item <= 22; ++item) {
        if (!dice.oneIn(3))
            model.rates.push_back({item, 0, dice(0, 8) * 12.5});
        for (int nature = 1; nature <= 7 && dice.oneIn(2); ++nature)
            model.rates.push_back({item, nature, dice(1, 40) * 2.5});
    }
    for (int i = dice(0, 60); i > 0; --i)
        model.expenses.push_back(
            {dice(0, 4), dice.oneIn(2) ? -1 : dice(1, 7), 0, dice(1, 22), 0, dice(-100, 40000) * 0.25, i});
    for (int i = dice(0, 40); i > 0; --i)
        model.salaries.push_back({dice(0, 4), dice.oneIn(4) ? -1 : dice(1, 7), dice(0, 9) * 1000.5});
    return model;
}

void write(const Model &model, Connection &connection)
{
    SmallLaw law(connection, model.year);
    law.clear();
    for (int item = 1; item <= 22; ++item)
        law.item(item, item);
    for (const Rate &rate : model.rates)
        law.rate(rate.item, rate.nature, rate.percent);
    employer(connection, QStringLiteral("A1")).busnat(BusnatOf(model.natures));
    const ClientYear client{QStringLiteral("A1"), model.year};
    QVERIFY(ChangeTogether(&connection, [&](Change &change) {
        change.write(QStringLiteral("Delete from FBT_Detail"));
        change.write(QStringLiteral("Delete from FBT_SalDet"));
        for (const Expense &row : model.expenses)
            InsertExpense(change, client, row);
        for (const Salary &row : model.salaries)
            InsertSalary(change, client, row);
        return true;
    }));
}

} // namespace

/// The computation against a plain model on clients thrown by dice.
class TestCalcRandom : public QObject
{
    Q_OBJECT
private slots:
    void agreesWithTheModel()
    {
        TestServer server;
        TestModule module(server);
        UpdateDatabase(&module.connection);
        module.base.code = QStringLiteral("A1");
        for (unsigned seed = 1; seed <= 60; ++seed) {
            Model model = thrownModel(seed);
            model.compute();
            write(model, module.connection);
            module.base.TYear = model.year;
            CALCFBT();
            const QByteArray where = "seed " + QByteArray::number(seed);
            QVERIFY2(FBTExpAmt == model.amounts, where.constData());
            QVERIFY2(FBTValue == model.values, where.constData());
            QVERIFY2(FBTQtrValue == model.quarters, where.constData());
        }
        QVERIFY(module.logLines().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCalcRandom)
#include "tst_calcrandom.moc"
