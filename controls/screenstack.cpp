#include "controls/screenstack.h"

#include "controls/screen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStyle>
#include <QToolButton>

ScreenStack::ScreenStack(QWidget *parent)
    : QWidget(parent)
    , m_strip(new QWidget(this))
    , m_title(new QLabel(m_strip))
    , m_close(new QToolButton(m_strip))
    , m_pages(new QStackedWidget(this))
{
    QFont bold = font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->setTextFormat(Qt::PlainText);
    m_close->setAutoRaise(true);
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close->setToolTip(tr("Close"));
    m_close->setAccessibleName(tr("Close"));
    m_close->setFocusPolicy(Qt::NoFocus);
    connect(m_close, &QToolButton::clicked, this, &ScreenStack::closeTop);

    auto *strip = new QHBoxLayout(m_strip);
    strip->setContentsMargins(8, 2, 2, 2);
    strip->addWidget(m_title, 1);
    strip->addWidget(m_close);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_strip);
    column->addWidget(m_pages, 1);
    m_strip->hide();
}

void ScreenStack::push(Screen *screen)
{
    QScrollArea *page = pageOf(screen);
    if (!page) {
        page = new QScrollArea;
        page->setFrameShape(QFrame::NoFrame);
        page->setWidgetResizable(true);
        page->setFocusPolicy(Qt::NoFocus);
        page->setWidget(screen);
        m_pages->addWidget(page);
        connect(screen, &QWidget::windowTitleChanged, this, &ScreenStack::showTitle);
        connect(screen, &QObject::destroyed, page, &QObject::deleteLater);
    }
    m_pages->removeWidget(page); // the order of the pages is the order on the stack
    m_pages->addWidget(page);
    screen->show();
    m_pages->setCurrentWidget(page);
    showTitle();
}

void ScreenStack::remove(Screen *screen)
{
    QScrollArea *page = screen ? pageOf(screen) : nullptr;
    if (!page)
        return;
    const bool wasTop = screen == top();
    disconnect(screen, &QWidget::windowTitleChanged, this, &ScreenStack::showTitle);
    screen->hide();
    page->takeWidget();
    m_pages->removeWidget(page);
    page->deleteLater();
    Screen *below = top();
    if (below && wasTop)
        m_pages->setCurrentWidget(pageOf(below));
    showTitle();
    if (below && wasTop)
        below->activate();
}

Screen *ScreenStack::top() const
{
    const QList<Screen *> all = screens();
    return all.isEmpty() ? nullptr : all.last();
}

QList<Screen *> ScreenStack::screens() const
{
    QList<Screen *> all;
    for (int i = 0; i < m_pages->count(); ++i) {
        const auto *page = qobject_cast<QScrollArea *>(m_pages->widget(i));
        auto *screen = page ? qobject_cast<Screen *>(page->widget()) : nullptr;
        if (screen)
            all.append(screen);
    }
    return all;
}

bool ScreenStack::closeAll()
{
    while (Screen *screen = top()) {
        if (!screen->Unload())
            return false;
    }
    return true;
}

ScreenStack *ScreenStack::of(QWidget *host)
{
    if (!host)
        return nullptr;
    auto *self = qobject_cast<ScreenStack *>(host);
    return self ? self : host->window()->findChild<ScreenStack *>();
}

QScrollArea *ScreenStack::pageOf(const Screen *screen) const
{
    for (int i = 0; i < m_pages->count(); ++i) {
        auto *page = qobject_cast<QScrollArea *>(m_pages->widget(i));
        if (page && page->widget() == screen)
            return page;
    }
    return nullptr;
}

void ScreenStack::showTitle()
{
    const Screen *screen = top();
    m_strip->setVisible(screen != nullptr);
    m_title->setText(screen ? screen->windowTitle() : QString());
}

void ScreenStack::closeTop()
{
    if (Screen *screen = top())
        screen->Unload();
}
