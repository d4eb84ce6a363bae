#include "records/updatemark.h"

#include "platform/fault.h"
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

Reading<QString> StoredVersion(Connection *connection)
{
    return ReadFirst(connection, Sql("Select * from VerInfo"),
                     [](const Recordset &row) { return row.Fields(0).text(); });
}
