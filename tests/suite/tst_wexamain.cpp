#include "platform/fault.h"
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
    void databaseFlags()
    {
        const std::vector<std::tuple<QString, bool, bool>> rows{{"", true, false}, // a new database
                                                                {"2.9.12", false, true}, {"2.10.1", false, false},
                                                                {"2.10", false, true},   {"2.10.1.0", false, false},
                                                                {"beta", false, true},   {"2.11.0", false, false}};
        for (const auto &[stored, create, update] : rows) {
            TestModule module(m_server);
            const std::unique_ptr<WexaMain> main = make(module); // VerInfo is made here
            if (!stored.isEmpty())
                module.connection.Execute(Sql("Insert into VerInfo Values ('", stored, "')"));
            QVERIFY2(main->CreateDbFlag() == create && main->UpdateDbFlag() == update, qPrintable(stored));
            QCOMPARE(module.logLines(), QStringList());
        }
    }

    void updateThatWasCutOffIsPending()
    {
        TestModule module(m_server);
        const std::unique_ptr<WexaMain> main = make(module);
        module.connection.Execute("Insert into VerInfo Values ('2.10.1')");
        module.connection.Execute(Sql("Create Table ", updateMark, " (Nm Varchar(20))"));
        QVERIFY(main->UpdateDbFlag());
    }

    /// Nobody may take such a database for a new one, nor write a version into it.
    void aVersionThatCannotBeReadIsAFault()
    {
        TestModule module(m_server);
        const std::unique_ptr<WexaMain> main = make(module);
        module.connection.Execute("Drop Table VerInfo");
        QVERIFY(main->ChkRepDbFlag());
        QVERIFY_THROWS_EXCEPTION(FaultError, (void)main->CreateDbFlag());
        QVERIFY_THROWS_EXCEPTION(FaultError, (void)main->UpdateDbFlag());
        module.connection.close();
        QVERIFY_THROWS_EXCEPTION(FaultError, (void)UpdateIsMarked(&module.connection));
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
