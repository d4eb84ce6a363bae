#include "masters/frmnatmas.h"

#include "tests/masters/masterscreen.h"

Q_GLOBAL_STATIC(TestServer, server)

using NatureScreen = MasterScreen<frmnatmas>;

class TestNatures : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_law = std::make_unique<LawDatabase>(*server); }
    void cleanupTestCase() { m_law.reset(); }
    void init() { m_user = std::make_unique<NatureScreen>(*m_law); }
    void cleanup()
    {
        QVERIFY(m_user->otherUnchanged());
        m_user.reset();
    }

    void addsOneAfterTheOther()
    {
        m_user->open();
        add("shipping");
        QCOMPARE(m_user->focus(), QString("cmdadd"));
        QCOMPARE(m_user->grid("vsf")->Row(), 8);
        add("mining");
        QCOMPARE(natures("SrNo>7"), QStringList({"8\tSHIPPING", "9\tMINING"}));

        deleteRow(8); // a gap below the highest number stays a gap
        add("farming");
        deleteRow(9);
        deleteRow(8);
        QCOMPARE(natures("SrNo>7"), QStringList());
        add("again the first");
        QCOMPARE(natures("SrNo>7"), QStringList({"8\tAGAIN THE FIRST"}));
        QCOMPARE(m_user->module.logLines(), QStringList());
    }

    void refusesASave_data()
    {
        QTest::addColumn<int>("row"); // 0: a new nature
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("empty") << 0 << ""
                               << "Please specify Nature of Business.";
        QTest::newRow("blanks") << 2 << "   "
                                << "Please specify Nature of Business.";
        QTest::newRow("new, taken") << 0 << "hotel business"
                                    << "Duplicate Item!!";
        QTest::newRow("renamed to another's") << 2 << "hotel business"
                                              << "Duplicate Item!!";
        QTest::newRow("renamed to its own") << 1 << "hotel business"
                                            << "";
        QTest::newRow("the ship's text") << 5 << "carry of passengers/ goods by ship"
                                         << "";
    }
    void refusesASave()
    {
        QFETCH(int, row);
        QFETCH(QString, text);
        QFETCH(QString, message);
        m_user->open();
        if (row > 0)
            m_user->grid("vsf")->setRow(row);
        m_user->click(row > 0 ? "cmdmodify" : "cmdadd");
        m_user->type("txtfields_1", text);
        m_user->click("cmdupdate");
        QCOMPARE(m_user->said().join(u'|'), message);
        QCOMPARE(m_user->focus(), QString(message.isEmpty() ? "vsf" : "txtfields_1"));
        QCOMPARE(natures("SrNo=2"), QStringList("2\tConstruction Business"));
        if (message.isEmpty())
            QCOMPARE(natures(Sql("SrNo=", row)), QStringList(Sql(row, "\t", text.toUpper())));
    }

    void anApostropheSavesNothing()
    {
        m_user->open();
        add("owner's yard");
        QCOMPARE(m_user->said(), QStringList());
        QCOMPARE(natures("SrNo>7"), QStringList());
        m_user->key(Qt::Key_Escape);
        QCOMPARE(m_user->said(), QStringList("Do you want to Cancel the Entry?"));

        m_user->click("cmdmodify");
        m_user->type("txtfields_1", "hotelier's");
        m_user->click("cmdupdate");
        QCOMPARE(m_user->said(), QStringList());
        QCOMPARE(natures("SrNo=1"), QStringList("1\tHotel Business"));
        const QStringList log = m_user->module.logLines();
        QCOMPARE(log.size(), 2);
        QVERIFY(log.at(1).startsWith("3001\t") && log.at(1).endsWith("\tfrmnatmas\tCMDUPDATE_CLICK"));

        m_user->type("txtfields_1", "hotels");
        m_user->click("cmdupdate");
        QCOMPARE(natures("SrNo=1"), QStringList("1\tHOTELS"));
    }

    /// The number 0 makes no new nature, and one that another user has deleted is not brought back.
    void changesOnlyWhatIsThere()
    {
        QVERIFY(Cnn->Execute("Insert into FBT_Nature Values (0,'Old')"));
        m_user->open();
        m_user->click("cmdmodify");
        m_user->type("txtfields_1", "older");
        m_user->click("cmdupdate");
        QCOMPARE(natures("SrNo=0 or SrNo>7"), QStringList("0\tOLDER"));
        m_user->click("cmdmodify");
        m_user->type("txtfields_1", "oldest");
        QVERIFY(Cnn->Execute("Delete from FBT_Nature Where SrNo=0"));
        m_user->click("cmdupdate");
        QCOMPARE(natures("SrNo=0 or SrNo>7"), QStringList());
        QCOMPARE(m_user->text("txtfields_1"), QString("OLDEST"));
        QCOMPARE(m_user->module.logLines().size(), 1);
    }

    void deletes_data()
    {
        QTest::addColumn<QString>("statement"); // what refers to the natures 7 or 8
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("asks");
        const QString client = "Update FBT_Info Set Busnat='%1' Where Code_no='OTHER'";
        QTest::newRow("the law's own") << "" << 7 << false;
        QTest::newRow("unused") << "" << 8 << true;
        QTest::newRow("only nature") << client.arg("8") << 8 << false;
        QTest::newRow("first nature") << client.arg("8,1") << 8 << false;
        QTest::newRow("between") << client.arg("1,8,2") << 8 << false;
        QTest::newRow("last nature") << client.arg("1,8") << 8 << false;
        QTest::newRow("numbers that hold an 8") << client.arg("18,81,188") << 8 << true;
        QTest::newRow("base rate") << "Insert into FBT_ExpRate Values (5,8,20)" << 8 << false;
        QTest::newRow("base rate of 0") << "Insert into FBT_ExpRate Values (5,8,0)" << 8 << true;
        QTest::newRow("yearly rate") << "Insert into FBT_ExpRate2008 Values (5,8,20)" << 8 << true;
        QTest::newRow("expense") << "Insert into FBT_Detail Values ('GONE',2008,1,8,1,5,100)" << 8 << false;
    }
    void deletes()
    {
        QFETCH(QString, statement);
        QFETCH(int, row);
        QFETCH(bool, asks);
        Cnn->Execute("Insert into FBT_Nature Values (8,'Shipping')");
        if (!statement.isEmpty())
            QVERIFY(Cnn->Execute(statement));
        const QStringList yearly = m_user->module.rows("Select * from FBT_ExpRate2008");
        m_user->open();
        m_user->grid("vsf")->setRow(row);
        m_user->user.answer(Reply::No);
        m_user->click("cmddelete");
        QCOMPARE(m_user->user.records().size(), asks ? 1 : 0);
        QCOMPARE(natures("SrNo>6").size(), 2);
        if (!asks)
            return;
        QCOMPARE(m_user->user.records().at(0).box.defaultReply(), Reply::No);
        m_user->user.answer(Reply::Yes);
        m_user->click("cmddelete");
        QCOMPARE(m_user->said().last(), QString("Do you want to Delete Selected Item?"));
        QCOMPARE(natures("SrNo>7"), QStringList());
        QCOMPARE(m_user->grid("vsf")->Rows(), 8);
        QCOMPARE(m_user->text("txtfields_1"), QString("Any Other Business"));
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate Where NatId=8"), QStringList());
        QCOMPARE(m_user->module.rows("Select * from FBT_ExpRate2008"), yearly);
    }

    void whatCannotBeAskedCountsAsUsed_data()
    {
        QTest::addColumn<QString>("table");
        for (const char *table : {"FBT_Info", "FBT_ExpRate", "FBT_Detail"})
            QTest::newRow(table) << table;
    }
    void whatCannotBeAskedCountsAsUsed()
    {
        QFETCH(QString, table);
        Cnn->Execute("Insert into FBT_Nature Values (8,'Shipping')");
        m_user->open();
        QVERIFY(Cnn->Execute("Rename Table " + table + " to Away"));
        deleteRow(8);
        QVERIFY(Cnn->Execute("Rename Table Away to " + table));
        QCOMPARE(m_user->said(), QStringList());
        QCOMPARE(natures("SrNo>7").size(), 1);
        QCOMPARE(m_user->module.logLines().size(), 1);
    }

    void aSortKeepsTheRecord()
    {
        m_user->open();
        Grid *vsf = m_user->grid("vsf");
        vsf->setRow(2);
        emit vsf->gridHeader()->sectionClicked(1);
        QCOMPARE(vsf->TextMatrix(1, 1), QString("Any Other Business"));
        QCOMPARE(vsf->TextMatrix(1, 0), QString("1"));
        QCOMPARE(vsf->TextMatrix(vsf->Row(), 1), QString("Construction Business"));
        QCOMPARE(m_user->text("txtfields_1"), QString("Construction Business"));
    }

private:
    void add(const QString &text)
    {
        m_user->click("cmdadd");
        m_user->type("txtfields_1", text);
        m_user->click("cmdupdate");
    }
    void deleteRow(int row)
    {
        m_user->grid("vsf")->setRow(row);
        m_user->user.answer(Reply::Yes);
        m_user->click("cmddelete");
    }
    QStringList natures(const QString &condition)
    {
        return m_user->module.rows("Select * from FBT_Nature Where " + condition + " Order by SrNo");
    }

    std::unique_ptr<LawDatabase> m_law;
    std::unique_ptr<NatureScreen> m_user;
};

QTEST_MAIN(TestNatures)
#include "tst_frmnatmas.moc"
