#include "records/registers.h"

#include "platform/dates.h"
#include "records/readrows.h"

#include <algorithm>

namespace {

QString returnsQuery(int year)
{
    return Sql("Select FBT_Info.Code_no, FBT_Info.Name, FBT_AddInfo.RetDt, FBT_AddInfo.RetAckNo, FBT_RetDet.EflDt, "
               "FBT_RetDet.EflNo from FBT_Info LEFT JOIN FBT_AddInfo ON FBT_AddInfo.Code_No=FBT_Info.Code_no And "
               "FBT_AddInfo.Tyear=",
               year, " LEFT JOIN FBT_RetDet ON FBT_RetDet.Code_No=FBT_Info.Code_no And FBT_RetDet.Tyear=", year,
               " Order by FBT_Info.Name, FBT_Info.Code_no");
}

ReturnLine returnOf(const Recordset &row)
{
    const auto either = [&row](QStringView first, QStringView second) {
        const QString text = row.Fields(first).text().trimmed();
        return text.isEmpty() ? row.Fields(second).text().trimmed() : text;
    };
    return {row.Fields(u"Code_no").text(), row.Fields(u"Name").text(),
            DateText(DateFromText(either(u"RetDt", u"EflDt"))), either(u"RetAckNo", u"EflNo")};
}

ClientLine clientOf(const Recordset &row)
{
    const Field status = row.Fields(u"ClStatus");
    const QString telephone = row.Fields(u"STD").text() + u' ' + row.Fields(u"TelNo").text();
    return {row.Fields(u"Code_no").text(), row.Fields(u"Name").text(),
            row.Fields(u"PAN").text(),     status.isNull() ? std::nullopt : std::optional(status.whole()),
            row.Fields(u"City").text(),    telephone.trimmed()};
}

} // namespace

RowsRead<ClientLine> ClientLines(Connection *cnn)
{
    return ReadRows(
        cnn,
        QStringLiteral("Select Code_no, Name, PAN, ClStatus, City, STD, TelNo from FBT_Info Order by Name, Code_no"),
        clientOf);
}

RowsRead<ReturnLine> ReturnLines(Connection *cnn, int year)
{
    auto all = ReadRows(cnn, returnsQuery(year), returnOf);
    if (all.failed())
        return all;
    std::vector<ReturnLine> filed;
    std::copy_if(all->begin(), all->end(), std::back_inserter(filed),
                 [](const ReturnLine &line) { return !line.date.isEmpty() || !line.acknowledgement.isEmpty(); });
    return filed;
}
