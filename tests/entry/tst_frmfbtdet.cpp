#include "entry/frmfbtdet.h"
#include "tests/entry/entryscreen.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTimer>

Q_GLOBAL_STATIC(TestServer, server)
Q_GLOBAL_STATIC_WITH_ARGS(LawDatabase, delivered, (*server))

namespace {

using Stage = EntryScreen<frmfbtdet>;

constexpr int localConveyance = 57; // 20 percent, 5 for natures 2 to 4
constexpr int motorRepair = 69;     // 20 percent, 5 for nature 5
constexpr int festival = 102;       // 50 percent for all in 2008

/// Adds an expense by the keyboard alone.
void addByKeys(Stage &stage, const QString &head, const QString &item, const QString &amount)
{
    stage.press(Qt::Key_A, Qt::AltModifier);
    stage.types(head);
    stage.press(Qt::Key_Return);
    stage.types(item);
    stage.press(Qt::Key_Return);
    stage.types(amount);
    stage.press(Qt::Key_Return);
    stage.press(Qt::Key_Return); // on the button that saves
}

} // namespace

/// The quarterly screen: selection, the list and its figures, entry, import.
class TestFrmFbtDet : public QObject
{
    Q_OBJECT
private slots:
    void opens_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("natureCount");
        QTest::addColumn<QStringList>("natures");
        QTest::addColumn<bool>("secondCess");
        QTest::newRow("no nature") << 2008 << 0 << QStringList() << true;
        QTest::newRow("one nature") << 2007 << 1 << QStringList("Hotel Business") << false;
        QTest::newRow("two natures") << 2008 << 2
                                     << QStringList({"Hotel Business", "Any Other Business", "Consolidated Expenses"})
                                     << true;
    }
    void opens()
    {
        QFETCH(int, year);
        QFETCH(int, natureCount);
        Stage stage(*delivered, year);
        // The list follows the numbers of the natures, not the order in which the client has them.
        employer(stage.module.connection, "A1").busnat(QStringLiteral("7,1").right(natureCount == 2 ? 3 : natureCount));
        stage.open();
        QStringList natures;
        const auto *cbonature = stage.find<QComboBox>("cbonature");
        for (int i = 0; i < cbonature->count(); ++i)
            natures << cbonature->itemText(i);
        QTEST(natures, "natures");
        QTEST(stage.find<QWidget>("txtcalcn_6")->isVisible(), "secondCess");
        QCOMPARE(stage.screen->windowTitle(), "FBT Details of Employer");
        QCOMPARE(stage.find<QLabel>("lblhec")->text(),
                 year == 2008 ? "Sec. && Higher E.C. (1%)" : "Sec. && Higher E.C. (0%)");
        QCOMPARE(stage.find<QPushButton>("cmdimp")->text(), "Annual &Input");
        QVERIFY(!stage.enabled("cmdconexp") && !stage.enabled("cmdmodifyded") && stage.enabled("cmdaddded"));
        QCOMPARE(stage.figures().first(), "0.00");
        QCOMPARE(stage.module.logLines(), QStringList());
    }

    void yearOfThreeNaturesByKeys()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 3, 7});
        stage.open();
        addByKeys(stage, "conv", "loc", "12345");
        QCOMPARE(stage.focus(), "cmdaddded");
        addByKeys(stage, "motor", "rep", "7.5");
        stage.choose("cbonature", 1);
        addByKeys(stage, "conv", "loc", "1001");
        stage.choose("cboquarter", 3);
        addByKeys(stage, "fest", "puja", "5");
        QCOMPARE(stage.details(), QStringList({"2008\t1\t1\t1\t57\t12345", "2008\t1\t1\t2\t69\t7.5",
                                               "2008\t1\t3\t3\t57\t1001", "2008\t4\t3\t1\t102\t5"}));
        // 50% of 5 = 2.5, to the even 2; tax 0.6, the rest below a half
        QCOMPARE(stage.figures(), QStringList({"5.00", "2.00", "2.00", "1.00", "0.00", "0.00", "0.00", "1.00"}));
        stage.choose("cboquarter", 0);
        stage.choose("cbonature", 0);
        QCOMPARE(stage.shown("vsf2"), QStringList({"1 Conveyance Local conveyance 20 12345.00 2469.00",
                                                   "2 Motor Car expenses Repair of Motor Car 20 7.50 2.00"}));
        // 2469 + 2; 30% = 741.3, 10% = 74.1, 2% of 815 = 16.3, 1% = 8.15
        QCOMPARE(stage.figures(),
                 QStringList({"12352.50", "2471.00", "2471.00", "741.00", "74.00", "16.00", "8.00", "839.00"}));
        QCOMPARE(stage.user.texts(), QStringList());
    }

    void modifyKeepsTheNumber()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 7}).expense(2008, 1, 1, motorRepair, 10).expense(2008, 1, 1, localConveyance, 20);
        stage.open();
        stage.grid("vsf2")->setFocus();
        stage.press(Qt::Key_Down);
        QCOMPARE(stage.text("txtdedflds_1"), "Local conveyance");
        QCOMPARE(stage.text("txtdedflds_2"), "20.00");
        stage.press(Qt::Key_M, Qt::AltModifier);
        QVERIFY(!stage.enabled("vsf2") && !stage.enabled("cboquarter") && !stage.enabled("cmdchallan"));
        stage.type("txtdedflds_2", "30");
        stage.statements.clear();
        stage.press(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(stage.statements.mid(0, 4),
                 QStringList({"Delete from FBT_Detail Where Code_No='A1' and tyear=2008 and quarter=1 and SrNo=2",
                              "Flush Tables", "Insert into FBT_Detail Values('A1',2008,1,1,2,57,30)", "Flush Tables"}));
        QCOMPARE(stage.details(), QStringList({"2008\t1\t1\t1\t69\t10", "2008\t1\t1\t2\t57\t30"}));
        QVERIFY(stage.enabled("vsf2"));
    }

    void pickingList()
    {
        Stage stage(*delivered, 2008);
        stage.client({1}).expense(2008, 1, 1, localConveyance, 20);
        stage.open();
        stage.press(Qt::Key_M, Qt::AltModifier);
        auto *vsfl = stage.grid("vsfl");
        QVERIFY(vsfl->isVisible());
        QCOMPARE(vsfl->TextMatrix(0, 1), "Head of Expenses");
        QCOMPARE(vsfl->TextMatrix(vsfl->Row(), 1), "Conveyance");
        stage.press(Qt::Key_Up); // the heads are sorted
        QCOMPARE(stage.focus(), "txtdedflds_0");
        stage.press(Qt::Key_Return);
        QCOMPARE(stage.text("txtdedflds_0"), "Contribution to an approved super annutation fund");
        QCOMPARE(stage.text("txtdedflds_1"), ""); // another head, so the item is gone
        QCOMPARE(vsfl->TextMatrix(0, 1), "Nature of Expenses");
        QTest::mouseClick(vsfl->viewport(), Qt::LeftButton, {}, vsfl->visualRect(vsfl->model()->index(0, 1)).center());
        QCOMPARE(stage.text("txtdedflds_1"), "Contribution amount by the employer");
        QCOMPARE(stage.focus(), "txtdedflds_2");
        QVERIFY(!vsfl->isVisible());
        stage.press(Qt::Key_Backtab);
        stage.press(Qt::Key_Escape); // empties the field and puts the list away, nothing else
        QCOMPARE(stage.text("txtdedflds_1"), "");
        QVERIFY(!vsfl->isVisible() && stage.enabled("Frame4"));
        stage.types("c");
        QVERIFY(vsfl->isVisible());
        stage.press(Qt::Key_Return);
        QCOMPARE(stage.text("txtdedflds_1"), "Contribution amount by the employer");
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("typed"); // into head, item, amount
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focus");
        const QString specify = "Please specify Nature of Expenses.";
        const QString numeric = "Please Enter Numeric Value.";
        QTest::newRow("nothing") << QStringList({"", "", "5"}) << specify << "txtdedflds_1";
        QTest::newRow("item not in the list") << QStringList({"conv", "zeppelin", "5"}) << specify << "txtdedflds_1";
        QTest::newRow("head not in the list") << QStringList({"zeppelin", "loc", "5"}) << specify << "txtdedflds_1";
        QTest::newRow("letters") << QStringList({"conv", "loc", "12ab"}) << numeric << "txtdedflds_2";
        QTest::newRow("beyond a double") << QStringList({"conv", "loc", "1e999"}) << numeric << "txtdedflds_2";
    }
    void refusals()
    {
        QFETCH(QStringList, typed);
        QFETCH(QString, message);
        Stage stage(*delivered, 2008);
        stage.client({1}).expense(2008, 1, 1, localConveyance, 20);
        stage.open();
        stage.press(Qt::Key_A, Qt::AltModifier);
        for (int i = 0; i < 3; ++i)
            stage.type(QStringLiteral("txtdedflds_%1").arg(i), typed[i]);
        stage.press(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(stage.said(), QStringList(message));
        QTEST(stage.focus(), "focus");
        QCOMPARE(stage.details(), QStringList("2008\t1\t1\t1\t57\t20"));
        stage.user.answer(Reply::Yes);
        stage.click("cmdcancelded"); // a wrong amount does not hold it up
        QVERIFY(stage.enabled("vsf2"));
        QCOMPARE(stage.text("txtdedflds_2"), "20.00");
    }

    void storedHugeAmountIsKept()
    {
        Stage stage(*delivered, 2008);
        stage.client({1}).expense(2008, 1, 1, 57, 9007199254740990.0);
        stage.open();
        stage.click("cmdmodifyded");
        stage.click("cmdupdateded");
        QCOMPARE(stage.details(), QStringList("2008\t1\t1\t1\t57\t9.00719925474099E+15"));
        QCOMPARE(stage.figures().value(0), "9007199254740990.00");
    }

    void typedAmountEndsWithItsFifteenthDigit()
    {
        Stage stage(*delivered, 2008);
        stage.client({1});
        stage.open();
        addByKeys(stage, "conv", "loc", "9007199254740993");
        QCOMPARE(stage.details(), QStringList("2008\t1\t1\t1\t57\t900719925474099"));
    }

    void withoutNature()
    {
        Stage stage(*delivered, 2008);
        stage.client({});
        stage.open();
        stage.press(Qt::Key_A, Qt::AltModifier);
        QCOMPARE(stage.said(), QStringList("Select a Nature of Business."));
        QCOMPARE(stage.focus(), "cbonature");
        QVERIFY(!stage.enabled("Frame4"));
    }

    void escapeGoesBackOneLevel()
    {
        Stage stage(*delivered, 2008);
        stage.client({1});
        stage.open();
        stage.press(Qt::Key_A, Qt::AltModifier);
        stage.type("txtdedflds_2", "x"); // Escape does not stumble over it
        for (const Reply reply : {Reply::No, Reply::Yes, Reply::No, Reply::Yes})
            stage.user.answer(reply);
        stage.press(Qt::Key_Escape);
        QVERIFY(stage.enabled("Frame4"));
        stage.press(Qt::Key_Escape);
        QVERIFY(!stage.enabled("Frame4"));
        QCOMPARE(stage.focus(), "cmdaddded");
        stage.press(Qt::Key_Escape);
        QVERIFY(stage.screen->isLoaded());
        stage.press(Qt::Key_Escape);
        QVERIFY(!stage.screen->isLoaded());
        QCOMPARE(stage.said(), QStringList({"Do you want to Cancel the Entry?", "Do you want to Cancel the Entry?",
                                            "Do you want to exit ?", "Do you want to exit ?"}));
    }

    void deleteAsksWithNoAsDefault()
    {
        Stage stage(*delivered, 2008);
        stage.client({1}).expense(2008, 1, 1, localConveyance, 20).expense(2008, 2, 1, localConveyance, 21);
        stage.open();
        stage.click("cmddeleteded");
        QCOMPARE(stage.user.records().value(0).reply, Reply::No);
        QCOMPARE(stage.details().size(), 2);
        stage.user.answer(Reply::Yes);
        stage.click("cmddeleteded");
        QCOMPARE(stage.said().last(), "Do you want to Delete Selected Item?");
        QCOMPARE(stage.details(), QStringList("2008\t2\t1\t1\t57\t21"));
        QVERIFY(!stage.enabled("cmddeleteded") && !stage.enabled("cmdmodifyded"));
        QCOMPARE(stage.figures().first(), "0.00");
        QCOMPARE(stage.focus(), "cmdaddded");
    }

    void importTwice()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 7})
            .expense(2008, 1, 1, localConveyance, 20)
            .expense(2008, 1, -1, motorRepair, 30)
            .expense(2008, 1, 7, festival, 40);
        for (int i = 0; i < 5; ++i) // the quarter's numbers go up to 5
            Cnn->Execute(Sql("Insert into FBT_Detail Values('A1',2008,2,1,", i + 1, ",57,", i, ")"));
        stage.open();
        stage.choose("cboquarter", 1);
        QCOMPARE(stage.find<QPushButton>("cmdimp")->text(), "&Import from Last Quarter");
        stage.user.answer(Reply::No);
        stage.click("cmdimp");
        QCOMPARE(stage.details().size(), 8);
        for (int i = 0; i < 2; ++i) {
            stage.user.answer(Reply::Yes);
            stage.click("cmdimp");
        }
        QCOMPARE(stage.said(), QStringList(3, "Do you want to Import Details from Last Quarter?"));
        // 5 + 2 comes first; then, after 9, again one number is skipped
        QCOMPARE(stage.details().mid(8),
                 QStringList({"2008\t2\t1\t7\t57\t0", "2008\t2\t-1\t8\t69\t0", "2008\t2\t7\t9\t102\t0",
                              "2008\t2\t1\t11\t57\t0", "2008\t2\t-1\t12\t69\t0", "2008\t2\t7\t13\t102\t0"}));
        QCOMPARE(stage.shown("vsf2").size(), 7); // a share of nothing is no row
    }

    void annualInput()
    {
        Stage stage(*delivered, 2008);
        stage.client({1, 7}).expense(2008, 1, 7, localConveyance, 20);
        stage.open();
        stage.choose("cbonature", 1);
        QStringList seen;
        QTimer::singleShot(0, stage.screen, [&] {
            Screen *annual = nullptr;
            QVERIFY(QTest::qWaitFor([&] {
                annual = Screen::of(QApplication::focusWidget());
                return annual != nullptr && annual != stage.screen;
            }));
            seen << annual->objectName() << annual->findChild<QComboBox *>("cbonature")->currentText();
            QTest::mouseClick(annual->findChild<QPushButton *>("cmdmodifyded"), Qt::LeftButton);
            annual->findChild<QLineEdit *>("txtdedflds_2")->setText("25");
            annual->findChild<QLineEdit *>("txtdedflds_5")->setText("9");
            QTest::mouseClick(annual->findChild<QPushButton *>("cmdupdateded"), Qt::LeftButton);
            stage.user.answer(Reply::Yes);
            annual->Unload();
        });
        stage.click("cmdimp");
        QCOMPARE(seen, QStringList({"frmannualfbt", "Any Other Business"}));
        QCOMPARE(stage.details(), QStringList({"2008\t1\t7\t1\t57\t25", "2008\t4\t7\t1\t57\t9"}));
        QCOMPARE(stage.shown("vsf2"), QStringList("1 Conveyance Local conveyance 20 25.00 5.00"));
        QCOMPARE(stage.text("txtdedflds_2"), "25.00");
    }

    void employeesAbroad()
    {
        Stage stage(*delivered, 2008);
        stage.client({1}).expense(2008, 1, 1, localConveyance, 5020);
        stage.open();
        // What the screen of additional information stores: 3 of 8 employees are in India.
        Cnn->Execute("Update FBT_AddInfo Set EmpBoth='1', IndiaEmp=3, TotalEmp=8 Where Code_No='A1'");
        stage.click("cmdaddinfo");
        QCOMPARE(stage.module.base.calls, QStringList("ShowAddInfo1"));
        // 20% of 5020 = 1004, 3/8 of it 376.5, to the even 376
        QCOMPARE(stage.figures().mid(1),
                 QStringList({"1004.00", "376.00", "113.00", "11.00", "2.00", "1.00", "127.00"}));
        const QString tip =
            QString::fromUtf8("(3[Employees in India] ÷8[Total Employees]) X 1004.00[Value of Fringe Benefit]");
        QCOMPARE(stage.find<QWidget>("lbltaxfbt")->toolTip(), tip);
        QCOMPARE(stage.find<QWidget>("txtcalcn_2")->toolTip(), tip);
        stage.choose("cboquarter", 1);
        QCOMPARE(stage.figures().value(2), "0.00");
    }

    void otherScreens()
    {
        Stage stage(*delivered, 2010);
        stage.client({1});
        stage.open();
        QSignalSpy asked(stage.screen, &frmfbtdet::OpenLater);
        for (const char *button : {"cmdchallan", "cmdret", "Command2", "cmdefl"})
            stage.click(button);
        QStringList names;
        for (const QList<QVariant> &call : asked)
            names << call.value(0).toString();
        QCOMPARE(names, QStringList({"Challan", "frmretfrm", "frmfbtrep"}));
        QCOMPARE(stage.said(), QStringList("E-filing Rules have not been notified for A.Y. 2010-11."));
    }

    /// The row is gone, since a change is a delete and an insert; the program goes on, and the row can be entered again.
    void serverLostInTheMiddleOfASave()
    {
        Stage stage(*delivered, 2008);
        stage.client({1}).expense(2008, 1, 1, localConveyance, 20).expense(2008, 1, 1, festival, 21);
        stage.open();
        stage.press(Qt::Key_M, Qt::AltModifier);
        stage.type("txtdedflds_2", "30");
        bool killed = false;
        Cnn->setObserver([&](const QString &statement) {
            if (!statement.startsWith(u"Insert into FBT_Detail") || std::exchange(killed, true))
                return;
            server->kill();
        });
        stage.press(Qt::Key_S, Qt::AltModifier);
        Cnn->setObserver({});
        QVERIFY(killed);
        server->restart();
        QCOMPARE(stage.details(), QStringList("2008\t1\t1\t2\t102\t21"));
        QVERIFY(stage.module.logLines().value(0).endsWith(u"\tfrmfbtdet\tCMDUPDATEDED_CLICK"));
        stage.choose("cboquarter", 1);
        stage.choose("cboquarter", 0);
        addByKeys(stage, "conv", "loc", "30");
        QCOMPARE(stage.details(), QStringList({"2008\t1\t1\t2\t102\t21", "2008\t1\t1\t3\t57\t30"}));
        QCOMPARE(stage.user.texts(), QStringList());
    }

    /// Without a highest number there is no new one: number 1 would replace the row that has it.
    void noNumberNoSave()
    {
        Stage stage(*delivered, 2008);
        stage.client({1}).expense(2008, 1, 1, localConveyance, 20);
        stage.open();
        Cnn->setObserver([&](const QString &statement) {
            if (statement.startsWith(u"Select Max"))
                server->kill();
            else if (statement.startsWith(u"Delete"))
                server->restart();
        });
        addByKeys(stage, "fest", "puja", "30");
        Cnn->setObserver({});
        server->restart();
        QCOMPARE(stage.details(), QStringList("2008\t1\t1\t1\t57\t20"));
        QVERIFY(stage.enabled("Frame4"));
        stage.press(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(stage.details().size(), 2);
    }
};

QTEST_MAIN(TestFrmFbtDet)
#include "tst_frmfbtdet.moc"
