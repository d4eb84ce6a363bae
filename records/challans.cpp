#include "records/challans.h"

#include "records/change.h"
#include "records/readrows.h"
#include "records/rowkey.h"

#include <algorithm>

namespace {

SqlText ofClient(const ClientYear &client)
{
    return Sql(" where code_no=", Quoted(client.code), " and t_year=", client.year);
}

SqlText ofKind(PaymentKind kind)
{
    switch (kind) {
    case PaymentKind::Advance:
        return Sql(" and PayType='", advanceTax, "'");
    case PaymentKind::Other:
        return Sql(" and paytype<>'", advanceTax, "'");
    default:
        return {};
    }
}

SqlText select(const ClientYear &client, PaymentKind kind)
{
    return Sql("Select * from FBT_Challan", ofClient(client), ofKind(kind),
               kind == PaymentKind::Other ? Sql(" Order by Quarter,SrNo") : SqlText());
}

ChallanRecord recordOf(const Recordset &rs)
{
    const auto text = [&rs](QStringView column) { return rs.Fields(column).text(); };
    const auto amount = [&rs](QStringView column) { return rs.Fields(column).num(); };
    const auto whole = [&rs](QStringView column) { return rs.Fields(column).whole(); };
    ChallanRecord row;
    row.quarter = whole(u"quarter");
    row.srNo = whole(u"srno");
    row.payType = text(u"paytype");
    row.date = text(u"challan_dt");
    row.ITAmt = amount(u"ITAmt");
    row.SCAmt = amount(u"SCAmt");
    row.ECAmt = amount(u"ECAmt");
    row.ECAmt1 = amount(u"ECAmt1");
    row.IntAmt = amount(u"IntAmt");
    row.PenAmt = amount(u"PenAmt");
    row.OthAmt = amount(u"OthAmt");
    row.TotAmt = amount(u"TotAmt");
    row.payMode = text(u"paymode");
    row.chequeNo = text(u"chq_no");
    row.chequeDate = text(u"chq_dt");
    row.bankName = text(u"bank_nm");
    row.challanNo = text(u"ChallanNo");
    row.bank = whole(u"BSRCode");
    return row;
}

double firstNumber(const Recordset &rs)
{
    return rs.Fields(0).num();
}

std::optional<int> nextNumber(Change &change, const ClientYear &client, int quarter)
{
    return change.nextNumber(
        QStringLiteral("FBT_Challan"), client.code,
        Sql("Select max(srno) as maxsr from FBT_Challan", ofClient(client), " and quarter=", quarter));
}

SqlText insert(const ClientYear &client, const ChallanRecord &challan)
{
    return Sql("Insert into FBT_Challan Values (", Quoted(client.code), ",", client.year, ",", challan.quarter, ",",
               challan.srNo, ",'", challan.payType, "','", challan.date, "',", challan.ITAmt, ",", challan.SCAmt, ",",
               challan.ECAmt, ",", challan.IntAmt, ",", challan.PenAmt, ",", challan.OthAmt, ",", challan.TotAmt, ",'",
               challan.payMode, "','", challan.chequeNo, "','", challan.chequeDate, "','", challan.bankName, "','",
               challan.challanNo, "',", challan.bank, ",", challan.ECAmt1, ")");
}

SqlText newValues(const ChallanRecord &challan)
{
    return Sql("paytype='", challan.payType, "',challan_dt='", challan.date, "',ITAmt=", challan.ITAmt,
               ",SCAmt=", challan.SCAmt, ",ECAmt=", challan.ECAmt, ",ECAmt1=", challan.ECAmt1,
               ",IntAmt=", challan.IntAmt, ",PenAmt=", challan.PenAmt, ",OthAmt=", challan.OthAmt,
               ",TotAmt=", challan.TotAmt, ",paymode='", challan.payMode, "',chq_no='", challan.chequeNo, "',chq_dt='",
               challan.chequeDate, "',bank_nm='", challan.bankName, "',challanno='", challan.challanNo,
               "',BSRCode=", challan.bank);
}

/// `Null` reads as 0.
SqlText numbered(const char *column, int number)
{
    return number == 0 ? Sql(" and (", column, "=0 or ", column, " is Null)") : Sql(" and ", column, "=", number);
}

struct KeyedChallan
{
    ChallanRecord challan;
    qint64 key;
};

/// Of several challans with one number the one that is as told; none when it is not among them.
std::optional<SqlText> amongEquals(Change &change, const SqlText &equals, const ChallanRecord &challan)
{
    const auto rows =
        ReadRows(change.connection(), Sql("Select *,", rowKey, " from FBT_Challan", equals), [](const Recordset &rs) {
            return KeyedChallan{recordOf(rs), rs.Fields(QString::fromLatin1(rowKey)).text().toLongLong()};
        });
    const auto found =
        std::find_if((*rows).begin(), (*rows).end(), [&](const KeyedChallan &row) { return row.challan == challan; });
    if (found != (*rows).end())
        return Sql(equals, " and ", rowKey, "=", found->key);
    if (!rows.failed())
        change.giveUp(RowGoneFault(Doing::Save));
    return std::nullopt;
}

/// The condition that finds a challan and no other. A number is given once, but two programs without locks can have given
/// it twice.
std::optional<SqlText> placeOf(Change &change, const ClientYear &client, const ChallanRecord &challan)
{
    const SqlText named = Sql(ofClient(client), numbered("quarter", challan.quarter), numbered("srno", challan.srNo));
    const Reading<double> count =
        ReadFirst(change.connection(), Sql("Select Count(*) from FBT_Challan", named), firstNumber);
    if (count.failed())
        return std::nullopt;
    return *count > 1 ? amongEquals(change, named, challan) : named;
}

SqlText update(const SqlText &place, const ChallanRecord &before, const ChallanRecord &challan, int srNo)
{
    const SqlText moved =
        challan.quarter == before.quarter ? SqlText() : Sql(",quarter=", challan.quarter, ",srno=", srNo);
    return Sql("Update FBT_Challan set ", newValues(challan), moved, place);
}

} // namespace

