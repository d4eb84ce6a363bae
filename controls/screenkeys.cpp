#include "controls/screen.h"

#include "controls/ancestry.h"
#include "controls/dateedit.h"
#include "controls/matchlist.h"
#include "controls/typedtext.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>

namespace {

bool isEnter(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

std::function<void(Screen &)> &helpInPlace()
{
    static std::function<void(Screen &)> help;
    return help;
}

bool isToggle(const QWidget *widget)
{
    return qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget);
}

bool entersByEnter(const QWidget *field)
{
    return qobject_cast<const QLineEdit *>(field) || qobject_cast<const QComboBox *>(field) ||
           qobject_cast<const QAbstractSpinBox *>(field) || isToggle(field);
}

/// Focus that goes to a popup, a menu or another window comes back, so the field is not left.
bool comesBack(Qt::FocusReason reason)
{
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason;
}

void selectText(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->selectAll();
    else if (const auto *combo = qobject_cast<QComboBox *>(field); combo && combo->isEditable())
        combo->lineEdit()->selectAll();
}

/// What is longer than its window is scrolled so that the control can be seen.
void scrollTo(QWidget *control)
{
    for (QWidget *outer = control->parentWidget(); outer != nullptr; outer = outer->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(outer))
            area->ensureWidgetVisible(control);
    }
}

/// A mnemonic presses a button without giving it the focus. It gets it here as by the mouse, so that the field in hand is
/// left and checked. False when that field keeps the focus.
bool focusByMnemonic(QWidget *target)
{
    const auto *button = qobject_cast<QAbstractButton *>(target);
    if (button == nullptr || !(button->focusPolicy() & Qt::ClickFocus))
        return true;
    const QPointer<QWidget> shown(target);
    target->setFocus(Qt::ShortcutFocusReason);
    return shown && target->window()->focusWidget() == target;
}

bool isCellEditor(QWidget *target, QWidget *field)
{
    return target != field && qobject_cast<QAbstractItemView *>(field);
}

} // namespace

/// The control as the user sees it: an editable combo box, a spin box or a grid stands for its inner parts.
QWidget *Screen::fieldOf(QWidget *widget) const
{
    QWidget *field = widget;
    for (QWidget *outer = widget; outer && outer != this; outer = outer->parentWidget()) {
        if (qobject_cast<QComboBox *>(outer) || qobject_cast<QAbstractSpinBox *>(outer) ||
            qobject_cast<QAbstractItemView *>(outer))
            field = outer;
    }
    return field;
}

bool Screen::reallyShown(const QWidget *widget) const
{
    for (const QWidget *outer = widget; outer && outer != this; outer = outer->parentWidget()) {
        if (outer->isHidden())
            return false;
    }
    return !isHidden();
}

/// Whether an event is one of this screen: of its controls, or a key while nothing in the window has the focus.
bool Screen::concerns(const QWidget *target, QEvent::Type type) const
{
    if (of(target) == this)
        return target != this || type == QEvent::KeyPress;
    return type == QEvent::KeyPress && target == window() && isVisible() && !target->focusWidget();
}

bool Screen::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    const bool ours = type == QEvent::KeyPress || type == QEvent::FocusIn || type == QEvent::FocusOut ||
                      type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
                      type == QEvent::Shortcut;
    auto *target = ours ? qobject_cast<QWidget *>(watched) : nullptr;
    if (!target || !concerns(target, type))
        return false;
    switch (type) {
    case QEvent::KeyPress:
        return keyPressed(target, static_cast<QKeyEvent *>(event));
    case QEvent::FocusIn:
        focusGained(target, static_cast<QFocusEvent *>(event));
        return false;
    case QEvent::FocusOut:
        return focusLost(target, static_cast<QFocusEvent *>(event));
    case QEvent::Shortcut:
        return !focusByMnemonic(target);
    default:
        return mousePressed(target, type);
    }
}

/// The second click of two that fell on different buttons was meant for the first one, which another one replaced.
bool Screen::mousePressed(QWidget *target, QEvent::Type type)
{
    const bool twice = type == QEvent::MouseButtonDblClick;
    const bool replaced = twice && target != m_pressed && qobject_cast<QAbstractButton *>(target) != nullptr;
    m_pressed = target;
    return std::exchange(m_swallowPress, false) || replaced;
}

// --- keys ---

void Screen::setHelp(const std::function<void(Screen &asked)> &help)
{
    helpInPlace() = help;
}

