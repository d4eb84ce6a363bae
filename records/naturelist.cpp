#include "records/naturelist.h"

#include "records/change.h"
#include "records/readrows.h"

namespace {

SqlText deleteText(int srNo)
{
    return Sql("Delete from FBT_Nature Where SrNo=", srNo);
}

SqlText insertText(const Nature &nature)
{
    return Sql("Insert into FBT_Nature Values (", nature.srNo, ",'", nature.text, "')");
}

} // namespace

RowsRead<Nature> Natures(Connection *cnn)
{
    return ReadRows(cnn, QStringLiteral("select * from FBT_Nature order by SrNo"), [](const Recordset &row) {
        return Nature{row.Fields(u"SrNo").whole(), row.Fields(u"NatDesc").text()};
    });
}

std::optional<bool> NatureTextTaken(Connection *cnn, const QString &text, std::optional<int> srNo)
{
    QString query = Sql("Select * from FBT_Nature Where NatDesc='", text, "'");
    if (srNo)
        query += Sql(" and SrNo<>", *srNo);
    return FindsRowAgainst(Doing::Save, cnn, query);
}

std::optional<int> AddNature(Connection *cnn, const QString &text)
{
    std::optional<int> srNo;
    const bool added = ChangeTogether(cnn, [&](Change &change) {
        srNo = change.nextNumber(QStringLiteral("FBT_Nature"), {}, "Select Max(SrNo) as MaxSr from FBT_Nature");
        return srNo && change.write(deleteText(*srNo)) && change.write(insertText({*srNo, text}));
    });
    return added ? srNo : std::nullopt;
}

bool ChangeNature(Connection *cnn, const Nature &nature)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return change.rewrite(deleteText(nature.srNo)) && change.write(insertText(nature));
    });
}

std::optional<bool> NatureInUse(Connection *cnn, int srNo)
{
    // The natures of a client are one text, the numbers joined by commas.
    const QString ofClient = Sql("Select * from FBT_Info Where BusNat='", srNo, "' or BusNat like '", srNo,
                                 ",%' or BusNat like '%,", srNo, ",%' or BusNat like '%,", srNo, "'");
    const QString ofRate = Sql("Select * from FBT_ExpRate Where IntRt<>0 and NatId=", srNo);
    const QString ofExpense = Sql("Select * from FBT_Detail Where NatId=", srNo);
    for (const QString &query : {ofClient, ofRate, ofExpense}) {
        const auto found = FindsRowAgainst(Doing::Delete, cnn, query);
        if (found.value_or(true))
            return found;
    }
    return false;
}

bool DeleteNature(Connection *cnn, int srNo)
{
    const auto remove = [srNo](Change &change) {
        return change.remove(deleteText(srNo)) && change.write(Sql("Delete from FBT_ExpRate Where NatId=", srNo));
    };
    return ChangeTogether(cnn, remove, Doing::Delete);
}
