#include "records/rowkey.h"

#include "platform/recordset.h"

QString AddRowKey(const QString &table)
{
    return Sql("Alter Table ", table, " Add Column ", rowKey,
               " BigInt Unsigned Not Null Auto_Increment Invisible Primary Key");
}

bool GiveRowKey(Connection *connection, const QString &table)
{
    Recordset key;
    const bool looked = key.Open(Sql("Select COLUMN_NAME from information_schema.COLUMNS Where TABLE_SCHEMA=Database() "
                                     "and TABLE_NAME='",
                                     table, "' and COLUMN_KEY='PRI'"),
                                 connection);
    return looked && (!key.Eof() || connection->Execute(AddRowKey(table)));
}
