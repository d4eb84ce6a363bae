#pragma once

#include "host/siblings.h"
#include "payments/portal.h"

#include <QEventLoop>
#include <QFrame>
#include <QPointer>

#include <functional>
#include <memory>

namespace Ui {
class EPayPanel;
}

/// Walks the user's browser to the challan form of the payment portal, fills it in and hands it over. While it works it
/// shows what it does, and the user can take the browser over at any moment or close it.
class EPayPanel : public QFrame
{
    Q_OBJECT

public:
    explicit EPayPanel(QWidget *parent = nullptr);
    ~EPayPanel() override;

    /// One run, from the question about an earlier window to the hand-over. Comes back when it has ended; events go on.
    void DOCUMENTCOMPLETE(const QJsonArray &values);
    [[nodiscard]] bool isRunning() const { return m_running; }
    void cancel(); ///< closes the browser and ends the run; not while the form is being filled

signals:
    void begun(); ///< the panel takes the place of the register
    void ended();

private:
    enum class Run {
        Going,
        Cancelled, ///< by the user: close the browser
        Closed,
        Taken, ///< finished, or stopped by the user: keep the browser
        Left   ///< to the user
    };

    bool mayCloseEarlier();
    bool openBrowser();
    void walk(const QString &portal, const QJsonArray &values);
    bool waitFor(const std::function<bool(const PortalPage &)> &there, const QString &failure);
    void clickChallan();
    void fill(const QJsonArray &values);
    static void note(const QString &what);
    void CMDSTOPPG_CLICK();
    void SHOWFAILMSG(const QString &Message);
    void showStage(const QString &text);
    void end(Run how);
    bool pause();
    BrowserObject::Result run(const QString &script, const QJsonArray &arguments = {}, QJsonValue *value = nullptr);

    std::unique_ptr<Ui::EPayPanel> ui;
    std::unique_ptr<SuiteObject> m_made;
    BrowserObject *PayBrowser = nullptr; // m_made, kept for the life of the screen
    QPointer<QEventLoop> m_pause;
    Run m_run = Run::Closed;
    bool m_running = false;
    bool m_opening = false; // the browser
};
