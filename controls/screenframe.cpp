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
    , m_area(new QScrollArea(this))
{
    setWindowModality(modality);
    setWindowTitle(screen->windowTitle());
    connect(screen, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    m_area->setFocusPolicy(Qt::NoFocus);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_area);
    restoreSize();
    m_area->setWidget(screen);
    screen->show();
}

ScreenFrame::~ScreenFrame()
{
    release();
}

void ScreenFrame::release()
{
    if (!m_screen)
        return;
    keepSize();
    if (m_area->widget() == m_screen)
        m_area->takeWidget();
    m_screen = nullptr;
}

void ScreenFrame::closeEvent(QCloseEvent *event)
{
    const QPointer<ScreenFrame> alive(this);
    event->ignore();
    if (m_screen)
        m_screen->Unload(); // takes the screen out, and with it this window away
    if (alive && !m_screen)
        event->accept();
}

QString ScreenFrame::key() const
{
    return QStringLiteral("Windows/") + m_screen->objectName();
}

void ScreenFrame::restoreSize()
{
    const bool drawnSize = m_screen->testAttribute(Qt::WA_Resized);
    const QSize wished = m_screen->sizeHint().expandedTo(drawnSize ? m_screen->size() : m_screen->minimumSize());
    const QSettings *store = Screen::geometryStore();
    const QSize kept = store ? store->value(key()).toSize() : QSize();
    const QSize room = screen()->availableGeometry().size() * 95 / 100;
    resize((kept.isValid() ? kept : wished).boundedTo(room));
}

void ScreenFrame::keepSize() const
{
    if (QSettings *store = Screen::geometryStore())
        store->setValue(key(), size());
}
