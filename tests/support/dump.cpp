#include "tests/support/dump.h"

#include "platform/recordset.h"

QStringList RowsOf(Connection &connection, const QString &query)
{
    QStringList lines;
    Recordset rows;
    for (rows.Open(query, &connection); !rows.Eof(); rows.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < rows.FieldCount(); ++i)
            fields << (rows.Fields(i).isNull() ? "NULL" : rows.Fields(i).text());
        lines << fields.join(u'\t');
    }
    return lines;
}

QStringList ContentOf(Connection &connection)
{
    QStringList lines;
    for (const QString &table : RowsOf(connection, "Show Tables")) {
        lines << table.toLower(); // as the private server has it
        for (const QString &row : RowsOf(connection, Sql("Select * from ", table)))
            lines << table.toLower() + u'\t' + row;
    }
    return lines;
}

QString Difference(const QStringList &actual, const QStringList &expected)
{
    for (qsizetype i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        if (actual.value(i, "<end>") != expected.value(i, "<end>"))
            return Joined("line ", i + 1, ": ", actual.value(i), " instead of ", expected.value(i));
    }
    return {};
}
