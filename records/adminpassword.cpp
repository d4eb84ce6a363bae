#include "records/adminpassword.h"

#include "platform/recordset.h"
#include "platform/sqltext.h"
#include "records/change.h"
#include "records/rowkey.h"

Reading<QString> ReadAdminPassword(Connection *connection)
{
    WriteOne(connection, QStringLiteral("Create Table if not Exists TableMP (Val1 Varchar(10))"));
    Recordset rows;
    if (!rows.Open(QStringLiteral("TableMP"), connection))
        return Reading<QString>::failure();
    if (!rows.empty())
        return rows.Fields(u"Val1").text();
    GiveRowKey(connection, QStringLiteral("TableMP")); // without its row the table is a new one
    WriteOne(connection, QStringLiteral("Insert into TableMP Values('')"));
    return QString();
}

bool WriteAdminPassword(Connection *connection, const QString &scrambled)
{
    return ChangeTogether(connection, [&](Change &change) {
        return change.write(QStringLiteral("Delete from TableMP")) &&
               change.write(Sql("Insert into TableMP Values('", scrambled, "')"));
    });
}
