#include "platform/webdriver.h"

#include "platform/browserprofile.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr int startMs = 10000;   // of a driver
constexpr int statusMs = 2000;   // of its first answer
constexpr int sessionMs = 60000; // of a browser, which may be updating itself
constexpr int breakOffMs = 5000; // of a browser that is no longer wanted
constexpr int commandMs = 8000;  // longer than a script may take
constexpr int scriptMs = 1000;   // also how long a look at a page that is still to come takes
constexpr int endMs = 3000;      // of a browser that was told to end
constexpr int pauseMs = 50;

enum class Kind { Chrome, Edge, Firefox };

Kind kindOf(const QString &program)
{
    const QString name = QFileInfo(program).fileName();
    if (name.contains(QStringLiteral("gecko"), Qt::CaseInsensitive))
        return Kind::Firefox;
    return name.contains(QStringLiteral("edge"), Qt::CaseInsensitive) ? Kind::Edge : Kind::Chrome;
}

/// A port that nobody listens on now.
quint16 freePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost) ? probe.serverPort() : quint16(0);
}

void pause(int milliseconds)
{
    QEventLoop wait;
    QTimer::singleShot(milliseconds, &wait, &QEventLoop::quit);
    wait.exec();
}

/// What an answer's error says of the window. Some drivers tell a browser that was closed only in the words after it.
WebDriver::Outcome outcomeOf(const QJsonObject &error)
{
    const QString name = error.value(QStringLiteral("error")).toString();
    const QString words = error.value(QStringLiteral("message")).toString();
    const bool gone = name == u"no such window" || name == u"invalid session id" ||
                      words.contains(QStringLiteral("not reachable")) ||
                      words.contains(QStringLiteral("disconnected")) ||
                      words.contains(QStringLiteral("Failed to decode response from marionette"));
    return gone ? WebDriver::Outcome::Gone : WebDriver::Outcome::Refused;
}

/// Without an object the answer is not that of a driver.
WebDriver::Answer answerOf(const QJsonDocument &body, bool done)
{
    if (!body.isObject())
        return {WebDriver::Outcome::Gone, {}};
    const QJsonValue value = body.object().value(QStringLiteral("value"));
    if (done)
        return {WebDriver::Outcome::Done, value};
    return {outcomeOf(value.toObject()), value};
}

} // namespace

QString DriverProgram(const QString &named)
{
    if (!named.isEmpty())
        return QStandardPaths::findExecutable(named);
    for (const char *driver : {"chromedriver", "msedgedriver", "geckodriver"}) {
        QString program = QStandardPaths::findExecutable(QString::fromLatin1(driver));
        if (!program.isEmpty())
            return program;
    }
    return {};
}

QJsonObject DriverCapabilities(const QString &program, const WebDriverSettings &settings, const QString &profile)
{
    const Kind kind = kindOf(program);
    QStringList arguments = settings.arguments;
    if (kind != Kind::Firefox && !profile.isEmpty()) // that one's driver keeps and clears a profile of its own
        arguments << QStringLiteral("--user-data-dir=") + profile;
    QJsonObject browser{{QStringLiteral("args"), QJsonArray::fromStringList(arguments)}};
    if (!settings.browser.isEmpty())
        browser.insert(QStringLiteral("binary"), settings.browser);
    if (kind != Kind::Firefox)
        browser.insert(QStringLiteral("detach"), true); // the window stays, whatever becomes of its driver
    const QString key = kind == Kind::Firefox ? QStringLiteral("moz:firefoxOptions")
                        : kind == Kind::Edge  ? QStringLiteral("ms:edgeOptions")
                                              : QStringLiteral("goog:chromeOptions");
    // A dialog of the page is for the user to answer, and a page that never comes is for the user to leave.
    return {{QStringLiteral("pageLoadStrategy"), QStringLiteral("none")},
            {QStringLiteral("unhandledPromptBehavior"), QStringLiteral("ignore")},
            {QStringLiteral("timeouts"), QJsonObject{{QStringLiteral("script"), scriptMs}}},
            {key, browser}};
}

WebDriver::WebDriver(WebDriverSettings settings, QObject *parent)
    : QObject(parent)
    , m_settings(std::move(settings))
{
    m_net.setProxy(QNetworkProxy::NoProxy);
}

WebDriver::~WebDriver()
{
    if (m_browser.isEmpty() || isBrowserRunning())
        return;
    stopDriver();
    RemoveProfile(m_profile);
}

bool WebDriver::open()
{
    const QString program = DriverProgram(m_settings.driver);
    m_interrupted = false;
    m_reason = QStringLiteral("the driver %1 could not be started").arg(program);
    if (program.isEmpty() || !startDriver(program))
        return false;
    m_reason = QStringLiteral("the driver %1 does not answer").arg(program);
    RemoveOldProfiles();
    m_profile = NewProfile();
    if (waitForDriver() && !m_interrupted && startSession(program) && !m_interrupted)
        return true;
    close();
    return false;
}

bool WebDriver::startDriver(const QString &program)
{
    const quint16 port = freePort();
    if (port == 0)
        return false;
    QProcess process;
    process.setProgram(program);
    QStringList arguments{QStringLiteral("--port=%1").arg(port)};
    if (kindOf(program) == Kind::Firefox)
        arguments << QStringLiteral("--host=127.0.0.1");
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    m_base = QStringLiteral("http://127.0.0.1:%1").arg(port);
    qint64 pid = 0;
    const bool started = process.startDetached(&pid);
    m_driver = ProcessOf(pid);
    return started;
}

