#include "masters/frmfbtmas.h"

#include "tests/masters/masterscreen.h"

class TestLaw : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_user = std::make_unique<MasterScreen<frmfbtmas>>(); }
    void cleanup() { m_user.reset(); }

    void aHeadTakesItsNumberFromTheItems_data()
    {
        Columns<QString, int>({"prepare", "id"});
        Case("no heads, no items", "Delete from FBT_Head2009|Delete from FBT_ExpHead2009", 1);
        Case("no heads, items left", "Delete from FBT_Head2009", 22);
        Case("a head without items", "Insert into FBT_Head2009 Values (22,'Z','Empty')", 22);
        Case("a head with an item", "Insert into FBT_ExpHead2009 Values (200,30,'Far')", 31);
    }
    void aHeadTakesItsNumberFromTheItems()
    {
        const auto [prepare, id] = Row<QString, int>();
        for (const QString &statement : prepare.split(u'|'))
            QVERIFY(Cnn->Execute(statement));
        openYear("2009-10");
        m_user->click("cmdaddch");
        m_user->type("txtchflds_0", "115wb(3)");
        m_user->type("txtchflds_1", "travel pass");
        m_user->click("cmdupdatech");
        const QStringList ids = m_user->rows("Select HeadId from FBT_Head2009 Where Section='115WB(3)'");
        QCOMPARE(ids, QStringList(QString::number(id)));
        QCOMPARE(m_user->grid("vsf")->TextMatrix(m_user->grid("vsf")->Row(), 3), ids.first());
        QCOMPARE(m_user->rows("Select * from FBT_Head2010 Where Section='115WB(3)'"), QStringList());
    }

    void deletesAHead_data()
    {
        Columns<QString, int, QString, bool>({"year", "id", "prepare", "asks"});
        Case("2006, last of the law", "2006-07", 19, "", false);
        Case("2006, first of the user", "2006-07", 20, "Insert into FBT_Head2006 Values (20,'115WB(9)','New')", true);
        Case("2007, last of the law", "2007-08", 20, "", false);
        Case("2008, securities", "2008-09", 21, "", true);
        Case("2008, in use", "2008-09", 21, "Insert into FBT_Detail Values ('C',2008,1,1,1,135,5)", false);
        Case("in use in another year", "2008-09", 21, "Insert into FBT_Detail Values ('C',2009,1,1,1,135,5)", true);
    }
    void deletesAHead()
    {
        const auto [year, id, prepare, asks] = Row<QString, int, QString, bool>();
        if (!prepare.isEmpty())
            QVERIFY(Cnn->Execute(prepare));
        const QString others = "Select * from FBT_ExpRate2008 Where SrNo<>135";
        const QStringList before = m_user->rows(others);
        openYear(year);
        selectHead(id);
        if (asks)
            m_user->answers({Reply::No, Reply::Yes});
        m_user->click("cmddeletech");
        QVERIFY(m_user->grid("vsf")->FindRow(QString::number(id), 1, 3) > 0);
        m_user->click("cmddeletech");
        QCOMPARE(m_user->said().size(), asks ? 2 : 0);
        QCOMPARE(m_user->grid("vsf")->FindRow(QString::number(id), 1, 3) < 0, asks);
        if (year != "2008-09")
            return;
        QCOMPARE(m_user->rows("Select * from FBT_ExpRate2008 Where SrNo=135").isEmpty(), asks);
        QCOMPARE(m_user->rows("Select * from FBT_ExpHead2008 Where SrNo=135").isEmpty(), asks);
        QCOMPARE(m_user->rows(others), before);
    }

    void oneRateForAllBecomesOneForEach()
    {
        openItems("2008-09", 13);
        QCOMPARE(m_user->rows("Select * from FBT_ExpRate2008 Where SrNo=87"), QStringList("87\t0\t20"));
        selectItem(87);
        m_user->click("cmdmodifyded");
        m_user->click("cmdupdateded");
        QCOMPARE(m_user->rows("Select NatId,IntRt from FBT_ExpRate2008 Where SrNo=87 Order by NatId"),
                 QStringList({"1\t20", "2\t20", "3\t20", "4\t20", "5\t20", "6\t20", "7\t20"}));
    }

    void deletesAnItem_data()
    {
        Columns<int, int, bool>({"item", "usedIn", "asks"}); // year, 0: in none
        Case("of the base list", 134, 0, false);
        Case("after it", 135, 0, true);
        Case("used", 135, 2008, false);
        Case("used in another year", 135, 2009, true);
    }
    void deletesAnItem()
    {
        const auto [item, usedIn, asks] = Row<int, int, bool>();
        QVERIFY(Cnn->Execute(Sql("Insert into FBT_Detail Values ('C',", usedIn, ",1,1,1,", item, ",5)")));
        openItems("2008-09", item == 134 ? 19 : 21);
        selectItem(item);
        if (asks)
            m_user->answers({Reply::Yes});
        m_user->click("cmddeleteded");
        QCOMPARE(m_user->said(), QStringList(asks ? 1 : 0, "Do you want to Delete Selected Item?"));
        const QString of = Sql(" Where SrNo=", item);
        QCOMPARE(m_user->rows("Select * from FBT_ExpHead2008" + of).isEmpty(), asks);
        QCOMPARE(m_user->rows("Select * from FBT_ExpRate2008" + of).isEmpty(), asks);
        QVERIFY(!m_user->rows("Select * from FBT_ExpRate2009" + of).isEmpty());
    }

    void typesRates_data()
    {
        Columns<int, QString, QString>({"row", "typed", "rates"}); // typed nothing: Enter only
        Case("the same again fills all", 1, "5", "5.00,5.00,5.00,5.00,5.00,5.00,5.00");
        Case("from the middle down", 4, "1", "5.00,20.00,20.00,1.00,1.00,1.00,1.00");
        Case("a text is 0, and the last changes itself", 7, "none", "5.00,20.00,20.00,20.00,20.00,5.00,0.00");
        Case("passing through", 1, "", "5.00,20.00,20.00,20.00,20.00,5.00,20.00");
    }
    void typesRates()
    {
        const auto [row, typed, rates] = Row<int, QString, QString>();
        Grid *vsfr = modifyItem18();
        m_user->key(Qt::Key_Return); // from the text to the first rate
        QTRY_VERIFY(vsfr->isEditing());
        while (vsfr->Row() < row)
            m_user->key(Qt::Key_Return);
        m_user->keys(typed);
        m_user->key(Qt::Key_Return);
        QCOMPARE(vsfr->isEditing(), row < 7); // Enter goes down, and after the last rate to the button
        QCOMPARE(vsfr->Row(), row < 7 ? row + 1 : row);
        QCOMPARE(m_user->focus(), QString(row < 7 ? "vsfr" : "cmdupdateded"));
        QStringList shown;
        for (int i = 1; i <= 7; ++i)
            shown << vsfr->shownText(i, 1);
        QCOMPARE(shown.join(u','), rates);
    }

    void aClickGoesToItsRate()
    {
        Grid *vsfr = modifyItem18();
        vsfr->setCell(5, 1); // the rate left last: the first one gets current with the focus, and must not open
        clickRate(vsfr, 3);
        QCoreApplication::processEvents();
        QCOMPARE(vsfr->Row(), 3);
        QVERIFY(vsfr->isEditing());
        m_user->keys("9");
        clickRate(vsfr, 1);
        QCOMPARE(vsfr->Row(), 1);
        QCOMPARE(vsfr->TextMatrix(4, 1), QString("9.00"));
        m_user->key(Qt::Key_Escape);
        QVERIFY(!vsfr->isEditing());
        m_user->key(Qt::Key_Return); // Enter goes down from a rate that is not open, too
        QVERIFY(vsfr->Row() == 2 && vsfr->isEditing());
        m_user->key(Qt::Key_Tab);
        QVERIFY(!vsfr->isEditing() && !vsfr->hasFocus());
    }

    void ratesStayWithoutTheNatures()
    {
        const QStringList rates = m_user->rows("Select * from FBT_ExpRate2008 Where SrNo=18");
        modifyItem18();
        {
            const WithoutTable gone("FBT_Nature");
            for (const QString button : {"cmdupdateded", "cmdaddded", "cmdmodifyded"})
                m_user->click(button);
        }
        QVERIFY(!m_user->enabled("Frame4"));
        QCOMPARE(m_user->rows("Select * from FBT_ExpRate2008 Where SrNo=18"), rates);
        QCOMPARE(m_user->module.logLines().size(), 1);
    }

private:
    void openYear(const QString &year)
    {
        m_user->open();
        m_user->choose("Combo4", year);
    }
    void openItems(const QString &year, int head)
    {
        openYear(year);
        selectHead(head);
        m_user->click("cmdpaydet");
    }
    Grid *modifyItem18()
    {
        openItems("2008-09", 5);
        selectItem(18);
        m_user->click("cmdmodifyded");
        return m_user->grid("vsfr");
    }
    void selectHead(int id) { m_user->grid("vsf")->setRow(m_user->grid("vsf")->FindRow(QString::number(id), 1, 3)); }
    void selectItem(int srNo)
    {
        m_user->grid("vsf2")->setRow(m_user->grid("vsf2")->FindRow(QString::number(srNo), 2, 2));
    }
    static void clickRate(Grid *grid, int row)
    {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualRect(grid->model()->index(row - 1, 1)).center());
    }

    std::unique_ptr<MasterScreen<frmfbtmas>> m_user;
};

QTEST_MAIN(TestLaw)
#include "tst_frmfbtmas.moc"
