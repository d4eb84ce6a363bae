#include "context/modbase.h"
#include "db/frmupdatedb.h"
#include "tests/support/testmodule.h"

#include <QLabel>
#include <QTableView>
#include <QTest>

/// The window that brings a database up to date.
class TestFrmUpdateDb : public QObject
{
    Q_OBJECT

private slots:
    void worksOnceAndGoesAway();
    void failsWithoutAServer();

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

QTEST_MAIN(TestFrmUpdateDb)
#include "tst_frmupdatedb.moc"
