#include "controls/screen.h"

#include "controls/screenframe.h"
#include "controls/screenstack.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QLineEdit>

#include <algorithm>

namespace {

QSettings *&storeInPlace()
{
    static QSettings *store = nullptr;
    return store;
}

/// When the modal screens that have not returned yet were opened, the outermost first.
QList<int> &modalsOpenedAt()
{
    static QList<int> openedAt;
    return openedAt;
}

/// A popup that is open goes when a window comes up, and the window of a screen that was unloaded goes too: with them would
/// go a window that they own.
QWidget *lastingOwner(QWidget *owner)
{
    const auto goes = [](const QWidget *window) {
        const auto *frame = qobject_cast<const ScreenFrame *>(window);
        return window->windowType() == Qt::Popup || (frame != nullptr && frame->isReleased());
    };
    while (owner != nullptr && goes(owner->window()))
        owner = owner->window()->parentWidget();
    return owner;
}

int nextOpening()
{
    static int count = 0;
    return ++count;
}

} // namespace

Screen::Screen(const QString &name, QWidget *parent)
    : QWidget(parent)
{
    setObjectName(name);
    hide(); // a page of a stack shows it, not its parent
    QApplication::instance()->installEventFilter(this);
}

Screen::~Screen()
{
    QApplication::instance()->removeEventFilter(this);
}

bool Screen::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey != escapeKey)
        return false;
    Unload();
    return true;
}

bool Screen::FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers)
{
    Q_UNUSED(key)
    Q_UNUSED(modifiers)
    return false;
}

void Screen::Load()
{
    if (m_loaded)
        return;
    m_loaded = true;
    readingWell();
    FORM_LOAD();
}

bool Screen::Unload()
{
    if (m_unloading || !m_loaded)
        return !m_loaded;
    if (waitsForAnother())
        return false;
    m_unloading = true;
    const QPointer<Screen> alive(this);
    const bool goes = FORM_UNLOAD();
    if (!alive)
        return true;
    if (goes)
        leaveView();
    if (alive)
        m_unloading = false;
    return goes;
}

/// Whether a procedure of this screen may still be on the way: it opened a modal screen, or a message, that is up.
bool Screen::waitsForAnother() const
{
    const QList<int> &modals = modalsOpenedAt();
    return (!modals.isEmpty() && modals.last() > m_openedAt) ||
           qobject_cast<QDialog *>(QApplication::activeModalWidget()) != nullptr;
}

QList<Screen *> Screen::openChildren()
{
    QList<Screen *> open;
    for (QWidget *widget : QApplication::allWidgets()) {
        auto *screen = qobject_cast<Screen *>(widget);
        if (screen != nullptr && screen->m_loaded && screen->m_child)
            open << screen;
    }
    return open;
}

void Screen::leaveView()
{
    const QPointer<Screen> alive(this);
    m_loaded = false;
    m_current = nullptr;
    m_lastField = nullptr;
    hide();
    if (m_stack)
        m_stack->remove(this);
    if (!alive)
        return;
    if (m_frame) {
        ScreenFrame *frame = m_frame;
        m_frame = nullptr;
        frame->release();
        frame->hide();
        frame->deleteLater();
    }
    if (m_modalLoop)
        m_modalLoop->quit();
    emit unloaded();
    if (alive && m_deleteOnUnload)
        deleteLater();
}

void Screen::openChild(QWidget *host)
{
    if (!m_loaded)
        m_openedAt = nextOpening();
    m_deleteOnUnload = true;
    m_child = true;
    const QPointer<Screen> alive(this);
    Load();
    if (!alive || !m_loaded)
        return;
    m_stack = ScreenStack::of(host);
    if (m_stack) {
        m_stack->push(this);
    } else {
        openFrame(host, Qt::NonModal);
    }
    if (alive && m_loaded)
        activate();
}

void Screen::openFrame(QWidget *owner, Qt::WindowModality modality)
{
    if (!m_frame)
        m_frame = new ScreenFrame(this, lastingOwner(owner), modality);
    m_frame->setWindowState(m_frame->windowState() & ~Qt::WindowMinimized);
    const QPointer<Screen> alive(this);
    m_frame->show();
    if (!alive || !m_frame)
        return; // a window that went as this one came took it along
    m_frame->raise();
    m_frame->activateWindow();
}

