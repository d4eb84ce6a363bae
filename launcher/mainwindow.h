#pragma once

#include "platform/offer.h"

#include <QMainWindow>

class ScreenStack;

/// The host's main window: the screens lie on its stack, the reports, and what could not be saved, go into its status bar
/// `TXStatusBar1`. It opens maximised the first time and as it was left from then on. Closing it closes the screens from
/// the top down, each with its own question.
class FBT_OFFERED MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    ScreenStack *m_screens;
    bool m_closing = false;
};
