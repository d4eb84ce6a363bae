#include "entry/frmfbtdet.h"
#include "tests/entry/entryscreen.h"

#include <QRandomGenerator>

Q_GLOBAL_STATIC(TestServer, server)
Q_GLOBAL_STATIC_WITH_ARGS(LawDatabase, delivered, (*server))

namespace {

using Stage = EntryScreen<frmfbtdet>;

constexpr int localConveyance = 57; // 20 percent, 5 for natures 2 to 4
constexpr int festival = 102;       // 50 percent for all in 2008
constexpr auto totalTooSmall =
    "Total Salary and Wages Amount Should be Greater than or Equal to Total of Business Wise "
    "Salary and Wages.";

QStringList salaries(Stage &stage)
{
    return stage.module.rows(
        QStringLiteral("Select Quarter, NatId, Amt from FBT_SalDet Where Code_No='A1' Order by Quarter"));
}

/// Opens the panel of the consolidated expenses.
void openPanel(Stage &stage)
{
    stage.choose("cbonature", stage.find<QComboBox>("cbonature")->count() - 1);
    stage.press(Qt::Key_C, Qt::AltModifier);
}

QStringList column(const Grid *grid, int col)
{
    QStringList cells;
    for (int row = 1; row < grid->Rows(); ++row)
        cells << grid->TextMatrix(row, col);
    return cells;
}

} // namespace

