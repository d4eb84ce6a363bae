#include "controls/grid.h"
#include "records/bankaccounts.h"
#include "records/banks.h"
#include "suite/clientinfo/addinfospec.h"
#include "suite/clientinfo/frmaddinfo.h"
#include "suite/clientinfo/frmbankdet.h"
#include "suite/clientinfo/frmbankmas.h"
#include "suite/clientinfo/frmmiscinf.h"
#include "tests/suite/suitefixture.h"
#include "tests/support/caserow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

/// The suite's own screens, worked as a user does.
class TestSuiteScreens : public QObject
{
    Q_OBJECT

private slots:
    void newAddInfoRowHasTheDefaults()
    {
        SuiteFixture suite(m_server);
        frmaddinfo1 screen(suite.base);
        open(screen);
        type(screen, "txtWard", "range 1's");
        click(screen, "cmdsave");
        QVERIFY(!screen.isLoaded());
        Cnn->Execute("Insert into FBT_AddInfo Values ('B2',2008,'0','RANGE 1''S','','1','0','','','0','0','0','','0',"
                     "'','0','0','0','0','0','0',0,0,'','','','','','','1',0,'1',0,'1',0,'')");
        QCOMPARE(row(suite, "A1"), row(suite, "B2"));
        QCOMPARE(suite.module.logLines(), QStringList());
    }

    void columnsThatAreNotShownStay()
    {
        SuiteFixture suite(m_server);
        Cnn->Execute("Insert into FBT_AddInfo Values ('A1',2008,'1','W','OLD','2','1','R1','01/08/2008','13','1','1',"
                     "'02/02/2008','1','03/03/2008','1','1','1','1','1','1',5,9,'04/04/2008','ACK','A','B','C','D',"
                     "'0',10.5,'0',20,'0',30,'todate')");
        Cnn->Execute("Insert into FBT_AddInfo (Code_No,Tyear,Ward) Values ('A1',2009,'NEXT')");
        const QStringList before = row(suite, "A1");
        {
            frmaddinfo1 screen(suite.base);
            open(screen);
            QVERIFY(check(screen, "chkIntDt")->isChecked());
            QVERIFY(!edit(screen, "txtIntDt")->isEnabled());
            QVERIFY(edit(screen, "txtAmt115WJ")->isEnabled()); // typed, since it is not computed
            click(screen, "cmdsave");
        }
        QCOMPARE(row(suite, "A1"), before); // what was read is written, NOB "13" and old ward are not touched
        {
            frmaddinfo screen(suite.base);
            open(screen);
            QVERIFY(check(screen, "chkNOB_3")->isChecked());
            QVERIFY(!check(screen, "chkNOB_2")->isChecked());
            check(screen, "chkNOB_6")->click();
            check(screen, "chkIntDt")->click();
            edit(screen, "txtIntDt")->setFocus();
            QTest::keyClicks(edit(screen, "txtIntDt"), "5-6-08");
            click(screen, "cmdsave");
        }
        QCOMPARE(suite.module.rows("Select NOB,OldWard,IntDt,Amt115WJ from FBT_AddInfo Where Tyear=2008"),
                 QStringList({"136\tOLD\t05/06/2008\t10.5"}));
        QCOMPARE(suite.module.rows("Select Ward from FBT_AddInfo Where Tyear=2009"), QStringList({"NEXT"}));
    }

