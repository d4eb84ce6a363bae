#pragma once

#include "controls/matchlist.h"
#include "entry/expenselists.h"

#include <QLineEdit>
#include <QObject>

class Screen;

/// Entry of an expense by its head and its item, each picked from a list under the field. Entering a field shows the
/// list, typing moves in it, and leaving the field takes the selected entry: what is not in the list cannot be entered, but
/// stays when it was there before. A list that could not be read says so on the screen.
/// Escape empties the field and puts the list away; typing brings it back. Another head clears the item.
class ExpenseEntry : public QObject
{
    Q_OBJECT

public:
    struct Controls
    {
        QLineEdit *head = nullptr;
        QLineEdit *item = nullptr;
        QLineEdit *next = nullptr; ///< where a click on an item leads
        MatchList *list = nullptr;
    };

    ExpenseEntry(Screen *screen, const Controls &controls);

    /// The assessment year whose heads and items are listed, by its first calendar year.
    void setYear(int year) { m_year = year; }

    /// Shows nothing, as before an addition.
    void clear();

    /// Shows an expense as it stands in a list of expenses.
    void show(int headId, const QString &head, int expId, const QString &item);

    /// The item entered, 0 for none.
    [[nodiscard]] int expId() const { return m_item.id; }

    /// Takes what is selected in an open list, as leaving its field does. A save by its key comes without leaving.
    void commit();

    /// Whether an item is entered. Without one, tells the user so, and goes there with its list open.
    bool itemChosen();

private:
    struct Picked
    {
        QLineEdit *field = nullptr;
        int id = 0;
        QString text = {}; // of what was picked; the field may hold what is being typed
    };

    void LOADHEADS();
    void LOADEXPHEADS();
    void setList(const RowsRead<ExpenseChoice> &choices, const QString &what);
    void enter(QWidget *widget);
    void leave(QWidget *widget);
    void typed(Picked &picked, const QString &text);
    void open(Picked &picked);
    void close();
    void take();
    void dismissed();
    void set(Picked &picked, int id, const QString &text);
    [[nodiscard]] Picked *pickedAt(const QWidget *widget);

    MatchList *m_list;
    QLineEdit *m_next;
    Picked m_head;
    Picked m_item;
    int m_year = 0;
    Picked *m_open = nullptr; // the field whose list is shown
};
