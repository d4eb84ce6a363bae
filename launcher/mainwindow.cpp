#include "launcher/mainwindow.h"

#include "controls/screenstack.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStatusBar>

MainWindow::MainWindow()
    : m_screens(new ScreenStack(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("Pelk FBT"));
    setCentralWidget(m_screens);
    statusBar()->setObjectName(QStringLiteral("TXStatusBar1"));
    // The screens are drawn for 1024 by 768; a smaller display gets what it has.
    resize(QSize(1024, 768).boundedTo(QGuiApplication::primaryScreen()->availableSize()));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // The main screen closes its window when it is unloaded, so this comes round a second time.
    if (m_closing) {
        event->accept();
        return;
    }
    m_closing = true;
    event->setAccepted(m_screens->closeAll());
    m_closing = false;
}
