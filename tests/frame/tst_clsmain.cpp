#include "frame/clsmain.h"

#include "context/errortail.h"
#include "controls/msgbox.h"
#include "controls/screen.h"
#include "frame/moduleentry.h"
#include "tests/support/testmodule.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QStatusBar>
#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

namespace {

class PlainMain : public MainObject
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
    void WriteToReport(const ReportRow &row) override { rows.push_back(row); }
    void ShowReport() override {}

    std::vector<ReportRow> rows;

private:
    int m_version;
};

} // namespace

/// The module's entry: which objects it makes, what it does without them.
class TestClsMain : public QObject
{
    Q_OBJECT

    Connection m_connection;
    QTemporaryDir m_app;
    ObjectTable m_objects;
    ScriptedAnswerer m_answerer;

    std::unique_ptr<SuiteObject> makeMain()
    {
        auto made = std::make_unique<PlainMain>();
        made->Cnn = &m_connection;
        made->AppPath = m_app.path();
        made->TmpPath = QStringLiteral("/scratch");
        return made;
    }

    static QList<Screen *> screens()
    {
        QList<Screen *> found;
        for (QWidget *widget : QApplication::allWidgets()) {
            if (auto *screen = qobject_cast<Screen *>(widget))
                found << screen;
        }
        return found;
    }

private slots:
    void init()
    {
        server->openFreshSchema(m_connection);
        QFile::remove(m_app.filePath(QStringLiteral("FBTLogger.log")));
        m_answerer.clear();
        SetAnswerer(&m_answerer);
        m_objects.add(QStringLiteral("WexaBase.ClsMain"), [] { return std::make_unique<NotingBase>(); });
        m_objects.add(QStringLiteral("PrjWexaMainO.ClsMain"), [this] { return makeMain(); });
        m_objects.add(QStringLiteral("PrjWexaRep.RepView"), [] { return std::make_unique<PlainReporter>(1); });
    }
    void cleanup() { SetAnswerer(nullptr); }

    void readyUnderItsOwnLauncher()
    {
        const std::unique_ptr<SuiteObject> mainObject = makeMain();
        QMainWindow window;
        window.statusBar()->setObjectName(QStringLiteral("TXStatusBar1"));
        ClsMain *module = CreateFbtModule(&m_objects);
        module->SetWexaMainObj(dynamic_cast<MainObject *>(mainObject.get()));
        module->SetMdiForm(&window);
        module->SetVerInf(QStringLiteral("2.10.1"));
        QVERIFY(module->LoadFBT(false));
        QCOMPARE(window.windowTitle(), QStringLiteral("Pelk FBT ver 2.10.1"));
        QCOMPARE(Cnn, &m_connection);
        QCOMPARE(Base->AppPath, m_app.path());
        QCOMPARE(Base->vTmpPath, QStringLiteral("/scratch"));
        QCOMPARE(Base->CnnObj, Cnn);
        QCOMPARE(Reporter->setcallfrom, QStringLiteral("FBT"));
        QCOMPARE(Reporter->StatusBarobj, window.statusBar());
        const ErrorTail tail(QStringLiteral("frm"), QStringLiteral("TEST"));
        Cnn->Execute("Delete from Nowhere");
        QCOMPARE(ErrText, QStringLiteral("frm\tTEST")); // faults reach the tail in force
        DestroyFbtModule(module);
        QVERIFY(Cnn == nullptr && Base == nullptr);
    }

    void insideTheSuiteItMakesItsOwnMainObject()
    {
        PlainMain hosts;
        QMainWindow window;
        window.setWindowTitle(QStringLiteral("Suite"));
        ClsMain module(&m_objects);
        module.SetWexaMainObj(&hosts);
        module.SetMdiForm(&window);
        QVERIFY(module.LoadFBT(true));
        QVERIFY(MainObj != nullptr && MainObj != &hosts);
        QCOMPARE(window.windowTitle(), QStringLiteral("Suite"));
    }

    void unloadedItLeavesNoScreenInTheHostsWindow()
    {
        QMainWindow window;
        auto module = std::make_unique<ClsMain>(&m_objects);
        module->SetMdiForm(&window);
        QVERIFY(module->LoadFBT(true));
        module->ShowMain();
        for (const char *button : {"cmdfbtdet", "cmdsettings"}) {
            for (Screen *screen : screens()) {
                if (auto *found = screen->findChild<QAbstractButton *>(QLatin1String(button)))
                    found->click();
            }
        }
        QVERIFY(screens().size() >= 3);
        module.reset();
        QCOMPARE(screens(), QList<Screen *>());
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("missing");
        QTest::addColumn<bool>("throws");
        QTest::addColumn<int>("reporterVersion");
        QTest::addColumn<QString>("message");
        const QString library = QStringLiteral("Library [PrjWexaMainO.Dll] not found.");
        const QString version = QStringLiteral("Incompatible version of \"Wexa Reporting Component\".");
        QTest::newRow("no main object") << "PrjWexaMainO.ClsMain" << false << 1 << library;
        QTest::newRow("main object throws") << "PrjWexaMainO.ClsMain" << true << 1 << library;
        QTest::newRow("no reporter") << "PrjWexaRep.RepView" << false << 1 << version;
        QTest::newRow("reporter throws") << "PrjWexaRep.RepView" << true << 1 << version;
        QTest::newRow("other reporter") << "" << false << 2 << version;
        QTest::newRow("no base object") << "WexaBase.ClsMain" << false << 1 << "";
        QTest::newRow("base object throws") << "WexaBase.ClsMain" << true << 1 << "";
    }
    void refuses()
    {
        QFETCH(QString, missing);
        QFETCH(bool, throws);
        QFETCH(int, reporterVersion);
        QFETCH(QString, message);
        m_objects.add(QStringLiteral("PrjWexaRep.RepView"),
                      [reporterVersion] { return std::make_unique<PlainReporter>(reporterVersion); });
        m_objects.remove(missing);
        if (throws)
            m_objects.add(missing, []() -> std::unique_ptr<SuiteObject> { throw 1; });
        ClsMain module(&m_objects);
        QVERIFY(!module.LoadFBT(true));
        QCOMPARE(m_answerer.texts().join(u'\n'), message);
    }

    void noDatabaseIsOneLogLine()
    {
        m_objects.add(QStringLiteral("PrjWexaMainO.ClsMain"), [this] {
            auto made = makeMain();
            dynamic_cast<MainObject *>(made.get())->Cnn = nullptr;
            return made;
        });
        ClsMain module(&m_objects);
        QVERIFY(!module.LoadFBT(true));
        QFile log(m_app.filePath(QStringLiteral("FBTLogger.log")));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QByteArrayList lines = log.readAll().trimmed().split('\n');
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines[0].endsWith("\tCLSMAIN\tLOADFBT"));
        QCOMPARE(m_answerer.texts(), QStringList());
    }
};

QTEST_MAIN(TestClsMain)
#include "tst_clsmain.moc"
