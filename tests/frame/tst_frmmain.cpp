#include "frame/frmmain.h"

#include "controls/screenstack.h"
#include "records/updatemark.h"
#include "tests/frame/notingmain.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QMainWindow>

Q_GLOBAL_STATIC(TestServer, server)

namespace {

/// A host with a database, before its main screen is shown.
struct Host
{
    Host()
    {
        window.setCentralWidget(new ScreenStack(&window));
        window.show();
        MainObj = &main;
        MdiForm = &window;
        Cnn->Execute("Create Table VerInfo (Ver Varchar(50))");
    }
    /// Shows the main screen whose start-up ends the run.
    void showInVain()
    {
        (new frmmain(&window))->openChild(&window);
        QCOMPARE(module.base.calls, QStringList("TerminateObj"));
    }

    TestModule module{*server};
    NotingMain main{module.base.calls};
    QMainWindow window;
    ScreenUser user;
};

class ThrowingBase : public NotingBase
{
public:
    void RepairData(QWidget *) override { throw FaultError(FaultNumber::General, "broken"); }
};

} // namespace

/// The main screen's start-up steps and its end, under its own launcher and inside the suite.
class TestFrmmain : public QObject
{
    Q_OBJECT

private slots:
    void startUp()
    {
        using Row = std::tuple<const char *, bool, bool, bool, bool, QStringList, QStringList>;
        const QStringList news("ShowWexaNews");
        const QStringList version("2.10.1");
        const std::vector<Row> rows{
            // damaged, new, older, cut off; calls, version
            {"in order", false, false, false, false, news, {}},
            {"new", false, true, false, false, news, version},
            {"older", false, false, true, false, news, version},
            {"cut off, unseen by the host", false, false, false, true, news, version},
            {"damaged", true, false, false, false, {"ChkRepDbFlag", "RepairData", "ShowWexaNews"}, {}}};
        for (const auto &[name, damaged, created, older, cutOff, calls, stored] : rows) {
            Host host;
            host.main.damaged = damaged;
            host.main.created = created;
            host.main.older = older;
            if (cutOff)
                Cnn->Execute(Sql("Create Table ", updateMark, " (Nm Varchar(20))"));
            auto *form = host.user.open<frmmain>(&host.window);
            form->activate(); // a second one starts nothing again
            QVERIFY2(host.module.base.calls == calls, name);
            QVERIFY2(host.module.rows("Select * from VerInfo") == stored, name);
            QVERIFY2(host.window.focusWidget() == host.user.find<QWidget>("cmdmaster"), name);
            QVERIFY2(host.user.enabled("cmdquit"), name);
        }
    }

    void failedUpdateEndsTheRun()
    {
        Host host;
        host.main.created = true;
        Cnn->setObserver([&](const QString &statement) {
            if (statement == u"Select * from Bill_Type")
                host.module.rows("Drop Table FBT_SalDet");
        });
        host.showInVain();
        QCOMPARE(host.user.said(), QStringList("Failed to Update Database Structure."));
        QCOMPARE(host.module.rows("Select * from VerInfo"), QStringList());
    }

    void unreadablePasswordKeepsEverybodyOut()
    {
        Host host;
        for (const char *statement :
             {"Create Table Kept (Val1 Varchar(10))", "Create View TableMP as Select * from Kept", "Drop Table Kept"})
            Cnn->Execute(statement);
        host.showInVain();
        QCOMPARE(host.user.said().size(), 1);
        QVERIFY(!host.window.isVisible());
    }

    void aStepThatThrowsCostsItself()
    {
        Host host;
        ThrowingBase base;
        base.AppPath = host.module.base.AppPath;
        Base = &base;
        host.main.damaged = true;
        host.main.unreadable = true;
        host.user.open<frmmain>(&host.window);
        QCOMPARE(host.module.base.calls, QStringList({"ChkRepDbFlag", "ShowWexaNews"}));
        QVERIFY(host.user.enabled("cmdquit"));
    }

    void insideTheSuiteEscapeLeavesAndLittleIsShown()
    {
        Host host;
        SuiteMode = true;
        host.user.open<frmmain>(&host.window);
        for (const char *name : {"cmdprod", "lbltime", "lbldate", "cmdbill", "cmdmiscinf"})
            QVERIFY2(!host.user.visible(name), name);
        const qsizetype before = host.module.base.calls.size();
        host.user.answers({Reply::Yes});
        host.user.key(Qt::Key_Escape);
        QCOMPARE(host.user.said().size(), 1);
        QVERIFY(host.module.base.calls.size() == before && host.window.isVisible());
    }
};

QTEST_MAIN(TestFrmmain)
#include "tst_frmmain.moc"
