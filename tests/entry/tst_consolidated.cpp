#include "entry/frmfbtdet.h"
#include "entry/quartersalary.h"
#include "tests/entry/entrydesk.h"

#include <QLabel>
#include <QRandomGenerator>

namespace {

/// Opens the panel of the consolidated expenses.
void openPanel(EntryDesk &desk)
{
    desk.choose("cbonature", desk.find<QComboBox>("cbonature")->count() - 1);
    desk.key(Qt::Key_C, Qt::AltModifier);
    QVERIFY(desk.visible("famcon"));
}

/// Leaves the cell of the first nature in edit.
void typeSalaries(EntryDesk &desk, const QString &typed)
{
    openPanel(desk);
    desk.typeCell("vsfs", 1, 2, "60");
    desk.grid("vsfs")->setCell(1, 1);
    QVERIFY(desk.grid("vsfs")->EditCell());
    desk.key(Qt::Key_A, Qt::ControlModifier);
    desk.keys(typed);
}

} // namespace

/// Expenses that serve several natures of business: shared by salary, shown as rows that are no one's to change.
class TestConsolidated : public QObject
{
    Q_OBJECT
private slots:
    void totals()
    {
        QVERIFY2((!QuarterSalary{{0.10, 0.20}, 0.30}.totalTooSmall()), "binary fractions");
        QVERIFY2((QuarterSalary{{0.10, 0.20}, 0.29}.totalTooSmall()), "one paisa short");
        QVERIFY2((QuarterSalary{{1e30}, 1.0}.totalTooSmall()), "beyond whole numbers");
    }

    /// Closing the screen by the box of its window takes the cell being edited along, and saves.
    void closingSavesTheSalaries()
    {
        EntryDesk desk(2008, {1, 3});
        desk.client.salary(2008, 1, 1, 300).salary(2008, 1, -1, 300);
        auto *screen = desk.open<frmfbtdet>();
        typeSalaries(desk, "40");
        desk.answers({Reply::Yes});
        screen->window()->close();
        QVERIFY(!screen->isLoaded());
        QCOMPARE(desk.said(), QStringList("Do you want to exit ?"));
        QCOMPARE(desk.salaries(), QStringList({"1\t1\t40", "1\t3\t60", "1\t-1\t360"}));
    }

    /// The end of the session asks nobody: what was typed is kept, the cell being edited too when it holds a number.
    void sessionEndKeepsTheSalaries()
    {
        for (const auto &[typed, kept] : {QPair{"40", "1\t1\t40"}, QPair{"4x", "1\t1\t300"}}) {
            EntryDesk desk(2008, {1, 3});
            desk.client.salary(2008, 1, 1, 300).salary(2008, 1, -1, 300);
            desk.open<frmfbtdet>();
            typeSalaries(desk, typed);
            Screen::endSession();
            QCOMPARE(desk.salaries(), QStringList({kept, "1\t3\t60", "1\t-1\t360"}));
        }
    }

