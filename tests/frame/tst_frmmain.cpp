#include "frame/frmmain.h"

#include "controls/msgbox.h"
#include "controls/pelkbtn.h"
#include "controls/screenstack.h"
#include "frame/frmLogin.h"
#include "frame/password.h"
#include "records/updatemark.h"
#include "tests/support/testmodule.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QTimer>

Q_GLOBAL_STATIC(TestServer, server)

namespace {

/// A main object that notes what it is asked, in the same list as the base object.
class NotingMain : public MainObject
{
public:
    explicit NotingMain(QStringList &calls)
        : m_calls(calls)
    {
    }
    bool damaged = false;
    bool created = false;
    bool older = false;

    [[nodiscard]] bool ChkRepDbFlag() const override
    {
        if (damaged)
            m_calls << QStringLiteral("ChkRepDbFlag");
        return damaged;
    }
    [[nodiscard]] bool CreateDbFlag() const override { return created; }
    [[nodiscard]] bool UpdateDbFlag() const override { return older; }
    void ShowWexaNews() override { m_calls << QStringLiteral("ShowWexaNews"); }
    void CheckForUpdates() override { m_calls << QStringLiteral("CheckForUpdates"); }
    void ShowAbout() override { m_calls << QStringLiteral("ShowAbout"); }
    void TerminateObj() override { m_calls << QStringLiteral("TerminateObj"); }

private:
    QStringList &m_calls;
};

class ThrowingBase : public NotingBase
{
public:
    void RepairData(QWidget *) override { throw FaultError(FaultNumber::General, QStringLiteral("broken")); }
};

} // namespace

/// The main screen's start-up steps and its end, under its own launcher and inside the suite.
class TestFrmmain : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestModule> m_module;
    std::unique_ptr<NotingMain> m_main;
    std::unique_ptr<QMainWindow> m_window;
    QPointer<frmmain> m_form;
    ScriptedAnswerer m_answerer;

    template<typename T>
    T *control(const char *name)
    {
        return m_form->findChild<T *>(QString::fromLatin1(name));
    }
    void show()
    {
        m_form = new frmmain(m_window.get());
        m_form->openChild(m_window.get());
    }

