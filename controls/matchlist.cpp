#include "controls/matchlist.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace {

constexpr int IdCol = 0;
constexpr int TextCol = 1;
constexpr int RowsShown = 10;

} // namespace

MatchList::MatchList(QWidget *parent)
    : Grid(parent)
{
    setCols(2);
    setColHidden(IdCol, true);
    setStretchCol(TextCol);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setFocusPolicy(Qt::NoFocus);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QAbstractItemView::clicked, this, &MatchList::picked);
    hide();
}

void MatchList::setHeader(const QString &text)
{
    setTextMatrix(0, TextCol, text);
    gridModel()->setRowHidden(0, text.isEmpty());
}

void MatchList::setItems(const std::vector<Item> &items)
{
    setRedraw(false);
    clearBody();
    for (const Item &item : items)
        AddItem({item.id, item.text});
    setRedraw(true);
    if (isVisible())
        place();
}

void MatchList::showUnder(QLineEdit *field)
{
    if (m_field != field) {
        if (m_field)
            m_field->disconnect(this);
        m_field = field;
        field->installEventFilter(this);
        connect(field, &QLineEdit::textChanged, this, &MatchList::changed);
        connect(field, &QLineEdit::textEdited, this, &MatchList::edited);
    }
    if (m_mode == Mode::Filter)
        return;
    place();
    show();
    raise();
}

/// Under the field, or above it where there is more room; never over the edge of the screen's page.
void MatchList::place()
{
    const QWidget *page = parentWidget();
    const QWidget *field = m_field;
    if (!field || !page)
        return;
    constexpr int leastWidth = 240;
    const int line = verticalHeader()->defaultSectionSize();
    const int rows = std::clamp(visibleRowCount(), 2, RowsShown);
    const int wanted = horizontalHeader()->sizeHint().height() + rows * line + 2 * frameWidth();
    const QPoint corner = field->mapTo(page, QPoint(0, field->height()));
    const int below = page->height() - corner.y();
    const int above = corner.y() - field->height();
    const bool under = below >= std::min(wanted, above);
    const int height = std::min(wanted, std::max(under ? below : above, 3 * line));
    const int room = std::max(page->width() - corner.x(), leastWidth / 2);
    const int width = std::min(std::max(field->width(), leastWidth), room);
    setGeometry(corner.x(), under ? corner.y() : above - height, width, height);
}

void MatchList::dismiss()
{
    if (isHidden())
        return;
    hide();
    emit dismissed();
}

void MatchList::hideEvent(QHideEvent *event)
{
    Grid::hideEvent(event);
    if (!m_field || !isHidden()) // a page that goes to the back keeps its list
        return;
    if (m_mode == Mode::Select) {
        m_field->removeEventFilter(this);
        m_field->disconnect(this);
        m_field = nullptr;
    }
}

QString MatchList::currentId() const
{
    return hasDataRow() ? TextMatrix(Row(), IdCol) : QString();
}

QString MatchList::currentText() const
{
    return hasDataRow() ? TextMatrix(Row(), TextCol) : QString();
}

bool MatchList::selectId(const QString &id)
{
    const int row = FindRow(id, FixedRows(), IdCol, true);
    setCell(std::max(row, 0), TextCol);
    ShowCell(row, TextCol);
    return row >= 0;
}

bool MatchList::selectPrefix(const QString &text)
{
    const int row = FindRow(text, FixedRows(), TextCol, false, false);
    if (row < 0)
        return false;
    setCell(row, TextCol);
    ShowCell(row, TextCol);
    return true;
}

void MatchList::edited(const QString &typed)
{
    if (m_mode == Mode::Select && !typed.isEmpty())
        selectPrefix(typed);
}

/// Text put in by other ways than typing counts too, while the user is in the field.
void MatchList::changed(const QString &text)
{
    if (m_mode == Mode::Filter && m_field && m_field->hasFocus())
        filter(text);
}

void MatchList::filter(const QString &typed)
{
    setRowsVisible([&](int row) { return TextMatrix(row, TextCol).startsWith(typed); });
    setVisible(visibleRowCount() > 0);
    if (isVisible()) {
        place();
        raise();
    }
}

bool MatchList::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && isVisible() && event->type() == QEvent::KeyPress)
        return move(static_cast<QKeyEvent *>(event)->key());
    if (watched == m_field && m_mode == Mode::Filter && event->type() == QEvent::FocusOut)
        hide();
    return Grid::eventFilter(watched, event);
}

bool MatchList::move(int key)
{
    const int page = std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
    switch (key) {
    case Qt::Key_Up:
        moveBy(-1);
        return true;
    case Qt::Key_Down:
        moveBy(1);
        return true;
    case Qt::Key_PageUp:
        moveBy(-page);
        return true;
    case Qt::Key_PageDown:
        moveBy(page);
        return true;
    default:
        return false;
    }
}

void MatchList::moveBy(int steps)
{
    const int last = visibleRowCount() - 1;
    if (last < 0)
        return;
    const int now = hasDataRow() ? gridModel()->viewRow(Row()) : -1;
    const int row = gridModel()->gridRow(std::clamp(now + steps, 0, last));
    setCell(row, TextCol);
    ShowCell(row, TextCol);
}
