#include "controls/msgbox.h"
#include "records/updatemark.h"
#include "suite/wexamain.h"
#include "tests/support/testmodule.h"

#include <QFile>
#include <QTest>

/// What the main object says about the database and about the run before.
class TestWexaMain : public QObject
{
    Q_OBJECT

private slots:
    void databaseFlags_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("create");
        QTest::addColumn<bool>("update");
        QTest::newRow("no row") << "" << true << false;
        QTest::newRow("lower") << "2.9.12" << false << true;
        QTest::newRow("the same") << "2.10.1" << false << false;
        QTest::newRow("shorter is lower") << "2.10" << false << true;
        QTest::newRow("a last 0 counts for nothing") << "2.10.1.0" << false << false;
        QTest::newRow("no number") << "beta" << false << true;
        QTest::newRow("of a later program") << "2.11.0" << false << false;
    }
    void databaseFlags()
    {
        QFETCH(QString, stored);
        TestModule module(m_server);
        const std::unique_ptr<WexaMain> main = make(module); // VerInfo is made here
        if (!stored.isEmpty())
            module.connection.Execute(Sql("Insert into VerInfo Values ('", stored, "')"));
        QTEST(main->CreateDbFlag(), "create");
        QTEST(main->UpdateDbFlag(), "update");
        QCOMPARE(module.logLines(), QStringList());
    }

    void updateThatWasCutOffIsPending()
    {
        TestModule module(m_server);
        const std::unique_ptr<WexaMain> main = make(module);
        module.connection.Execute("Insert into VerInfo Values ('2.10.1')");
        QVERIFY(!main->UpdateDbFlag());
        module.connection.Execute(Sql("Create Table ", updateMark, " (Nm Varchar(20))"));
        QVERIFY(main->UpdateDbFlag());
    }

    void keepsAVersionTableThatIsThere()
    {
        TestModule module(m_server);
        module.connection.Execute("Create Table VerInfo (Any Varchar(20))");
        module.connection.Execute("Insert into VerInfo Values ('2.10.1')");
        QVERIFY(!make(module)->CreateDbFlag());
    }

    void tellsARunThatDidNotEndInOrder()
    {
        TestModule module(m_server);
        QVERIFY(!make(module)->ChkRepDbFlag());
        QVERIFY(!make(module)->ChkRepDbFlag()); // the first one has ended in order

        QFile left(module.base.AppPath + "/running.lock"); // as a program leaves it that was killed
        QVERIFY(left.open(QIODevice::WriteOnly));
        left.write("2147480000\npelkfbt\n\n\n\n");
        left.close();
        std::unique_ptr<WexaMain> after = make(module);
        QVERIFY(after->ChkRepDbFlag());
        after->TerminateObj();
        QCOMPARE(module.connection.State(), static_cast<int>(Connection::Closed));
        QVERIFY(!left.exists());
    }

    void aSecondProgramBesideTheFirstFindsAllInOrder()
    {
        TestModule module(m_server);
        const std::unique_ptr<WexaMain> first = make(module);
        QVERIFY(!make(module)->ChkRepDbFlag());
        QVERIFY(QFile::exists(module.base.AppPath + "/running.lock")); // still the first one's
    }

    void saysWhatItIs()
    {
        TestModule module(m_server);
        const std::unique_ptr<WexaMain> main = make(module);
        ScriptedAnswerer answerer;
        const AnswererScope scope(&answerer);
        main->ShowWexaNews();
        QCOMPARE(answerer.texts().size(), 0);
        main->CheckForUpdates();
        main->ShowAbout();
        QCOMPARE(answerer.texts().size(), 2);
        for (const QString &text : answerer.texts())
            QVERIFY(text.contains("2.10.1"));
    }

private:
    static std::unique_ptr<WexaMain> make(TestModule &module)
    {
        SuiteContext context;
        context.cnn = &module.connection;
        context.appPath = module.base.AppPath;
        context.version = "2.10.1";
        return std::make_unique<WexaMain>(context);
    }

    TestServer m_server;
};

QTEST_MAIN(TestWexaMain)
#include "tst_wexamain.moc"
