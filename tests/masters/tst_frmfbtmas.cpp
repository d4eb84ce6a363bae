#include "masters/frmfbtmas.h"

#include "platform/recordset.h"
#include "tests/masters/masterscreen.h"

#include <QLabel>

Q_GLOBAL_STATIC(TestServer, server)

using LawScreen = MasterScreen<frmfbtmas>;

class TestLaw : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_law = std::make_unique<LawDatabase>(*server); }
    void cleanupTestCase() { m_law.reset(); }
    void init() { m_user = std::make_unique<LawScreen>(*m_law); }
    void cleanup()
    {
        QVERIFY(m_user->otherUnchanged());
        m_user.reset();
    }

    // --- heads ---

    void aHeadTakesItsNumberFromTheItems_data()
    {
        QTest::addColumn<QString>("prepare");
        QTest::addColumn<int>("id");
        QTest::newRow("no heads, no items") << "Delete from FBT_Head2009|Delete from FBT_ExpHead2009" << 1;
        QTest::newRow("no heads, items left") << "Delete from FBT_Head2009" << 22;
        QTest::newRow("the delivered law") << "" << 22;
        QTest::newRow("a head without items") << "Insert into FBT_Head2009 Values (22,'Z','Empty')" << 22;
        QTest::newRow("a head with an item") << "Insert into FBT_ExpHead2009 Values (200,30,'Far')" << 31;
    }
    void aHeadTakesItsNumberFromTheItems()
    {
        QFETCH(QString, prepare);
        for (const QString &statement : prepare.split(u'|', Qt::SkipEmptyParts))
            QVERIFY(Cnn->Execute(statement));
        openYear("2009-10");
        const auto before = m_user->module.rows("Select * from FBT_Head2009").size();
        addHead("115wb(3)", "travel pass");
        QTEST(headId("115WB(3)"), "id");
        QCOMPARE(m_user->module.rows("Select * from FBT_Head2009").size(), before + 1);
        QCOMPARE(m_user->grid("vsf")->TextMatrix(m_user->grid("vsf")->Row(), 3), QString::number(headId("115WB(3)")));
        QCOMPARE(m_user->focus(), QString("cmdaddch"));
        QCOMPARE(m_user->module.rows("Select * from FBT_Head2010 Where Section='115WB(3)'"), QStringList());
        QCOMPARE(m_user->said(), QStringList());
    }

    void aHeadNeedsBothTexts()
    {
        openYear("2008-09");
        m_user->click("cmdmodifych");
        m_user->type("txtchflds_0", " ");
        m_user->click("cmdupdatech");
        QCOMPARE(m_user->said(), QStringList("Please Specify Section."));
        m_user->type("txtchflds_0", "x");
        m_user->type("txtchflds_1", "");
        m_user->click("cmdupdatech");
        QCOMPARE(m_user->said(), QStringList("Please Specify Head of Expenses."));
        QCOMPARE(m_user->focus(), QString("txtchflds_0")); // the first field, not the second
        m_user->type("txtchflds_1", "perk");
        m_user->click("cmdupdatech");
        QCOMPARE(m_user->module.rows("Select * from FBT_Head2008 Where HeadId=1"), QStringList("1\tX\tPERK"));
        QCOMPARE(m_user->focus(), QString("vsf"));
    }

    void deletesAHead_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("prepare");
        QTest::addColumn<bool>("asks");
        const QString head20 = "Insert into FBT_Head2006 Values (20,'115WB(9)','New')";
        QTest::newRow("2006, last of the law") << "2006-07" << 19 << "" << false;
        QTest::newRow("2006, first of the user") << "2006-07" << 20 << head20 << true;
        QTest::newRow("2007, last of the law") << "2007-08" << 20 << "" << false;
        QTest::newRow("2008, securities") << "2008-09" << 21 << "" << true;
        QTest::newRow("2008, in use") << "2008-09" << 21 << "Insert into FBT_Detail Values ('C',2008,1,1,1,135,5)"
                                      << false;
        QTest::newRow("2008, in use in another year")
            << "2008-09" << 21 << "Insert into FBT_Detail Values ('C',2009,1,1,1,135,5)" << true;
    }
    void deletesAHead()
    {
        QFETCH(QString, year);
        QFETCH(int, id);
        QFETCH(QString, prepare);
        QFETCH(bool, asks);
        if (!prepare.isEmpty())
            QVERIFY(Cnn->Execute(prepare));
        openYear(year);
        selectHead(id);
        m_user->user.answer(Reply::No);
        m_user->click("cmddeletech");
        QCOMPARE(m_user->user.records().size(), asks ? 1 : 0);
        if (asks)
            QCOMPARE(m_user->user.records().at(0).box.defaultReply(), Reply::No);
        QVERIFY(m_user->grid("vsf")->FindRow(QString::number(id), 1, 3) > 0);
    }

    void aDeletedHeadTakesItsItemsAndRates()
    {
        const QStringList rates2009 = m_user->module.rows("Select * from FBT_ExpRate2009 Where SrNo=135");
        const QStringList others = m_user->module.rows("Select * from FBT_ExpRate2008 Where SrNo<>135");
        openYear("2008-09");
        selectHead(21);
        m_user->user.answer(Reply::Yes);
        m_user->click("cmddeletech");
        QCOMPARE(m_user->said(), QStringList("Do you want to Delete Selected Item? All the Sub Items of this Item will "
                                             "be Deleted."));
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate2008"), others);
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate2009 Where SrNo=135"), rates2009);
        QCOMPARE(m_user->grid("vsf")->FindRow("21", 1, 3), -1);
        QCOMPARE(m_user->module.logLines(), QStringList());
    }

    void aYearWithoutHeads()
    {
        QVERIFY(Cnn->Execute("Delete from FBT_Head2009"));
        openYear("2009-10");
        QVERIFY(!m_user->grid("vsf")->hasDataRow());
        for (const QString button : {"cmdpaydet", "cmdmodifych", "cmddeletech"})
            m_user->click(button);
        QVERIFY(m_user->find<QWidget>("Frame3")->isHidden());
        QVERIFY(!m_user->enabled("Frame2"));
        m_user->choose("Combo4", "2008-09");
        QCOMPARE(m_user->grid("vsf")->Rows(), 22);
    }

    // --- items ---

    void showsOneRateForAllNaturesInEachColumn()
    {
        QVERIFY(Cnn->Execute("Insert into FBT_Nature Values (8,'Shipping')"));
        QVERIFY(Cnn->Execute("Delete from FBT_ExpRate2008 Where SrNo=19 and NatId=3"));
        openItems("2008-09", 5);
        const Grid *vsf2 = m_user->grid("vsf2");
        QCOMPARE(m_user->find<QLabel>("lblchcap")->text(), QString("115WB(2)(B) - Hospitality expenses"));
        QCOMPARE(vsf2->TextMatrix(0, 10), QString("Shipping"));
        QCOMPARE(vsf2->TextMatrix(1, 10), QString("8"));
        QCOMPARE(shownRates(15), QStringList({"0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00"}));
        QCOMPARE(shownRates(18), QStringList({"5.00", "20.00", "20.00", "20.00", "20.00", "5.00", "20.00", ""}));
        QCOMPARE(shownRates(19), QStringList({"5.00", "20.00", "", "20.00", "20.00", "5.00", "20.00", ""}));
        QCOMPARE(vsf2->TextMatrix(2, 0), QString("1"));
        QVERIFY(!m_user->enabled("Combo4"));
    }

    void oneRateForAllBecomesOneForEach()
    {
        const auto employerOf = [this](const QString &code) { return employer(m_user->module.connection, code); };
        employerOf("MINE").natures({1, 4}).expense(2008, 1, 1, 57, 999).expense(2008, 2, 4, 87, 5005);
        m_user->compute("MINE", 2008);
        const auto before = FBTValue;
        QCOMPARE(FBTTotalValue, 200.0 + 1001.0); // 20 % of 999 and of 5005
        openItems("2008-09", 13);
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate2008 Where SrNo=87"), QStringList("87\t0\t20"));
        selectItem(87);
        m_user->click("cmdmodifyded");
        m_user->type("txtdedflds_0", "fixed phone");
        m_user->click("cmdupdateded");
        QCOMPARE(m_user->module.rows("Select NatId,IntRt from FBT_ExpRate2008 Where SrNo=87 Order by NatId"),
                 QStringList({"1\t20", "2\t20", "3\t20", "4\t20", "5\t20", "6\t20", "7\t20"}));
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpHead2008 Where SrNo=87"),
                 QStringList("87\t13\tFIXED PHONE"));
        QCOMPARE(m_user->focus(), QString("vsf2"));
        m_user->compute("MINE", 2008);
        QCOMPARE(FBTValue, before);
    }

    void aShipNatureComputesOnItsOwnLine()
    {
        QVERIFY(Cnn->Execute("Insert into FBT_Nature Values (8,'CARRY OF PASSENGERS/ GOODS BY SHIP')"));
        openItems("2008-09", 10);
        selectItem(65);
        m_user->click("cmdmodifyded");
        m_user->typeCell("vsfr", 8, 1, "5");
        m_user->click("cmdupdateded");
        QCOMPARE(shownRates(65).mid(5), QStringList({"5.00", "20.00", "5.00"}));
        employer(m_user->module.connection, "SHIP")
            .natures({8, 7})
            .expense(2008, 1, 8, 65, 3000)
            .expense(2008, 1, 7, 65, 500);
        m_user->compute("SHIP", 2008);
        QCOMPARE(ShipNatId, 8);
        QCOMPARE(FBTExpAmt[30], 3000.0);
        QCOMPARE(FBTValue[30], 150.0); // 5 % of 3000
        QCOMPARE(FBTValue[11], 100.0); // 20 % of 500
    }

    void addsAnItem()
    {
        openItems("2010-11", 1);
        m_user->click("cmdaddded");
        QCOMPARE(m_user->focus(), QString("txtdedflds_0"));
        m_user->click("cmdupdateded");
        QCOMPARE(m_user->said(), QStringList("Please specify Nature of Expenses."));
        QCOMPARE(m_user->focus(), QString("txtdedflds_0"));
        m_user->type("txtdedflds_0", "day trip");
        m_user->typeCell("vsfr", 2, 1, "12.5");
        m_user->click("cmdupdateded");
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpHead2010 Where SrNo>135"), QStringList("136\t1\tDAY TRIP"));
        // A nature whose rate was left out is saved with 0.
        QCOMPARE(m_user->module.rows("Select NatId,IntRt from FBT_ExpRate2010 Where SrNo=136"),
                 QStringList({"1\t0", "2\t12.5", "3\t12.5", "4\t12.5", "5\t12.5", "6\t12.5", "7\t12.5"}));
        QCOMPARE(m_user->focus(), QString("cmdaddded"));
        QCOMPARE(m_user->module.logLines(), QStringList());
    }

    void deletesAnItem_data()
    {
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("usedIn"); // year, 0: in none
        QTest::addColumn<bool>("asks");
        QTest::newRow("of the base list") << 134 << 0 << false;
        QTest::newRow("behind it") << 135 << 0 << true;
        QTest::newRow("used") << 135 << 2008 << false;
        QTest::newRow("used in another year") << 135 << 2009 << true;
    }
    void deletesAnItem()
    {
        QFETCH(int, item);
        QFETCH(int, usedIn);
        QFETCH(bool, asks);
        QVERIFY(Cnn->Execute(Sql("Insert into FBT_Detail Values ('C',", usedIn, ",1,1,1,", item, ",5)")));
        openItems("2008-09", item == 134 ? 19 : 21);
        selectItem(item);
        m_user->user.answer(Reply::Yes);
        m_user->click("cmddeleteded");
        QCOMPARE(m_user->said(), asks ? QStringList("Do you want to Delete Selected Item?") : QStringList());
        const QString of = Sql(" Where SrNo=", item);
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpHead2008" + of).isEmpty(), asks);
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate2008" + of).isEmpty(), asks);
        QVERIFY(!m_user->module.rows("Select * from FBT_ExpRate2009" + of).isEmpty());
    }

    // --- the rate grid ---

    void typesRates_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("typed"); // empty: Enter only
        QTest::addColumn<QString>("rates");
        QTest::newRow("the first fills all") << 1 << "7.5"
                                             << "7.50,7.50,7.50,7.50,7.50,7.50,7.50";
        QTest::newRow("the same again fills all") << 1 << "5"
                                                  << "5.00,5.00,5.00,5.00,5.00,5.00,5.00";
        QTest::newRow("from the middle down") << 4 << "1"
                                              << "5.00,20.00,20.00,1.00,1.00,1.00,1.00";
        QTest::newRow("the last changes itself") << 7 << "1"
                                                 << "5.00,20.00,20.00,20.00,20.00,5.00,1.00";
        QTest::newRow("a text is 0") << 7 << "none"
                                     << "5.00,20.00,20.00,20.00,20.00,5.00,0.00";
        QTest::newRow("passing through") << 1 << ""
                                         << "5.00,20.00,20.00,20.00,20.00,5.00,20.00";
    }
    void typesRates()
    {
        QFETCH(int, row);
        QFETCH(QString, typed);
        openItems("2008-09", 5);
        selectItem(18);
        m_user->click("cmdmodifyded");
        m_user->key(Qt::Key_Return); // from the text to the first rate
        Grid *vsfr = m_user->grid("vsfr");
        QTRY_VERIFY(vsfr->isEditing());
        while (vsfr->Row() < row)
            m_user->key(Qt::Key_Return);
        QTest::keyClicks(QApplication::focusWidget(), typed);
        m_user->key(Qt::Key_Return);
        QCOMPARE(vsfr->isEditing(), row < 7); // Enter goes down, and behind the last rate to the button
        QCOMPARE(vsfr->Row(), row < 7 ? row + 1 : row);
        QCOMPARE(m_user->focus(), QString(row < 7 ? "vsfr" : "cmdupdateded"));
        QStringList shown;
        for (int i = 1; i <= 7; ++i)
            shown << vsfr->shownText(i, 1);
        QTEST(shown.join(u','), "rates");
    }

    void aClickGoesToItsRate()
    {
        openItems("2008-09", 5);
        m_user->click("cmdmodifyded");
        Grid *vsfr = m_user->grid("vsfr");
        vsfr->setCell(5, 1); // the rate left last: the first one gets current with the focus, and must not open
        QTest::mouseClick(vsfr->viewport(), Qt::LeftButton, {}, cellCentre(vsfr, 3));
        QCoreApplication::processEvents();
        QCOMPARE(vsfr->Row(), 3);
        QVERIFY(vsfr->isEditing());
        QTest::keyClicks(QApplication::focusWidget(), "9");
        QTest::mouseClick(vsfr->viewport(), Qt::LeftButton, {}, cellCentre(vsfr, 1));
        QCOMPARE(vsfr->Row(), 1);
        QCOMPARE(vsfr->TextMatrix(4, 1), QString("9.00"));
        m_user->key(Qt::Key_Escape);
        QVERIFY(!vsfr->isEditing());
        m_user->key(Qt::Key_Return); // Enter goes down from a rate that is not open, too
        QVERIFY(vsfr->Row() == 2 && vsfr->isEditing());
        m_user->key(Qt::Key_Tab);
        QVERIFY(!vsfr->isEditing() && !vsfr->hasFocus());
    }

    void enterGoesOnAfterEscapeAndTabLeavesTheGrid()
    {
        openItems("2008-09", 5);
        selectItem(18);
        m_user->click("cmdmodifyded");
        Grid *vsfr = m_user->grid("vsfr");
        vsfr->setFocus();
        QTRY_VERIFY(vsfr->isEditing());
        m_user->key(Qt::Key_Escape);
        QVERIFY(!vsfr->isEditing());
        m_user->key(Qt::Key_Return);
        QVERIFY(vsfr->isEditing());
        QCOMPARE(vsfr->Row(), 2);
        QTest::keyClicks(QApplication::focusWidget(), "9");
        m_user->key(Qt::Key_Tab);
        QVERIFY(!vsfr->isEditing());
        QVERIFY(!vsfr->hasFocus());
        QCOMPARE(vsfr->TextMatrix(7, 1), QString("9.00"));
    }

    void aRateStillInEditIsSaved()
    {
        openItems("2008-09", 5);
        selectItem(18);
        m_user->click("cmdmodifyded");
        Grid *vsfr = m_user->grid("vsfr");
        vsfr->setFocus();
        vsfr->setCell(7, 1);
        QVERIFY(vsfr->isEditing());
        QTest::keyClicks(QApplication::focusWidget(), "33");
        m_user->find<QAbstractButton>("cmdupdateded")->click(); // by its mnemonic: the focus stays in the cell
        QCOMPARE(shownRates(18).mid(5), QStringList({"5.00", "33.00"}));
    }

    // --- faults and levels ---

    /// A save that fails changes nothing, says so, and keeps what was typed.
    void apostrophes()
    {
        const QStringList rates = m_user->module.rows("Select * from FBT_ExpRate2008 Where SrNo=135");
        openYear("2008-09");
        addHead("115wb(3)", "owner's");
        QCOMPARE(m_user->said(), QStringList());
        QCOMPARE(headId("115WB(3)"), 0);
        QCOMPARE(m_user->text("txtchflds_1"), QString("OWNER'S"));
        m_user->click("cmdcancelch");
        selectHead(21);
        m_user->click("cmdpaydet");
        m_user->click("cmdmodifyded");
        m_user->type("txtdedflds_0", "owner's");
        m_user->click("cmdupdateded");
        QCOMPARE(m_user->said(), QStringList());
        QCOMPARE(m_user->module.rows("Select SrNo from FBT_ExpHead2008 Where SrNo=135"), QStringList("135"));
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate2008 Where SrNo=135"), rates);
        QStringList places;
        for (const QString &line : m_user->module.logLines())
            places << line.section(u'\t', -1);
        QCOMPARE(places, QStringList({"CMDUPDATECH_CLICK", "CMDUPDATEDED_CLICK"}));
    }

    void ratesStayWithoutTheNatures_data()
    {
        QTest::addColumn<bool>("opened"); // the items are on the screen before the list cannot be read
        QTest::newRow("before the items are shown") << false;
        QTest::newRow("after a save") << true;
    }
    void ratesStayWithoutTheNatures()
    {
        QFETCH(bool, opened);
        const QStringList rates = m_user->module.rows("Select * from FBT_ExpRate2008 Where SrNo=18");
        openYear("2008-09");
        selectHead(5);
        if (opened) {
            m_user->click("cmdpaydet");
            selectItem(18);
            m_user->click("cmdmodifyded");
        }
        QVERIFY(Cnn->Execute("Rename Table FBT_Nature to Away"));
        m_user->click(opened ? "cmdupdateded" : "cmdpaydet");
        for (const QString button : {"cmdaddded", "cmdmodifyded"})
            m_user->click(button);
        QVERIFY(Cnn->Execute("Rename Table Away to FBT_Nature"));
        QVERIFY(!m_user->enabled("Frame4"));
        QCOMPARE(m_user->find<QWidget>("Frame3")->isVisible(), opened);
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate2008 Where SrNo=18"), rates);
        QCOMPARE(m_user->module.logLines().size(), 1);
    }

    void whatCannotBeAskedCountsAsUsed()
    {
        openYear("2008-09");
        selectHead(21);
        QVERIFY(Cnn->Execute("Rename Table FBT_Detail to Away"));
        m_user->user.answer(Reply::Yes);
        m_user->click("cmddeletech");
        m_user->click("cmdpaydet");
        m_user->click("cmddeleteded");
        QVERIFY(Cnn->Execute("Rename Table Away to FBT_Detail"));
        QCOMPARE(m_user->said(), QStringList());
        QCOMPARE(m_user->module.rows("Select HeadId from FBT_Head2008 Where HeadId=21").size(), 1);
        QCOMPARE(m_user->module.rows("Select SrNo from FBT_ExpHead2008 Where SrNo=135").size(), 1);
        QCOMPARE(m_user->module.logLines().size(), 2);
    }

    void theYearStaysDuringAnEdit()
    {
        openYear("2008-09");
        m_user->click("cmdaddch");
        QVERIFY(!m_user->enabled("Combo4"));
        m_user->click("cmdcancelch");
        QVERIFY(m_user->enabled("Combo4"));
    }

    void noTwoMnemonicsAreTheSame_data()
    {
        QTest::addColumn<bool>("items");
        QTest::newRow("heads") << false;
        QTest::newRow("items") << true;
    }
    void noTwoMnemonicsAreTheSame()
    {
        QFETCH(bool, items);
        openYear("2008-09");
        if (items)
            m_user->click("cmdpaydet");
        QStringList texts;
        for (const auto *button : m_user->screen->findChildren<QAbstractButton *>())
            texts << (button->isVisible() ? button->text() : QString());
        for (const auto *label : m_user->screen->findChildren<QLabel *>())
            texts << (label->isVisible() && label->buddy() ? label->text() : QString());
        QStringList keys;
        for (const QString &text : texts) {
            if (!text.isEmpty())
                keys << QKeySequence::mnemonic(text).toString();
        }
        QCOMPARE(keys.size(), items ? 8 : 10);
        QVERIFY(!keys.contains(QString()));
        QCOMPARE(keys.removeDuplicates(), 0);
    }

    void escapeGoesBackLevelByLevel()
    {
        openItems("2008-09", 5);
        m_user->click("cmdaddded");
        m_user->user.answer(Reply::Yes);
        m_user->key(Qt::Key_Escape);
        QCOMPARE(m_user->said(), QStringList("Do you want to Cancel the Entry?"));
        m_user->click("cmdback");
        QCOMPARE(m_user->said(), QStringList());
        QVERIFY(m_user->find<QWidget>("frame1")->isVisible() && m_user->find<QWidget>("Frame3")->isHidden());
        QCOMPARE(m_user->focus(), QString("vsf"));
        m_user->user.answer(Reply::Yes);
        m_user->key(Qt::Key_Escape);
        QCOMPARE(m_user->said(), QStringList("Do you want to exit ?"));
        QVERIFY(!m_user->screen->isVisible());
    }

