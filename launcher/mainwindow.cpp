#include "launcher/mainwindow.h"

#include "controls/screen.h"
#include "controls/screenstack.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>

namespace {
const QString geometryKey = QStringLiteral("Windows/MainWindow");
}

MainWindow::MainWindow()
    : m_screens(new ScreenStack(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("Pelk FBT"));
    setCentralWidget(m_screens);
    statusBar()->setObjectName(QStringLiteral("TXStatusBar1"));
    // The screens are drawn for 1024 by 768; a smaller display gets what it has.
    resize(QSize(1024, 768).boundedTo(QGuiApplication::primaryScreen()->availableSize()));
    const QSettings *store = Screen::geometryStore();
    if (store == nullptr || !restoreGeometry(store->value(geometryKey).toByteArray()))
        setWindowState(Qt::WindowMaximized);
}

MainWindow::~MainWindow()
{
    if (QSettings *store = Screen::geometryStore())
        store->setValue(geometryKey, saveGeometry());
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // The main screen closes its window when it is unloaded, so this comes round a second time.
    if (m_closing) {
        event->accept();
        return;
    }
    const QScopedValueRollback closing(m_closing, true);
    event->setAccepted(m_screens->closeAll());
}
