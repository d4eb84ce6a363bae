#include "controls.h"

#include "controls/grid.h"
#include "controls/gridheader.h"
#include "controls/screen.h"
#include "controls/screenstack.h"
#include "platform/text.h"
#include "script.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTest>

namespace {

[[noreturn]] void refuse(const QString &why)
{
    throw ScriptError(why);
}

QList<Screen *> screens()
{
    QList<Screen *> open;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (const ScreenStack *stack = ScreenStack::of(const_cast<QWidget *>(window));
            stack != nullptr && open.isEmpty())
            open = stack->screens();
    }
    return open + Screen::modalScreens();
}

/// Those in windows of their own that block no other, such as a preview over a screen that does.
QList<Screen *> screensInWindows()
{
    QList<Screen *> open;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        for (Screen *screen : window->findChildren<Screen *>()) {
            if (screen->isVisible())
                open << screen;
        }
    }
    return open;
}

QString objectNameOf(const QString &part)
{
    static const QRegularExpression indexed(QStringLiteral(R"(^(\w+)\((\d+)\)$)"));
    const QRegularExpressionMatch match = indexed.match(part);
    return match.hasMatch() ? match.captured(1) + u'_' + match.captured(2) : part;
}

Screen *findScreen(const QString &name)
{
    const QList<Screen *> open = screensInWindows() + screens();
    for (auto it = open.crbegin(); it != open.crend(); ++it) {
        if ((*it)->objectName() == name)
            return *it;
    }
    refuse(QString("no screen %1 is open").arg(name));
}

QString stateWord(bool on)
{
    return on ? "on" : "off";
}

QString textOf(const QObject *control)
{
    if (const auto *list = qobject_cast<const QListWidget *>(control))
        return list->currentItem() == nullptr ? QString() : list->currentItem()->text();
    if (const auto *grid = qobject_cast<const Grid *>(control))
        return QString::number(grid->Row());
    for (const char *text : {"currentText", "text", "windowTitle"}) { // of combo boxes; of fields, labels and buttons
        if (const QVariant found = control->property(text); found.isValid())
            return found.toString();
    }
    return {};
}

/// What a user sees in a cell; a check box is on or off.
QString cellOf(const Grid *grid, int row, int col)
{
    const bool check = row >= grid->FixedRows() && grid->isCheckCol(col);
    return check ? stateWord(Val(grid->TextMatrix(row, col)) != 0) : grid->shownText(row, col);
}

int positionOf(const QString &text, const QStringList &entries, const QString &control)
{
    const qsizetype position = entries.indexOf(text);
    if (position < 0)
        refuse(QString("%1 has no entry '%2'").arg(control, text));
    return static_cast<int>(position);
}

/// The widget that takes the keys of a control: the editor of a cell or the line of a combo box, if one is open.
QWidget *keyTarget(QWidget *control)
{
    QWidget *focus = QApplication::focusWidget();
    return focus != nullptr && control->isAncestorOf(focus) ? focus : control;
}

/// A letter that no key of the test stands for comes as from an input method.
void typeKeys(QWidget *editor, QChar letter)
{
    if (letter.unicode() < 128) {
        QTest::keyClicks(editor, letter);
        return;
    }
    QInputMethodEvent event;
    event.setCommitString(letter);
    QApplication::sendEvent(editor, &event);
}

void replaceText(QWidget *editor, const QString &text)
{
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Delete);
    for (const QChar c : text)
        typeKeys(editor, c);
}

Qt::Key keyOf(const QString &name)
{
    static const QHash<QString, Qt::Key> keys{
        {"Enter", Qt::Key_Return},      {"Esc", Qt::Key_Escape}, {"Tab", Qt::Key_Tab},     {"Up", Qt::Key_Up},
        {"Down", Qt::Key_Down},         {"Left", Qt::Key_Left},  {"Right", Qt::Key_Right}, {"PageUp", Qt::Key_PageUp},
        {"PageDown", Qt::Key_PageDown}, {"F7", Qt::Key_F7},      {"F8", Qt::Key_F8}};
    if (!keys.contains(name))
        refuse(QString("there is no key '%1'").arg(name));
    return keys.value(name);
}

