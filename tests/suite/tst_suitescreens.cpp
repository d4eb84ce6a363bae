#include "records/bankaccounts.h"
#include "records/banks.h"
#include "suite/clientinfo/addinfospec.h"
#include "suite/clientinfo/frmaddinfo.h"
#include "suite/clientinfo/frmbankdet.h"
#include "suite/clientinfo/frmbankmas.h"
#include "suite/clientinfo/frmmiscinf.h"
#include "tests/suite/suitefixture.h"

/// The suite's own screens, worked as a user does.
class TestSuiteScreens : public QObject
{
    Q_OBJECT

private slots:
    void newAddInfoRowHasTheDefaults()
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "ALPHA");
        suite.open<frmaddinfo1>();
        suite.user.type("txtWard", "range 1's");
        suite.user.click("cmdsave");
        QVERIFY(!suite.user.screen()->isLoaded());
        Cnn->Execute("Insert into FBT_AddInfo Values ('B2',2008,'0','RANGE 1''S','','1','0','','','0','0','0','','0',"
                     "'','0','0','0','0','0','0',0,0,'','','','','','','1',0,'1',0,'1',0,'')");
        QCOMPARE(row(suite, "A1"), row(suite, "B2"));
        QCOMPARE(suite.module.logLines(), QStringList());
    }

    void columnsThatAreNotShownStay()
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "ALPHA");
        Cnn->Execute("Insert into FBT_AddInfo Values ('A1',2008,'1','W','OLD','2','1','R1','01/08/2008','13','1','1',"
                     "'02/02/2008','1','03/03/2008','1','1','1','1','1','1',5,9,'04/04/2008','ACK','A','B','C','D',"
                     "'0',10.5,'0',20,'0',30,'todate')");
        Cnn->Execute("Insert into FBT_AddInfo (Code_No,Tyear,Ward) Values ('A1',2009,'NEXT')");
        const QString before = row(suite, "A1");
        suite.open<frmaddinfo1>();
        QVERIFY(suite.check("chkIntDt")->isChecked() && !suite.user.enabled("txtIntDt"));
        QVERIFY(suite.user.enabled("txtAmt115WJ")); // typed, since it is not computed
        suite.user.click("cmdsave");
        QCOMPARE(row(suite, "A1"), before); // what was read is written, NOB "13" and old ward are not touched
        suite.open<frmaddinfo>();
        QVERIFY(suite.check("chkNOB_3")->isChecked() && !suite.check("chkNOB_2")->isChecked());
        suite.check("chkNOB_6")->click();
        suite.check("chkIntDt")->click();
        suite.user.type("txtIntDt", "5-6-08");
        suite.user.click("cmdsave");
        QCOMPARE(suite.rows("Select NOB,OldWard,IntDt,Amt115WJ,Ward from FBT_AddInfo Order by Tyear").join(u'|'),
                 QString("136\tOLD\t05/06/2008\t10.5\tW|NULL\tNULL\t\t0\tNEXT"));
    }

    void wrongEntriesAreNotSaved()
    {
        for (const auto &[field, text, message] :
             {std::tuple("txtRetDt", "31/02/2009", "Invalid Date."),
              std::tuple("txtIndiaEmp", "10", "Employees based in India cannot be more than the total employees.")}) {
            SuiteFixture suite(m_server);
            suite.open<frmaddinfo1>();
            suite.check("chkEmpBoth")->click();
            suite.user.find<QLineEdit>(field)->setText(text);
            suite.user.click("cmdsave");
            QVERIFY(suite.user.screen()->isLoaded());
            QCOMPARE(suite.user.said(), QStringList(message));
            QCOMPARE(row(suite, "A1"), QString());
        }
    }

    void everyColumnOfTheRowIsKeptByOneOfTheForms()
    {
        SuiteFixture suite(m_server);
        QStringList shown;
        for (const auto &form : {AddInfoGroups(ReturnForm::Form3B), AddInfoGroups(ReturnForm::Itr8), MiscInfGroups()})
            for (const FieldGroup &group : form)
                for (const FieldSpec &spec : group.fields)
                    shown << QString::fromLatin1(spec.column).toLower();
        for (const QString &column : suite.rows(
                 "Select Lower(COLUMN_NAME) from information_schema.COLUMNS Where TABLE_SCHEMA=Database()"
                 " and TABLE_NAME in ('FBT_AddInfo','FBT_MiscInf') and ORDINAL_POSITION>2 and COLUMN_NAME<>'FbtRow'"))
            QVERIFY2(shown.contains(column), qPrintable(column));
    }

    void oneDefaultAccount()
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "ALPHA");
        suite.open<frmbankdet>();
        addAccount(suite, "first's", "1"); // it by itself
        addAccount(suite, "second", "2");
        suite.user.click("cmdmodify"); // the row added last is current
        suite.check("chkdefault")->click();
        suite.user.click("cmdupdate");
        QCOMPARE(banks(suite), QStringList({"1\tFIRST'S\t1\tN", "2\tSECOND\t2\tY"}));
        suite.user.answers({Reply::Yes});
        suite.user.click("cmddelete");
        QCOMPARE(banks(suite), QStringList({"1\tFIRST'S\t1\tY"}));
        suite.user.click("cmdmodify");
        suite.check("chkdefault")->click();
        suite.user.click("cmdupdate");
        QCOMPARE(banks(suite), QStringList({"1\tFIRST'S\t1\tY"})); // one of them stays it
        suite.user.said();
    }

    /// A number that could not be read is not 1: the account that has it would be there twice.
    void withoutNumberNothingIsSaved()
    {
        SuiteFixture suite(m_server);
        Cnn->Execute("Alter Table FBT_BankDet Change SrNo Other Int");
        Cnn->Execute("Alter Table bank_master Change bank_code_no Other Int");
        QVERIFY(!SaveBankAccount(Cnn, {"A1", 2008}, {}, true) && !SaveBank(Cnn, {}, true));
        QCOMPARE(suite.rows("Select * from FBT_BankDet") + suite.rows("Select * from bank_master"), QStringList());
    }

    /// The row of the client is there; while the screen opens, its table is not.
    void whatCouldNotBeReadIsNotSaved()
    {
        staysUnread<frmaddinfo1>("FBT_AddInfo");
        staysUnread<frmaddinfo>("FBT_AddInfo");
        staysUnread<frmbankdet>("FBT_BankDet");
        staysUnread<frmmiscinf>("FBT_MiscInf");
        staysUnread<frmbankmas>("bank_master");
    }

    void banksInUseStay()
    {
        SuiteFixture suite(m_server);
        QCOMPARE(SaveBank(Cnn, {0, "ALPHA", "PUNE", "0240001"}, true).value_or(0), 1);
        QCOMPARE(SaveBank(Cnn, {0, "BETA", "", ""}, true).value_or(0), 2);
        QCOMPARE(SaveBank(Cnn, {2, "BETA'S", "FORT", "0200011"}, false).value_or(0), 2);
        QVERIFY(!SaveBank(Cnn, {7, "DELETED MEANWHILE", "", ""}, false));
        Cnn->Execute("Insert into FBT_Challan (Code_No,BSRCode) Values ('A1',1)");
        suite.open<frmbankmas>();
        suite.user.grid("vsf")->setRow(1);
        suite.user.click("cmddelete");
        QCOMPARE(suite.user.said(), QStringList("A challan was paid at this bank. It cannot be deleted."));
        suite.user.grid("vsf")->setRow(2);
        suite.user.answers({Reply::Yes});
        suite.user.click("cmddelete");
        QCOMPARE(suite.rows("Select * from bank_master"), QStringList("1\tALPHA\tPUNE\t0240001"));
        suite.user.said();
    }

    void miscInfIsKeptByClientAndYear()
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "ALPHA");
        suite.client("B2", "BETA");
        suite.open<frmmiscinf>();
        suite.check("chkRepAss")->click();
        suite.user.type("txtVar0_0", "agent");
        suite.user.type("txtVar1_11", "1/9/08");
        suite.user.answers({Reply::Yes}); // save before going on
        suite.user.choose("cboclient", 1);
        emit suite.user.find<QComboBox>("cboclient")->activated(1);
        QVERIFY(!suite.check("chkRepAss")->isChecked() && !suite.user.enabled("txtVar0_1"));
        suite.user.click("cmdsave");
        QCOMPARE(suite.rows("Select Code_No,TYear,RepAss,Var0_0,Var1_11,Opt44AB from FBT_MiscInf order by Code_No"),
                 QStringList({"A1\t2008\t1\tAGENT\t01/09/2008\t0", "B2\t2008\t0\t\t\t0"}));
        suite.user.said();
    }