bool Screen::keyPressed(QWidget *target, QKeyEvent *event)
{
    const QPointer<Screen> alive(this);
    const QPointer<QWidget> shown(target);
    // A key that its control ignores comes by again at each parent on its way up.
    const QWidget *focus = target->window()->focusWidget();
    if (focus && focus != target && target->isAncestorOf(focus))
        return false;
    if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier && helpInPlace()) {
        helpInPlace()(*this);
        return true;
    }
    if (FORM_KEYDOWN(event->key(), event->modifiers()) || !alive || !shown)
        return true;
    const bool plain = !(event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier));
    if (event->key() == Qt::Key_Escape && plain)
        return escapePressed(target);
    if (isEnter(event) && plain)
        return enterPressed(target);
    FilterTypedText(target);
    return false;
}

bool Screen::escapePressed(QWidget *target)
{
    if (isCellEditor(target, fieldOf(target)))
        return false;
    for (MatchList *list : findChildren<MatchList *>()) {
        if (list->isVisible() && list->field() == target) {
            list->dismiss();
            return true;
        }
    }
    const QPointer<Screen> alive(this);
    m_escaping = true;
    const bool swallowed = FORM_KEYPRESS(escapeKey);
    if (alive)
        m_escaping = false;
    return swallowed || !alive;
}

bool Screen::enterPressed(QWidget *target)
{
    QWidget *field = fieldOf(target);
    if (isCellEditor(target, field) || target->property("ownEnter").toBool())
        return false;
    const QPointer<Screen> alive(this);
    const QPointer<QWidget> shown(field);
    if (FORM_KEYPRESS(enterKey) || !alive || !shown)
        return true;
    if (entersByEnter(field)) {
        focusNextPrevChild(true);
        return true;
    }
    auto *button = qobject_cast<QAbstractButton *>(field);
    if (button)
        button->click();
    return button != nullptr;
}

bool Screen::focusNextPrevChild(bool next)
{
    const QWidget *now = QApplication::focusWidget();
    QWidget *from = now && isAncestorOf(now) ? const_cast<QWidget *>(now) : this;
    const auto step = [next](QWidget *w) { return next ? w->nextInFocusChain() : w->previousInFocusChain(); };
    for (QWidget *w = step(from); w != from; w = step(w)) {
        const bool takesTab = (w->focusPolicy() & Qt::TabFocus) && !w->focusProxy();
        if (!takesTab || !isAncestorOf(w) || !w->isEnabled() || !reallyShown(w))
            continue;
        w->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        if (QWidget *focus = QApplication::focusWidget())
            scrollTo(focus);
        return true;
    }
    return false;
}

// --- entering and leaving ---

void Screen::focusGained(QWidget *target, const QFocusEvent *event)
{
    QWidget *field = fieldOf(target);
    if (isCellEditor(target, field)) {
        FilterTypedText(target);
        if (!m_current)
            m_current = field; // it refused to be left: the grid is the field in hand again
        return;
    }
    const Qt::FocusReason reason = event->reason();
    FilterTypedText(target);
    if (field == m_current)
        return;
    if (reason != Qt::MouseFocusReason && !comesBack(reason))
        selectText(field);
    const QPointer<QWidget> before = std::exchange(m_current, field);
    m_lastField = field;
    if (before && !m_unloading)
        emit left(before);
    if (m_current == field)
        emit entered(field);
}

/// True when the field keeps the focus: it has it back already and need not hear of the loss.
bool Screen::focusLost(QWidget *target, const QFocusEvent *event)
{
    QWidget *field = fieldOf(target);
    const QWidget *next = QApplication::focusWidget();
    if (field != m_current || IsPartOf(next, field) || m_unloading || m_checking || comesBack(event->reason()))
        return false;
    const QPointer<Screen> alive(this);
    if (auto *date = qobject_cast<MaskedDate *>(field))
        date->convertNow();
    const bool passed = mayLeave(field);
    if (!alive)
        return true;
    if (!passed) {
        keepFocus(field, event->reason());
        return true;
    }
    m_current = nullptr;
    emit left(field);
    return false;
}

bool Screen::mayLeave(QWidget *field)
{
    const QWidget *next = QApplication::focusWidget();
    const QVariant causesCheck = next ? next->property("causesCheck") : QVariant();
    const auto check = m_checks.constFind(field);
    if (check == m_checks.constEnd() || m_escaping || (causesCheck.isValid() && !causesCheck.toBool()) ||
        !field->isEnabled() || !reallyShown(field))
        return true;
    const QPointer<Screen> alive(this);
    m_checking = true;
    const bool passed = (*check)();
    if (!alive)
        return false;
    m_checking = false;
    return passed;
}

/// The press of the mouse that took the focus away must not work on its target either.
void Screen::keepFocus(QWidget *field, Qt::FocusReason reason)
{
    if (reason == Qt::MouseFocusReason)
        swallowPress();
    field->setFocus(Qt::OtherFocusReason);
    selectText(field);
}

void Screen::swallowPress()
{
    m_swallowPress = true;
    QMetaObject::invokeMethod(
        this, [this] { m_swallowPress = false; }, Qt::QueuedConnection);
}
