#include "context/modbase.h"
#include "db/frmupdatedb.h"
#include "db/updater.h"
#include "records/updatemark.h"
#include "tests/support/caserow.h"
#include "tests/support/testmodule.h"

#include <QLabel>
#include <QTimer>

namespace {

/// A main object that sees nothing to do.
class UpToDate : public MainObject
{
public:
    [[nodiscard]] bool ChkRepDbFlag() const override { return false; }
    [[nodiscard]] bool CreateDbFlag() const override { return false; }
    [[nodiscard]] bool UpdateDbFlag() const override { return false; }
    void ShowWexaNews() override {}
    void CheckForUpdates() override {}
    void ShowAbout() override {}
    void TerminateObj() override {}
};

} // namespace

/// The window that brings a database up to date.
class TestFrmUpdateDb : public QObject
{
    Q_OBJECT

private slots:
    void worksOnceAndGoesAway()
    {
        TestModule module(m_server);
        frmupdatedb screen;
        bool closable = true;
        int statements = 0;
        module.connection.setObserver([&](const QString &) { closable = ++statements == 5 && screen.Unload(); });
        screen.showModal();
        QVERIFY(!closable && DbUpdated && !screen.isLoaded());
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        const int once = statements;
        screen.FORM_ACTIVATE();
        QCOMPARE(statements, once);
    }

    void waitsForAnotherProgram_data()
    {
        Columns<QString>({"end"});
        for (const char *end : {"is done", "dies half way", "is left waiting by the user"})
            Case(end, end);
    }
    void waitsForAnotherProgram()
    {
        QFETCH(QString, end);
        TestModule module(m_server);
        Connection another;
        QVERIFY(another.open(module.connection.address()));
        auto theirs = std::make_unique<UpdateLock>(&another);
        QVERIFY(theirs->take());
        UpToDate main;
        MainObj = &main;
        frmupdatedb screen;
        bool told = false;
        const bool done = end == "is done";
        const bool dies = end == "dies half way";
        QTimer::singleShot(500, &screen, [&] {
            told = screen.findChild<QLabel *>("lblother")->isVisible();
            if (done) {
                UpdateDatabase(&another);
                theirs.reset();
            } else if (dies) {
                another.Execute(Sql("Create Table ", updateMark, " (Nm Varchar(20))"));
                another.close();
            } else {
                screen.Unload();
            }
        });
        QStringList sent;
        module.connection.setObserver([&](const QString &statement) { sent << statement; });
        screen.showModal();
        module.connection.setObserver({});
        QVERIFY(told && !screen.isLoaded());
        QCOMPARE(DbUpdated, done || dies);
        QCOMPARE(sent.filter("Create Table").isEmpty(), !dies);
        QCOMPARE(module.rows("Show Tables like 'FBT_Head2010'").isEmpty(), !done && !dies);
    }

private:
    TestServer m_server;
};

QTEST_MAIN(TestFrmUpdateDb)
#include "tst_frmupdatedb.moc"