QStringList PaymentTypes()
{
    return {QString::fromLatin1(advanceTax), QStringLiteral("Self Assessment Tax (300)"),
            QStringLiteral("Tax on Regular Assessment (400)")};
}

HeadAmounts HeadsOf(const ChallanRecord &challan)
{
    return {challan.ITAmt, challan.SCAmt, challan.ECAmt, challan.ECAmt1, challan.IntAmt};
}

RowsRead<ChallanRecord> Challans(Connection *cnn, const ClientYear &client, PaymentKind kind)
{
    return ReadRows(cnn, select(client, kind), recordOf);
}

RowsRead<Payment> Payments(Connection *cnn, const ClientYear &client, PaymentKind kind)
{
    return ReadRows(cnn, select(client, kind), [](const Recordset &rs) {
        return Payment{rs.Fields(u"challan_dt").text(), rs.Fields(u"TotAmt").num()};
    });
}

Reading<double> TaxPaid(Connection *cnn, const ClientYear &client, PaymentKind kind)
{
    return ReadFirst(cnn, Sql("Select sum(TotAmt) as TotAmt from FBT_Challan", ofClient(client), ofKind(kind)),
                     firstNumber);
}

Reading<std::array<double, 5>> PaidByQuarter(Connection *cnn, const ClientYear &client)
{
    Recordset sums;
    if (!sums.Open(Sql("Select quarter, sum(TotAmt) as TotAmt from FBT_Challan", ofClient(client),
                       " group by quarter order by quarter"),
                   cnn))
        return Reading<std::array<double, 5>>::failure();
    std::array<double, 5> paid{};
    for (; !sums.Eof(); sums.MoveNext()) {
        const auto quarter = static_cast<std::size_t>(sums.Fields(0).whole());
        if (!sums.Fields(0).isNull() && quarter < paid.size())
            paid.at(quarter) = sums.Fields(1).num();
    }
    return paid;
}

Reading<HeadAmounts> PaidByHead(Connection *cnn, const ClientYear &client, int quarter)
{
    const SqlText inQuarter = quarter > 0 ? Sql(" and quarter=", quarter) : SqlText();
    return ReadFirst(cnn,
                     Sql("Select sum(ITAmt) as TotIT, sum(SCAmt) as TotSC, sum(ECAmt) as TotEC, sum(ECAmt1) as TotEC1, "
                         "sum(IntAmt) as TotInt from FBT_Challan",
                         ofClient(client), inQuarter),
                     [](const Recordset &rs) {
                         const auto head = [&rs](int column) { return rs.Fields(column).num(); };
                         return HeadAmounts{head(0), head(1), head(2), head(3), head(4)};
                     });
}

std::optional<int> AddChallan(Connection *cnn, const ClientYear &client, const ChallanRecord &challan)
{
    ChallanRecord added = challan;
    const bool stored = ChangeTogether(cnn, [&](Change &change) {
        const std::optional<int> number = nextNumber(change, client, challan.quarter);
        added.srNo = number.value_or(0);
        return number && InsertChallan(change, client, added);
    });
    return stored ? std::optional(added.srNo) : std::nullopt;
}

bool InsertChallan(Change &change, const ClientYear &client, const ChallanRecord &challan)
{
    return change.write(insert(client, challan));
}

std::optional<int> ChangeChallan(Connection *cnn, const ClientYear &client, const ChallanRecord &before,
                                 const ChallanRecord &challan)
{
    std::optional<int> number;
    const bool stored = ChangeTogether(cnn, [&](Change &change) {
        number = before.srNo;
        if (challan.quarter != before.quarter)
            number = nextNumber(change, client, challan.quarter);
        const auto place = number ? placeOf(change, client, before) : std::nullopt;
        return place && change.rewrite(update(*place, before, challan, *number));
    });
    return stored ? number : std::nullopt;
}

bool DeleteChallan(Connection *cnn, const ClientYear &client, const ChallanRecord &challan)
{
    return ChangeTogether(
        cnn,
        [&](Change &change) {
            const auto place = placeOf(change, client, challan);
            return place && change.remove(Sql("Delete from FBT_Challan", *place));
        },
        Doing::Delete);
}