    void wrongEntriesAreNotSaved_data()
    {
        Columns<QString, QString, QString>({"field", "text", "message"});
        Case("no date", "txtRetDt", "31/02/2009", "Invalid Date.");
        Case("more in India than in all", "txtIndiaEmp", "10",
             "Employees based in India cannot be more than the total employees.");
    }
    void wrongEntriesAreNotSaved()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        SuiteFixture suite(m_server);
        frmaddinfo1 screen(suite.base);
        open(screen);
        check(screen, "chkEmpBoth")->click();
        edit(screen, qPrintable(field))->setText(text);
        click(screen, "cmdsave");
        QVERIFY(screen.isLoaded());
        QTEST(suite.answerer.texts().constLast(), "message");
        QCOMPARE(row(suite, "A1"), QStringList());
    }

    void everyColumnOfTheRowIsKeptByOneOfTheForms()
    {
        SuiteFixture suite(m_server);
        QStringList shown;
        for (const ReturnForm form : {ReturnForm::Form3B, ReturnForm::Itr8}) {
            for (const FieldGroup &group : AddInfoGroups(form))
                for (const FieldSpec &spec : group.fields)
                    shown << QString::fromLatin1(spec.column).toLower();
        }
        for (const FieldGroup &group : MiscInfGroups())
            for (const FieldSpec &spec : group.fields)
                shown << QString::fromLatin1(spec.column).toLower();
        for (const QString &column : suite.module.rows(
                 "Select Lower(COLUMN_NAME) from information_schema.COLUMNS Where TABLE_SCHEMA=Database()"
                 " and TABLE_NAME in ('FBT_AddInfo','FBT_MiscInf') and ORDINAL_POSITION>2 and COLUMN_NAME<>'FbtRow'"))
            QVERIFY2(shown.contains(column), qPrintable(column));
    }

    void oneDefaultAccount()
    {
        SuiteFixture suite(m_server);
        frmbankdet screen(suite.base);
        open(screen);
        addAccount(screen, "first's", "1"); // it by itself
        addAccount(screen, "second", "2");
        click(screen, "cmdmodify"); // the row added last is current
        check(screen, "chkdefault")->click();
        click(screen, "cmdupdate");
        QCOMPARE(banks(suite), QStringList({"1\tFIRST'S\t1\tN", "2\tSECOND\t2\tY"}));
        suite.answerer.answer(Reply::Yes);
        click(screen, "cmddelete");
        QCOMPARE(banks(suite), QStringList({"1\tFIRST'S\t1\tY"}));
        click(screen, "cmdmodify");
        check(screen, "chkdefault")->click();
        click(screen, "cmdupdate");
        QCOMPARE(banks(suite), QStringList({"1\tFIRST'S\t1\tY"})); // one of them stays it
    }

    /// A number that could not be read is not 1: the account that has it would be there twice.
    void withoutNumberNothingIsSaved()
    {
        SuiteFixture suite(m_server);
        Cnn->Execute("Alter Table FBT_BankDet Change SrNo Other Int");
        Cnn->Execute("Alter Table bank_master Change bank_code_no Other Int");
        QVERIFY(!SaveBankAccount(Cnn, {"A1", 2008}, {}, true));
        QVERIFY(!SaveBank(Cnn, {}, true));
        QCOMPARE(suite.module.rows("Select * from FBT_BankDet") + suite.module.rows("Select * from bank_master"),
                 QStringList());
    }

    /// The row of the client is there; while the screen opens, its table is not.
    void whatCouldNotBeReadIsNotSaved_data()
    {
        QTest::addColumn<QString>("table");
        for (const char *name : {"FBT_AddInfo", "FBT_AddInfo, first form", "FBT_BankDet", "FBT_MiscInf", "bank_master"})
            QTest::newRow(name) << QString(name).section(u',', 0, 0);
    }
    void whatCouldNotBeReadIsNotSaved()
    {
        QFETCH(QString, table);
        SuiteFixture suite(m_server);
        suite.client("A1", "ALPHA");
        Cnn->Execute("Insert into FBT_AddInfo (Code_No,Tyear,Ward) Values ('A1',2008,'W')");
        Cnn->Execute("Insert into FBT_MiscInf (Code_No,TYear,Var0_0) Values ('A1',2008,'AGENT')");
        Cnn->Execute("Insert into FBT_BankDet (Code_No,Yr,SrNo,DefBank) Values ('A1',2008,1,'Y')");
        Cnn->Execute("Insert into bank_master Values (1,'ALPHA','','')");
        const QStringList before = suite.module.rows("Select * from " + table);
        std::unique_ptr<Screen> screen;
        if (QLatin1String(QTest::currentDataTag()) == QLatin1String("FBT_AddInfo"))
            screen = std::make_unique<frmaddinfo1>(suite.base);
        else if (table == u"FBT_AddInfo")
            screen = std::make_unique<frmaddinfo>(suite.base);
        else if (table == u"FBT_BankDet")
            screen = std::make_unique<frmbankdet>(suite.base);
        else if (table == u"FBT_MiscInf")
            screen = std::make_unique<frmmiscinf>(suite.base);
        else
            screen = std::make_unique<frmbankmas>(suite.base);
        Cnn->Execute("Rename Table " + table + " to Away");
        open(*screen);
        Cnn->Execute("Rename Table Away to " + table);
        QVERIFY(screen->windowTitle().contains("could not be read"));
        for (const char *button : {"cmdadd", "cmdupdate", "cmdsave"}) {
            if (auto *found = screen->findChild<QPushButton *>(QLatin1String(button)))
                found->click();
        }
        if (auto *frame = screen->findChild<QWidget *>("Frame2"))
            QVERIFY(!frame->isEnabled()); // no new account that would take the default mark
        QCOMPARE(suite.module.rows("Select * from " + table), before);
    }

    void banksInUseStay()
    {
        SuiteFixture suite(m_server);
        QCOMPARE(SaveBank(Cnn, {0, "ALPHA", "PUNE", "0240001"}, true).value_or(0), 1);
        QCOMPARE(SaveBank(Cnn, {0, "BETA", "", ""}, true).value_or(0), 2);
        QCOMPARE(SaveBank(Cnn, {2, "BETA'S", "FORT", "0200011"}, false).value_or(0), 2);
        QVERIFY(!SaveBank(Cnn, {7, "DELETED MEANWHILE", "", ""}, false));
        Cnn->Execute("Insert into FBT_Challan (Code_No,BSRCode) Values ('A1',1)");
        frmbankmas screen(suite.base);
        open(screen);
        Grid *vsf = SuiteFixture::find<Grid>(&screen, "vsf");
        vsf->setRow(1);
        click(screen, "cmddelete");
        QCOMPARE(suite.answerer.texts(), QStringList({"A challan was paid at this bank. It cannot be deleted."}));
        vsf->setRow(2);
        suite.answerer.answer(Reply::Yes);
        click(screen, "cmddelete");
        QCOMPARE(suite.module.rows("Select * from bank_master"), QStringList({"1\tALPHA\tPUNE\t0240001"}));
    }

    void miscInfIsKeptByClientAndYear()
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "ALPHA");
        suite.client("B2", "BETA");
        frmmiscinf screen(suite.base);
        open(screen);
        check(screen, "chkRepAss")->click();
        type(screen, "txtVar0_0", "agent");
        type(screen, "txtVar1_11", "1/9/08");
        auto *client = SuiteFixture::find<QComboBox>(&screen, "cboclient");
        suite.answerer.answer(Reply::Yes); // save before going on
        client->setCurrentIndex(1);
        emit client->activated(1);
        QVERIFY(!check(screen, "chkRepAss")->isChecked());
        type(screen, "txtVar0_1", "wrong"); // disabled for this one: nothing arrives
        click(screen, "cmdsave");
        QCOMPARE(
            suite.module.rows("Select Code_No,TYear,RepAss,Var0_0,Var1_11,Opt44AB from FBT_MiscInf order by Code_No"),
            QStringList({"A1\t2008\t1\tAGENT\t01/09/2008\t0", "B2\t2008\t0\t\t\t0"}));
    }

