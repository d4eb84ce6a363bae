#include "entry/frmfbtdet.h"
#include "tests/entry/entrydesk.h"

#include <QApplication>
#include <QLabel>

Q_GLOBAL_STATIC(EntryDatabase, database)

namespace {

/// Adds an expense by the keyboard alone.
void addByKeys(EntryDesk &desk, const QString &head, const QString &item, const QString &amount)
{
    desk.key(Qt::Key_A, Qt::AltModifier);
    for (const QString &typed : {head, item, amount}) {
        desk.keys(typed);
        desk.key(Qt::Key_Return);
    }
    desk.key(Qt::Key_Return); // on the button that saves
}

} // namespace

/// The quarterly screen, as far as no story of a user's year shows it.
class TestFrmFbtDet : public QObject
{
    Q_OBJECT
private slots:
    void numbersRunAcrossNatures()
    {
        EntryDesk desk(database->module, 2008, {7, 1, 3}); // listed by number
        desk.open<frmfbtdet>();
        addByKeys(desk, "conv", "loc", "12345");
        addByKeys(desk, "motor", "rep", "7.5");
        desk.choose("cbonature", 1);
        addByKeys(desk, "conv", "loc", "1001");
        desk.choose("cboquarter", 3);
        addByKeys(desk, "fest", "puja", "5");
        QCOMPARE(desk.details(),
                 QStringList({"1\t1\t1\t57\t12345", "1\t1\t2\t69\t7.5", "1\t3\t3\t57\t1001", "4\t3\t1\t102\t5"}));
        // 50% of 5 = 2.5, to the even 2; tax 0.6, the rest below a half
        QCOMPARE(desk.figures(), QStringList({"5.00", "2.00", "2.00", "1.00", "0.00", "0.00", "0.00", "1.00"}));
    }

