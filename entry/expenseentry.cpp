#include "entry/expenseentry.h"

#include "context/errortail.h"
#include "controls/screen.h"

#include <QPalette>

#include <utility>

namespace {

std::vector<MatchList::Item> listItems(const std::vector<ExpenseChoice> &choices)
{
    std::vector<MatchList::Item> items;
    items.reserve(choices.size());
    for (const ExpenseChoice &choice : choices)
        items.push_back({QString::number(choice.id), choice.text});
    return items;
}

QColor mixed(const QColor &paper, const QColor &ink)
{
    constexpr float share = 0.18F;
    const auto mix = [](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(paper.redF(), ink.redF()), mix(paper.greenF(), ink.greenF()),
                            mix(paper.blueF(), ink.blueF()));
}

/// Sets the field off while its list is open.
void colour(QLineEdit *field, bool on)
{
    field->setPalette(QPalette());
    if (!on)
        return;
    const QPalette plain = field->palette();
    QPalette palette;
    palette.setColor(QPalette::Base, mixed(plain.color(QPalette::Base), plain.color(QPalette::Highlight)));
    field->setPalette(palette);
}

} // namespace

ExpenseEntry::ExpenseEntry(Screen *screen, const Controls &controls)
    : QObject(screen)
    , m_list(controls.list)
    , m_next(controls.next)
    , m_head{controls.head}
    , m_item{controls.item}
{
    connect(screen, &Screen::entered, this, &ExpenseEntry::enter);
    connect(screen, &Screen::left, this, &ExpenseEntry::leave);
    connect(m_list, &MatchList::picked, this,
            [this] { (m_open == &m_head ? m_item.field : m_next)->setFocus(Qt::OtherFocusReason); });
    connect(m_list, &MatchList::dismissed, this, &ExpenseEntry::dismissed);
    for (Picked *picked : {&m_head, &m_item})
        connect(picked->field, &QLineEdit::textEdited, this,
                [this, picked](const QString &text) { typed(*picked, text); });
}

void ExpenseEntry::clear()
{
    show(0, QString(), 0, QString());
}

void ExpenseEntry::show(int headId, const QString &head, int expId, const QString &item)
{
    close();
    set(m_head, headId, head);
    set(m_item, expId, item);
}

void ExpenseEntry::commit()
{
    if (m_open == nullptr)
        return;
    take();
    close();
}

bool ExpenseEntry::itemChosen()
{
    if (m_item.id != 0)
        return true;
    MsgBox(Screen::of(m_item.field), QStringLiteral("Please specify Nature of Expenses."), Buttons::Ok,
           Icon::Exclamation);
    m_item.field->setFocus(Qt::OtherFocusReason);
    if (m_open != &m_item)
        open(m_item);
    return false;
}

void ExpenseEntry::LOADHEADS()
{
    ErrorTail tail(parent());
    m_list->setHeader(QStringLiteral("Head of Expenses"));
    setList(HeadChoices(m_year), QStringLiteral("heads of expenses"));
}

void ExpenseEntry::LOADEXPHEADS()
{
    ErrorTail tail(parent());
    m_list->setHeader(QStringLiteral("Nature of Expenses"));
    setList(ItemChoices(m_year, m_head.id), QStringLiteral("natures of expenses"));
}

void ExpenseEntry::setList(const RowsRead<ExpenseChoice> &choices, const QString &what)
{
    Screen::of(m_list)->noteReading(what, !choices.failed());
    m_list->setItems(listItems(*choices));
}

ExpenseEntry::Picked *ExpenseEntry::pickedAt(const QWidget *widget)
{
    for (Picked *picked : {&m_head, &m_item}) {
        if (picked->field == widget)
            return picked;
    }
    return nullptr;
}

void ExpenseEntry::enter(QWidget *widget)
{
    if (Picked *picked = pickedAt(widget))
        open(*picked);
}

void ExpenseEntry::leave(QWidget *widget)
{
    if (m_open != nullptr && m_open->field == widget)
        commit();
}

void ExpenseEntry::typed(Picked &picked, const QString &text)
{
    if (m_open == &picked)
        return; // the list follows by itself
    open(picked);
    m_list->selectPrefix(text);
}

void ExpenseEntry::open(Picked &picked)
{
    close();
    if (&picked == &m_head)
        LOADHEADS();
    else
        LOADEXPHEADS();
    m_open = &picked;
    m_list->showUnder(picked.field);
    m_list->selectId(QString::number(picked.id));
    colour(picked.field, true);
}

void ExpenseEntry::close()
{
    if (Picked *picked = std::exchange(m_open, nullptr)) {
        colour(picked->field, false);
        m_list->hide();
    }
}

/// A list without the entry, since the year's law does not know it or could not be read, changes nothing.
void ExpenseEntry::take()
{
    if (m_list->hasDataRow())
        set(*m_open, m_list->currentId().toInt(), m_list->currentText());
    else
        m_open->field->setText(m_open->text);
}

void ExpenseEntry::dismissed()
{
    if (Picked *picked = m_open) {
        close();
        set(*picked, 0, QString());
    }
}

void ExpenseEntry::set(Picked &picked, int id, const QString &text)
{
    if (&picked == &m_head && id != m_head.id)
        set(m_item, 0, QString());
    picked.id = id;
    picked.text = text;
    picked.field->setText(text);
}