private:
    template<class S>
    void staysUnread(const char *table)
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "ALPHA");
        Cnn->Execute("Insert into FBT_AddInfo (Code_No,Tyear,Ward) Values ('A1',2008,'W')");
        Cnn->Execute("Insert into FBT_MiscInf (Code_No,TYear,Var0_0) Values ('A1',2008,'AGENT')");
        Cnn->Execute("Insert into FBT_BankDet (Code_No,Yr,SrNo,DefBank) Values ('A1',2008,1,'Y')");
        Cnn->Execute("Insert into bank_master Values (1,'ALPHA','','')");
        const QStringList before = suite.rows(Sql("Select * from ", table));
        {
            const WithoutTable gone(table);
            suite.open<S>();
        }
        QVERIFY2(suite.user.screen()->windowTitle().contains("could not be read"), table);
        for (const char *name : {"cmdadd", "cmdupdate", "cmdsave"}) {
            if (auto *button = suite.user.screen()->findChild<QAbstractButton *>(name))
                button->click();
        }
        if (const auto *frame = suite.user.screen()->findChild<QWidget *>("Frame2"))
            QVERIFY(!frame->isEnabled()); // no new account that would take the default mark
        QVERIFY2(suite.rows(Sql("Select * from ", table)) == before, table);
        suite.user.said();
    }

    static void addAccount(SuiteFixture &suite, const QString &bank, const QString &account)
    {
        suite.user.click("cmdadd");
        suite.user.type("txtbank", bank);
        suite.user.type("txtaccount", account);
        suite.user.click("cmdupdate");
    }

    /// The additional information of a client without its code.
    static QString row(SuiteFixture &suite, const char *code)
    {
        const QString found = Sql("Select * from FBT_AddInfo Where TYear=2008 and Code_No='", code, "'");
        return suite.rows(found).join(u'|').section('\t', 1);
    }

    static QStringList banks(SuiteFixture &suite)
    {
        return suite.rows(
            "Select SrNo,BankNm,AcNo,DefBank from FBT_BankDet Where Code_No='A1' and Yr=2008 order by SrNo");
    }

    TestServer m_server;
};

QTEST_MAIN(TestSuiteScreens)
#include "tst_suitescreens.moc"
