#include "payments/challan.h"

#include "db/updater.h"
#include "suite/paybrowser.h"
#include "tests/payments/portaldouble.h"
#include "tests/support/employer.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

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
    return !session.isEmpty() && asked("GET", session + "/window").isString();
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
class SilentDriver : public QTcpServer
{
public:
    explicit SilentDriver(quint16 port) { listen(QHostAddress::LocalHost, port); }
    int serve()
    {
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *caller = nextPendingConnection();
            connect(caller, &QTcpSocket::readyRead, caller, [this, caller] {
                const QByteArray body = R"({"value":{"ready":true,"sessionId":"s"}})";
                if (caller->readAll().contains("HTTP/1.1") && m_left-- > 0)
                    caller->write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
                                  body);
            });
        });
        return QCoreApplication::exec();
    }

private:
    int m_left = qEnvironmentVariableIntValue("ANSWERS");
};

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
    void leave(ObjectTable::Factory factory) { m_objects.add("InternetExplorer.Application", factory); }
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
        QVERIFY(user.visible("Frame1"));
        QVERIFY(!user.visible("fampg"));
        const QString session = WatchedBrowser::session();
        QVERIFY(listensOnLoopbackOnly(QUrl(session).port()));
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
        const QStringList values = user.inPage(allValues).toString().split('|');
        QCOMPARE(values.value(7), QString("--"));
        QCOMPARE(values.value(13), QString());
        QCOMPARE(values.value(0), QString("AAACA1234A"));
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
        const QString noPortal = "Could not Open e-Tax Payment System.";
        const QString noChallan = "Could not Open Challan.";
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

    /// A driver that answers so often and no more.
    void driverThatFallsSilent()
    {
        struct Row
        {
            const char *answers;
            bool cancelled;
            QString message;
        };
        for (const Row &row : {Row{"1", true, {}}, Row{"3", false, "Could not Open e-Tax Payment System."}}) {
            qputenv("ANSWERS", row.answers);
            Desk user(*m_module);
            user.leave([] {
                return std::make_unique<PayBrowser>(WebDriverSettings{QCoreApplication::applicationFilePath(), {}, {}});
            });
            if (row.cancelled)
                QTimer::singleShot(1000, user.screen(), [&] { user.click("cmdcancelPg"); });
            QElapsedTimer since;
            since.start();
            user.pay();
            QVERIFY2(since.elapsed() < 12000, row.answers);
            QVERIFY2(user.said().join("") == row.message, row.answers);
            QVERIFY2(user.visible("Frame1"), row.answers);
        }
    }

    /// What each kind of driver is asked for, by the names that it knows.
    void asksInTheWordsOfTheDriver()
    {
        using Wanted = std::pair<const char *, const char *>;
        for (const auto &[program, options] :
             {Wanted{"/opt/chromedriver", "goog:chromeOptions"}, Wanted{"msedgedriver", "ms:edgeOptions"},
              Wanted{"/snap/bin/geckodriver", "moz:firefoxOptions"}}) {
            const QJsonObject all = DriverCapabilities(program, {{}, "/opt/browser", {}});
            const QJsonObject own = all.value(options).toObject();
            QVERIFY2(own.value("binary") == "/opt/browser" && all.size() == 4, program);
            // A name that the driver does not know would make it refuse the session.
            QVERIFY2(own.contains("detach") == (QString(options) != "moz:firefoxOptions"), program);
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
        std::clock_t spent = 0;
        user.atStage(opening, true, [&] {
            spent = std::clock();
            QTimer::singleShot(3000, user.screen(), [&] {
                spent = std::clock() - spent;
                user.click("cmdcancelPg");
            });
        });
        user.pay();
        QVERIFY2(spent < CLOCKS_PER_SEC, "waiting takes the processor");
    }

    void whatIsMissingIsSaid()
    {
        Desk user(*m_module);
        user.leave([] { return std::make_unique<PayBrowser>(WebDriverSettings{"/bin/false", {}, {}}); });
        user.pay();
        user.withoutBrowser();
        user.pay();
        QCOMPARE(user.said(), QStringList(2, "Could not open Internet Explorer Application."));
        user.leave([] { return std::make_unique<PayBrowser>(WebDriverSettings{"/nowhere/driver", {}, {}}); });
        user.pay();
        QVERIFY(user.said().value(0).startsWith("No driver of a browser was found."));
        m_module->base.SaveSettingINI("EPay", "portal", " ");
        user.pay();
        QVERIFY(user.said().value(0).startsWith("The address of the e-payment portal is not known."));
        QVERIFY(user.visible("Frame1"));
    }

    /// A program that hands a browser over and ends: this one, called with an argument.
    void browserOutlivesTheProgram()
    {
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(), {"--hand-over"});
        QVERIFY(program.waitForFinished(60000));
        const QString session = QString::fromUtf8(program.readAllStandardOutput()).section(' ', 0, 0);
        QVERIFY2(windowIsThere(session), qPrintable(session));
        asked("DELETE", session);
        asked("GET", session.section("/session", 0, 0) + "/shutdown");
    }
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (app.arguments().value(1).startsWith("--port="))
        return SilentDriver(app.arguments().value(1).section('=', 1).toUShort()).serve();
    if (app.arguments().value(1) == u"--hand-over") {
        PayBrowser browser(headless());
        if (browser.Open() == BrowserObject::Opened::Yes)
            QTextStream(stdout) << browser.driver().sessionUrl() << ' ' << Qt::flush;
        return 0;
    }
    TestEPayment test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_epayment.moc"
