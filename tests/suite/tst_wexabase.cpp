#include "tests/suite/suitefixture.h"

#include <QFile>

/// The base object's rules and its care for the client tables.
class TestWexaBase : public QObject
{
    Q_OBJECT

private slots:
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

    void pan()
    {
        SuiteFixture suite(m_server);
        for (const char *valid : {"AAACA1234A", ""}) // may still be missing
            QVERIFY2(suite.base.ValidPan(valid), valid);
        for (const char *wrong : {"aaaca1234a", "AAACA12345", "AAACA1234AB", "AAACA1234A\n", " AAACA1234A"})
            QVERIFY2(!suite.base.ValidPan(wrong), wrong);
    }

    void changesAndDeletesOneClientEverywhere()
    {
        SuiteFixture suite(m_server);
        for (const char *code : {"A1", "B2"})
            fillTables(code);
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
        fillTables("A1");
        suite.client("A1", "FIRST");
        Cnn->Execute("Rename Table FBT_MiscInf to Away");
        suite.base.ChangeCode("A1", "B2");
        suite.base.DeleteClient("A1");
        Cnn->Execute("Rename Table Away to FBT_MiscInf");
        QCOMPARE(codesIn(suite), QStringList(QList<QString>(8, "A1")));
        QCOMPARE(suite.module.rows("Select Code_no from FBT_Info"), QStringList({"A1"}));
    }

    void theMasterRowGoesAndSchedulesCountOnceTheyAreThere()
    {
        SuiteFixture suite(m_server);
        suite.client("A1", "FIRST");
        Cnn->Execute("Create Table TmpSchFBT (Code_No Varchar(50), AsYr Int(11))");
        Cnn->Execute("Insert into TmpSchFBT Values ('A1',2008),('B2',2008)");
        suite.base.ChangeCode("A1", "A9"); // the master's own row is kept
        QCOMPARE(suite.module.rows("Select Code_No from TmpSchFBT"), QStringList({"A9", "B2"}));
        suite.base.DeleteClient("A9");
        suite.base.DeleteClient("A1");
        QCOMPARE(suite.module.rows("Select Code_No from TmpSchFBT"), QStringList({"B2"}));
        QCOMPARE(suite.module.rows("Select * from FBT_Info"), QStringList());
    }

private:
    static QStringList tables()
    {
        return {"FBT_SignDet", "FBT_Detail",  "FBT_SalDet", "FBT_Challan",
                "FBT_AddInfo", "FBT_BankDet", "FBT_RetDet", "FBT_MiscInf"};
    }
    static void fillTables(const char *code)
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
