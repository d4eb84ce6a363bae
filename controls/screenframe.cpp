#include "controls/screenframe.h"

#include "controls/screen.h"

#include <QCloseEvent>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QSettings>
#include <QVBoxLayout>

ScreenFrame::ScreenFrame(Screen *screen, QWidget *owner, Qt::WindowModality modality)
    : QWidget(owner, modality == Qt::NonModal ? Qt::Window : Qt::Dialog)
    , m_screen(screen)
    , m_home(screen->parentWidget())
    , m_key(QStringLiteral("Windows/") + screen->objectName())
    , m_area(new QScrollArea(this))
{
    setWindowModality(modality);
    setWindowTitle(screen->windowTitle());
    connect(screen, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
    connect(screen, &QObject::destroyed, this, &QObject::deleteLater);
    if (owner != nullptr)
        owner->window()->installEventFilter(this);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    m_area->setFocusPolicy(Qt::NoFocus);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_area);
    restoreSize(*screen);
    m_area->setWidget(screen);
    screen->show();
}

ScreenFrame::~ScreenFrame()
{
    if (windowModality() != Qt::NonModal)
        release(); // a modal screen belongs to who made it, any other goes with its window
}

void ScreenFrame::release()
{
    Screen *page = m_screen;
    m_screen = nullptr;
    if (page == nullptr)
        return;
    keepSize();
    if (m_area->widget() == page)
        m_area->takeWidget();
    page->hide();
    page->setParent(m_home);
}

void ScreenFrame::closeEvent(QCloseEvent *event)
{
    Screen *page = m_screen;
    // Unloading takes the screen out, and with it this window away.
    event->setAccepted(page == nullptr || page->Unload());
}

bool ScreenFrame::eventFilter(QObject *watched, QEvent *event)
{
    const QPointer<Screen> page = m_screen;
    if (event->type() != QEvent::Close || page == nullptr || page->Unload())
        return QWidget::eventFilter(watched, event);
    event->ignore();
    return true;
}

void ScreenFrame::restoreSize(const Screen &page)
{
    const bool drawnSize = page.testAttribute(Qt::WA_Resized);
    const QSize wished = page.sizeHint().expandedTo(drawnSize ? page.size() : page.minimumSize());
    const QSettings *store = Screen::geometryStore();
    const QSize kept = store ? store->value(m_key).toSize() : QSize();
    const QSize room = screen()->availableGeometry().size() * 95 / 100;
    resize((kept.isValid() ? kept : wished).boundedTo(room));
}

void ScreenFrame::keepSize() const
{
    if (QSettings *store = Screen::geometryStore())
        store->setValue(m_key, size());
}
