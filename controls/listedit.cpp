#include "controls/listedit.h"

#include "controls/grid.h"
#include "controls/msgbox.h"
#include "controls/screen.h"

#include <QAbstractButton>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

ListEdit::ListEdit(Screen *screen, const Controls &controls, const Procedures &procedures)
    : QObject(screen)
    , m_screen(screen)
    , m_controls(controls)
    , m_procedures(procedures)
{
    connectButtons();
    connect(m_controls.vsf, &Grid::sorted, this, &ListEdit::GETSRNOS);
    connect(m_controls.vsf, &Grid::rowColChange, this,
            [this](int oldRow, int, int newRow, int) { rowChanged(oldRow, newRow); });
}

void ListEdit::connectButtons()
{
    const auto clicked = [this](QAbstractButton *button, const std::function<void()> &act) {
        if (button != nullptr && act)
            connect(button, &QAbstractButton::clicked, this, act);
    };
    clicked(m_controls.cmdadd, [this] { CMDADD_CLICK(); });
    clicked(m_controls.cmdmodify, [this] { CMDMODIFY_CLICK(); });
    clicked(m_controls.cmdcancel, [this] { CMDCANCEL_CLICK(); });
    clicked(m_controls.cmdback, [this] { CMDBACK_CLICK(); });
    clicked(m_controls.cmdupdate, m_procedures.CMDUPDATE_CLICK);
    clicked(m_controls.cmddelete, m_procedures.CMDDELETE_CLICK);
    if (m_controls.cmdcancel != nullptr)
        m_controls.cmdcancel->setProperty("causesCheck", false); // cancelling a wrong entry must not be held up by it
}

bool ListEdit::editing() const
{
    // Its own state: an outer frame may be disabled for reasons of its own.
    return m_controls.editFrame->isEnabledTo(m_controls.editFrame->parentWidget());
}

void ListEdit::FORM_LOAD()
{
    LOADGRID();
    SETBUTTON(true);
    LOADDATA();
}

void ListEdit::LOADGRID()
{
    Grid *vsf = m_controls.vsf;
    const QScopedValueRollback filling(m_filling, true);
    vsf->setRedraw(false);
    vsf->clearBody();
    m_procedures.addRows();
    GETSRNOS();
    if (vsf->Rows() > vsf->FixedRows())
        vsf->setRow(vsf->FixedRows());
    vsf->setRedraw(true);
}

void ListEdit::GETSRNOS()
{
    Grid *vsf = m_controls.vsf;
    vsf->setRedraw(false);
    const int fixed = vsf->FixedRows();
    for (int row = fixed; row < vsf->Rows(); ++row)
        vsf->setTextMatrix(row, 0, QString::number(row - fixed + 1));
    vsf->setRedraw(true);
}

void ListEdit::LOADDATA()
{
    m_procedures.CLEARDATA();
    if (m_controls.vsf->hasDataRow())
        m_procedures.showRow(m_controls.vsf->Row());
    enableForRow();
}

void ListEdit::enableForRow()
{
    const bool row = m_controls.vsf->hasDataRow();
    const auto hasFocus = [](const QWidget *control) { return control->hasFocus(); };
    if (!row && std::ranges::any_of(m_controls.rowOnly, hasFocus))
        focus(m_controls.cmdadd);
    setEnabled(m_controls.rowOnly, row);
}

void ListEdit::SETBUTTON(bool Browse)
{
    const Controls &c = m_controls;
    // The side that gets enabled comes first: the focus then never falls on a control of another part of the screen.
    const QList<QWidget *> browse =
        QList<QWidget *>{c.vsf, c.cmdadd, c.cmdmodify, c.cmddelete, c.cmdback} + c.browseOnly;
    const QList<QWidget *> edit = QList<QWidget *>{c.editFrame, c.cmdcancel, c.cmdupdate} + c.editOnly;
    setEnabled(Browse ? browse : edit, true);
    if (!Browse)
        focus(c.firstField);
    setEnabled(Browse ? edit : browse, false);
}

void ListEdit::CMDADD_CLICK()
{
    if (m_procedures.mayAdd && !m_procedures.mayAdd())
        return;
    m_adding = true;
    m_refused = false;
    m_procedures.CLEARDATA();
    SETBUTTON(false);
}

void ListEdit::CMDMODIFY_CLICK()
{
    if (!m_controls.vsf->hasDataRow() || (m_procedures.mayModify && !m_procedures.mayModify()))
        return;
    m_adding = false;
    m_refused = false;
    SETBUTTON(false);
}

void ListEdit::CMDCANCEL_CLICK()
{
    SETBUTTON(true);
    if (std::exchange(m_refused, false) && m_procedures.reload)
        m_procedures.reload();
    else
        LOADDATA();
    focus(std::exchange(m_adding, false) ? m_controls.cmdadd : m_controls.cmdmodify);
}

void ListEdit::CMDBACK_CLICK()
{
    m_screen->FORM_KEYPRESS(Screen::escapeKey);
}

bool ListEdit::escape()
{
    if (!editing())
        return false;
    if (MsgBox(m_screen, QStringLiteral("Do you want to Cancel the Entry?"), Buttons::YesNo) == Reply::Yes)
        CMDCANCEL_CLICK();
    return true;
}

void ListEdit::selectRow(int row)
{
    const QScopedValueRollback filling(m_filling, true);
    m_controls.vsf->setRow(row);
}

void ListEdit::endEdit()
{
    SETBUTTON(true);
    LOADDATA();
    focus(std::exchange(m_adding, false) ? static_cast<QWidget *>(m_controls.cmdadd) : m_controls.vsf);
}

void ListEdit::notSaved()
{
    m_refused = true;
    focus(m_controls.firstField);
}

void ListEdit::deleted()
{
    {
        const QScopedValueRollback filling(m_filling, true);
        m_controls.vsf->RemoveItem(m_controls.vsf->Row());
    }
    GETSRNOS();
    LOADDATA();
}

void ListEdit::rowChanged(int oldRow, int newRow)
{
    if (!m_filling && oldRow != newRow && m_controls.vsf->isEnabled())
        LOADDATA();
}

void ListEdit::setEnabled(const QList<QWidget *> &controls, bool enabled)
{
    for (QWidget *control : controls) {
        if (control != nullptr)
            control->setEnabled(enabled);
    }
}

void ListEdit::focus(QWidget *control)
{
    if (control != nullptr)
        control->setFocus(Qt::OtherFocusReason);
}
