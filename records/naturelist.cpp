#include "records/naturelist.h"

#include "records/change.h"
#include "records/readrows.h"

RowsRead<Nature> Natures(Connection *cnn)
{
    return ReadRows(cnn, QStringLiteral("select * from FBT_Nature order by SrNo"), [](const Recordset &row) {
        return Nature{row.Fields(u"SrNo").whole(), row.Fields(u"NatDesc").text()};
    });
}

std::optional<bool> NatureTextTaken(Connection *cnn, const QString &text, int srNo)
{
    QString query = Sql("Select * from FBT_Nature Where NatDesc='", text, "'");
    if (srNo != 0)
        query += Sql(" and SrNo<>", srNo);
    return FindsRow(cnn, query);
}

std::optional<int> SaveNature(Connection *cnn, const Nature &nature)
{
    int srNo = 0;
    const bool saved = ChangeTogether(cnn, [&](Change &change) {
        srNo = nature.srNo;
        if (srNo == 0)
            srNo = change.nextNumber(QStringLiteral("FBT_Nature"), {}, "Select Max(SrNo) as MaxSr from FBT_Nature")
                       .value_or(0);
        return srNo != 0 && change.write(Sql("Delete from FBT_Nature Where SrNo=", srNo)) &&
               change.write(Sql("Insert into FBT_Nature Values (", srNo, ",'", nature.text, "')"));
    });
    return saved ? std::optional(srNo) : std::nullopt;
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

bool DeleteNature(Connection *cnn, int srNo)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return change.write(Sql("Delete from FBT_Nature Where SrNo=", srNo)) &&
               change.write(Sql("Delete from FBT_ExpRate Where NatId=", srNo));
    });
}
