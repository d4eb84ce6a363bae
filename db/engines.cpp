#include "db/engines.h"

#include "context/errortail.h"
#include "db/dbsteps.h"
#include "db/schema.h"
#include "db/yearlymasters.h"
#include "platform/recordset.h"

#include <QStringList>

namespace {

QStringList updatedTables()
{
    QStringList names;
    for (const TableShape &table : ModuleTables())
        names << QString::fromLatin1(table.name);
    for (const TableShape &table : YearlyTables()) {
        for (int year = firstMasterYear; year <= lastMasterYear; ++year)
            names << Sql(table.name, year);
    }
    return names;
}

} // namespace

bool CONVERTENGINES(Connection *connection)
{
    ErrorTail tail(QStringLiteral("CONVERTENGINES"), QStringLiteral("frmupdatedb"));
    return CarryOut(tail, [connection] {
        Recordset others;
        Probe(others,
              QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database() and "
                             "TABLE_TYPE='BASE TABLE' and ENGINE<>'InnoDB'"),
              connection);
        const QStringList ours = updatedTables();
        for (; !others.Eof(); others.MoveNext()) {
            const QString table = others.Fields(0).text();
            if (ours.contains(table, Qt::CaseInsensitive))
                Write(connection, Sql("Alter Table ", table, " Engine=InnoDB"));
        }
    });
}