private:
    void openYear(const QString &year)
    {
        m_user->open();
        QCOMPARE(m_user->find<QComboBox>("Combo4")->currentText(), QString("2010-11"));
        m_user->choose("Combo4", year);
    }
    void openItems(const QString &year, int head)
    {
        openYear(year);
        selectHead(head);
        m_user->click("cmdpaydet");
    }
    void selectHead(int id) { m_user->grid("vsf")->setRow(m_user->grid("vsf")->FindRow(QString::number(id), 1, 3)); }
    void selectItem(int srNo)
    {
        m_user->grid("vsf2")->setRow(m_user->grid("vsf2")->FindRow(QString::number(srNo), 2, 2));
    }
    void addHead(const QString &section, const QString &text)
    {
        m_user->click("cmdaddch");
        m_user->type("txtchflds_0", section);
        m_user->type("txtchflds_1", text);
        m_user->click("cmdupdatech");
    }
    int headId(const QString &section)
    {
        const QString year = m_user->find<QComboBox>("Combo4")->currentText().left(4);
        return FirstField(Cnn, Sql("Select Max(HeadId) from FBT_Head", year, " Where Section='", section, "'")).whole();
    }
    QStringList shownRates(int item) const
    {
        const Grid *vsf2 = m_user->grid("vsf2");
        QStringList rates;
        for (int col = 3; col < vsf2->Cols(); ++col)
            rates << vsf2->shownText(vsf2->FindRow(QString::number(item), 2, 2), col);
        return rates;
    }
    static QPoint cellCentre(Grid *grid, int row)
    {
        return grid->visualRect(grid->model()->index(row - 1, 1)).center();
    }

    std::unique_ptr<LawDatabase> m_law;
    std::unique_ptr<LawScreen> m_user;
};

QTEST_MAIN(TestLaw)
#include "tst_frmfbtmas.moc"
