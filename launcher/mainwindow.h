#pragma once

#include "platform/offer.h"

#include <QElapsedTimer>
#include <QMainWindow>

class ScreenStack;

/// The host's main window: the screens lie on its stack, the reports write into its status bar `TXStatusBar1`.
/// It opens maximised the first time and as it was left from then on. In the status bar it says what could not be saved: for
/// ten seconds at least, and until the user goes on. Closing it closes the screens from the top down, each with its own
/// question.
class FBT_OFFERED MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showNotice(const QString &line);

    QString m_notice;
    QElapsedTimer m_noticeAge;
    ScreenStack *m_screens;
    bool m_closing = false;
};