    /// Salaries that could not be read are neither shown as nothing nor written so.
    void unreadSalariesStay()
    {
        EntryDesk desk(2008, {1, 3});
        desk.client.salary(2008, 1, 1, 300).salary(2008, 1, -1, 300).expense(2008, 1, -1, localConveyance, 1000);
        const QStringList before = desk.salaries();
        auto *screen = [&desk] {
            const WithoutTable without("FBT_SalDet");
            auto *opened = desk.open<frmfbtdet>();
            openPanel(desk);
            return opened;
        }();
        QVERIFY(!screen->couldRead("salaries"));
        QVERIFY(!desk.grid("vsfs")->EditCell());
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.visible("famcon"));
        QCOMPARE(desk.salaries(), before);
        desk.click("cmdconexp"); // reads them again
        QVERIFY(screen->couldRead());
        QCOMPARE(desk.shown("vsfs"), QStringList("Salary and Wages 300.00 0.00 300.00"));
        QCOMPARE(desk.figures().value(1), "200.00"); // 20% of all of it; the other nature has 5%
        QVERIFY(!desk.find<QLabel>("unreadStrip")->isVisible());
    }

    /// What another user saved since the quarter was chosen is shown, and not written over by looking at it.
    void salariesOfAnotherUser()
    {
        EntryDesk desk(2008, {1, 3});
        desk.client.salary(2008, 1, 1, 300).salary(2008, 1, -1, 300);
        desk.open<frmfbtdet>();
        Cnn->Execute("Update FBT_SalDet Set Amt=900");
        openPanel(desk);
        QCOMPARE(desk.shown("vsfs"), QStringList("Salary and Wages 900.00 0.00 900.00"));
        Cnn->Execute("Update FBT_SalDet Set Amt=1200");
        desk.key(Qt::Key_Escape);
        QCOMPARE(desk.salaries(), QStringList({"1\t1\t1200", "1\t-1\t1200"}));
    }

    /// Salaries that cannot be saved hold nobody back who gives them up.
    void leavesWithoutSaving()
    {
        EntryDesk desk(2008, {1, 3});
        desk.client.salary(2008, 1, 1, 300).salary(2008, 1, -1, 300);
        desk.open<frmfbtdet>();
        const Refusing refusing("Delete", "FBT_SalDet");
        openPanel(desk);
        desk.key(Qt::Key_Escape); // nothing was typed, so nothing is asked
        openPanel(desk);
        desk.typeCell("vsfs", 1, 1, "40");
        for (const Reply reply : {Reply::No, Reply::Yes}) {
            QVERIFY(desk.visible("famcon"));
            desk.answers({reply});
            desk.key(Qt::Key_Escape);
            QVERIFY(desk.said().value(0).startsWith("The salaries could not be saved."));
        }
        QVERIFY(!desk.visible("famcon"));
        QCOMPARE(desk.shown("vsfs"), QStringList("Salary and Wages 300.00 0.00 300.00"));
    }

    void tabGoesToTheNextSalary()
    {
        EntryDesk desk(2008, {1, 3});
        desk.open<frmfbtdet>();
        typeSalaries(desk, "40");
        for (const char *typed : {"50", "90"}) {
            desk.key(Qt::Key_Tab);
            QVERIFY(desk.grid("vsfs")->isEditing());
            desk.keys(typed);
        }
        desk.key(Qt::Key_Tab);
        QVERIFY(!desk.grid("vsfs")->hasFocus());
        QCOMPARE(desk.shown("vsfs"), QStringList("Salary and Wages 40.00 50.00 90.00"));
    }

    /// The figures of all natures of a quarter add up to what the computation of the year finds, on random clients.
    void agreesWithTheComputation()
    {
        for (quint32 seed = 1; seed <= 4; ++seed)
            agrees(seed);
    }

private:
    void agrees(quint32 seed)
    {
        QRandomGenerator random(seed);
        const int year = 2006 + static_cast<int>(seed % 4);
        EntryDesk desk(year, {1, 4, 6});
        const QList<int> natures{1, 4, 6};
        for (int i = 0; i < 60; ++i)
            desk.client.expense(year, 1 + random.bounded(4), natures.value(random.bounded(4), -1),
                                1 + random.bounded(134), random.bounded(200000) / 4.0);
        for (int quarter = 1; quarter <= 3; ++quarter) { // the last has none: all falls to the last nature
            for (const int nature : natures)
                desk.client.salary(year, quarter, nature, random.bounded(90000));
            desk.client.salary(year, quarter, -1, 270000 + random.bounded(2) * 5000);
        }
        desk.open<frmfbtdet>();
        CALCFBT();
        for (int quarter = 1; quarter <= 4; ++quarter) {
            desk.choose("cboquarter", quarter - 1);
            double value = 0;
            for (int nature = 0; nature < natures.size(); ++nature) {
                desk.choose("cbonature", nature);
                value += Val(desk.figures().value(1));
            }
            QVERIFY2(value == FBTQtrValue[quarter], qPrintable(QStringLiteral("client %1").arg(seed)));
        }
    }
};

QTEST_MAIN(TestConsolidated)
#include "tst_consolidated.moc"