bool WebDriver::waitForDriver()
{
    QElapsedTimer since;
    for (since.start(); since.elapsed() < startMs && !m_interrupted && IsRunning(m_driver); pause(pauseMs)) {
        const Answer status = send("GET", QStringLiteral("/status"), {}, statusMs);
        if (status.outcome == Outcome::Done && status.value.toObject().value(QStringLiteral("ready")).toBool())
            return IsRunning(m_driver); // and not another one that took its port
    }
    return false;
}

bool WebDriver::startSession(const QString &program)
{
    const QJsonObject wanted{
        {QStringLiteral("capabilities"),
         QJsonObject{{QStringLiteral("alwaysMatch"), DriverCapabilities(program, m_settings, m_profile)}}}};
    const Answer session = send("POST", QStringLiteral("/session"), wanted, sessionMs);
    const QString id = session.value.toObject().value(QStringLiteral("sessionId")).toString();
    m_session = id.isEmpty() ? QString() : QStringLiteral("/session/") + id;
    m_browser = ChildrenOf(m_driver);
    constexpr int longEnough = 500;
    if (session.outcome != Outcome::Done && m_answered)
        m_reason = session.value.toObject().value(QStringLiteral("message")).toString().left(longEnough);
    return !id.isEmpty();
}

/// Without an answer of the driver's the browser itself tells.
bool WebDriver::isOpen()
{
    if (m_session.isEmpty())
        return false;
    const Answer windows = send("GET", m_session + QStringLiteral("/window/handles"), {}, commandMs);
    if (windows.outcome == Outcome::Done)
        return !windows.value.toArray().isEmpty();
    return windows.outcome == Outcome::Refused || (!m_answered && isBrowserRunning());
}

bool WebDriver::isBrowserRunning() const
{
    return std::any_of(m_browser.begin(), m_browser.end(), IsRunning);
}

WebDriver::Answer WebDriver::navigate(const QString &url)
{
    return command(QStringLiteral("/url"), {{QStringLiteral("url"), url}});
}

WebDriver::Answer WebDriver::execute(const QString &script, const QJsonArray &arguments)
{
    m_interrupted = false;
    Answer answer = command(QStringLiteral("/execute/sync"),
                            {{QStringLiteral("script"), script}, {QStringLiteral("args"), arguments}});
    if (answer.outcome == Outcome::Refused && !m_interrupted && hasLostWindow())
        answer.outcome = Outcome::Gone;
    return answer;
}

/// Drivers have many words for a page that went away under a script, but one for a window that is no longer there.
bool WebDriver::hasLostWindow()
{
    return send("GET", m_session + QStringLiteral("/window"), {}, commandMs).outcome == Outcome::Gone;
}

WebDriver::Answer WebDriver::maximize()
{
    return command(QStringLiteral("/window/maximize"));
}

void WebDriver::close()
{
    if (!m_session.isEmpty() && m_answered)
        send("DELETE", m_session, {}, commandMs);
    if (!m_answered || m_session.isEmpty())
        endBrowser(); // nobody else will
    m_session.clear();
    stopDriver();
    removeProfile();
    m_browser.clear();
    m_profile.clear();
}

/// Helpers of the browser may live a moment longer and still write, so it must stay away for a while.
void WebDriver::removeProfile()
{
    constexpr int settled = 8;
    int away = m_profile.isEmpty() ? settled : 0;
    QElapsedTimer since;
    for (since.start(); since.elapsed() < endMs && away < settled; pause(pauseMs)) {
        if (!isBrowserRunning())
            RemoveProfile(m_profile);
        away = QFileInfo::exists(m_profile) ? 0 : away + 1;
    }
}

void WebDriver::endBrowser()
{
    for (const StartedProcess &process : std::as_const(m_browser))
        EndProcess(process);
}

void WebDriver::stopDriver()
{
    EndProcess(m_driver, m_answered);
    m_driver = {};
}

/// A start that is broken off at once could leave a browser without its driver.
void WebDriver::interrupt()
{
    m_interrupted = true;
    if (QNetworkReply *reply = m_reply.data())
        QTimer::singleShot(m_session.isEmpty() ? breakOffMs : 0, reply, &QNetworkReply::abort);
}

WebDriver::Answer WebDriver::command(const QString &path, const QJsonObject &body)
{
    return m_session.isEmpty() ? Answer{} : send("POST", m_session + path, body, commandMs);
}

WebDriver::Answer WebDriver::send(const QByteArray &verb, const QString &path, const QJsonObject &body,
                                  int milliseconds)
{
    QNetworkRequest request(QUrl(m_base + path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    const QByteArray content = verb == "POST" ? QJsonDocument(body).toJson(QJsonDocument::Compact) : QByteArray();
    const std::unique_ptr<QNetworkReply> reply(m_net.sendCustomRequest(request, verb, content));
    m_reply = reply.get();
    QEventLoop wait;
    connect(reply.get(), &QNetworkReply::finished, &wait, &QEventLoop::quit);
    QTimer::singleShot(milliseconds, &wait, &QEventLoop::quit);
    if (!reply->isFinished())
        wait.exec();
    if (reply->error() == QNetworkReply::OperationCanceledError)
        return {Outcome::Refused, {}};
    const QJsonDocument answer = reply->isFinished() ? QJsonDocument::fromJson(reply->readAll()) : QJsonDocument();
    m_answered = answer.isObject();
    return answerOf(answer, reply->error() == QNetworkReply::NoError);
}
