#include "launcher/mainwindow.h"

#include "context/faultnotice.h"
#include "controls/screen.h"
#include "controls/screenstack.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
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
    SetFaultNotice([this](const QString &line) { showNotice(line); });
    qApp->installEventFilter(this);
    // The screens are drawn for 1024 by 768; a smaller display gets what it has.
    resize(QSize(1024, 768).boundedTo(QGuiApplication::primaryScreen()->availableSize()));
    const QSettings *store = Screen::geometryStore();
    if (store == nullptr || !restoreGeometry(store->value(geometryKey).toByteArray()))
        setWindowState(Qt::WindowMaximized);
}

MainWindow::~MainWindow()
{
    SetFaultNotice({});
    if (QSettings *store = Screen::geometryStore())
        store->setValue(geometryKey, saveGeometry());
}

void MainWindow::showNotice(const QString &line)
{
    m_notice = line;
    m_noticeAge.start();
    statusBar()->showMessage(line);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    constexpr qint64 seenMs = 10'000;
    const bool action = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
    if (action && !m_notice.isEmpty() && m_noticeAge.hasExpired(seenMs)) {
        if (statusBar()->currentMessage() == m_notice)
            statusBar()->clearMessage();
        m_notice.clear();
    }
    return QMainWindow::eventFilter(watched, event);
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
