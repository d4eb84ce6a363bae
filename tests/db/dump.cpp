#include "tests/db/dump.h"

#include <QFile>
#include <QTest>

QStringList LinesOf(const QString &file)
{
    QFile text(QFINDTESTDATA(file));
    if (!text.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("There is no file %s.", qPrintable(file));
    QStringList lines = QString::fromUtf8(text.readAll()).split(u'\n', Qt::SkipEmptyParts);
    lines.removeIf([](const QString &line) { return line.startsWith(u'#'); });
    return lines;
}

void Carry(TestModule &module, const QStringList &statements)
{
    for (const QString &statement : statements) {
        if (!module.connection.Execute(statement))
            qFatal("%s: %s", qPrintable(statement), qPrintable(module.logLines().join(u'\n')));
    }
}

QStringList StructureOf(TestModule &module)
{
    return module.rows("Select TABLE_NAME, COLUMN_NAME, COLUMN_TYPE, COLUMN_DEFAULT, "
                       "IS_NULLABLE from information_schema.COLUMNS Where TABLE_SCHEMA=Database() "
                       "and COLUMN_NAME<>'FbtRow' Order by 1, ORDINAL_POSITION") +
           module.rows("Select TABLE_NAME, INDEX_NAME, SEQ_IN_INDEX, COLUMN_NAME, NON_UNIQUE "
                       "from information_schema.STATISTICS Where TABLE_SCHEMA=Database() "
                       "Order by 1, 2, 3");
}
