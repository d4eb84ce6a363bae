#include "db/rowkeys.h"

#include "db/updaterun.h"
#include "db/yearlymasters.h"
#include "platform/recordset.h"
#include "records/locktable.h"
#include "records/rowkey.h"

#include <QSet>

namespace {

// Some of them only come into being with their first use, or belong to the host.
QStringList keyedTables()
{
    QStringList tables = UpdatedTables();
    return tables << QStringLiteral("TableMP") << QStringLiteral("TmpSchFBT") << QStringLiteral("VerInfo");
}

// In lower case. Nothing when that cannot be seen.
QSet<QString> tablesWithoutKey(UpdateRun &run)
{
    QSet<QString> names;
    Recordset found;
    run.probe(found,
              QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database() and "
                             "TABLE_TYPE='BASE TABLE' and TABLE_NAME not in (Select TABLE_NAME from "
                             "information_schema.COLUMNS Where TABLE_SCHEMA=Database() and COLUMN_KEY='PRI')"));
    for (; !found.Eof(); found.MoveNext())
        names.insert(found.Fields(0).text().toLower());
    return names;
}

} // namespace

void ADDROWKEYS(UpdateRun &run)
{
    run.write(Sql("Create Table If Not Exists ", lockTable, " (", lockTableColumns, ")"));
    const QSet<QString> lacking = tablesWithoutKey(run);
    for (const QString &table : keyedTables()) {
        // A server that refuses one hidden column refuses them all.
        if (lacking.contains(table.toLower()) && !run.send(AddRowKey(table)))
            break;
    }
    run.flush();
}
