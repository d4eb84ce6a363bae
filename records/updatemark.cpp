#include "records/updatemark.h"

#include "platform/recordset.h"

bool UpdateIsMarked(Connection *connection)
{
    return HasRows(connection, Sql("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database() and "
                                   "TABLE_NAME='",
                                   updateMark, "'"));
}
