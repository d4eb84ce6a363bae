#include "db/engines.h"

#include "db/schema.h"
#include "db/updaterun.h"
#include "db/yearlymasters.h"
#include "platform/recordset.h"

#include <QStringList>

void CONVERTENGINES(UpdateRun &run)
{
    Recordset others;
    run.probe(others,
              QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database() and "
                             "TABLE_TYPE='BASE TABLE' and ENGINE<>'InnoDB'"));
    const QStringList ours = UpdatedTables();
    for (; !others.Eof(); others.MoveNext()) {
        const QString table = others.Fields(0).text();
        if (ours.contains(table, Qt::CaseInsensitive))
            run.write(Sql("Alter Table ", table, " Engine=InnoDB"));
    }
}
