#include "entry/annualrows.h"
#include "entry/consolidated.h"

#include <QTest>

namespace {

constexpr FBTRates companyOf2008{0, 30, 10, 2, 1};

QString texts(const Figures &f)
{
    QStringList cells;
    for (const double cell :
         {f.Amount, f.Value, f.Taxable, f.Tax.Tax, f.Tax.Surcharge, f.Tax.EduCess, f.Tax.SHECess, f.total()})
        cells << Money(cell);
    return cells.join(u' ');
}

QString line(const AnnualRow &row)
{
    QStringList cells{QString::number(row.expId)};
    for (const auto &cell : row.quarters)
        cells << (cell ? QStringLiteral("%1=%2/%3").arg(cell->srNo).arg(cell->amount).arg(cell->value)
                       : QStringLiteral("-"));
    cells << QString::number(row.amount()) << QString::number(row.value());
    return cells.join(u' ');
}

Expense row(int quarter, int srNo, int expId, double amount)
{
    return {quarter, 1, 9, expId, 20, amount, srNo};
}

} // namespace

/// What the entry screens compute without a database.
class TestEntryFigures : public QObject
{
    Q_OBJECT
private slots:
    void totals_data()
    {
        QTest::addColumn<std::vector<double>>("natures");
        QTest::addColumn<double>("total");
        QTest::addColumn<bool>("tooSmall");
        QTest::newRow("binary fractions") << std::vector{0.10, 0.20} << 0.30 << false;
        QTest::newRow("one paisa short") << std::vector{0.10, 0.20} << 0.29 << true;
        QTest::newRow("beyond whole numbers") << std::vector{1e30} << 1.0 << true;
    }
    void totals()
    {
        QFETCH(std::vector<double>, natures);
        QFETCH(double, total);
        QTEST((QuarterSalary{natures, total}.totalTooSmall()), "tooSmall");
    }

    void sharesOfOneExpense()
    {
        // 300/1000 of 1001 = 300.3; the last takes 701. Values: 5% of 300 = 15, 20% of 701 = 140.2.
        // Tax 4.5 to the even 4, 42; surcharge 0.4, 4.2; cesses 0.08, 0.92 and 0.04, 0.46.
        const SharedFigures shared = ShareExpense(1001, {5, 20}, {{300, 700}, 1000}, {}, companyOf2008);
        QCOMPARE(texts(shared.ofNatures[0]), "300.00 15.00 15.00 4.00 0.00 0.00 0.00 4.00");
        QCOMPARE(texts(shared.ofNatures[1]), "701.00 140.00 140.00 42.00 4.00 1.00 0.00 47.00");
        QCOMPARE(texts(shared.total), "1001.00 155.00 155.00 46.00 4.00 1.00 0.00 51.00");
    }

    void linesOfTheYear()
    {
        const auto lines = LineUp({row(2, 4, 57, 100), row(1, 1, 57, 12.5), row(2, 5, 57, 300), row(3, 2, 60, 7),
                                   row(0, 9, 57, 1), row(5, 9, 57, 1), row(1, 2, 60, 0), row(1, 3, 57, 5)});
        QStringList texts;
        for (const AnnualRow &one : lines)
            texts << line(one);
        // 20% of 12.5 = 2.5, to the even 2; of 7 = 1.4
        QCOMPARE(texts, QStringList({"57 1=12.5/2 4=100/20 - - 112.5 22", "57 3=5/1 5=300/60 - - 305 61",
                                     "60 2=0/0 - 2=7/1 - 7 1"}));
    }
};

QTEST_GUILESS_MAIN(TestEntryFigures)
#include "tst_entryfigures.moc"
