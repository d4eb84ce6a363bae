#pragma once

#include "platform/fault.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

class QMainWindow;
class QStatusBar;
class Screen;

/// Tells the user in one line, without a box, what was not done with his rows. The line stands in the status bar
/// `TXStatusBar1` of the host's window, and, where the user works in another window or there is no such bar, at the top of
/// his screen.
///
/// It stays for ten seconds at least and until the user goes on, or until a later change was carried out, or what could
/// not be read was read.
class NoticeLine : public QObject
{
    Q_OBJECT

public:
    /// @param host window of the module; may be null
    explicit NoticeLine(QMainWindow *host);
    ~NoticeLine() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void show(const QString &line, Doing doing);
    void clearRead();
    void clear();

    QPointer<QStatusBar> m_bar;
    QPointer<Screen> m_screen; // that shows it
    QString m_line;
    Doing m_doing = Doing::Other; // what failed
    QElapsedTimer m_age;
    bool m_fresh = false; // of the action that is still going on
};
