#include "masters/frmnatmas.h"

#include "tests/masters/masterscreen.h"

Q_GLOBAL_STATIC(TestServer, server)

class TestNatures : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_law = std::make_unique<LawDatabase>(*server); }
    void cleanupTestCase() { m_law.reset(); }
    void init() { m_user = std::make_unique<MasterScreen<frmnatmas>>(*m_law); }
    void cleanup() { m_user.reset(); }

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
        QCOMPARE(m_user->said().size(), 3);
    }
    void aNatureMayKeepItsText()
    {
        m_user->open();
        m_user->click("cmdmodify");
        m_user->type("txtfields_1", "hotel business");
        m_user->click("cmdupdate");
        QCOMPARE(natures("SrNo=1"), QStringList("1\tHOTEL BUSINESS"));
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
        Columns<QString, int, bool>({"statement", "row", "asks"}); // what refers to the natures 7 or 8
        const QString client = "Insert into FBT_Info (Code_no,Busnat) Values ('C','%1')";
        Case("the law's own", "", 7, false);
        Case("unused", "", 8, true);
        Case("only nature", client.arg("8"), 8, false);
        Case("first nature", client.arg("8,1"), 8, false);
        Case("between", client.arg("1,8,2"), 8, false);
        Case("last nature", client.arg("1,8"), 8, false);
        Case("numbers that hold an 8", client.arg("18,81,188"), 8, true);
        Case("base rate", "Insert into FBT_ExpRate Values (5,8,20)", 8, false);
        Case("base rate of 0", "Insert into FBT_ExpRate Values (5,8,0)", 8, true);
        Case("yearly rate", "Insert into FBT_ExpRate2008 Values (5,8,20)", 8, true);
        Case("expense", "Insert into FBT_Detail Values ('GONE',2008,1,8,1,5,100)", 8, false);
    }
    void deletes()
    {
        QFETCH(QString, statement);
        QFETCH(int, row);
        QFETCH(bool, asks);
        Cnn->Execute("Insert into FBT_Nature Values (8,'Shipping')");
        if (!statement.isEmpty())
            QVERIFY(Cnn->Execute(statement));
        m_user->open();
        m_user->grid("vsf")->setRow(row);
        if (asks)
            m_user->answers({Reply::No, Reply::Yes});
        m_user->click("cmddelete");
        QCOMPARE(natures("SrNo>6").size(), 2);
        m_user->click("cmddelete");
        QCOMPARE(natures("SrNo>6").size(), asks ? 1 : 2);
        QCOMPARE(m_user->said(), QStringList(asks ? 2 : 0, "Do you want to Delete Selected Item?"));
        if (asks)
            QCOMPARE(m_user->rows("Select * from FBT_ExpRate Where NatId=8"), QStringList());
    }

    void whatCannotBeAskedCountsAsUsed_data()
    {
        Columns<QString>({"table"});
        for (const char *table : {"FBT_Info", "FBT_ExpRate", "FBT_Detail"})
            Case(table, table);
    }
    void whatCannotBeAskedCountsAsUsed()
    {
        QFETCH(QString, table);
        Cnn->Execute("Insert into FBT_Nature Values (8,'Shipping')");
        m_user->open();
        m_user->grid("vsf")->setRow(8);
        {
            const WithoutTable gone(table);
            m_user->click("cmddelete");
        }
        QCOMPARE(natures("SrNo>7").size(), 1);
        QCOMPARE(m_user->module.logLines().size(), 1);
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
        m_user->answers({Reply::Yes});
        m_user->click("cmddelete");
    }
    QStringList natures(const QString &condition)
    {
        return m_user->rows("Select * from FBT_Nature Where " + condition + " Order by SrNo");
    }

    std::unique_ptr<LawDatabase> m_law;
    std::unique_ptr<MasterScreen<frmnatmas>> m_user;
};

QTEST_MAIN(TestNatures)
#include "tst_frmnatmas.moc"
