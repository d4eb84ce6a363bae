#include "context/modbase.h"
#include "db/frmupdatedb.h"
#include "db/updater.h"
#include "records/updatemark.h"
#include "tests/support/testmodule.h"

#include <QLabel>
#include <QTableView>
#include <QTest>
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
    void worksOnceAndGoesAway();
    void failsWithoutAServer();
    void waitsForAnotherProgram_data();
    void waitsForAnotherProgram();

private:
    TestServer m_server;
};

void TestFrmUpdateDb::worksOnceAndGoesAway()
{
    TestModule module(m_server);
    frmupdatedb screen;
    QCOMPARE(screen.findChild<QLabel *>("Label1")->text(),
             "Please wait, It may take several minutes to update the database....");
    bool waiting = false;
    bool closable = true;
    bool gridShown = true;
    int statements = 0;
    module.connection.setObserver([&](const QString &) {
        waiting = QGuiApplication::overrideCursor() != nullptr && !DbUpdated;
        gridShown = screen.findChild<QTableView *>("vsf")->isVisible();
        closable = ++statements == 5 && screen.Unload();
    });
    screen.showModal();
    QVERIFY(waiting);
    QVERIFY(!closable);
    QVERIFY(!gridShown);
    QVERIFY(DbUpdated);
    QVERIFY(!screen.isLoaded());
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
    QCOMPARE(module.rows("Select count(*) from FBT_Head2010"), QStringList{"21"});

    const int once = statements;
    screen.FORM_ACTIVATE();
    QCOMPARE(statements, once);
}

void TestFrmUpdateDb::failsWithoutAServer()
{
    TestModule module(m_server);
    module.connection.close();
    frmupdatedb screen;
    screen.showModal();
    QVERIFY(!DbUpdated);
    QVERIFY(!screen.isLoaded());
    const QStringList log = module.logLines();
    QCOMPARE(log.filter("UPDATEDB\tfrmupdatedb").size(), log.size());
    QVERIFY(log.constLast().contains("The next update completes this one."));
}

void TestFrmUpdateDb::waitsForAnotherProgram_data()
{
    QTest::addColumn<QString>("end");
    QTest::newRow("the other one is done") << "done";
    QTest::newRow("the other one dies half way") << "dies";
    QTest::newRow("the user leaves") << "leaves";
}

void TestFrmUpdateDb::waitsForAnotherProgram()
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
    QTimer::singleShot(500, &screen, [&] {
        told = screen.findChild<QLabel *>("lblother")->isVisible();
        if (end == u"leaves") {
            screen.Unload();
        } else if (end == u"dies") {
            another.Execute(Sql("Create Table ", updateMark, " (Nm Varchar(20))"));
            another.close();
        } else {
            UpdateDatabase(&another);
            theirs.reset();
        }
    });
    QStringList sent;
    module.connection.setObserver([&](const QString &statement) { sent << statement; });
    screen.showModal();
    module.connection.setObserver({});
    QVERIFY(told);
    QCOMPARE(DbUpdated, end != u"leaves");
    QCOMPARE(sent.filter("Create Table").isEmpty(), end != u"dies");
    QCOMPARE(module.rows("Show Tables like 'FBT_Head2010'").isEmpty(), end == u"leaves");
    QVERIFY(!screen.isLoaded());
}

QTEST_MAIN(TestFrmUpdateDb)
#include "tst_frmupdatedb.moc"
