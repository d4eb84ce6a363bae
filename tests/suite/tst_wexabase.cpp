#include "suite/statelist.h"
#include "tests/suite/suitefixture.h"

#include <QComboBox>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

/// The base object's rules and its care for the client tables.
class TestWexaBase : public QObject
{
    Q_OBJECT

private slots:
    void settingsOutliveTheObject()
    {
        SuiteFixture suite(m_server);
        QCOMPARE(suite.base.GetSettingINI("Settings", "LinesPP", "70"), QString("70"));
        suite.base.SaveSettingINI("Settings", "PgBrkNITR-8", "0,1,1");
        suite.base.SaveSettingINI("Settings", "Place", "");
        WexaBase later(SuiteFixture::contextOf(suite.module), suite.shelf);
        QCOMPARE(later.GetSettingINI("Settings", "PgBrkNITR-8", "x"), QString("0,1,1"));
        QCOMPARE(later.GetSettingINI("Settings", "Place", "x"), QString());
    }

    void settingsTypedWithoutQuotes()
    {
        SuiteFixture suite(m_server);
        const QString path = SuiteFixture::contextOf(suite.module).settingsFile;
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Settings]\nPgBrkN3B=0,1,0\n");
        file.close();
        QCOMPARE(SettingsFile(path).value("Settings", "PgBrkN3B", "x"), QString("0,1,0"));
    }

    void pan_data()
    {
        QTest::addColumn<bool>("valid");
        QTest::newRow("AAACA1234A") << true;
        QTest::newRow("") << true; // may still be missing
        QTest::newRow("aaaca1234a") << false;
        QTest::newRow("AAACA12345") << false;
        QTest::newRow("AAACA1234AB") << false;
        QTest::newRow("AAACA1234A\n") << false;
        QTest::newRow(" AAACA1234A") << false;
    }
    void pan()
    {
        QFETCH(bool, valid);
        SuiteFixture suite(m_server);
        QCOMPARE(suite.base.ValidPan(QString::fromLatin1(QTest::currentDataTag())), valid);
    }

    void statesInTheOrderOfTheirFile()
    {
        SuiteFixture suite(m_server);
        QComboBox combo;
        suite.base.LoadStateList(&combo);
        QCOMPARE(combo.count(), 0); // no file
        QVERIFY(QDir().mkpath(suite.base.AppPath + "/Data"));
        QVERIFY(QFile::copy(QFINDTESTDATA("../../Data/StateCodes.txt"), suite.base.AppPath + "/Data/StateCodes.txt"));
        suite.base.LoadStateList(&combo);
        suite.base.LoadStateList(&combo); // once more does not double them
        QCOMPARE(combo.count(), 36);
        QCOMPARE(combo.itemText(0), QString("ANDAMAN AND NICOBAR ISLANDS"));
        QCOMPARE(combo.itemText(34), QString("JHARKHAND"));
    }

    void deliveredStatesHaveDistinctCodes()
    {
        QSet<QString> codes;
        for (const StateCode &state : ReadStates(QFINDTESTDATA("../../Data/StateCodes.txt"))) {
            QVERIFY(QRegularExpression("^[0-9]{2}$").match(state.code).hasMatch());
            codes.insert(state.code);
        }
        QCOMPARE(codes.size(), 36);
    }

    void changesAndDeletesOneClientEverywhere()
    {
        SuiteFixture suite(m_server);
        for (const char *code : {"A1", "B2"})
            fillTables(suite, code);
        suite.base.ChangeCode("A1", "N'\\9"); // TmpSchFBT is not there yet
        QCOMPARE(codesIn(suite), QStringList(QList<QString>(8, "B2 N'\\9")));
        suite.base.DeleteClient("N'\\9");
        QCOMPARE(codesIn(suite), QStringList(QList<QString>(8, "B2")));
        QCOMPARE(suite.module.logLines(), QStringList());
    }

    /// Of nine tables one is gone: no row may move alone.
    void aTableThatFailsChangesNothing()
    {
        SuiteFixture suite(m_server);
        fillTables(suite, "A1");
        Cnn->Execute("Rename Table FBT_MiscInf to Away");
        suite.base.ChangeCode("A1", "B2");
        suite.base.DeleteClient("A1");
        Cnn->Execute("Rename Table Away to FBT_MiscInf");
        QCOMPARE(codesIn(suite), QStringList(QList<QString>(8, "A1")));
    }

    void schedulesTableCountsOnceItIsThere()
    {
        SuiteFixture suite(m_server);
        Cnn->Execute("Create Table TmpSchFBT (Code_No Varchar(50), AsYr Int(11))");
        Cnn->Execute("Insert into TmpSchFBT Values ('A1',2008),('B2',2008)");
        suite.base.ChangeCode("A1", "A9");
        QCOMPARE(suite.module.rows("Select Code_No from TmpSchFBT"), QStringList({"A9", "B2"}));
        suite.base.DeleteClient("A9");
        QCOMPARE(suite.module.rows("Select Code_No from TmpSchFBT"), QStringList({"B2"}));
    }

    void deletingTakesTheMasterRowAndLeavesTheLists()
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "FIRST");
        Cnn->Execute("Insert into bank_master Values (1,'BANK','PUNE','0240001')");
        suite.base.ChangeCode("A1", "A9");
        QCOMPARE(suite.module.rows("Select Code_no from FBT_Info"),
                 QStringList({"A1"})); // the master's own row is kept
        suite.base.DeleteClient("A1");
        QCOMPARE(suite.module.rows("Select * from FBT_Info"), QStringList());
        QCOMPARE(suite.module.rows("Select bank_name from bank_master"), QStringList({"BANK"}));
    }

private:
    static QStringList tables()
    {
        return {"FBT_SignDet", "FBT_Detail",  "FBT_SalDet", "FBT_Challan",
                "FBT_AddInfo", "FBT_BankDet", "FBT_RetDet", "FBT_MiscInf"};
    }
    static void fillTables(SuiteFixture &, const char *code)
    {
        for (const QString &table : tables())
            Cnn->Execute(Sql("Insert into ", table, " (Code_No) Values ('", code, "')"));
    }
    static QStringList codesIn(SuiteFixture &suite)
    {
        QStringList found;
        for (const QString &table : tables())
            found << suite.module.rows(Sql("Select Code_No from ", table, " order by Code_No")).join(u' ');
        return found;
    }

    TestServer m_server;
};

QTEST_MAIN(TestWexaBase)
#include "tst_wexabase.moc"
