#include "payments/challan.h"

#include "db/updater.h"
#include "suite/paybrowser.h"
#include "tests/payments/portaldouble.h"
#include "tests/support/employer.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QNetworkReply>
#include <QProcess>

#include <csignal>

namespace {

/// A browser for a machine without a display. Chromium's own sandbox refuses to run for root, which tests often are.
WebDriverSettings headless()
{
    return {{}, {}, {"--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage"}};
}

/// What a driver answers, by another way in than the program's own; undefined when it is gone.
QJsonValue asked(const QByteArray &verb, const QString &url)
{
    QNetworkAccessManager net;
    QNetworkRequest request{QUrl(url)};
    request.setTransferTimeout(10000);
    const std::unique_ptr<QNetworkReply> reply(net.sendCustomRequest(request, verb));
    QEventLoop wait;
    QObject::connect(reply.get(), &QNetworkReply::finished, &wait, &QEventLoop::quit);
    wait.exec();
    return reply->error() == QNetworkReply::NoError ? QJsonDocument::fromJson(reply->readAll()).object().value("value")
                                                    : QJsonValue(QJsonValue::Undefined);
}

bool listensOnLoopbackOnly(int port)
{
    QFile sockets("/proc/net/tcp");
    const QString all = sockets.open(QIODevice::ReadOnly) ? QString::fromUtf8(sockets.readAll()) : QString();
    const QString end = ":" + QString::number(port, 16).toUpper().rightJustified(4, '0') + " 00000000:0000";
    return all.contains("0100007F" + end) && !all.contains("00000000" + end);
}

bool windowIsThere(const QString &session)
{
    return !session.isEmpty() && !asked("GET", session + "/window/handles").toArray().isEmpty();
}

/// The registered browser, which the test can look at beside the panel that drives it.
class WatchedBrowser : public PayBrowser
{
public:
    static inline WatchedBrowser *last = nullptr;
    static inline int maximized = 0;

    WatchedBrowser()
        : PayBrowser(headless())
    {
        last = this;
    }
    ~WatchedBrowser() override
    {
        if (last == this)
            last = nullptr;
    }
    void Maximize() override
    {
        ++maximized;
        PayBrowser::Maximize();
    }
    [[nodiscard]] static QString session() { return last == nullptr ? QString() : last->driver().sessionUrl(); }
    [[nodiscard]] static StartedProcess program() { return last->driver().driverProcess(); }
};

/// A driver that answers only as often as the environment says, and is silent from then on.
int serveAsSilentDriver(quint16 port)
{
    QTcpServer driver;
    int left = qEnvironmentVariableIntValue("ANSWERS");
    QObject::connect(&driver, &QTcpServer::newConnection, [&] {
        QTcpSocket *caller = driver.nextPendingConnection();
        QObject::connect(caller, &QTcpSocket::readyRead, [&left, caller] {
            if (caller->readAll().contains("HTTP/1.1") && left-- > 0)
                caller->write("HTTP/1.1 200 OK\r\nContent-Length: 40\r\n\r\n"
                              R"({"value":{"ready":true,"sessionId":"s"}})");
        });
    });
    driver.listen(QHostAddress::LocalHost, port);
    return QCoreApplication::exec();
}

/// The screen of a company in front of a user, with the portal's double and a real browser at hand.
class Desk : public ScreenUser
{
public:
    explicit Desk(TestModule &module, const QString &state = "maharashtra")
    {
        for (const char *table : {"FBT_Info", "FBT_Challan"})
            module.connection.Execute(Sql("Delete from ", table));
        module.connection.Execute(
            Sql("Insert into FBT_Info Values ('A1','ACME \"LTD\" </script>','AAACA1234A','12','MILL HOUSE','WEST "
                "ROAD','FORT','MUMBAI','",
                state, "','400001','022','111',16,'0','7','','','','a@b.example','0','','','11111')"));
        module.connection.Execute("Insert into FBT_Challan Values ('A1',2008,0,1,'Self Assessment Tax "
                                  "(300)','20/09/2008',5,0,0,0,0,0,5,'','','','','',0,0)");
        module.base.code = "A1";
        module.base.TYear = 2008;
        module.base.status = 16;
        module.base.SaveSettingINI("EPay", "portal", portal.address() + "/");
        m_objects.add("InternetExplorer.Application", [] { return std::make_unique<WatchedBrowser>(); });
        SuiteObjects = &m_objects;
        WatchedBrowser::maximized = 0;
        open<Challan>();
    }
    ~Desk()
    {
        if (WatchedBrowser::last != nullptr)
            WatchedBrowser::last->Close();
        SuiteObjects = nullptr;
    }

