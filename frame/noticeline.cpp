#include "frame/noticeline.h"

#include "context/faultnotice.h"
#include "controls/screen.h"

#include <QApplication>
#include <QMainWindow>
#include <QStatusBar>
#include <QTimer>

#include <utility>

NoticeLine::NoticeLine(QMainWindow *host)
    : m_bar(host == nullptr ? nullptr : host->findChild<QStatusBar *>(QStringLiteral("TXStatusBar1")))
{
    SetFaultNotice([this](const QString &line, Doing doing) { show(line, doing); });
    qApp->installEventFilter(this);
}

NoticeLine::~NoticeLine()
{
    SetFaultNotice({});
    clear();
}

void NoticeLine::show(const QString &line, Doing doing)
{
    if (line.isEmpty()) {
        if (!m_fresh)
            clear();
        return;
    }
    clear();
    m_line = line;
    m_doing = doing;
    m_age.start();
    m_fresh = true;
    QTimer::singleShot(0, this, [this] { m_fresh = false; });
    if (m_bar)
        m_bar->showMessage(line);
    Screen *front = Screen::inFront();
    if (front != nullptr)
        connect(front, &Screen::allRead, this, &NoticeLine::clearRead, Qt::UniqueConnection);
    if (front != nullptr && (!m_bar || front->window() != m_bar->window())) {
        front->tell(Screen::Told::Notice, line);
        m_screen = front;
    }
}

void NoticeLine::clear()
{
    const QString line = std::exchange(m_line, QString());
    if (m_bar && m_bar->currentMessage() == line)
        m_bar->clearMessage();
    if (m_screen)
        m_screen->tell(Screen::Told::Notice, {});
    m_screen = nullptr;
}

void NoticeLine::clearRead()
{
    if (m_doing == Doing::Read)
        clear();
}

bool NoticeLine::eventFilter(QObject *watched, QEvent *event)
{
    constexpr qint64 seenMs = 10'000;
    const bool action = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
    if (action && !m_line.isEmpty() && m_age.hasExpired(seenMs))
        clear();
    return QObject::eventFilter(watched, event);
}
