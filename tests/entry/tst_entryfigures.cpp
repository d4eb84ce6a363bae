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

DetailRow row(int quarter, int srNo, int expId, double amount)
{
    return {quarter, QStringLiteral("9"), expId, 20, amount, srNo};
}

} // namespace

/// What the entry screens compute without a database.
class TestEntryFigures : public QObject
{
    Q_OBJECT
private slots:
    void figures_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<Employees>("employees");
        QTest::addColumn<QString>("expected");
        // 30% of 1001 = 300.3, 10% of 300 = 30, 2% of 330 = 6.6, 1% of 330 = 3.3
        QTest::newRow("whole value") << 1001.0 << Employees{} << "0.00 1001.00 1001.00 300.00 30.00 7.00 3.00 340.00";
        // 3/8 of 1004 = 376.5, to the even 376; 112.8, 11.3, 2% of 124 = 2.48, 1.24
        QTest::newRow("India share, tie")
            << 1004.0 << Employees{true, false, 3, 8} << "0.00 1004.00 376.00 113.00 11.00 2.00 1.00 127.00";
        QTest::newRow("separate books") << 10.0 << Employees{true, true, 3, 8}
                                        << "0.00 10.00 10.00 3.00 0.00 0.00 0.00 3.00";
        QTest::newRow("nobody counted") << 10.0 << Employees{true, false, 3, 0}
                                        << "0.00 10.00 10.00 3.00 0.00 0.00 0.00 3.00";
    }
    void figures()
    {
        QFETCH(double, value);
        QFETCH(Employees, employees);
        QTEST(texts(FiguresOn(0, value, employees, companyOf2008)), "expected");
    }

    void tellsTheIndiaShare()
    {
        QCOMPARE(ProportionText({true, false, 3, 8}, 1004),
                 QString::fromUtf8("(3[Employees in India] ÷8[Total Employees]) X 1004.00[Value of Fringe Benefit]"));
        QCOMPARE(ProportionText({true, true, 3, 8}, 1004), QString());
    }

    void amounts_data()
    {
        QTest::addColumn<bool>("accepted");
        QTest::newRow("") << true;
        QTest::newRow(" 12.5 ") << true;
        QTest::newRow("-3") << true;
        QTest::newRow("9007199254740993") << true; // kept with its first 15 digits
        QTest::newRow("1E400") << false;           // no double holds it
        QTest::newRow("12AB") << false;
        QTest::newRow("12,000") << false;
    }
    void amounts() { QTEST(IsAmount(QString::fromLatin1(QTest::currentDataTag())), "accepted"); }

    void totals_data()
    {
        QTest::addColumn<std::vector<double>>("natures");
        QTest::addColumn<double>("total");
        QTest::addColumn<bool>("tooSmall");
        QTest::newRow("binary fractions") << std::vector{0.10, 0.20} << 0.30 << false;
        QTest::newRow("one paisa short") << std::vector{0.10, 0.20} << 0.29 << true;
        QTest::newRow("above") << std::vector{300.0, 700.0} << 1000.01 << false;
        QTest::newRow("large") << std::vector{99999999999.99, 0.01} << 99999999999.99 << true;
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

    void sharesOfANature_data()
    {
        QTest::addColumn<double>("total");
        QTest::addColumn<int>("nature");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first") << 1000.0 << 0 << "300";
        QTest::newRow("last takes the rest") << 1000.0 << 1 << "701,1";
        QTest::newRow("total above the sum") << 2000.0 << 1 << "851,1"; // 150.15 and what is left
        QTest::newRow("no total, first") << 0.0 << 0 << "";
        QTest::newRow("no total, last") << 0.0 << 1 << "1001,1";
    }
    void sharesOfANature()
    {
        QFETCH(double, total);
        QFETCH(int, nature);
        QStringList shares;
        // The second expense is too small for a share of the first nature: 0.3 is 0, and no row.
        for (const DetailRow &share :
             SharesOf({row(1, 7, 57, 1001), row(1, 8, 58, 1)}, static_cast<std::size_t>(nature), {{300, 700}, total})) {
            QCOMPARE(share.srNo, -1);
            shares << QString::number(share.amount);
        }
        QTEST(shares.join(u','), "expected");
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
