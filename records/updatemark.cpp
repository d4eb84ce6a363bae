#include "records/updatemark.h"

#include "platform/fault.h"
#include "records/change.h"
#include "records/readrows.h"

bool UpdateIsMarked(Connection *connection)
{
    const auto marked =
        FindsRow(connection, Sql("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database() and "
                                 "TABLE_NAME='",
                                 updateMark, "'"));
    if (!marked)
        throw FaultError(FaultNumber::General, QStringLiteral("The mark of the update could not be read."));
    return *marked;
}

bool CreateVersionTable(Connection *connection)
{
    return WriteOne(connection, "Create Table If Not Exists VerInfo (VerNo Varchar(50))");
}

bool StoreVersion(Connection *connection, const QString &version)
{
    return ChangeTogether(connection, [&version](Change &change) {
        return change.write("Delete From VerInfo") && change.write(Sql("Insert Into VerInfo Values ('", version, "')"));
    });
}

Reading<QString> StoredVersion(Connection *connection)
{
    return ReadFirst(connection, Sql("Select * from VerInfo"),
                     [](const Recordset &row) { return row.Fields(0).text(); });
}