bool anyDown(const Screen &screen)
{
    const auto buttons = screen.findChildren<QAbstractButton *>();
    return std::any_of(buttons.begin(), buttons.end(), [](const auto *button) { return button->isDown(); });
}

} // namespace

QObject *controls::find(const QString &name)
{
    QStringList parts = name.split(u'.');
    QObject *found = findScreen(parts.takeFirst());
    for (const QString &part : parts) {
        QObject *child = found->findChild<QObject *>(objectNameOf(part));
        if (child == nullptr)
            refuse(QString("there is no control %1").arg(name));
        found = child;
    }
    return found;
}

QWidget *controls::findUsable(const QString &name)
{
    auto *widget = qobject_cast<QWidget *>(find(name));
    if (widget == nullptr)
        refuse(QString("%1 cannot be entered").arg(name));
    if (!widget->isVisible())
        refuse(QString("%1 is hidden").arg(name));
    if (!widget->isEnabled())
        refuse(QString("%1 is disabled").arg(name));
    return widget;
}

Grid *controls::findGrid(const QString &name)
{
    auto *grid = qobject_cast<Grid *>(find(name));
    if (grid == nullptr)
        refuse(QString("%1 is no grid").arg(name));
    return grid;
}

QString controls::nameOf(const QWidget *control)
{
    static const QRegularExpression indexed(QStringLiteral(R"(^(\w+)_(\d+)$)"));
    const Screen *screen = Screen::of(control);
    if (screen == nullptr)
        return {};
    QStringList parts;
    for (const QWidget *widget = control; widget != screen; widget = widget->parentWidget()) {
        const bool named = !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_");
        if (parts.isEmpty() ? named : widget->inherits("ClGrd"))
            parts.prepend(widget->objectName().replace(indexed, "\\1(\\2)"));
    }
    parts.prepend(screen->objectName());
    return parts.join(u'.');
}

QWidget *controls::focused()
{
    QWidget *popup = QApplication::activePopupWidget();
    return popup != nullptr && popup->parentWidget() != nullptr ? popup->parentWidget() : QApplication::focusWidget();
}

QStringList controls::openScreens()
{
    QStringList names;
    for (const Screen *screen : screens())
        names << screen->objectName();
    return names;
}

void controls::enter(QWidget *control)
{
    QApplication::setActiveWindow(control->window());
    if (!control->hasFocus() && keyTarget(control) == control)
        control->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    if (keyTarget(control) == control && !control->hasFocus())
        refuse("another field kept the focus");
}

void controls::setText(QWidget *control, const QString &text)
{
    enter(control);
    replaceText(keyTarget(control), text);
    QTest::keyClick(keyTarget(control), Qt::Key_Tab);
}

void controls::typeText(QWidget *control, const QString &text)
{
    enter(control);
    for (const QChar c : text)
        typeKeys(keyTarget(control), c);
}

void controls::choose(QWidget *control, const QString &text)
{
    if (control->focusPolicy() != Qt::NoFocus)
        enter(control);
    QStringList entries;
    if (auto *combo = qobject_cast<QComboBox *>(control)) {
        for (int i = 0; i < combo->count(); ++i)
            entries << combo->itemText(i);
        const int position = positionOf(text, entries, nameOf(control));
        combo->hidePopup(); // open, where a refusal opened it
        combo->setCurrentIndex(position);
        emit combo->activated(position);
    } else if (auto *list = qobject_cast<QListWidget *>(control)) {
        for (int i = 0; i < list->count(); ++i)
            entries << list->item(i)->text();
        list->setCurrentRow(positionOf(text, entries, nameOf(control)));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->currentItem()).center());
    } else {
        refuse(QString("%1 has no entries").arg(nameOf(control)));
    }
}

