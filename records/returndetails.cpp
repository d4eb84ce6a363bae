#include "records/returndetails.h"

#include "records/change.h"
#include "records/readrows.h"

namespace {

SqlText signatoryRow(const QString &code, int year)
{
    return Sql(" From FBT_SignDet Where Code_No=", Quoted(code), " and AsYr=", year);
}

SqlText detailsRow(const ClientYear &client)
{
    return Sql(" from FBT_RetDet Where code_no=", Quoted(client.code), " and TYear=", client.year);
}

QString textOf(const Recordset &row, QStringView column)
{
    return row.Fields(column).text();
}

Signatory signatoryIn(const Recordset &row)
{
    const QString relation = textOf(row, u"Relat");
    return {textOf(row, u"Nm"), relation.isEmpty() ? -1 : row.Fields(u"Relat").whole(), textOf(row, u"FaNm"),
            textOf(row, u"PAN"), textOf(row, u"Desig")};
}

SqlText signatoryInsert(const ClientYear &client, const Signatory &signatory)
{
    const QString relation = signatory.relation < 0 ? QString() : QString::number(signatory.relation);
    return Sql("Insert into FBT_SignDet Values (", Quoted(client.code), ",", client.year, ",'", signatory.name, "','",
               relation, "','", signatory.father, "','", signatory.pan, "','", signatory.post, "')");
}

SqlText detailsInsert(const ClientYear &client, const ReturnDetails &details)
{
    return Sql("Insert into FBT_RetDet Values (", Quoted(client.code), ",", client.year, ",'", details.number, "','",
               details.date, "','','',0,'", QString::number(details.refundMode), "')");
}

bool replaceRow(Connection *cnn, const QString &code, const SqlText &from, bool keeps, const SqlText &insert)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return change.holdClient(code) && change.write(Sql("Delete") + from) && (!keeps || change.write(insert));
    });
}

} // namespace

bool Signatory::isEmpty() const
{
    return name.isEmpty() && father.isEmpty() && pan.isEmpty() && post.isEmpty() && relation < 0;
}

Reading<Signatory> SignatoryOf(Connection *cnn, const ClientYear &client)
{
    for (const int year : {client.year, client.year - 1, 0}) {
        Reading<Signatory> found = ReadFirst(cnn, Sql("Select *") + signatoryRow(client.code, year), signatoryIn);
        if (!found.none())
            return found;
    }
    return Reading<Signatory>::nothing();
}

Reading<ReturnDetails> ReturnDetailsOf(Connection *cnn, const ClientYear &client)
{
    return ReadFirst(cnn, Sql("Select *") + detailsRow(client), [](const Recordset &row) {
        return ReturnDetails{textOf(row, u"EflNo"), textOf(row, u"EflDt"), row.Fields(u"RefM").whole()};
    });
}

bool SaveSignatory(Connection *cnn, const ClientYear &client, const Signatory &signatory)
{
    return replaceRow(cnn, client.code, signatoryRow(client.code, client.year), !signatory.isEmpty(),
                      signatoryInsert(client, signatory));
}

bool SaveReturnDetails(Connection *cnn, const ClientYear &client, const ReturnDetails &details)
{
    return replaceRow(cnn, client.code, detailsRow(client), !details.isEmpty(), detailsInsert(client, details));
}
