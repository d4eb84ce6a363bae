#include "masters/duedatestore.h"

#include "masters/duedatewindows.h"
#include "platform/recordset.h"
#include "platform/write.h"

namespace {

QString notificationOf(const Recordset &row)
{
    const Field field = row.Fields(u"Notification");
    return field.isNull() ? QStringLiteral("0") : field.text();
}

DueDateRow rowOf(const Recordset &row, QStringView dateColumn, QStringView extendedColumn)
{
    return {row.Fields(dateColumn).text(), row.Fields(extendedColumn).text(), notificationOf(row)};
}

void put(DueDateRows &rows, int place, const DueDateRow &row)
{
    if (place >= 1 && place <= static_cast<int>(rows.size()))
        rows[static_cast<std::size_t>(place - 1)] = row;
}

QString valuesOf(const DueDateRow &row)
{
    return Sql(",'", row.original, "','", row.extended, "','", row.notification, "')");
}

InstalmentDates defaultInstalments(int year)
{
    InstalmentDates dates;
    for (int i = 0; i < static_cast<int>(dates.size()); ++i)
        dates[static_cast<std::size_t>(i)] = DefaultInstalment(year, i + 1);
    return dates;
}

} // namespace

DueDateRows ReturnDueDates(Connection *cnn, int year)
{
    DueDateRows dates;
    Recordset rows;
    rows.Open(Sql("Select * from DueDt_Master Where AssYear = ", year, " Order by StatC"), cnn);
    for (; !rows.Eof(); rows.MoveNext())
        put(dates, PlaceOfClass(rows.Fields(u"StatC").whole()), rowOf(rows, u"DueDt", u"RevDueDt"));
    return dates;
}

DueDateRows QuarterDueDates(Connection *cnn, int year)
{
    DueDateRows dates;
    Recordset rows;
    rows.Open(Sql("Select * from ChallanDt_Master Where AssYear = ", year, " Order by Quarter"), cnn);
    for (; !rows.Eof(); rows.MoveNext())
        put(dates, rows.Fields(u"Quarter").whole(), rowOf(rows, u"ChDt", u"RevChDt"));
    return dates;
}

InstalmentDates InstalmentDueDates(Connection *cnn, int year)
{
    Recordset row;
    row.Open(Sql("Select * from AdvTaxDueDt Where TYear=", year), cnn);
    if (row.empty())
        return defaultInstalments(year);
    return {row.Fields(u"Dt1").text(), row.Fields(u"Dt2").text(), row.Fields(u"Dt3").text(), row.Fields(u"Dt4").text()};
}

bool SaveReturnDueDates(Connection *cnn, int year, const DueDateRows &rows)
{
    bool good = Write(cnn, Sql("Delete from DueDt_Master Where AssYear=", year));
    for (int place = 1; good && place <= static_cast<int>(rows.size()); ++place)
        good = Write(cnn, Sql("Insert into DueDt_Master Values(", year, ",", PlaceOfClass(place),
                              valuesOf(rows[static_cast<std::size_t>(place - 1)])));
    return good;
}

bool SaveQuarterDueDates(Connection *cnn, int year, const DueDateRows &rows)
{
    bool good = Write(cnn, Sql("Delete from ChallanDt_Master Where AssYear=", year));
    for (int quarter = 1; good && quarter <= static_cast<int>(rows.size()); ++quarter)
        good = Write(cnn, Sql("Insert into ChallanDt_Master Values(", year, ",", quarter,
                              valuesOf(rows[static_cast<std::size_t>(quarter - 1)])));
    return good;
}

bool SaveInstalmentDueDates(Connection *cnn, int year, const InstalmentDates &dates)
{
    if (!Write(cnn, Sql("Delete from AdvTaxDueDt Where TYear=", year)))
        return false;
    if (dates == defaultInstalments(year))
        return true;
    return Write(cnn, Sql("Insert into AdvTaxDueDt Values(", year, ",'", dates[0], "','", dates[1], "','", dates[2],
                          "','", dates[3], "')"));
}
