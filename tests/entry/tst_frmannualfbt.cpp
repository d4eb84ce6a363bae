#include "entry/frmannualfbt.h"
#include "tests/entry/entryscreen.h"

#include <QRegularExpression>

Q_GLOBAL_STATIC(TestServer, server)
Q_GLOBAL_STATIC_WITH_ARGS(LawDatabase, delivered, (*server))

namespace {

constexpr int localConveyance = 57; // 20 percent, 5 for natures 2 to 4
constexpr int festival = 102;       // 50 percent for all in 2008

class Stage : public EntryScreen<frmannualfbt>
{
public:
    using EntryScreen::EntryScreen;

    void openOn(int nature)
    {
        screen = new frmannualfbt;
        screen->Load();
        screen->INITDATA(nature);
        screen->openChild(nullptr);
        screen->setDeleteOnUnload(false);
        QVERIFY(QTest::qWaitForWindowActive(screen->window()));
        module.connection.setObserver([this](const QString &statement) { statements << statement; });
    }
    QStringList writes() const { return statements.filter(QRegularExpression(QStringLiteral("^(Delete|Insert)"))); }
};

} // namespace

/// All quarters of an expense in one line.
class TestFrmAnnualFbt : public QObject
{
    Q_OBJECT
private slots:
    void linesUpEqualExpenses()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3})
            .expense(2008, 1, 1, localConveyance, 100)
            .expense(2008, 1, 1, localConveyance, 12.5)
            .expense(2008, 3, 1, localConveyance, 7)
            .expense(2008, 4, 1, festival, 9)
            .expense(2008, 1, -1, festival, 50);
        stage.openOn(1);
        QCOMPARE(stage.screen->windowTitle(), "Annual FBT Details of Employer");
        // 20% of 12.5 = 2.5, to the even 2; 1.4; 50% of 9 = 4.5, to the even 4. Consolidated rows are not shared out here.
        QCOMPARE(stage.shown("vsf2"),
                 QStringList({"1 Conveyance Local conveyance 20 100.00 20.00   7.00 1.00   107.00 21.00",
                              "2 Conveyance Local conveyance 20 12.50 2.00       12.50 2.00",
                              "3 Festival Celebration Expenses Puja Festivals for employees 50       9.00 4.00 9.00 "
                              "4.00"}));
        stage.choose("cbonature", 2);
        QCOMPARE(stage.shown("vsf2"),
                 QStringList("1 Festival Celebration Expenses Puja Festivals for employees 50.00    50.00"));
        QVERIFY(stage.grid("vsf2")->ColHidden(3) && stage.grid("vsf2")->ColHidden(17));
    }

    void addsARowForEachQuarterWithAnAmount()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3}).expense(2008, 1, 3, festival, 5);
        stage.openOn(1);
        stage.press(Qt::Key_A, Qt::AltModifier);
        for (const char *typed : {"conv", "loc", "10", "", "0", "40.555"}) {
            stage.types(typed);
            stage.press(Qt::Key_Return);
        }
        QCOMPARE(stage.focus(), "cmdupdateded");
        stage.press(Qt::Key_Return);
        // The number follows the other nature's row in the first quarter; 40.555 got two decimals in its field.
        QCOMPARE(stage.details(),
                 QStringList({"2008\t1\t3\t1\t102\t5", "2008\t1\t1\t2\t57\t10", "2008\t4\t1\t1\t57\t40.56"}));
        QCOMPARE(stage.focus(), "cmdaddded");
    }

    void modifies()
    {
        Stage stage(*delivered, 2008);
        stage.client({1})
            .expense(2008, 1, 1, localConveyance, 10)
            .expense(2008, 1, 1, localConveyance, 11)
            .expense(2008, 2, 1, localConveyance, 20)
            .expense(2008, 2, 1, localConveyance, 21)
            .expense(2008, 3, 1, festival, 30);
        stage.openOn(1);
        stage.grid("vsf2")->setRow(3);
        stage.click("cmdmodifyded");
        stage.type("txtdedflds_2", "");   // was 11
        stage.type("txtdedflds_3", "22"); // was 21
        stage.type("txtdedflds_4", "33"); // had none
        stage.statements.clear();
        stage.click("cmdupdateded");
        QCOMPARE(stage.writes(),
                 QStringList({"Delete from FBT_Detail Where Code_No='A1' and tyear=2008 and quarter=1 and SrNo=2",
                              "Delete from FBT_Detail Where Code_No='A1' and tyear=2008 and quarter=2 and SrNo=2",
                              "Insert into FBT_Detail Values('A1',2008,2,1,2,57,22)",
                              "Delete from FBT_Detail Where Code_No='A1' and tyear=2008 and quarter=3 and SrNo=2",
                              "Insert into FBT_Detail Values('A1',2008,3,1,2,57,33)"}));
        QCOMPARE(stage.details(),
                 QStringList({"2008\t1\t1\t1\t57\t10", "2008\t2\t1\t1\t57\t20", "2008\t2\t1\t2\t57\t22",
                              "2008\t3\t1\t1\t102\t30", "2008\t3\t1\t2\t57\t33"}));
        // Rows are listed as they were written: 33 now stands on the first line of its kind, 22 on the last of all.
        QCOMPARE(stage.text("txtdedflds_3"), "22.00");
        QCOMPARE(stage.grid("vsf2")->Row(), 4);
    }

    /// Rows without a number, as older programs left them, get one when they are changed.
    void rowWithoutNumber()
    {
        Stage stage(*delivered, 2008);
        stage.client({1});
        Cnn->Execute("Insert into FBT_Detail Values('A1',2008,1,1,0,57,10)");
        Cnn->Execute("Insert into FBT_Detail Values('A1',2008,2,1,0,57,20)");
        stage.openOn(1);
        stage.click("cmdmodifyded");
        stage.type("txtdedflds_2", "15");
        stage.type("txtdedflds_3", "0");
        stage.click("cmdupdateded");
        QCOMPARE(stage.details(), QStringList("2008\t1\t1\t1\t57\t15"));
    }

    /// Rows of other hands: a quarter without number and amount stays, and with it all others that have no number.
    void emptyRowWithoutNumber()
    {
        Stage stage(*delivered, 2008);
        stage.client({1});
        Cnn->Execute("Insert into FBT_Detail Values('A1',2008,1,1,1,57,10)");
        Cnn->Execute("Insert into FBT_Detail Values('A1',2008,2,1,0,57,0)");
        Cnn->Execute("Insert into FBT_Detail Values('A1',2008,2,2,0,58,70)");
        stage.openOn(1);
        stage.click("cmdmodifyded");
        stage.type("txtdedflds_2", "15");
        stage.click("cmdupdateded");
        QCOMPARE(stage.details(),
                 QStringList({"2008\t1\t1\t1\t57\t15", "2008\t2\t1\t0\t57\t0", "2008\t2\t2\t0\t58\t70"}));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("head");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focus");
        QTest::newRow("no item") << ""
                                 << "5"
                                 << "Please specify Nature of Expenses."
                                 << "txtdedflds_1";
        QTest::newRow("no amount") << "conv"
                                   << "0.00"
                                   << "Please specify Amount."
                                   << "txtdedflds_2";
        QTest::newRow("letters") << "conv"
                                 << "5x"
                                 << "Please Enter Numeric Value."
                                 << "txtdedflds_3";
    }
    void refusals()
    {
        QFETCH(QString, head);
        QFETCH(QString, second);
        QFETCH(QString, message);
        Stage stage(*delivered, 2008);
        stage.client({1});
        stage.openOn(1);
        stage.press(Qt::Key_A, Qt::AltModifier);
        stage.type("txtdedflds_0", head);
        stage.type("txtdedflds_1", "loc");
        stage.type("txtdedflds_3", second);
        stage.press(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(stage.said(), QStringList(message));
        QTEST(stage.focus(), "focus");
        QCOMPARE(stage.details(), QStringList());
    }

    void deletesTheWholeLine()
    {
        Stage stage(*delivered, 2008);
        stage.client({1})
            .expense(2008, 1, 1, localConveyance, 10)
            .expense(2008, 1, 1, festival, 11)
            .expense(2008, 4, 1, localConveyance, 20);
        stage.openOn(1);
        stage.click("cmddeleteded");
        QCOMPARE(stage.details().size(), 3);
        stage.user.answer(Reply::Yes);
        stage.click("cmddeleteded");
        QCOMPARE(stage.said(), QStringList(2, "Do you want to Delete Selected Item?"));
        QCOMPARE(stage.details(), QStringList("2008\t1\t1\t2\t102\t11"));
    }

    void consolidatedRowsAreOpenToChange()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3}).expense(2008, 2, -1, festival, 50);
        stage.openOn(-1);
        QCOMPARE(stage.find<QComboBox>("cbonature")->currentText(), "Consolidated Expenses");
        stage.click("cmdmodifyded");
        stage.type("txtdedflds_3", "51");
        stage.click("cmdupdateded");
        QCOMPARE(stage.details(), QStringList("2008\t2\t-1\t1\t102\t51"));
        stage.user.answer(Reply::Yes);
        stage.press(Qt::Key_Escape);
        QVERIFY(!stage.screen->isLoaded());
        QCOMPARE(stage.said(), QStringList("Do you want to exit ?"));
    }
};

QTEST_MAIN(TestFrmAnnualFbt)
#include "tst_frmannualfbt.moc"