void controls::check(QWidget *control, bool on)
{
    auto *button = qobject_cast<QAbstractButton *>(control);
    if (button == nullptr || !button->isCheckable())
        refuse(QString("%1 is no check box").arg(nameOf(control)));
    if (button->isChecked() != on)
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}

void controls::click(QObject *control)
{
    if (auto *action = qobject_cast<QAction *>(control)) {
        if (!action->isEnabled())
            refuse("the entry is disabled");
        action->trigger();
        return;
    }
    QTest::mouseClick(qobject_cast<QWidget *>(control), Qt::LeftButton);
}

void controls::pressKey(QWidget *control, const QString &key)
{
    const bool letter = key.startsWith(u"Alt+");
    const Qt::Key pressed = letter ? static_cast<Qt::Key>(key.back().unicode()) : keyOf(key);
    enter(control);
    QTest::keyClick(keyTarget(control), pressed, letter ? Qt::AltModifier : Qt::NoModifier);
    // A button that its letter pressed clicks when it comes up again.
    const QPointer<Screen> screen = letter ? Screen::of(control) : nullptr;
    if (!QTest::qWaitFor([&] { return !screen || !anyDown(*screen); }))
        refuse("a button stays down");
}

void controls::editCell(Grid *grid, int row, int col, const QString &text)
{
    enter(grid);
    if (grid->isCheckCol(col)) {
        const bool on = text == u"on" || text == u"-1";
        const bool wasOn = Val(grid->TextMatrix(row, col)) != 0;
        grid->setCell(row, col);
        if (on != wasOn)
            QTest::keyClick(grid, Qt::Key_Space);
        return;
    }
    grid->setCell(row, col);
    if (!grid->isEditing() && !grid->EditCell())
        refuse("the cell cannot be edited");
    QWidget *editor = keyTarget(grid);
    if (auto *combo = qobject_cast<QComboBox *>(editor))
        combo->setCurrentText(text);
    else
        replaceText(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
}

void controls::doubleClick(Grid *grid)
{
    if (!grid->hasDataRow())
        refuse("the grid has no current row");
    const QModelIndex index = grid->currentIndex();
    if (!index.isValid())
        return; // the current row is hidden by a search: there is nothing to click on
    grid->scrollTo(index);
    const QPoint at = grid->visualRect(index).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
}

void controls::clickHeader(Grid *grid, int col)
{
    if (col < 0 || col >= grid->Cols() || grid->ColHidden(col))
        refuse(QString("there is no column %1").arg(col));
    QHeaderView *header = grid->horizontalHeader();
    const QPoint at(header->sectionViewportPosition(col) + header->sectionSize(col) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
}

QString controls::describe(const QObject *control)
{
    const auto *widget = qobject_cast<const QWidget *>(control);
    const auto *action = qobject_cast<const QAction *>(control);
    const bool enabled = widget != nullptr ? widget->isEnabled() : action != nullptr && action->isEnabled();
    const bool visible = widget != nullptr ? widget->isVisible() : action != nullptr && action->isVisible();
    QStringList fields{textOf(control), enabled ? "enabled" : "disabled", visible ? "visible" : "hidden"};
    if (const auto *button = qobject_cast<const QAbstractButton *>(control); button != nullptr && button->isCheckable())
        fields << stateWord(button->isChecked());
    return fields.join(u'\t');
}

QStringList controls::rowsOf(const Grid *grid)
{
    QStringList lines;
    for (int row = 0; row < grid->Rows(); ++row) {
        if (grid->RowHidden(row))
            continue;
        QStringList fields{QString::number(row)};
        for (int col = 0; col < grid->Cols(); ++col) {
            if (!grid->ColHidden(col))
                fields << cellOf(grid, row, col);
        }
        lines << fields.join(u'\t');
    }
    return lines;
}