private:
    static void open(Screen &screen)
    {
        screen.openChild(nullptr);
        screen.setDeleteOnUnload(false); // it belongs to the test
        QVERIFY(QTest::qWaitForWindowActive(screen.window()));
    }
    static QLineEdit *edit(QWidget &screen, const char *name) { return SuiteFixture::find<QLineEdit>(&screen, name); }
    static QCheckBox *check(QWidget &screen, const char *name) { return SuiteFixture::find<QCheckBox>(&screen, name); }
    static void click(QWidget &screen, const char *name) { SuiteFixture::find<QPushButton>(&screen, name)->click(); }
    static void type(QWidget &screen, const char *name, const QString &text)
    {
        edit(screen, name)->setFocus();
        edit(screen, name)->selectAll();
        if (edit(screen, name)->isEnabled())
            QTest::keyClicks(edit(screen, name), text);
    }

    static void addAccount(QWidget &screen, const QString &bank, const QString &account)
    {
        click(screen, "cmdadd");
        type(screen, "txtbank", bank);
        type(screen, "txtaccount", account);
        click(screen, "cmdupdate");
    }

    static QStringList row(SuiteFixture &suite, const char *code)
    {
        QStringList found =
            suite.module.rows(Sql("Select * from FBT_AddInfo Where TYear=2008 and Code_No='", code, "'"));
        for (QString &line : found)
            line = line.section('\t', 1);
        return found;
    }

    static QStringList banks(SuiteFixture &suite)
    {
        return suite.module.rows(
            "Select SrNo,BankNm,AcNo,DefBank from FBT_BankDet Where Code_No='A1' and Yr=2008 order by SrNo");
    }

    TestServer m_server;
};

QTEST_MAIN(TestSuiteScreens)
#include "tst_suitescreens.moc"
