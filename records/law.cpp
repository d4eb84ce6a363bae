#include "records/law.h"

#include "platform/text.h"
#include "records/change.h"
#include "records/readrows.h"

#include <algorithm>

namespace {

ExpenseItem itemOf(const Recordset &row)
{
    // By place: after the join with the rates the name stands there twice, and without a rate the second is `Null`.
    return {row.Fields(0).whole(), row.Fields(u"ExpDesc").text()};
}

QString maximumItem(int year)
{
    return Sql("Select Max(SrNo) as MaxSr from FBT_ExpHead", year);
}

bool writeRates(Change &change, int year, int srNo, const std::vector<NatureRate> &rates)
{
    return std::all_of(rates.begin(), rates.end(), [&](const NatureRate &rate) {
        return change.write(
            Sql("Insert into FBT_ExpRate", year, " Values (", srNo, ",", rate.natId, ",", Val(rate.percent), ")"));
    });
}

SqlText deleteItem(int year, int srNo)
{
    return Sql("Delete from FBT_ExpHead", year, " Where SrNo=", srNo);
}

/// After `deleteItem`.
bool writeItem(Change &change, int year, int headId, const ExpenseItem &item, const std::vector<NatureRate> &rates)
{
    return change.write(
               Sql("Insert into FBT_ExpHead", year, " Values (", item.srNo, ",", headId, ",'", item.text, "')")) &&
           change.write(Sql("Delete from FBT_ExpRate", year, " Where SrNo=", item.srNo)) &&
           writeRates(change, year, item.srNo, rates);
}

/// Two heads can have one number; their texts tell them apart.
SqlText isHead(const ExpenseHead &head)
{
    return Sql(" Where HeadId=", head.headId, " and Coalesce(Section,'')=", Quoted(head.section),
               " and Coalesce(HeadDesc,'')=", Quoted(head.text));
}

bool deleteItemsOf(Change &change, int year, int headId)
{
    // The rates go before the items: the join needs the items.
    return change.write(Sql("Delete FBT_ExpRate", year, " from FBT_ExpHead", year, ", FBT_ExpRate", year,
                            " Where FBT_ExpHead", year, ".HeadId=", headId, " and FBT_ExpHead", year,
                            ".SrNo=FBT_ExpRate", year, ".SrNo")) &&
           change.write(Sql("Delete from FBT_ExpHead", year, " Where HeadId=", headId));
}

} // namespace

RowsRead<ExpenseHead> ExpenseHeads(Connection *cnn, int year)
{
    return ReadRows(cnn, Sql("select * from FBT_Head", year, " order by Section"), [](const Recordset &row) {
        return ExpenseHead{row.Fields(u"HeadId").whole(), row.Fields(u"Section").text(),
                           row.Fields(u"HeadDesc").text()};
    });
}

bool AddExpenseHead(Connection *cnn, int year, ExpenseHead *head)
{
    return ChangeTogether(cnn, [&](Change &change) {
        const auto id = change.nextNumber(Joined("FBT_ExpHead", year), {},
                                          Sql("Select Max(HeadId) as MaxSr from FBT_ExpHead", year));
        head->headId = id.value_or(0);
        return id && change.write(Sql("Insert into FBT_Head", year, " Values (", *id, ",'", head->section, "'", ",'",
                                      head->text, "')"));
    });
}

bool ChangeExpenseHead(Connection *cnn, int year, const ExpenseHead &before, const ExpenseHead &head)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return change.rewrite(Sql("Update FBT_Head", year, " Set Section='", head.section, "'", ",HeadDesc='",
                                  head.text, "'", isHead(before)));
    });
}

std::optional<bool> ExpenseHeadInUse(Connection *cnn, int year, int headId)
{
    return FindsRowAgainst(Doing::Delete, cnn,
                           Sql("Select * from FBT_Detail INNER JOIN FBT_ExpHead", year,
                               " ON FBT_Detail.ExpId=FBT_ExpHead", year, ".SrNo and FBT_Detail.TYear=", year,
                               " Where FBT_ExpHead", year, ".HeadId=", headId));
}

bool DeleteExpenseHead(Connection *cnn, int year, const ExpenseHead &head)
{
    const auto remove = [&](Change &change) {
        if (!change.remove(Sql("Delete from FBT_Head", year, isHead(head))))
            return false;
        const auto shared = FindsRow(cnn, Sql("Select * from FBT_Head", year, " Where HeadId=", head.headId));
        return shared && (*shared || deleteItemsOf(change, year, head.headId));
    };
    return ChangeTogether(cnn, remove, Doing::Delete);
}

RowsRead<ExpenseItem> ExpenseItems(Connection *cnn, int year)
{
    return ReadRows(cnn, Sql("Select * from FBT_ExpHead", year), itemOf);
}

RowsRead<ExpenseItem> ExpenseItems(Connection *cnn, int year, int headId)
{
    return ReadRows(cnn, Sql("Select * from FBT_ExpHead", year, " Where HeadId=", headId), itemOf);
}

RowsRead<RatedItem> RatedItems(Connection *cnn, int year, int headId)
{
    auto joined = ReadRows(cnn,
                           Sql("select * from FBT_ExpHead", year, " Left Join FBT_ExpRate", year, " on FBT_ExpHead",
                               year, ".SrNo=FBT_ExpRate", year, " .SrNo Where FBT_ExpHead", year, ".HeadId=", headId,
                               " order by FBT_ExpHead", year, ".SrNo"),
                           [](const Recordset &row) {
                               const Field nature = row.Fields(u"NatId");
                               RatedItem one{itemOf(row), {}};
                               if (!nature.isNull())
                                   one.rates.push_back({nature.whole(), row.Fields(u"IntRt").text()});
                               return one;
                           });
    if (joined.failed())
        return joined;
    std::vector<RatedItem> items;
    for (const RatedItem &one : *joined) {
        if (items.empty() || items.back().item.srNo != one.item.srNo)
            items.push_back(one);
        else
            items.back().rates.insert(items.back().rates.end(), one.rates.begin(), one.rates.end());
    }
    return items;
}

std::optional<int> AddRatedItem(Connection *cnn, int year, int headId, const RatedItem &item)
{
    std::optional<int> srNo;
    const bool added = ChangeTogether(cnn, [&](Change &change) {
        srNo = change.nextNumber(Joined("FBT_ExpHead", year), {}, maximumItem(year));
        return srNo && change.write(deleteItem(year, *srNo)) &&
               writeItem(change, year, headId, {*srNo, item.item.text}, item.rates);
    });
    return added ? srNo : std::nullopt;
}

bool ChangeRatedItem(Connection *cnn, int year, int headId, const RatedItem &item)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return change.rewrite(deleteItem(year, item.item.srNo)) &&
               writeItem(change, year, headId, item.item, item.rates);
    });
}

std::optional<bool> ExpenseItemInUse(Connection *cnn, int year, int srNo)
{
    return FindsRowAgainst(Doing::Delete, cnn, Sql("Select * from FBT_Detail Where TYear=", year, " and ExpId=", srNo));
}

bool DeleteExpenseItem(Connection *cnn, int year, int srNo)
{
    const auto remove = [=](Change &change) {
        return change.remove(deleteItem(year, srNo)) &&
               change.write(Sql("Delete from FBT_ExpRate", year, " Where SrNo=", srNo));
    };
    return ChangeTogether(cnn, remove, Doing::Delete);
}
