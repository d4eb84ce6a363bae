#include "frame/clsmain.h"

#include "context/errortail.h"
#include "controls/msgbox.h"
#include "controls/screen.h"
#include "frame/moduleentry.h"
#include "records/change.h"
#include "tests/frame/notingmain.h"
#include "tests/support/testmodule.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

namespace {

class PlainReporter : public ReportObject
{
public:
    explicit PlainReporter(int version)
        : m_version(version)
    {
    }
    [[nodiscard]] int MyDllVersion() const override { return m_version; }
    void NewReport() override {}
    void printtext(const QString &) override {}
    void CreateTable(int, int) override {}
    void WriteToReport(const ReportRow &) override {}
    void ShowReport() override {}

private:
    int m_version;
};

QList<Screen *> screens()
{
    QList<Screen *> found;
    for (QWidget *widget : QApplication::allWidgets()) {
        if (auto *screen = qobject_cast<Screen *>(widget))
            found << screen;
    }
    return found;
}

} // namespace

/// The module's entry: which objects it makes, what it does without them.
class TestClsMain : public QObject
{
    Q_OBJECT

    Connection m_connection;
    QTemporaryDir m_app;
    QStringList m_calls;
    ObjectTable m_objects;
    ScriptedAnswerer m_answerer;

    std::unique_ptr<SuiteObject> makeMain(Connection *connection)
    {
        auto made = std::make_unique<NotingMain>(m_calls);
        made->Cnn = connection;
        made->AppPath = m_app.path();
        made->TmpPath = "/scratch";
        return made;
    }
    void registerObjects(int reporterVersion)
    {
        m_objects.add("WexaBase.ClsMain", [] { return std::make_unique<NotingBase>(); });
        m_objects.add("PrjWexaMainO.ClsMain", [this] { return makeMain(&m_connection); });
        m_objects.add("PrjWexaRep.RepView",
                      [reporterVersion] { return std::make_unique<PlainReporter>(reporterVersion); });
    }

private slots:
    void init()
    {
        server->openFreshSchema(m_connection);
        SetAnswerer(&m_answerer);
        registerObjects(1);
    }
    void cleanup() { SetAnswerer(nullptr); }

    void readyUnderItsOwnLauncher()
    {
        const std::unique_ptr<SuiteObject> mainObject = makeMain(&m_connection);
        QMainWindow window;
        window.statusBar()->setObjectName("TXStatusBar1");
        ClsMain *module = CreateFbtModule(&m_objects);
        module->SetWexaMainObj(dynamic_cast<MainObject *>(mainObject.get()));
        module->SetMdiForm(&window);
        module->SetVerInf("2.10.1");
        QVERIFY(module->LoadFBT(false));
        QCOMPARE(window.windowTitle(), QString("Pelk FBT ver 2.10.1"));
        QCOMPARE(QStringList({Base->AppPath, Base->vTmpPath, Reporter->setcallfrom}),
                 QStringList({m_app.path(), "/scratch", "FBT"}));
        QVERIFY(Cnn == &m_connection && Base->CnnObj == Cnn && Reporter->StatusBarobj == window.statusBar());
        const ErrorTail tail("frm", "TEST");
        Cnn->Execute("Delete from Nowhere");
        QCOMPARE(ErrText, QString("frm\tTEST")); // faults reach the tail in force
        QVERIFY(window.statusBar()->currentMessage().startsWith("Not deleted: "));
        WriteOne(Cnn, "Create Table T (N Int)"); // of the same action
        QVERIFY(!window.statusBar()->currentMessage().isEmpty());
        QCoreApplication::processEvents();
        WriteOne(Cnn, "Insert into T Values (1)");
        QCOMPARE(window.statusBar()->currentMessage(), QString());
        DestroyFbtModule(module);
        QVERIFY(Cnn == nullptr && Base == nullptr);
    }

    void insideTheSuiteItLeavesTheHostAsItWas()
    {
        NotingMain hosts(m_calls);
        QMainWindow window;
        window.setWindowTitle("Suite");
        auto module = std::make_unique<ClsMain>(&m_objects);
        module->SetWexaMainObj(&hosts);
        module->SetMdiForm(&window);
        QVERIFY(module->LoadFBT(true));
        QVERIFY(MainObj != nullptr && MainObj != &hosts);
        QCOMPARE(window.windowTitle(), QString("Suite"));
        module->ShowMain();
        for (const char *button : {"cmdfbtdet", "cmdsettings"}) {
            for (Screen *screen : screens()) {
                if (auto *found = screen->findChild<QAbstractButton *>(QLatin1String(button)))
                    found->click();
            }
        }
        QVERIFY(screens().size() >= 3);
        // A host without a status bar: the screen in front tells what was not saved.
        const ErrorTail tail("frm", "TEST");
        Cnn->Execute("Insert into Nowhere Values (1)");
        const auto *strip = Screen::inFront()->findChild<QLabel *>("unreadStrip");
        QVERIFY(strip != nullptr && strip->text().startsWith("Not saved: "));
        module.reset();
        QCOMPARE(screens(), QList<Screen *>());
    }

    void refuses()
    {
        const QString library("Library [PrjWexaMainO.Dll] not found.");
        const QString version("Incompatible version of \"Wexa Reporting Component\".");
        using Row = std::tuple<const char *, bool, int, QString>; // object, throws; version of the reporter; message
        const std::vector<Row> rows{{"PrjWexaMainO.ClsMain", false, 1, library},
                                    {"PrjWexaMainO.ClsMain", true, 1, library},
                                    {"PrjWexaRep.RepView", false, 1, version},
                                    {"PrjWexaRep.RepView", true, 1, version},
                                    {"", false, 2, version},
                                    {"WexaBase.ClsMain", false, 1, ""},
                                    {"WexaBase.ClsMain", true, 1, ""}};
        for (const auto &[missing, throws, reporterVersion, message] : rows) {
            m_answerer.clear();
            registerObjects(reporterVersion);
            m_objects.remove(missing);
            if (throws)
                m_objects.add(missing, []() -> std::unique_ptr<SuiteObject> { throw 1; });
            ClsMain module(&m_objects);
            QVERIFY2(!module.LoadFBT(true) && m_answerer.texts().join(u'\n') == message, missing);
        }
        m_answerer.clear();
    }

    void noDatabaseIsOneLogLine()
    {
        QFile log(m_app.filePath("FBTLogger.log"));
        log.remove();
        m_objects.add("PrjWexaMainO.ClsMain", [this] { return makeMain(nullptr); });
        ClsMain module(&m_objects);
        QVERIFY(!module.LoadFBT(true));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QByteArrayList lines = log.readAll().trimmed().split('\n');
        QVERIFY(lines.size() == 1 && lines[0].endsWith("\tCLSMAIN\tLOADFBT"));
        QCOMPARE(m_answerer.texts(), QStringList());
    }
};

QTEST_MAIN(TestClsMain)
#include "tst_clsmain.moc"
