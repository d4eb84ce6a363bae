#pragma once

#include "platform/offer.h"

#include <QList>
#include <QObject>

#include <functional>

class Grid;
class QAbstractButton;
class QWidget;
class Screen;

/// The wiring that all list-and-edit screens share: a grid of records beside a frame of edit fields, with buttons to
/// add, modify, delete, save, cancel and go back. Two states, browse and edit; `Adding()` tells the two kinds of edit
/// apart. A screen with two levels has two of these.
///
/// The screen gives its controls and the procedures that are its own, by name; the buttons are connected here.
/// `RowList` (controls/rowlist.h) adds typed records and columns. The screen hands Escape on to `escape()`:
///
///     bool FORM_KEYPRESS(int key) override { return (key == 27 && m_list->escape()) || Screen::FORM_KEYPRESS(key); }
class FBT_OFFERED ListEdit : public QObject
{
    Q_OBJECT

public:
    /// The controls; those that a screen has not stay null.
    struct Controls
    {
        Grid *vsf = nullptr;
        QWidget *editFrame = nullptr;
        QWidget *firstField = nullptr; ///< gets the focus when an edit begins
        QAbstractButton *cmdadd = nullptr;
        QAbstractButton *cmdmodify = nullptr;
        QAbstractButton *cmddelete = nullptr;
        QAbstractButton *cmdupdate = nullptr;
        QAbstractButton *cmdcancel = nullptr;
        QAbstractButton *cmdback = nullptr;
        QList<QWidget *> browseOnly = {}; ///< further controls, enabled while browsing
        QList<QWidget *> editOnly = {};   ///< further controls, enabled while editing
        QList<QWidget *> rowOnly = {};    ///< of those for browsing, what is enabled only with a current row
    };

    /// The controls of a screen with one list, by the names that they have in its drawing.
    template<class Ui>
    static Controls ofList(const Ui &ui, QWidget *firstField)
    {
        return {.vsf = ui.vsf,
                .editFrame = ui.Frame2,
                .firstField = firstField,
                .cmdadd = ui.cmdadd,
                .cmdmodify = ui.cmdmodify,
                .cmddelete = ui.cmddelete,
                .cmdupdate = ui.cmdupdate,
                .cmdcancel = ui.cmdcancel,
                .cmdback = ui.cmdback};
    }
    /// The same of a list of expenses. The button that goes back is the screen's affair where it is on two levels.
    template<class Ui>
    static Controls ofExpenses(const Ui &ui, QAbstractButton *cmdback, const QList<QWidget *> &browseOnly)
    {
        return {.vsf = ui.vsf2,
                .editFrame = ui.Frame4,
                .firstField = ui.txtdedflds_0,
                .cmdadd = ui.cmdaddded,
                .cmdmodify = ui.cmdmodifyded,
                .cmddelete = ui.cmddeleteded,
                .cmdupdate = ui.cmdupdateded,
                .cmdcancel = ui.cmdcancelded,
                .cmdback = cmdback,
                .browseOnly = browseOnly};
    }
    /// The same, where nothing can be changed or deleted without a current row.
    template<class Ui>
    static Controls ofEntries(const Ui &ui, const QList<QWidget *> &browseOnly)
    {
        Controls controls = ofExpenses(ui, ui.cmdback, browseOnly);
        controls.rowOnly = {ui.cmdmodifyded, ui.cmddeleteded};
        return controls;
    }

    /// The screen's own procedures. The first three must be there.
    struct Procedures
    {
        std::function<void()> addRows;         ///< adds a grid row for each record (the query of LOADGRID)
        std::function<void()> CLEARDATA;       ///< empties the edit fields
        std::function<void(int row)> showRow;  ///< copies a data row to the edit fields (LOADDATA after CLEARDATA)
        std::function<void()> CMDUPDATE_CLICK; ///< checks and saves, and ends in `endEdit` when it did
        std::function<void()> CMDDELETE_CLICK; ///< asks and deletes, and ends in `deleted` when it did
        std::function<bool()> mayAdd = {};     ///< false, after telling why, keeps an addition from beginning
        std::function<bool()> mayModify = {};  ///< the same for a change of the current data row
        std::function<void()> reload = {};     ///< fills the grid anew and shows its current row; without it it stays
    };

    ListEdit(Screen *screen, const Controls &controls, const Procedures &procedures);

    [[nodiscard]] bool Adding() const { return m_adding; }
    [[nodiscard]] bool editing() const; ///< whether the edit frame is enabled

    void FORM_LOAD(); ///< LOADGRID, SETBUTTON true, LOADDATA
    void LOADGRID();  ///< fills the grid anew, numbers it and selects its first data row
    void GETSRNOS();  ///< writes 1, 2, 3, ... in column 0
    /// The current row, if a data row is current, to the edit fields; else they are empty. A button that needs a row
    /// hands its focus on to `cmdadd` when the last one is gone.
    void LOADDATA();
    void SETBUTTON(bool Browse); ///< true: the list can be worked in; false: the edit frame

    void CMDADD_CLICK();
    void CMDMODIFY_CLICK();
    /// After a save that was refused the grid is filled anew: the row may have gone meanwhile.
    void CMDCANCEL_CLICK();
    void CMDBACK_CLICK(); ///< acts as the Escape key

    /// Escape: in an edit, asks "Do you want to Cancel the Entry?" and cancels on Yes, and returns true. While browsing
    /// it does nothing and returns false.
    bool escape();

    /// After a save, with the grid filled anew: back to browsing. The focus goes to the grid after a change, to `cmdadd`
    /// after an addition.
    void endEdit();

    /// After a save that failed, which the fault itself has told: back to the first field. What was typed stays.
    void notSaved();

    /// After a delete: removes the current grid row, renumbers and shows the row that is current now.
    void deleted();

protected:
    void selectRow(int row); ///< without showing it in the edit fields yet

private:
    void connectButtons();
    void rowChanged(int oldRow, int newRow);
    void enableForRow();
    static void setEnabled(const QList<QWidget *> &controls, bool enabled);
    static void focus(QWidget *control);

    Screen *m_screen; // its parent
    Controls m_controls;
    Procedures m_procedures;
    bool m_adding = false;
    bool m_refused = false; // the edit in hand was not saved
    bool m_filling = false;
};
