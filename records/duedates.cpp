#include "records/duedates.h"

#include "platform/dates.h"
#include "records/change.h"
#include "records/readrows.h"

#include <algorithm>
#include <set>

namespace {

/// A table with a row for each of four classes or quarters.
struct DatesTable
{
    const char *name;
    const char *place; ///< column of the class or quarter
    const char *original;
    const char *extended;
};

constexpr DatesTable returnTable{"DueDt_Master", "StatC", "DueDt", "RevDueDt"};
constexpr DatesTable quarterTable{"ChallanDt_Master", "Quarter", "ChDt", "RevChDt"};

struct PlacedRow
{
    int place;
    DueDateRow row;
};

Reading<DueDateRows> readDates(Connection *cnn, const DatesTable &table, int year)
{
    const QString query = Sql("Select * from ", table.name, " Where AssYear = ", year, " Order by ", table.place);
    const auto found = ReadRows(cnn, query, [&table](const Recordset &row) {
        const auto text = [&row](const char *column) { return row.Fields(QString::fromLatin1(column)).text(); };
        const Field notification = row.Fields(u"Notification");
        return PlacedRow{row.Fields(QString::fromLatin1(table.place)).whole(),
                         {text(table.original), text(table.extended),
                          notification.isNull() ? QStringLiteral("0") : notification.text()}};
    });
    if (found.failed())
        return Reading<DueDateRows>::failure();
    DueDateRows dates;
    std::set<int> seen; // of two rows for one place the first counts
    for (const auto &[place, row] : *found) {
        if (place >= 1 && place <= static_cast<int>(dates.size()) && seen.insert(place).second)
            dates[static_cast<std::size_t>(place - 1)] = row;
    }
    return dates;
}

bool writeDates(Change &change, const DatesTable &table, int year, const DueDateRows &rows)
{
    int place = 0;
    return change.write(Sql("Delete from ", table.name, " Where AssYear=", year)) &&
           std::all_of(rows.begin(), rows.end(), [&](const DueDateRow &row) {
               return change.write(Sql("Insert into ", table.name, " Values(", year, ",", ++place, ",'", row.original,
                                       "','", row.extended, "','", row.notification, "')"));
           });
}

bool writeInstalments(Change &change, int year, const InstalmentDates &dates)
{
    if (!change.write(Sql("Delete from AdvTaxDueDt Where TYear=", year)))
        return false;
    return dates == LawInstalments(year) || change.write(Sql("Insert into AdvTaxDueDt Values(", year, ",'", dates[0],
                                                             "','", dates[1], "','", dates[2], "','", dates[3], "')"));
}

} // namespace

Reading<DueDateRows> ReturnDueDates(Connection *cnn, int year)
{
    return readDates(cnn, returnTable, year);
}

Reading<DueDateRows> QuarterDueDates(Connection *cnn, int year)
{
    return readDates(cnn, quarterTable, year);
}

InstalmentDates LawInstalments(int year)
{
    constexpr int dueDay = 15;
    return {DateText(QDate(year - 1, 6, dueDay)), DateText(QDate(year - 1, 9, dueDay)),
            DateText(QDate(year - 1, 12, dueDay)), DateText(QDate(year, 3, dueDay))};
}

Reading<InstalmentDates> InstalmentDueDates(Connection *cnn, int year)
{
    auto dates = ReadFirst(cnn, Sql("Select * from AdvTaxDueDt Where TYear=", year), [](const Recordset &row) {
        return InstalmentDates{row.Fields(u"Dt1").text(), row.Fields(u"Dt2").text(), row.Fields(u"Dt3").text(),
                               row.Fields(u"Dt4").text()};
    });
    return dates.none() ? LawInstalments(year) : dates;
}

bool SaveDueDates(Connection *cnn, int year, const DueDates &dates)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return writeDates(change, returnTable, year, dates.returns) &&
               (!dates.quarters || writeDates(change, quarterTable, year, *dates.quarters)) &&
               (!dates.instalments || writeInstalments(change, year, *dates.instalments));
    });
}