    void pay() { click("cmdePay"); }
    /// Does something once the run shows these words, and has a session or not yet.
    void atStage(const QString &words, bool session, const std::function<void()> &act)
    {
        auto *poll = new QTimer(screen());
        QObject::connect(poll, &QTimer::timeout, poll, [this, poll, words, session, act] {
            if (find<QLabel>("lblpg")->text() != words || WatchedBrowser::session().isEmpty() == session)
                return;
            poll->stop();
            act();
        });
        poll->start(50);
    }
    [[nodiscard]] QJsonValue inPage(const QString &script) const
    {
        QJsonValue value;
        WatchedBrowser::last->Run(script, {}, &value);
        return value;
    }
    void leave(const WebDriverSettings &driver)
    {
        m_objects.add("InternetExplorer.Application", [driver] { return std::make_unique<PayBrowser>(driver); });
    }
    void withoutBrowser() { m_objects.remove("InternetExplorer.Application"); }

    PortalDouble portal;

private:
    ObjectTable m_objects;
};

const QString allValues =
    "var f = document.forms['tax283'], r = function (n) { var c = document.querySelector('input[name=' + n + "
    "']:checked'); return c ? c.value : ''; };"
    "return [f.PAN.value, f['Name'].value, f.Add_Line1.value, f.Add_Line2.value, f.Add_Line3.value, f.Add_Line4.value,"
    " f.Add_Line5.value, f.Add_State.value, f.Add_PIN.value, f.Add_EMAIL.value, f.Add_MOBILE.value, f.AssessYear.value,"
    " r('MajorHead'), r('MinorHead'), document.activeElement.name].join('|');";

const QString connecting = "Connecting to e-Tax Payment System ..........";
const QString noPortal = "Could not Open e-Tax Payment System.";
const QString noChallan = "Could not Open Challan.";
const QString opening = "Opening CHALLAN NO./ITNS 283 ..........";

} // namespace

/// E-payment in a real browser, on a double of the portal.
class TestEPayment : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestServer> m_server;
    std::unique_ptr<TestModule> m_module;
    using Manner = PortalDouble::Manner;

