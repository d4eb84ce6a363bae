#include "masters/expenselaw.h"

#include "masters/inuse.h"
#include "platform/nextnumber.h"
#include "platform/recordset.h"
#include "platform/write.h"

#include <QHash>

namespace {

void takeRate(ExpenseItem &item, const Recordset &row, const QVector<Nature> &natures)
{
    const int nature = row.Fields(u"NatId").whole();
    for (qsizetype i = 0; i < natures.size(); ++i) {
        if (nature == natures[i].srNo || nature == 0)
            item.rates[i] = row.Fields(u"IntRt").text();
    }
}

} // namespace

QVector<ExpenseHead> ExpenseHeads(Connection *cnn, int year)
{
    QVector<ExpenseHead> heads;
    Recordset rows;
    for (rows.Open(Sql("select * from FBT_Head", year, " order by Section"), cnn); !rows.Eof(); rows.MoveNext())
        heads.append({rows.Fields(u"HeadId").whole(), rows.Fields(u"Section").text(), rows.Fields(u"HeadDesc").text()});
    return heads;
}

std::optional<int> AddExpenseHead(Connection *cnn, int year, const QString &section, const QString &text)
{
    const auto id = NextNumber(cnn, Sql("Select Max(HeadId) as MaxSr from FBT_ExpHead", year));
    if (id)
        Write(cnn, Sql("Insert into FBT_Head", year, " Values (", *id, ",'", section, "'", ",'", text, "')"));
    return id;
}

void ChangeExpenseHead(Connection *cnn, int year, const ExpenseHead &head)
{
    Write(cnn, Sql("Update FBT_Head", year, " Set Section='", head.section, "'", ",HeadDesc='", head.text,
                   "' Where HeadId=", head.headId));
}

std::optional<bool> ExpenseHeadInUse(Connection *cnn, int year, int headId)
{
    return FindsRow(cnn,
                    Sql("Select * from FBT_Detail INNER JOIN FBT_ExpHead", year, " ON FBT_Detail.ExpId=FBT_ExpHead",
                        year, ".SrNo and FBT_Detail.TYear=", year, " Where FBT_ExpHead", year, ".HeadId=", headId));
}

void DeleteExpenseHead(Connection *cnn, int year, int headId)
{
    Write(cnn, Sql("Delete from FBT_Head", year, " Where HeadId=", headId));
    // The rates go before the items: the join needs the items.
    Write(cnn, Sql("Delete FBT_ExpRate", year, " from FBT_ExpHead", year, ", FBT_ExpRate", year, " Where FBT_ExpHead",
                   year, ".HeadId=", headId, " and FBT_ExpHead", year, ".SrNo=FBT_ExpRate", year, ".SrNo"));
    Write(cnn, Sql("Delete from FBT_ExpHead", year, " Where HeadId=", headId));
}

QVector<ExpenseItem> ExpenseItems(Connection *cnn, int year, int headId, const QVector<Nature> &natures)
{
    QVector<ExpenseItem> items;
    QHash<int, qsizetype> places;
    Recordset rows;
    rows.Open(Sql("select * from FBT_ExpHead", year, " Left Join FBT_ExpRate", year, " on FBT_ExpHead", year,
                  ".SrNo=FBT_ExpRate", year, " .SrNo Where FBT_ExpHead", year, ".HeadId=", headId,
                  " order by FBT_ExpHead", year, ".SrNo"),
              cnn);
    for (; !rows.Eof(); rows.MoveNext()) {
        const int srNo = rows.Fields(0).whole(); // the item's own: an item without a rate has none behind the join
        if (!places.contains(srNo)) {
            places.insert(srNo, items.size());
            items.append({srNo, rows.Fields(u"ExpDesc").text(), QStringList(natures.size())});
        }
        takeRate(items[places.value(srNo)], rows, natures);
    }
    return items;
}

std::optional<int> NextExpenseItemNo(Connection *cnn, int year)
{
    return NextNumber(cnn, Sql("Select Max(SrNo) as MaxSr from FBT_ExpHead", year));
}

void SaveExpenseItem(Connection *cnn, int year, int headId, const ExpenseItem &item, const QVector<Nature> &natures)
{
    Write(cnn, Sql("Delete from FBT_ExpHead", year, " Where SrNo=", item.srNo));
    Write(cnn, Sql("Insert into FBT_ExpHead", year, " Values (", item.srNo, ",", headId, ",'", item.text, "')"));
    Write(cnn, Sql("Delete from FBT_ExpRate", year, " Where SrNo=", item.srNo));
    for (qsizetype i = 0; i < natures.size(); ++i)
        Write(cnn, Sql("Insert into FBT_ExpRate", year, " Values (", item.srNo, ",", natures[i].srNo, ",",
                       Val(item.rates.value(i)), ")"));
}

std::optional<bool> ExpenseItemInUse(Connection *cnn, int year, int srNo)
{
    return FindsRow(cnn, Sql("Select * from FBT_Detail Where TYear=", year, " and ExpId=", srNo));
}

void DeleteExpenseItem(Connection *cnn, int year, int srNo)
{
    Write(cnn, Sql("Delete from FBT_ExpHead", year, " Where SrNo=", srNo));
    Write(cnn, Sql("Delete from FBT_ExpRate", year, " Where SrNo=", srNo));
}