private slots:
    void init()
    {
        m_module = std::make_unique<TestModule>(*server);
        m_main = std::make_unique<NotingMain>(m_module->base.calls);
        m_window = std::make_unique<QMainWindow>();
        m_window->setCentralWidget(new ScreenStack(m_window.get()));
        m_window->show();
        MainObj = m_main.get();
        MdiForm = m_window.get();
        Cnn->Execute("Create Table VerInfo (Ver Varchar(50))");
        m_answerer.clear();
        SetAnswerer(&m_answerer);
    }
    void cleanup()
    {
        SetAnswerer(nullptr);
        delete m_form.data();
        m_window.reset();
        m_module.reset();
    }

    void startUp_data()
    {
        QTest::addColumn<bool>("damaged");
        QTest::addColumn<bool>("created");
        QTest::addColumn<bool>("older");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<QStringList>("version");
        const QStringList news{QStringLiteral("ShowWexaNews")};
        QTest::newRow("in order") << false << false << false << news << QStringList();
        QTest::newRow("new") << false << true << false << news << QStringList("2.10.1");
        QTest::newRow("older") << false << false << true << news << QStringList("2.10.1");
        QTest::newRow("cut off, unseen by the host") << false << false << false << news << QStringList("2.10.1");
        QTest::newRow("not ended in order")
            << true << false << false << QStringList{"ChkRepDbFlag", "RepairData", "ShowWexaNews"} << QStringList();
    }
    void startUp()
    {
        QFETCH(bool, damaged);
        QFETCH(bool, created);
        QFETCH(bool, older);
        m_main->damaged = damaged;
        m_main->created = created;
        m_main->older = older;
        if (QTest::currentDataTag() == QByteArray("cut off, unseen by the host"))
            Cnn->Execute(Sql("Create Table ", updateMark, " (Nm Varchar(20))"));
        show();
        QTEST(m_module->base.calls, "calls");
        QTEST(m_module->rows(QStringLiteral("Select * from VerInfo")), "version");
        QCOMPARE(m_answerer.texts(), QStringList());
        QVERIFY(control<PelkBtn>("cmdquit")->isEnabled());
        QCOMPARE(m_window->focusWidget(), control<QWidget>("cmdmaster"));
        m_form->activate(); // a second one starts nothing again
        QTEST(m_module->base.calls, "calls");
    }

    void failedUpdateEndsTheRun()
    {
        m_main->created = true;
        Cnn->setObserver([&](const QString &statement) {
            if (statement == u"Select * from Bill_Type")
                m_module->rows("Drop Table FBT_SalDet");
        });
        show();
        QCOMPARE(m_answerer.texts(), QStringList("Failed to Update Database Structure."));
        QCOMPARE(m_module->base.calls, QStringList("TerminateObj"));
        QCOMPARE(m_module->rows("Select * from VerInfo"), QStringList());
    }

    void aStepThatThrowsCostsItself()
    {
        ThrowingBase base;
        base.AppPath = m_module->base.AppPath;
        Base = &base;
        m_main->damaged = true;
        show();
        QCOMPARE(m_module->base.calls, (QStringList{"ChkRepDbFlag", "ShowWexaNews"}));
        QVERIFY(control<PelkBtn>("cmdquit")->isEnabled());
        QCOMPARE(m_module->logLines(), QStringList());
    }

    void cancelledPasswordEndsTheRun()
    {
        GETPASSWORD();
        StorePassword(QStringLiteral("KEY"));
        QTimer::singleShot(0, this, [] {
            for (QWidget *widget : QApplication::allWidgets()) {
                if (auto *login = qobject_cast<frmLogin *>(widget))
                    login->findChild<QPushButton *>(QStringLiteral("cmdcancel"))->click();
            }
        });
        show();
        QCOMPARE(m_module->base.calls, QStringList("TerminateObj"));
        QVERIFY(!m_window->isVisible());
    }

    void unreadablePasswordKeepsEverybodyOut()
    {
        for (const char *statement :
             {"Create Table Kept (Val1 Varchar(10))", "Create View TableMP as Select * from Kept", "Drop Table Kept"})
            Cnn->Execute(statement);
        show();
        QCOMPARE(m_answerer.texts().size(), 1);
        QCOMPARE(m_module->base.calls, QStringList("TerminateObj"));
        QVERIFY(!m_window->isVisible());
    }

    void quit_data()
    {
        QTest::addColumn<bool>("suite");
        QTest::addColumn<QList<int>>("replies"); // as Reply
        QTest::addColumn<int>("questions");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<bool>("windowStays");
        const int yes = int(Reply::Yes);
        const int no = int(Reply::No);
        QTest::newRow("no") << false << QList<int>{no} << 1 << QStringList() << true;
        QTest::newRow("without backup") << false << QList<int>{yes, no} << 2 << QStringList("TerminateObj") << false;
        QTest::newRow("with backup") << false << QList<int>{yes, yes} << 2 << QStringList{"BackUp", "TerminateObj"}
                                     << false;
        QTest::newRow("inside the suite") << true << QList<int>{yes} << 1 << QStringList() << true;
    }
    void quit()
    {
        QFETCH(bool, suite);
        QFETCH(QList<int>, replies);
        SuiteMode = suite;
        show();
        m_module->base.calls.clear();
        for (const int reply : replies)
            m_answerer.answer(Reply(reply));
        QTest::keyClick(control<PelkBtn>("cmdmaster"), Qt::Key_Escape); // asks inside the suite only
        if (!suite)
            control<PelkBtn>("cmdquit")->click();
        QTEST(static_cast<int>(m_answerer.records().size()), "questions");
        QCOMPARE(m_answerer.records().constFirst().box.title, QStringLiteral("Sure to Quit..."));
        if (m_answerer.records().size() > 1)
            QCOMPARE(m_answerer.records().constLast().box.defaultButton, 2);
        QTEST(m_module->base.calls, "calls");
        QTEST(m_window->isVisible(), "windowStays");
    }

    void insideTheSuiteWithoutClockAndAbout()
    {
        SuiteMode = true;
        show();
        for (const char *name : {"cmdprod", "lbltime", "lbldate"})
            QVERIFY2(!control<QWidget>(name)->isVisible(), name);
        for (const char *name : {"cmdbill", "cmdmiscinf"}) // nothing is registered for them
            QVERIFY2(!control<QWidget>(name)->isVisible(), name);
    }
};

QTEST_MAIN(TestFrmmain)
#include "tst_frmmain.moc"