void Screen::showModal()
{
    const QPointer<Screen> alive(this);
    const QPointer<Screen> below = screenBelow();
    QWidget *owner = parentWidget() ? parentWidget()->window() : nullptr;
    m_openedAt = nextOpening();
    Load();
    if (!alive || !m_loaded)
        return;
    QEventLoop loop;
    m_modalLoop = &loop;
    m_child = false;
    openFrame(owner, Qt::ApplicationModal);
    if (alive && m_frame)
        activate();
    if (alive && m_loaded && m_frame) {
        modalsOpenedAt().append(m_openedAt);
        loop.exec(QEventLoop::DialogExec);
        modalsOpenedAt().removeLast();
    }
    Screen *caller = below;
    if (caller && caller->isVisible())
        caller->activate();
}

Screen *Screen::screenBelow() const
{
    if (Screen *owner = of(parentWidget()))
        return owner;
    const ScreenStack *stack = ScreenStack::of(parentWidget());
    return stack ? stack->top() : nullptr;
}

bool Screen::askExit(Icon icon)
{
    return MsgBox(this, QStringLiteral("Do you want to exit ?"), Buttons::YesNo, icon) == Reply::Yes;
}

void Screen::activate()
{
    const QPointer<Screen> alive(this);
    if (!isActiveWindow())
        window()->activateWindow();
    QWidget *field = m_lastField;
    if (field != nullptr && mayTakeFocus(*field))
        field->setFocus(Qt::ActiveWindowFocusReason);
    else if (!hasFocusInside() && !focusNextPrevChild(true))
        setFocus();
    if (alive)
        FORM_ACTIVATE();
}

bool Screen::mayTakeFocus(const QWidget &field) const
{
    return field.isEnabled() && reallyShown(&field);
}

bool Screen::hasFocusInside() const
{
    const QWidget *focus = window()->focusWidget();
    return focus && isAncestorOf(focus) && reallyShown(focus);
}

Screen *Screen::of(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (const auto *screen = qobject_cast<const Screen *>(widget))
            return const_cast<Screen *>(screen);
        if (widget->isWindow())
            break;
    }
    return nullptr;
}

QList<Screen *> Screen::modalScreens()
{
    QList<Screen *> open;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        for (Screen *screen : window->findChildren<Screen *>()) {
            if (screen->m_modalLoop && screen->m_modalLoop->isRunning() && screen->m_loaded && !open.contains(screen))
                open << screen;
        }
    }
    std::sort(open.begin(), open.end(), [](const Screen *a, const Screen *b) { return a->m_openedAt < b->m_openedAt; });
    return open;
}

Screen *Screen::inFront()
{
    if (const QList<Screen *> modals = modalScreens(); !modals.isEmpty())
        return modals.last();
    Screen *front = nullptr;
    for (Screen *screen : openChildren()) {
        if (!screen->isVisible())
            continue;
        const bool nearer =
            front == nullptr || screen->isActiveWindow() > front->isActiveWindow() ||
            (screen->isActiveWindow() == front->isActiveWindow() && screen->m_openedAt > front->m_openedAt);
        front = nearer ? screen : front;
    }
    return front;
}

void Screen::FORM_SESSIONEND()
{
    if (!FORM_UNLOAD())
        FORM_UNLOAD();
}

void Screen::endSession()
{
    ScriptedAnswerer nobody; // without replies it gives the default ones
    const AnswererScope answers(&nobody);
    if (QWidget *field = QApplication::focusWidget())
        field->clearFocus(); // what is done when a field is left
    QList<Screen *> open = modalScreens() + openChildren();
    std::sort(open.begin(), open.end(), [](const Screen *a, const Screen *b) { return a->m_openedAt > b->m_openedAt; });
    const QList<QPointer<Screen>> all(open.begin(), open.end());
    for (const QPointer<Screen> &still : all) {
        if (Screen *screen = still.data(); screen != nullptr && screen->m_loaded)
            screen->FORM_SESSIONEND();
    }
}

bool Screen::unloadEach(const QList<Screen *> &screens, QWidget *host)
{
    const QList<QPointer<Screen>> open(screens.begin(), screens.end()); // one may go while another asks
    for (const QPointer<Screen> &screen : open) {
        if (screen == nullptr || screen->Unload())
            continue;
        screen->openChild(host);
        return false;
    }
    return true;
}

void Screen::setGeometryStore(QSettings *store)
{
    storeInPlace() = store;
}

QSettings *Screen::geometryStore()
{
    return storeInPlace();
}

void Screen::closeEvent(QCloseEvent *event)
{
    event->setAccepted(!m_loaded || Unload());
}

void Screen::setLeaveCheck(QLineEdit *field, const std::function<bool()> &check)
{
    m_checks.insert(field, check);
}
