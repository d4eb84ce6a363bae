#include "db/structurecheck.h"

#include "db/updaterun.h"
#include "db/yearlymasters.h"
#include "platform/recordset.h"
#include "records/locktable.h"
#include "records/rowkey.h"

#include <QMap>

#include <algorithm>

namespace {

using ColumnCounts = QMap<QString, int>;

/// Numbers of columns that a table had in earlier versions: an update adds the others.
struct EarlierShape
{
    const char *table;
    int columns;
};

constexpr EarlierShape earlierShapes[] = {
    {"fbt_info", 17},    {"fbt_info", 22},    {"fbt_challan", 17}, {"fbt_challan", 19}, {"fbt_addinfo", 25},
    {"fbt_addinfo", 29}, {"fbt_addinfo", 33}, {"fbt_addinfo", 35}, {"srate", 6},
};

// A key of the tables that only the server sees is no column of theirs.
bool readCounts(UpdateRun &run, ColumnCounts &counts)
{
    Recordset found;
    if (!run.probe(found, Sql("Select TABLE_NAME,Count(*) from information_schema.COLUMNS Where "
                              "TABLE_SCHEMA=Database() and COLUMN_NAME<>'",
                              rowKey, "' Group by TABLE_NAME")))
        return false;
    for (; !found.Eof(); found.MoveNext())
        counts.insert(found.Fields(0).text().toLower(), found.Fields(1).whole());
    return true;
}

bool allTables(const ColumnCounts &counts)
{
    const QStringList tables = UpdatedTables() << QString::fromLatin1(lockTable);
    return std::all_of(tables.begin(), tables.end(),
                       [&](const QString &table) { return counts.contains(table.toLower()); });
}

bool allColumns(const ColumnCounts &counts)
{
    return std::none_of(std::begin(earlierShapes), std::end(earlierShapes), [&](const EarlierShape &shape) {
        return counts.value(QString::fromLatin1(shape.table)) == shape.columns;
    });
}

bool headsInEachYear(UpdateRun &run)
{
    for (int year = firstMasterYear; year <= lastMasterYear; ++year) {
        if (run.isEmpty(Sql("FBT_Head", year)))
            return false;
    }
    return true;
}

} // namespace

bool StructureIsWhole(UpdateRun &run)
{
    ColumnCounts counts;
    return readCounts(run, counts) && allTables(counts) && allColumns(counts) &&
           (!run.leftOpen() || headsInEachYear(run));
}
