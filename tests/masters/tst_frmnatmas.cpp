#include "masters/frmnatmas.h"

#include "tests/masters/masterscreen.h"

class TestNatures : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_user = std::make_unique<MasterScreen<frmnatmas>>(); }
    void cleanup() { m_user.reset(); }

    void addsOneAfterTheOther()
    {
        m_user->open();
        add("shipping");
        QCOMPARE(m_user->focus(), QString("cmdadd"));
        QCOMPARE(m_user->grid("vsf")->Row(), 8);
        add("mining");
        deleteRow(8); // a gap below the highest number stays a gap
        add("farming");
        QCOMPARE(natures("SrNo>7"), QStringList({"9\tMINING", "10\tFARMING"}));
        deleteRow(9);
        deleteRow(8);
        add("again the first");
        QCOMPARE(natures("SrNo>7"), QStringList({"8\tAGAIN THE FIRST"}));
        QCOMPARE(m_user->said().size(), 3);
    }

    void aNatureMayKeepItsText()
    {
        m_user->open();
        modify("hotel business");
        QCOMPARE(natures("SrNo=1"), QStringList("1\tHOTEL BUSINESS"));
    }

    /// The number 0 makes no new nature, and one that another user has deleted is not brought back.
    void changesOnlyWhatIsThere()
    {
        QVERIFY(Cnn->Execute("Insert into FBT_Nature Values (0,'Old')"));
        m_user->open();
        modify("older");
        QCOMPARE(natures("SrNo=0 or SrNo>7"), QStringList("0\tOLDER"));
        QVERIFY(Cnn->Execute("Delete from FBT_Nature Where SrNo=0"));
        modify("oldest");
        QCOMPARE(natures("SrNo=0 or SrNo>7"), QStringList());
        QCOMPARE(m_user->text("txtfields_1"), QString("OLDEST"));
        QCOMPARE(m_user->module.logLines().size(), 1);
    }

    void deletes_data()
    {
        Columns<QString, bool>({"statement", "asks"}); // what refers to the nature 8
        const QString client = "Insert into FBT_Info (Code_no,Busnat) Values ('C','%1')";
        Case("unused", "Select 1", true);
        Case("only nature", client.arg("8"), false);
        Case("first nature", client.arg("8,1"), false);
        Case("between", client.arg("1,8,2"), false);
        Case("last nature", client.arg("1,8"), false);
        Case("numbers that hold an 8", client.arg("18,81,188"), true);
        Case("base rate", "Insert into FBT_ExpRate Values (5,8,20)", false);
        Case("base rate of 0", "Insert into FBT_ExpRate Values (5,8,0)", true);
        Case("yearly rate", "Insert into FBT_ExpRate2008 Values (5,8,20)", true);
        Case("expense", "Insert into FBT_Detail Values ('GONE',2008,1,8,1,5,100)", false);
        for (const char *table : {"FBT_Info", "FBT_ExpRate", "FBT_Detail"}) // what cannot be asked counts as used
            Case(Joined("without ", table), Joined("Rename Table ", table, " to Away"), false);
    }
    void deletes()
    {
        const auto [statement, asks] = Row<QString, bool>();
        Cnn->Execute("Insert into FBT_Nature Values (8,'Shipping')");
        QVERIFY(Cnn->Execute(statement));
        m_user->open();
        m_user->grid("vsf")->setRow(8);
        if (asks)
            m_user->answers({Reply::No, Reply::Yes});
        m_user->click("cmddelete");
        QCOMPARE(natures("SrNo>7").size(), 1);
        m_user->click("cmddelete");
        QCOMPARE(natures("SrNo>7").isEmpty(), asks);
        QCOMPARE(m_user->said(), QStringList(asks ? 2 : 0, "Do you want to Delete Selected Item?"));
        QCOMPARE(asks ? m_user->rows("Select * from FBT_ExpRate Where NatId=8") : QStringList(), QStringList());
        const bool away = statement.endsWith("Away");
        QCOMPARE(m_user->module.logLines().size(), away ? 2 : 0);
        if (away)
            QVERIFY(Cnn->Execute("Rename Table Away to " + statement.section(' ', 2, 2)));
    }

private:
    void add(const QString &text)
    {
        m_user->click("cmdadd");
        m_user->type("txtfields_1", text);
        m_user->click("cmdupdate");
    }
    void modify(const QString &text)
    {
        m_user->click("cmdmodify");
        m_user->type("txtfields_1", text);
        m_user->click("cmdupdate");
    }
    void deleteRow(int row)
    {
        m_user->grid("vsf")->setRow(row);
        m_user->answers({Reply::Yes});
        m_user->click("cmddelete");
    }
    static QStringList natures(const QString &condition)
    {
        return RowsOf(*Cnn, "Select * from FBT_Nature Where " + condition + " Order by SrNo");
    }

    std::unique_ptr<MasterScreen<frmnatmas>> m_user;
};

QTEST_MAIN(TestNatures)
#include "tst_frmnatmas.moc"
