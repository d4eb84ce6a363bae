#pragma once

#include "platform/offer.h"
#include "platform/startedprocess.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

class QNetworkReply;

/// Which browser is driven, and by what.
struct FBT_OFFERED WebDriverSettings
{
    QString driver;  ///< chromedriver, msedgedriver or geckodriver, by path or name; empty: the first that is found
    QString browser; ///< the browser's program; empty: the one that the driver finds
    QStringList arguments; ///< further arguments of the browser
};

/// The driver's program that the settings mean; empty when there is none.
FBT_OFFERED QString DriverProgram(const QString &named);

/// What a new session asks of a driver, told apart by its file name.
/// @param profile the folder where the browser keeps what it notes of its pages; empty: one that the driver makes
FBT_OFFERED QJsonObject DriverCapabilities(const QString &program, const WebDriverSettings &settings,
                                           const QString &profile = {});

/// One window of a browser outside this process, driven by the W3C WebDriver protocol through a driver process of its own
/// on a free port of the loopback address.
///
/// Each call waits for its answer while events go on, so `interrupt` and this object's owner can be called meanwhile; a
/// second command cannot. A driver that does not answer for some seconds counts as gone. The driver and the browser outlive
/// this object and the program unless `close` was called.
class FBT_OFFERED WebDriver : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        Done,
        Refused, ///< the browser is there but could not do it, or not yet
        Gone     ///< the window, the browser or the driver is there no longer
    };
    struct Answer
    {
        Outcome outcome = Outcome::Gone;
        QJsonValue value; ///< of a command that was done; what the driver says of one that was not
    };

    explicit WebDriver(WebDriverSettings settings, QObject *parent = nullptr);
    ~WebDriver() override; ///< ends the driver of a browser that the user has closed

    /// Starts the driver and a visible, empty window. False when either does not start; nothing is left running then.
    bool open();
    [[nodiscard]] bool isOpen();         ///< a window of the browser is still there, this one or one that it has opened
    Answer navigate(const QString &url); ///< does not wait for the page
    /// Runs a function body of this program's own in the page.
    Answer execute(const QString &script, const QJsonArray &arguments = {});
    Answer maximize();
    void close(); ///< all windows, the session and the driver
    /// Ends the wait of the command on its way, as refused. A browser that is just being started is closed again.
    void interrupt();

    /// Why the last browser did not open, in the words of its driver: text from outside.
    [[nodiscard]] QString reason() const { return m_reason; }
    /// Address of the session at the driver; empty without one.
    [[nodiscard]] QString sessionUrl() const { return m_session.isEmpty() ? QString() : m_base + m_session; }

    [[nodiscard]] QString profile() const { return m_profile; } ///< folder in which the browser notes its pages
    [[nodiscard]] StartedProcess driverProcess() const { return m_driver; }

private:
    bool startDriver(const QString &program);
    bool waitForDriver();
    bool startSession(const QString &program);
    void stopDriver();
    void endBrowser();
    void removeProfile();
    Answer send(const QByteArray &verb, const QString &path, const QJsonObject &body, int milliseconds);
    Answer command(const QString &path, const QJsonObject &body = {});
    [[nodiscard]] bool hasLostWindow();
    [[nodiscard]] bool isBrowserRunning() const;

    WebDriverSettings m_settings;
    QNetworkAccessManager m_net;
    QPointer<QNetworkReply> m_reply;
    QString m_base;    // "http://127.0.0.1:PORT"
    QString m_session; // "/session/ID"
    QString m_profile; // folder of the browser
    QString m_reason;
    StartedProcess m_driver;
    QList<StartedProcess> m_browser; // what the driver has started
    bool m_answered = false;         // the driver, when it was asked last
    bool m_interrupted = false;
};
