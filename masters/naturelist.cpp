#include "masters/naturelist.h"

#include "masters/inuse.h"
#include "platform/nextnumber.h"
#include "platform/recordset.h"
#include "platform/write.h"

std::optional<QVector<Nature>> Natures(Connection *cnn)
{
    Recordset rows;
    if (!rows.Open("select * from FBT_Nature order by SrNo", cnn))
        return std::nullopt;
    QVector<Nature> natures;
    for (; !rows.Eof(); rows.MoveNext())
        natures.append({rows.Fields(u"SrNo").whole(), rows.Fields(u"NatDesc").text()});
    return natures;
}

std::optional<bool> NatureTextTaken(Connection *cnn, const QString &text, int srNo)
{
    QString query = Sql("Select * from FBT_Nature Where NatDesc='", text, "'");
    if (srNo != 0)
        query += Sql(" and SrNo<>", srNo);
    return FindsRow(cnn, query);
}

std::optional<int> NextNatureNo(Connection *cnn)
{
    return NextNumber(cnn, "Select Max(SrNo) as MaxSr from FBT_Nature");
}

void SaveNature(Connection *cnn, const Nature &nature)
{
    Write(cnn, Sql("Delete from FBT_Nature Where SrNo=", nature.srNo));
    Write(cnn, Sql("Insert into FBT_Nature Values (", nature.srNo, ",'", nature.text, "')"));
}

std::optional<bool> NatureInUse(Connection *cnn, int srNo)
{
    // The natures of a client are one text, the numbers joined by commas.
    const QString ofClient = Sql("Select * from FBT_Info Where BusNat='", srNo, "' or BusNat like '", srNo,
                                 ",%' or BusNat like '%,", srNo, ",%' or BusNat like '%,", srNo, "'");
    const QString ofRate = Sql("Select * from FBT_ExpRate Where IntRt<>0 and NatId=", srNo);
    const QString ofExpense = Sql("Select * from FBT_Detail Where NatId=", srNo);
    for (const QString &query : {ofClient, ofRate, ofExpense}) {
        const auto found = FindsRow(cnn, query);
        if (found.value_or(true))
            return found;
    }
    return false;
}

void DeleteNature(Connection *cnn, int srNo)
{
    Write(cnn, Sql("Delete from FBT_Nature Where SrNo=", srNo));
    Write(cnn, Sql("Delete from FBT_ExpRate Where NatId=", srNo));
}
