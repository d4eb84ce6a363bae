#include "platform/webdriver.h"

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

#include <csignal>
#include <memory>
#include <utility>

namespace {

constexpr int startMs = 10000;   // of a driver
constexpr int sessionMs = 60000; // of a browser, which may be updating itself
constexpr int commandMs = 15000; // longer than a script may take
constexpr int scriptMs = 1000;   // also how long a look at a page that is still to come takes
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

WebDriver::Answer answerOf(QNetworkReply &reply)
{
    if (reply.error() == QNetworkReply::OperationCanceledError)
        return {WebDriver::Outcome::Refused, {}};
    const QJsonDocument body = QJsonDocument::fromJson(reply.readAll());
    if (!body.isObject())
        return {WebDriver::Outcome::Gone, {}};
    const QJsonValue value = body.object().value(QStringLiteral("value"));
    if (reply.error() == QNetworkReply::NoError)
        return {WebDriver::Outcome::Done, value};
    return {outcomeOf(value.toObject()), {}};
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

QJsonObject DriverCapabilities(const QString &program, const WebDriverSettings &settings)
{
    const Kind kind = kindOf(program);
    QJsonObject browser{{QStringLiteral("args"), QJsonArray::fromStringList(settings.arguments)}};
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

bool WebDriver::open()
{
    const QString program = DriverProgram(m_settings.driver);
    m_interrupted = false;
    if (program.isEmpty() || !startDriver(program))
        return false;
    if (waitForDriver() && startSession(program) && !m_interrupted)
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
    return process.startDetached(&m_driver);
}

bool WebDriver::waitForDriver()
{
    QElapsedTimer since;
    for (since.start(); since.elapsed() < startMs && !m_interrupted; pause(pauseMs)) {
        const Answer status = send("GET", QStringLiteral("/status"), {}, commandMs);
        if (status.outcome == Outcome::Done && status.value.toObject().value(QStringLiteral("ready")).toBool())
            return true;
    }
    return false;
}

bool WebDriver::startSession(const QString &program)
{
    const QJsonObject wanted{{QStringLiteral("capabilities"),
                              QJsonObject{{QStringLiteral("alwaysMatch"), DriverCapabilities(program, m_settings)}}}};
    const Answer session = send("POST", QStringLiteral("/session"), wanted, sessionMs);
    const QString id = session.value.toObject().value(QStringLiteral("sessionId")).toString();
    m_session = id.isEmpty() ? QString() : QStringLiteral("/session/") + id;
    return !id.isEmpty();
}

bool WebDriver::isOpen()
{
    return !m_session.isEmpty() &&
           send("GET", m_session + QStringLiteral("/window"), {}, commandMs).outcome != Outcome::Gone;
}

WebDriver::Answer WebDriver::navigate(const QString &url)
{
    return command(QStringLiteral("/url"), {{QStringLiteral("url"), url}});
}

WebDriver::Answer WebDriver::execute(const QString &script, const QJsonArray &arguments)
{
    return command(QStringLiteral("/execute/sync"),
                   {{QStringLiteral("script"), script}, {QStringLiteral("args"), arguments}});
}

WebDriver::Answer WebDriver::maximize()
{
    return command(QStringLiteral("/window/maximize"));
}

void WebDriver::close()
{
    if (!m_session.isEmpty())
        send("DELETE", m_session, {}, commandMs);
    m_session.clear();
    stopDriver();
}

void WebDriver::stopDriver()
{
    if (m_driver > 0)
        ::kill(static_cast<pid_t>(m_driver), SIGTERM);
    m_driver = 0;
}

void WebDriver::interrupt()
{
    if (m_session.isEmpty())
        m_interrupted = true; // a start that is broken off would leave a browser without its driver
    else if (QNetworkReply *reply = m_reply.data())
        reply->abort();
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
    request.setTransferTimeout(milliseconds);
    const QByteArray content = verb == "POST" ? QJsonDocument(body).toJson(QJsonDocument::Compact) : QByteArray();
    const std::unique_ptr<QNetworkReply> reply(m_net.sendCustomRequest(request, verb, content));
    m_reply = reply.get();
    QEventLoop wait;
    connect(reply.get(), &QNetworkReply::finished, &wait, &QEventLoop::quit);
    if (!reply->isFinished())
        wait.exec();
    return answerOf(*reply);
}
