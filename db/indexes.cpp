#include "db/indexes.h"

#include "db/updaterun.h"
#include "db/yearlymasters.h"
#include "platform/recordset.h"

#include <QSet>

#include <optional>

namespace {

struct TableIndex
{
    const char *table;
    const char *columns;
};

// Every query of these tables names the client and the year, so that the rows of one key come in the order of writing.
// A column more, such as the quarter, would put the rows into its own order.
constexpr TableIndex clientIndexes[] = {
    {"FBT_Info", "Code_no"},          {"FBT_SignDet", "Code_no, AsYr"},   {"FBT_Detail", "Code_No, Tyear"},
    {"FBT_SalDet", "Code_No, Tyear"}, {"FBT_Challan", "Code_No, t_year"}, {"FBT_AddInfo", "Code_No, Tyear"},
    {"FBT_BankDet", "Code_No, Yr"},   {"FBT_RetDet", "Code_No, Tyear"},   {"FBT_MiscInf", "Code_No, TYear"},
};

// The item alone: with the nature after it, an item that has a rate for all natures and one for its own would give them
// in another order than they were written. `FBT_Head` has none: no query looks a head up by its number.
constexpr TableIndex yearlyIndexes[] = {
    {"FBT_ExpHead", "SrNo"},
    {"FBT_ExpRate", "SrNo"},
};

constexpr const char *indexName = "IdxFBT";

// Nothing when the server refused the query.
std::optional<QSet<QString>> namesOf(UpdateRun &run, const QString &query)
{
    Recordset found;
    if (!run.probe(found, query))
        return std::nullopt;
    QSet<QString> names;
    for (; !found.Eof(); found.MoveNext())
        names.insert(found.Fields(0).text().toLower());
    return names;
}

// None when that cannot be seen: each index that is there would be asked for again.
QSet<QString> tablesWithoutIndex(UpdateRun &run)
{
    const auto tables =
        namesOf(run, QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()"));
    if (!tables)
        return {};
    const auto indexed = namesOf(run, Sql("Select TABLE_NAME from information_schema.STATISTICS Where "
                                          "TABLE_SCHEMA=Database() and INDEX_NAME='",
                                          indexName, "'"));
    return indexed ? *tables - *indexed : QSet<QString>();
}

} // namespace

void CREATEINDEXES(UpdateRun &run)
{
    const QSet<QString> lacking = tablesWithoutIndex(run);
    const auto add = [&](const TableIndex &index, const QString &suffix) {
        const QString table = Sql(index.table, suffix);
        if (lacking.contains(table.toLower()))
            run.write(Sql("Create Index ", indexName, " on ", table, " (", index.columns, ")"));
    };
    for (const TableIndex &index : clientIndexes)
        add(index, QString());
    for (int year = firstMasterYear; year <= lastMasterYear; ++year) {
        for (const TableIndex &index : yearlyIndexes)
            add(index, QString::number(year));
    }
}