private slots:
    void initTestCase()
    {
        m_server = std::make_unique<TestServer>();
        m_module = std::make_unique<TestModule>(*m_server);
        UpdateDatabase(Cnn);
        QVERIFY2(!DriverProgram({}).isEmpty(), "a driver of a browser is needed (chromium-driver)");
    }
    void cleanupTestCase()
    {
        m_module.reset();
        m_server.reset();
    }

    void fillsTheForm()
    {
        Desk user(*m_module);
        user.portal.startPage = user.portal.challanPage = Manner::Slow;
        user.pay();
        QCOMPARE(user.inPage(allValues).toString(),
                 QString("AAACA1234A|ACME \"LTD\" </script>|12|MILL HOUSE|WEST ROAD|FORT|MUMBAI|Maharashtra|400001|"
                         "a@b.example||2008-09|0026|300|PAN"));
        QCOMPARE(WatchedBrowser::maximized, 1);
        const QString session = WatchedBrowser::session();
        QVERIFY(listensOnLoopbackOnly(QUrl(session).port()));
        QVERIFY(user.inPage("return Boolean(window.open('about:blank'));").toBool()); // as a bank's page does
        asked("DELETE", session + "/window");
        user.answers({Reply::No}); // a second run leaves all as it is
        user.pay();
        QCOMPARE(user.said().size(), 1);
        QVERIFY(windowIsThere(session));
        user.answers({Reply::Yes});
        user.pay();
        user.said();
        QVERIFY(!windowIsThere(session));
        QVERIFY(windowIsThere(WatchedBrowser::session()));
    }

    void unknownStateAndNoType()
    {
        Desk user(*m_module, "BOMBAY");
        user.choose("Combo1", -1);
        user.pay();
        QCOMPARE(user.inPage(allValues).toString().section('|', 7),
                 QString("--|400001|a@b.example||2008-09|0026||PAN"));
    }

    /// What ends a run in each of its stages, and what becomes of the browser.
    void endsInEachStage()
    {
        enum Stage { Starting, First, Second };
        struct Row
        {
            const char *name;
            Stage stage;
            std::function<void(Desk &)> act;
            QString message;
            bool stays;
        };
        const auto back = [](Desk &user) { user.click("cmdcancelPg"); };
        const auto stop = [](Desk &user) { user.click("cmdstoppg"); };
        const auto closeWindow = [](Desk &) { asked("DELETE", WatchedBrowser::session() + "/window"); };
        const auto killDriver = [](Desk &) { ::kill(pid_t(WatchedBrowser::program().pid), SIGKILL); };
        const auto killBrowser = [](Desk &) {
            ::kill(pid_t(ChildrenOf(WatchedBrowser::program()).value(0).pid), SIGKILL);
        };
        const std::vector<Row> rows{{"back at once", Starting, back, {}, false},
                                    {"back", First, back, {}, false},
                                    {"back later", Second, back, {}, false},
                                    {"escape", Second, [](Desk &user) { user.key(Qt::Key_Escape); }, {}, false},
                                    {"screen closed", First, [](Desk &user) { user.screen()->Unload(); }, {}, false},
                                    {"stop at once", Starting, stop, {}, true},
                                    {"stop", First, stop, {}, true},
                                    {"stop later", Second, stop, {}, true},
                                    {"by hand", First, closeWindow, noPortal, false},
                                    {"by hand later", Second, closeWindow, noChallan, false},
                                    {"driver killed", First, killDriver, noPortal, false},
                                    {"driver killed later", Second, killDriver, noChallan, false},
                                    {"browser killed", Second, killBrowser, noChallan, false}};
        for (const Row &row : rows) {
            Desk user(*m_module);
            (row.stage == Second ? user.portal.challanPage : user.portal.startPage) = Manner::NeverAnswers;
            QString session;
            QList<StartedProcess> browser;
            QElapsedTimer since;
            user.atStage(row.stage == Second ? opening : connecting, row.stage != Starting, [&] {
                session = WatchedBrowser::session();
                browser = ChildrenOf(WatchedBrowser::program());
                since.start();
                row.act(user);
            });
            user.pay();
            QVERIFY2(since.isValid() && since.elapsed() < 10000, row.name);
            QVERIFY2(user.said() == (row.message.isEmpty() ? QStringList() : QStringList(row.message)), row.name);
            if (row.stage == Starting)
                session = WatchedBrowser::session();
            QVERIFY2(windowIsThere(session) == row.stays, row.name);
            QTRY_VERIFY2(row.stays || browser.isEmpty() || !IsRunning(browser.first()), row.name);
            QVERIFY2(WatchedBrowser::maximized == (row.stays ? 1 : 0), row.name);
            QVERIFY2(user.visible("Frame1") && user.focus() == "cmdePay", row.name);
        }
    }

    void driverThatFallsSilent()
    {
        for (const char *answers : {"1", "3"}) { // while the browser starts, while the first page loads
            qputenv("ANSWERS", answers);
            Desk user(*m_module);
            user.leave({QCoreApplication::applicationFilePath(), {}, {}});
            if (*answers == '1')
                QTimer::singleShot(1000, user.screen(), [&] { user.click("cmdcancelPg"); });
            QElapsedTimer since;
            since.start();
            user.pay();
            QVERIFY2(since.elapsed() < 12000 && user.visible("Frame1"), answers);
            QCOMPARE(user.said(), *answers == '1' ? QStringList() : QStringList(noPortal));
        }
    }

    void portalThatIsNotThere()
    {
        Desk user(*m_module);
        user.portal.challanPage = Manner::CannotFind;
        user.pay();
        QCOMPARE(user.said(), QStringList("Failed"));
        user.portal.close(); // the browser itself says so
        user.pay();
        QCOMPARE(user.said(), QStringList("Failed"));
    }

    void pageWithoutTheFormIsWaitedForInPeace()
    {
        Desk user(*m_module);
        user.portal.challanPage = Manner::WithoutForm;
        std::clock_t from = 0;
        user.atStage(opening, true, [&] {
            from = std::clock();
            QTimer::singleShot(3000, user.screen(), [&] { user.click("cmdcancelPg"); });
        });
        user.pay();
        QVERIFY2(std::clock() - from < CLOCKS_PER_SEC, "waiting takes the processor");
    }

    void whatIsMissingIsSaid()
    {
        Desk user(*m_module);
        user.leave({"/bin/false", {}, {}});
        user.pay();
        user.withoutBrowser();
        user.pay();
        QCOMPARE(user.said(), QStringList(2, "Could not open Internet Explorer Application."));
        user.leave({"/nowhere/driver", {}, {}});
        user.pay();
        QVERIFY(user.said().value(0).startsWith("No driver of a browser was found."));
        for (const char *address : {" ", "127.0.0.1:80", "file:///etc"}) {
            m_module->base.SaveSettingINI("EPay", "portal", address);
            user.pay();
            QVERIFY2(user.said().value(0).startsWith("The address of the e-payment portal is not known."), address);
        }
    }

    /// A program that hands a browser over and ends: this one, called with an argument.
    void browserOutlivesTheProgram()
    {
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(), {"--hand-over"});
        QVERIFY(program.waitForFinished(60000));
        const QString said = QString::fromUtf8(program.readAllStandardOutput());
        const QString session = said.section(' ', 0, 0);
        QVERIFY2(windowIsThere(session), qPrintable(session));
        asked("DELETE", session);
        QTRY_VERIFY(QDir(said.section(' ', 1)).removeRecursively());
        asked("GET", session.section("/session", 0, 0) + "/shutdown");
    }
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (app.arguments().value(1).startsWith("--port="))
        return serveAsSilentDriver(app.arguments().value(1).section('=', 1).toUShort());
    if (app.arguments().value(1) == u"--hand-over") {
        PayBrowser browser(headless());
        if (browser.Open() == BrowserObject::Opened::Yes)
            QTextStream(stdout) << browser.driver().sessionUrl() << ' ' << browser.driver().profile() << Qt::flush;
        return 0;
    }
    TestEPayment test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_epayment.moc"
