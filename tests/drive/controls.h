#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class Grid;
class QWidget;

/// How a script finds and uses the controls of the open screens.
namespace controls {

/// The control of a name `SCREEN.CONTROL`, `SCREEN.CONTROL(INDEX)` or `SCREEN.PART.CONTROL`. ScriptError when there is
/// no such screen open or no such control on it.
QObject *find(const QString &name);

/// As find, but a widget that a user can reach: visible and enabled.
QWidget *findUsable(const QString &name);

Grid *findGrid(const QString &name);

/// The name by which a script reaches a control.
QString nameOf(const QWidget *control);

/// The control that has the focus; of an open list, the control that it belongs to. Null when there is none.
QWidget *focused();

/// The names of the open screens, from the bottom up.
QStringList openScreens();

/// Gives a control the focus as the keyboard does. ScriptError when another field kept it.
void enter(QWidget *control);

void setText(QWidget *control, const QString &text);  ///< enters, replaces, leaves
void typeText(QWidget *control, const QString &text); ///< keystrokes only
void choose(QWidget *control, const QString &text);
void check(QWidget *control, bool on);
void click(QObject *control);
void pressKey(QWidget *control, const QString &key);
void editCell(Grid *grid, int row, int col, const QString &text);
void doubleClick(Grid *grid);
void clickHeader(Grid *grid, int col);

/// TEXT<TAB>enabled|disabled<TAB>visible|hidden, for checks and options also <TAB>on|off.
QString describe(const QObject *control);

/// Every visible row of a grid: its number, then the displayed text of each visible column.
QStringList rowsOf(const Grid *grid);

} // namespace controls
