#include "entry/expenselists.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/grid.h"
#include "controls/screen.h"
#include "records/law.h"

#include <algorithm>

namespace {

std::vector<ExpenseChoice> choices(const RowsRead<ExpenseHead> &heads)
{
    std::vector<ExpenseChoice> list;
    for (const ExpenseHead &head : *heads)
        list.push_back({head.headId, head.text});
    return list;
}

std::vector<ExpenseChoice> choices(const RowsRead<ExpenseItem> &items)
{
    std::vector<ExpenseChoice> list;
    for (const ExpenseItem &item : *items)
        list.push_back({item.srNo, item.text});
    return list;
}

/// Sorted by description.
template<typename Row>
RowsRead<ExpenseChoice> sortedChoices(const RowsRead<Row> &rows)
{
    if (rows.failed())
        return RowsRead<ExpenseChoice>::failure();
    std::vector<ExpenseChoice> list = choices(rows);
    std::stable_sort(list.begin(), list.end(), [](const ExpenseChoice &a, const ExpenseChoice &b) {
        return a.text.compare(b.text, Qt::CaseInsensitive) < 0;
    });
    return list;
}

QString displayList(const std::vector<ExpenseChoice> &list)
{
    std::vector<TranslationList::Entry> entries;
    entries.reserve(list.size());
    for (const ExpenseChoice &choice : list)
        entries.push_back({QString::number(choice.id), choice.text});
    return TranslationList::listOf(entries);
}

} // namespace

RowsRead<ExpenseChoice> HeadChoices(int year)
{
    return sortedChoices(ExpenseHeads(Cnn, year));
}

RowsRead<ExpenseChoice> ItemChoices(int year, int headId)
{
    return sortedChoices(ExpenseItems(Cnn, year, headId));
}

QString HeadText(int headId)
{
    return headId == 0 ? QString() : QString::number(headId);
}

void GETITEMS(Grid *grid, int year)
{
    ErrorTail tail(Screen::of(grid), QStringLiteral("GETITEMS"));
    const RowsRead<ExpenseHead> heads = ExpenseHeads(Cnn, year);
    const RowsRead<ExpenseItem> items = ExpenseItems(Cnn, year);
    grid->setColComboList(1, displayList(choices(heads)));
    grid->setColComboList(2, displayList(choices(items)));
    Screen::of(grid)->noteReading(itemTexts, !heads.failed() && !items.failed());
}
