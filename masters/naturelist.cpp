#include "masters/naturelist.h"

#include "platform/nextnumber.h"
#include "platform/recordset.h"

QVector<Nature> Natures(Connection *cnn)
{
    QVector<Nature> natures;
    Recordset rows;
    for (rows.Open("select * from FBT_Nature order by SrNo", cnn); !rows.Eof(); rows.MoveNext())
        natures.append({rows.Fields(u"SrNo").whole(), rows.Fields(u"NatDesc").text()});
    return natures;
}

std::optional<bool> NatureTextTaken(Connection *cnn, const QString &text, int srNo)
{
    QString query = Sql("Select * from FBT_Nature Where NatDesc='", text, "'");
    if (srNo != 0)
        query += Sql(" and SrNo<>", srNo);
    Recordset found;
    if (!found.Open(query, cnn))
        return std::nullopt;
    return !found.empty();
}

std::optional<int> NextNatureNo(Connection *cnn)
{
    return NextNumber(cnn, "Select Max(SrNo) as MaxSr from FBT_Nature");
}

void SaveNature(Connection *cnn, const Nature &nature)
{
    cnn->Execute(Sql("Delete from FBT_Nature Where SrNo=", nature.srNo));
    cnn->Execute("Flush Tables");
    cnn->Execute(Sql("Insert into FBT_Nature Values (", nature.srNo, ",'", nature.text, "')"));
    cnn->Execute("Flush Tables");
}

bool NatureInUse(Connection *cnn, int srNo)
{
    // The natures of a client are one text, the numbers joined by commas.
    const QString ofClient = Sql("Select * from FBT_Info Where BusNat='", srNo, "' or BusNat like '", srNo,
                                 ",%' or BusNat like '%,", srNo, ",%' or BusNat like '%,", srNo, "'");
    return HasRows(cnn, ofClient) || HasRows(cnn, Sql("Select * from FBT_ExpRate Where IntRt<>0 and NatId=", srNo)) ||
           HasRows(cnn, Sql("Select * from FBT_Detail Where NatId=", srNo));
}

void DeleteNature(Connection *cnn, int srNo)
{
    cnn->Execute(Sql("Delete from FBT_Nature Where SrNo=", srNo));
    cnn->Execute("Flush Tables");
    cnn->Execute(Sql("Delete from FBT_ExpRate Where NatId=", srNo));
    cnn->Execute("Flush Tables");
}