    void pickingList()
    {
        EntryDesk desk(database->module, 2008, {1});
        desk.client.expense(2008, 1, 1, localConveyance, 20);
        desk.open<frmfbtdet>();
        desk.key(Qt::Key_M, Qt::AltModifier);
        Grid *vsfl = desk.grid("vsfl");
        QCOMPARE(vsfl->TextMatrix(vsfl->Row(), 1), "Conveyance");
        desk.key(Qt::Key_Up); // the heads are sorted
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.text("txtdedflds_0"), "Contribution to an approved super annutation fund");
        QCOMPARE(desk.text("txtdedflds_1"), ""); // another head, so the item is gone
        QTest::mouseClick(vsfl->viewport(), Qt::LeftButton, {}, vsfl->visualRect(vsfl->model()->index(0, 1)).center());
        QCOMPARE(desk.text("txtdedflds_1"), "Contribution amount by the employer");
        QCOMPARE(desk.focus(), "txtdedflds_2");
        desk.key(Qt::Key_Backtab);
        desk.key(Qt::Key_Escape); // empties the field and puts the list away, nothing else
        QCOMPARE(desk.text("txtdedflds_1"), "");
        QVERIFY(!vsfl->isVisible() && desk.enabled("Frame4"));
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("typed"); // into head, item, amount
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focus");
        const QString specify = "Please specify Nature of Expenses.";
        QTest::newRow("item not in the list") << QStringList({"conv", "zeppelin", "5"}) << specify << "txtdedflds_1";
        QTest::newRow("head not in the list") << QStringList({"zeppelin", "loc", "5"}) << specify << "txtdedflds_1";
        QTest::newRow("beyond a double") << QStringList({"conv", "loc", "1e999"}) << "Please Enter Numeric Value."
                                         << "txtdedflds_2";
    }
    void refusals()
    {
        QFETCH(QStringList, typed);
        QFETCH(QString, message);
        EntryDesk desk(database->module, 2008, {1});
        desk.open<frmfbtdet>();
        desk.key(Qt::Key_A, Qt::AltModifier);
        for (int i = 0; i < 3; ++i)
            desk.type(QStringLiteral("txtdedflds_%1").arg(i), typed[i]);
        desk.key(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(desk.said(), QStringList(message));
        QTEST(desk.focus(), "focus");
        QCOMPARE(desk.details(), QStringList());
    }

    void storedHugeAmountIsKept()
    {
        EntryDesk desk(database->module, 2008, {1});
        desk.client.expense(2008, 1, 1, localConveyance, 9007199254740990.0);
        desk.open<frmfbtdet>();
        desk.click("cmdmodifyded");
        desk.click("cmdupdateded");
        QCOMPARE(desk.details(), QStringList("1\t1\t1\t57\t9.00719925474099E+15"));
        QCOMPARE(desk.figures().value(0), "9007199254740990.00");
    }

    void annualInput()
    {
        EntryDesk desk(database->module, 2008, {1, 7});
        desk.client.expense(2008, 1, 7, localConveyance, 20);
        desk.open<frmfbtdet>();
        desk.choose("cbonature", 1);
        desk.atNextModal([&desk] {
            desk.click("cmdmodifyded");
            desk.type("txtdedflds_2", "25");
            desk.click("cmdupdateded");
            desk.answers({Reply::Yes});
            desk.screen()->Unload();
        });
        desk.click("cmdimp");
        QCOMPARE(desk.shown("vsf2"), QStringList("1 Conveyance Local conveyance 20 25.00 5.00"));
        QCOMPARE(desk.text("txtdedflds_2"), "25.00");
    }

    /// The screen goes on with the client that it was opened for, with its employees and percentages.
    void otherClientInHandMeanwhile()
    {
        EntryDesk desk(database->module, 2008, {1});
        desk.client.expense(2008, 1, 1, localConveyance, 5020);
        auto *screen = desk.open<frmfbtdet>();
        // What the screen of additional information stores: 3 of 8 employees are in India.
        Cnn->Execute("Update FBT_AddInfo Set EmpBoth='1', IndiaEmp=3, TotalEmp=8 Where Code_No='A1'");
        desk.click("cmdaddinfo");
        // 20% of 5020 = 1004, 3/8 of it 376.5, to the even 376
        const QStringList figures{"1004.00", "376.00", "113.00", "11.00", "2.00", "1.00", "127.00"};
        QCOMPARE(desk.figures().mid(1), figures);
        QCOMPARE(desk.find<QLabel>("lbltaxfbt")->toolTip(),
                 QString::fromUtf8("(3[Employees in India] ÷8[Total Employees]) X 1004.00[Value of Fringe Benefit]"));
        TakeClientYear(QStringLiteral("B2"), 2006);
        screen->FORM_ACTIVATE();
        QCOMPARE(Base->code, "A1");
        desk.choose("cboquarter", 1);
        addByKeys(desk, "conv", "loc", "5020");
        QCOMPARE(desk.figures().mid(1), figures);
        QCOMPARE(desk.details().last(), "2\t1\t1\t57\t5020");
    }

    /// A change that the server was lost in leaves the old row, and what was typed.
    void serverLostInTheMiddleOfASave()
    {
        EntryDesk desk(database->module, 2008, {1});
        desk.client.expense(2008, 1, 1, localConveyance, 20).expense(2008, 1, 1, festival, 21);
        desk.open<frmfbtdet>();
        desk.key(Qt::Key_M, Qt::AltModifier);
        desk.type("txtdedflds_2", "30");
        bool killed = false;
        Cnn->setObserver([&](const QString &statement) {
            if (statement.startsWith(u"Insert into FBT_Detail") && !std::exchange(killed, true))
                database->server.kill();
        });
        desk.key(Qt::Key_S, Qt::AltModifier);
        Cnn->setObserver({});
        QVERIFY(killed);
        database->server.restart();
        QCOMPARE(desk.details(), QStringList({"1\t1\t1\t57\t20", "1\t1\t2\t102\t21"}));
        QVERIFY(desk.enabled("Frame4"));
        desk.key(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(desk.details(), QStringList({"1\t1\t1\t57\t30", "1\t1\t2\t102\t21"}));
    }

    /// What fails half way through leaves nothing of it.
    void importIsWholeOrNotAtAll()
    {
        EntryDesk desk(database->module, 2008, {1});
        desk.client.expense(2008, 1, 1, localConveyance, 20).expense(2008, 1, 1, festival, 21);
        desk.open<frmfbtdet>();
        desk.choose("cboquarter", 1);
        int inserts = 0;
        Cnn->setObserver([&](const QString &statement) {
            if (statement.startsWith(u"Insert into FBT_Detail") && ++inserts == 2)
                database->server.kill();
        });
        desk.answers({Reply::Yes});
        desk.click("cmdimp");
        Cnn->setObserver({});
        database->server.restart();
        QCOMPARE(inserts, 2);
        QCOMPARE(desk.details().size(), 2);
    }

    void unread_data()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("FBT_Detail") << "expenses";
        QTest::newRow("FBT_Info") << "natures of business";
        QTest::newRow("FBT_AddInfo") << "additional information";
        QTest::newRow("FBT_Head2008") << "descriptions of heads and items";
    }
    void unread()
    {
        QFETCH(QString, what);
        EntryDesk desk(database->module, 2008, {1});
        const WithoutTable without(QTest::currentDataTag());
        const auto *screen = desk.open<frmfbtdet>();
        QVERIFY(!screen->couldRead(what));
    }
};

QTEST_MAIN(TestFrmFbtDet)
#include "tst_frmfbtdet.moc"