/// Expenses that serve several natures of business: shared by salary, shown as rows that are no one's to change.
class TestConsolidated : public QObject
{
    Q_OBJECT
private slots:
    void sharesInTheListOfANature()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3})
            .expense(2008, 1, 3, festival, 10)
            .expense(2008, 1, -1, localConveyance, 1001)
            .expense(2008, 1, -1, festival, 0)
            .salary(2008, 1, 1, 300)
            .salary(2008, 1, 3, 700)
            .salary(2008, 1, -1, 1000);
        stage.open();
        // Hotel: 300.3 of 1001, at 20 percent
        QCOMPARE(stage.shown("vsf2"), QStringList("1 Conveyance Local conveyance 20 300.00 60.00"));
        stage.choose("cbonature", 1); // the last takes what is left, at 5 percent: 35.05
        QCOMPARE(stage.shown("vsf2"),
                 QStringList({"1 Festival Celebration Expenses Puja Festivals for employees 50 10.00 5.00",
                              "2 Conveyance Local conveyance 5 701.00 35.00"}));
        // 10 + 701; 5 + 35; 30% = 12, 1.2, 0.26, 0.13
        QCOMPARE(stage.figures(), QStringList({"711.00", "40.00", "40.00", "12.00", "1.00", "0.00", "0.00", "13.00"}));
        const Grid *vsf2 = stage.grid("vsf2");
        QCOMPARE(vsf2->gridModel()->rowColor(2), QColor(Qt::blue));
        QVERIFY(!vsf2->gridModel()->rowColor(1).isValid());
        QVERIFY(!stage.enabled("cmdconexp"));
    }

    void shareRowsRefuseToBeChanged()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3}).expense(2008, 1, -1, localConveyance, 1001); // no salaries: all to the last
        stage.open();
        QCOMPARE(stage.shown("vsf2"), QStringList());
        stage.choose("cbonature", 1);
        QCOMPARE(stage.shown("vsf2").size(), 1);
        stage.click("cmdmodifyded");
        stage.click("cmddeleteded");
        QCOMPARE(stage.said(), QStringList(2, "Selected Item is a Consolidated Expenses."));
        QVERIFY(!stage.enabled("Frame4"));
        QCOMPARE(stage.details().size(), 1);
    }

    void panel()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3})
            .expense(2008, 1, -1, localConveyance, 1001)
            .expense(2008, 1, -1, festival, 5)
            .salary(2008, 1, 1, 300)
            .salary(2008, 1, 3, 700)
            .salary(2008, 1, -1, 1000);
        stage.open();
        openPanel(stage);
        QVERIFY(!stage.find<QWidget>("Frame3")->isVisible() && stage.find<QWidget>("famcon")->isVisible());
        QCOMPARE(stage.focus(), "vsfs");
        const Grid *vsfs = stage.grid("vsfs");
        QCOMPARE(vsfs->TextMatrix(0, 2), "Pharamceuticals (M.."); // of 41 letters
        QCOMPARE(vsfs->TextMatrix(0, 3), "Total Salary and Wages");
        QCOMPARE(stage.shown("vsfs"), QStringList("Salary and Wages 300.00 700.00 1000.00"));
        const Grid *vsfe = stage.grid("vsfe");
        // 300 at 20% = 60, tax 18, 1.8, 2% of 20 = 0.4, 0.2
        QCOMPARE(column(vsfe, 1),
                 QStringList({"20", "300.00", "60.00", "60.00", "18.00", "2.00", "0.00", "0.00", "20.00"}));
        // 701 at 5% = 35.05, tax 10.5 to the even 10, 1, 0.22, 0.11
        QCOMPARE(column(vsfe, 2),
                 QStringList({"5", "701.00", "35.00", "35.00", "10.00", "1.00", "0.00", "0.00", "11.00"}));
        QCOMPARE(column(vsfe, 3),
                 QStringList({"-", "1001.00", "95.00", "95.00", "28.00", "3.00", "0.00", "0.00", "31.00"}));
        // The second expense: 1.5 to the even 2 and 3; at 50% 1 and 1.5 to the even 2; tax 0.3 and 0.6
        const QStringList all{"1006.00", "98.00", "98.00", "29.00", "3.00", "0.00", "0.00", "32.00"};
        QCOMPARE(column(stage.grid("vsfr"), 3).mid(1), all);
        QCOMPARE(stage.figures(), all);
        stage.choose("cboexp", 1);
        QCOMPARE(column(vsfe, 1).mid(0, 3), QStringList({"50", "2.00", "1.00"}));
    }

    void salaries_data()
    {
        QTest::addColumn<int>("col");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a nature raises the total")
            << 1 << "500" << QStringList() << "Salary and Wages 500.00 700.00 1200.00";
        QTest::newRow("a total above the sum stays")
            << 3 << "1500.5" << QStringList() << "Salary and Wages 300.00 700.00 1500.50";
        QTest::newRow("a total below the sum")
            << 3 << "999" << QStringList(totalTooSmall) << "Salary and Wages 300.00 700.00 1000.00";
        QTest::newRow("letters") << 1 << "many" << QStringList("Please Enter Numeric Value.")
                                 << "Salary and Wages 300.00 700.00 1000.00";
    }
    void salaries()
    {
        QFETCH(int, col);
        QFETCH(QString, typed);
        Stage stage(*delivered, 2008);
        stage.client({1, 3}).salary(2008, 1, 1, 300).salary(2008, 1, 3, 700).salary(2008, 1, -1, 1000);
        stage.open();
        openPanel(stage);
        stage.typeCell("vsfs", 1, col, typed);
        if (stage.grid("vsfs")->isEditing())
            stage.press(Qt::Key_Escape);
        QTEST(stage.said(), "messages");
        QTEST(stage.shown("vsfs").first(), "shown");
    }

    void escapeSavesTheSalaries()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3}).expense(2008, 2, -1, localConveyance, 100).salary(2008, 1, 1, 5);
        stage.open();
        stage.choose("cboquarter", 1);
        openPanel(stage);
        stage.typeCell("vsfs", 1, 1, "60");
        stage.statements.clear();
        stage.press(Qt::Key_Escape);
        QCOMPARE(stage.statements,
                 QStringList({"Delete from FBT_SalDet Where Code_No='A1' and Tyear=2008 and Quarter=2", "Flush Tables",
                              "Insert into FBT_SalDet Values ('A1',2008,2,1,60)", "Flush Tables",
                              "Insert into FBT_SalDet Values ('A1',2008,2,3,0)", "Flush Tables",
                              "Insert into FBT_SalDet Values ('A1',2008,2,-1,60)", "Flush Tables"}));
        QCOMPARE(::salaries(stage).size(), 4);
        QVERIFY(stage.find<QWidget>("Frame3")->isVisible() && !stage.find<QWidget>("famcon")->isVisible());
        QCOMPARE(stage.focus(), "cmdconexp");
        QCOMPARE(stage.figures().value(1), "20.00"); // all to the hotel now, at 20 percent
        stage.choose("cbonature", 0);
        QCOMPARE(stage.shown("vsf2"), QStringList("1 Conveyance Local conveyance 20 100.00 20.00"));
    }

    /// Stored by other hands: the total is below the sum, and is not saved so.
    void wrongStoredTotal()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3}).salary(2008, 1, 1, 300).salary(2008, 1, -1, 100);
        stage.open();
        openPanel(stage);
        stage.press(Qt::Key_Escape);
        QCOMPARE(stage.said(), QStringList(totalTooSmall));
        QVERIFY(stage.find<QWidget>("famcon")->isVisible());
        stage.typeCell("vsfs", 1, 2, "1");
        stage.press(Qt::Key_Escape);
        QCOMPARE(::salaries(stage), QStringList({"1\t1\t300", "1\t3\t1", "1\t-1\t301"}));
    }

    /// What the screen shows nature by nature adds up to the values that the year's computation makes of the same rows.
    void agreesWithTheComputation_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 6; ++seed)
            QTest::addRow("client %u", seed) << seed;
    }
    void agreesWithTheComputation()
    {
        QFETCH(quint32, seed);
        QRandomGenerator random(seed);
        Stage stage(*delivered, 2006 + static_cast<int>(seed % 4));
        const int year = Base->TYear;
        const QList<int> natures = seed % 2 == 0 ? QList<int>{1, 4, 6} : QList<int>{2, 7};
        Employer client = natures.size() == 3 ? stage.client({1, 4, 6}) : stage.client({2, 7});
        for (int i = 0; i < 60; ++i) {
            const int choice = random.bounded(static_cast<int>(natures.size()) + 1);
            client.expense(year, 1 + random.bounded(4), natures.value(choice, -1), 1 + random.bounded(134),
                           random.bounded(200000) / 4.0);
        }
        for (int quarter = 1; quarter <= 3; ++quarter) { // the last has none: all falls to the last nature
            double sum = 0;
            for (const int nature : natures) {
                const int salary = random.bounded(90000);
                sum += salary;
                client.salary(year, quarter, nature, salary);
            }
            client.salary(year, quarter, -1, sum + random.bounded(2) * 5000);
        }
        stage.open();
        CALCFBT();
        for (int quarter = 1; quarter <= 4; ++quarter) {
            stage.choose("cboquarter", quarter - 1);
            double value = 0;
            double shares = 0;
            for (int nature = 0; nature < natures.size(); ++nature) {
                stage.choose("cbonature", nature);
                value += Val(stage.figures().value(1));
                const Grid *vsf2 = stage.grid("vsf2");
                for (int row = 1; row < vsf2->Rows(); ++row)
                    shares += vsf2->TextMatrix(row, 6) == u"-1" ? Val(vsf2->TextMatrix(row, 5)) : 0;
            }
            QCOMPARE(value, FBTQtrValue[quarter]);
            stage.choose("cbonature", static_cast<int>(natures.size()));
            QCOMPARE(Val(stage.figures().value(1)), shares);
        }
        QCOMPARE(stage.module.logLines(), QStringList());
    }
};

QTEST_MAIN(TestConsolidated)
#include "tst_consolidated.moc"
