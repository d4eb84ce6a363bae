#include "entry/detailrows.h"

#include "context/modbase.h"
#include "platform/nextnumber.h"
#include "platform/recordset.h"

namespace {

void flush()
{
    Cnn->Execute(QStringLiteral("Flush Tables"));
}

QString clientCondition(const ClientYear &client)
{
    return Sql("FBT_Detail.Code_No='", client.code, "' and FBT_Detail.Tyear=", client.year);
}

QString quarterCondition(const ClientYear &client, int quarter)
{
    return Sql("Code_No='", client.code, "' and tyear=", client.year, " and quarter=", quarter);
}

QString rateJoin(const QString &head, const QString &rate, int natId)
{
    return Sql(" LEFT JOIN ", rate, " ON ", head, ".SrNo=", rate, ".SrNo And (", rate, ".Natid=0 Or ", rate,
               ".Natid=", natId, ")");
}

/// Positions of the columns of a query, found once; a column that it has not is -1.
class DetailColumns
{
public:
    explicit DetailColumns(const Recordset &rs)
        : m_quarter(rs.FieldIndex(u"Quarter"))
        , m_headId(rs.FieldIndex(u"HeadId"))
        , m_expId(rs.FieldIndex(u"ExpId"))
        , m_rate(rs.FieldIndex(u"IntRt"))
        , m_amount(rs.FieldIndex(u"Amt"))
        , m_srNo(rs.FieldIndex(u"Srno"))
    {
    }

    [[nodiscard]] DetailRow row(const Recordset &rs) const
    {
        const auto field = [&rs](int column) { return column < 0 ? Field() : rs.Fields(column); };
        DetailRow row;
        row.quarter = field(m_quarter).whole();
        row.headId = field(m_headId).text();
        row.expId = field(m_expId).whole();
        row.rate = field(m_rate).num();
        row.amount = field(m_amount).num();
        row.srNo = field(m_srNo).whole();
        return row;
    }

private:
    int m_quarter;
    int m_headId;
    int m_expId;
    int m_rate;
    int m_amount;
    int m_srNo;
};

/// What an import takes from a row.
struct ImportedItem
{
    int natId = 0;
    int expId = 0;
};

std::vector<ImportedItem> itemsOfQuarter(const ClientYear &client, int quarter)
{
    std::vector<ImportedItem> items;
    Recordset rs;
    rs.Open(Sql("Select * from FBT_Detail Where ", quarterCondition(client, quarter), " order by srno"), Cnn);
    const int natId = rs.FieldIndex(u"NatId");
    const int expId = rs.FieldIndex(u"expid");
    for (; !rs.Eof(); rs.MoveNext())
        items.push_back({rs.Fields(natId).whole(), rs.Fields(expId).whole()});
    return items;
}

} // namespace

ClientYear InHand()
{
    return {Base->code, Base->TYear};
}

QString DetailQuery(const ClientYear &client, int quarter, int natId, int rateOf)
{
    const QString head = Sql("FBT_ExpHead", client.year);
    const QString rate = Sql("FBT_ExpRate", client.year);
    const bool withRate = rateOf != consolidatedNature;
    QString query = Sql("select ", quarter == 0 ? "FBT_Detail.Quarter, " : "", head, ".HeadId, ",
                        withRate ? rate + QStringLiteral(".IntRt, ") : QString(),
                        "FBT_Detail.Srno, FBT_Detail.ExpId, FBT_Detail.Amt from FBT_Detail LEFT JOIN ", head,
                        " ON FBT_Detail.ExpId=", head, ".SrNo");
    if (withRate)
        query += rateJoin(head, rate, rateOf);
    query += QStringLiteral(" Where ") + clientCondition(client);
    if (quarter != 0)
        query += Sql(" and FBT_Detail.Quarter=", quarter);
    return query + Sql(" and FBT_Detail.NatId=", natId);
}

std::vector<DetailRow> ReadDetails(const QString &query)
{
    std::vector<DetailRow> rows;
    Recordset rs;
    rs.Open(query, Cnn);
    const DetailColumns columns(rs);
    for (; !rs.Eof(); rs.MoveNext())
        rows.push_back(columns.row(rs));
    return rows;
}

std::optional<int> NextSrNo(const ClientYear &client, int quarter)
{
    return NextNumber(Cnn, Sql("Select Max(SrNo) as MaxSr from FBT_Detail Where ", quarterCondition(client, quarter)));
}

void DeleteDetail(const ClientYear &client, int quarter, int srNo)
{
    Cnn->Execute(Sql("Delete from FBT_Detail Where ", quarterCondition(client, quarter), " and SrNo=", srNo));
    flush();
}

void InsertDetail(const ClientYear &client, int quarter, int natId, int srNo, int expId, double amount)
{
    Cnn->Execute(Sql("Insert into FBT_Detail Values('", client.code, "',", client.year, ",", quarter, ",", natId, ",",
                     srNo, ",", expId, ",", amount, ")"));
    flush();
}

void ReplaceDetail(const ClientYear &client, int quarter, int natId, int srNo, int expId, double amount)
{
    DeleteDetail(client, quarter, srNo);
    InsertDetail(client, quarter, natId, srNo, expId, amount);
}

void ImportLastQuarter(const ClientYear &client, int quarter)
{
    std::optional<int> next = NextSrNo(client, quarter);
    if (!next)
        return;
    for (const ImportedItem &item : itemsOfQuarter(client, quarter - 1))
        InsertDetail(client, quarter, item.natId, ++*next, item.expId, 0);
}
