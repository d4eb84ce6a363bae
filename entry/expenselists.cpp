#include "entry/expenselists.h"

#include "context/modbase.h"
#include "controls/grid.h"
#include "platform/recordset.h"

#include <algorithm>

namespace {

std::vector<ExpenseChoice> readChoices(const QString &query, QStringView id, QStringView text)
{
    std::vector<ExpenseChoice> choices;
    Recordset rs;
    for (rs.Open(query, Cnn); !rs.Eof(); rs.MoveNext())
        choices.push_back({rs.Fields(id).whole(), rs.Fields(text).text()});
    return choices;
}

std::vector<ExpenseChoice> sorted(std::vector<ExpenseChoice> choices)
{
    std::stable_sort(choices.begin(), choices.end(), [](const ExpenseChoice &a, const ExpenseChoice &b) {
        return a.text.compare(b.text, Qt::CaseInsensitive) < 0;
    });
    return choices;
}

std::vector<ExpenseChoice> heads(int year)
{
    return readChoices(Sql("Select * from FBT_Head", year), u"HeadId", u"HeadDesc");
}

QString displayList(const std::vector<ExpenseChoice> &choices)
{
    QStringList entries;
    for (const ExpenseChoice &choice : choices)
        entries << Sql("#", choice.id, ";", choice.text);
    return entries.join(u'|');
}

} // namespace

std::vector<ExpenseChoice> HeadChoices(int year)
{
    return sorted(heads(year));
}

std::vector<ExpenseChoice> ItemChoices(int year, int headId)
{
    return sorted(readChoices(Sql("Select * from FBT_ExpHead", year, " Where HeadId=", headId), u"SrNo", u"expdesc"));
}

void GETITEMS(Grid *grid, int year)
{
    grid->setColComboList(1, displayList(heads(year)));
    grid->setColComboList(2, displayList(readChoices(Sql("Select * from FBT_ExpHead", year), u"SrNo", u"expdesc")));
}
