#include "suite/datacare/scratchtables.h"

#include "platform/recordset.h"
#include "records/locktable.h"
#include "records/rowkey.h"
#include "records/updatemark.h"
#include "suite/datacare/tabledefinition.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

const QString newPrefix = QStringLiteral("fbt_restore_new_");
const QString oldPrefix = QStringLiteral("fbt_restore_old_");

SqlText literal(const QByteArray &value)
{
    return value.isNull() ? SqlText("Null") : Quoted(QString::fromUtf8(value));
}

} // namespace

bool IsScratchTable(const QString &name)
{
    return name.startsWith(newPrefix, Qt::CaseInsensitive) || name.startsWith(oldPrefix, Qt::CaseInsensitive);
}

ScratchTables::ScratchTables(Connection *cnn)
    : m_cnn(cnn)
{
    removeAll();
    Recordset tables;
    tables.Open(QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()"), cnn);
    for (; !tables.Eof(); tables.MoveNext())
        m_existing.insert(tables.Fields(0).text().toLower(), tables.Fields(0).text());
    tables.Open(QStringLiteral("Select Lower(TABLE_NAME),Lower(COLUMN_NAME) from information_schema.COLUMNS"
                               " Where TABLE_SCHEMA=Database()"),
                cnn);
    for (; !tables.Eof(); tables.MoveNext())
        m_columnsOf[tables.Fields(0).text()] << tables.Fields(1).text();
}

ScratchTables::~ScratchTables()
{
    removeAll();
}

void ScratchTables::removeAll()
{
    QStringList names;
    Recordset tables;
    tables.Open(QStringLiteral("Select TABLE_NAME from information_schema.TABLES Where TABLE_SCHEMA=Database()"),
                m_cnn);
    for (; !tables.Eof(); tables.MoveNext()) {
        if (IsScratchTable(tables.Fields(0).text()))
            names << u'`' + tables.Fields(0).text() + u'`';
    }
    tables.Close();
    if (!names.isEmpty())
        m_cnn->Execute(Sql("Drop Table If Exists ", names.join(u',')));
}

bool ScratchTables::isKnown(const QString &table) const
{
    static const QRegularExpression others(
        QRegularExpression::anchoredPattern(
            Joined("VerInfo|TableMP|TmpSchFBT|", lockTable, "|", updateMark, "|FBT_(Head|ExpHead|ExpRate)\\d{4}")),
        QRegularExpression::CaseInsensitiveOption);
    return m_existing.contains(table.toLower()) || others.match(table).hasMatch();
}

/// Rows are written without column names all over the program: a column more than it knows would refuse every new one.
QString ScratchTables::unknownColumn(const QString &table, const QStringList &columns) const
{
    const QStringList known = m_columnsOf.value(table.toLower());
    for (const QString &column : columns) {
        if (!known.isEmpty() && !known.contains(column.toLower()))
            return column;
    }
    return {};
}

bool ScratchTables::refuse(const QString &what)
{
    m_refusal = QStringLiteral("The backup holds %1 that this program does not know. Nothing was changed.").arg(what);
    return false;
}

bool ScratchTables::create(const QString &table, const QString &definition, int columns)
{
    if (!isKnown(table))
        return refuse(QStringLiteral("a table"));
    // On a server that tells capitals apart the program's own spelling counts, not that of the server it came from.
    const QString name = m_existing.value(table.toLower(), table);
    const std::optional<TableDefinition> made = ReadTableDefinition(definition);
    if (!made || made->columns.isEmpty() || made->columns.size() != columns)
        return refuse(QStringLiteral("a table %1").arg(name));
    if (const QString column = unknownColumn(name, made->columns); !column.isEmpty())
        return refuse(QStringLiteral("a column %1 of %2").arg(column, name));
    m_tables.append({name, 0});
    m_columns = columns;
    if (!m_cnn->Execute(made->createStatement(newPrefix + name)))
        return false;
    GiveRowKey(m_cnn, newPrefix + name);
    return true;
}

bool ScratchTables::insert(const QByteArrayList &values)
{
    QString rows;
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (i % m_columns == 0)
            rows += i == 0 ? QStringLiteral("(") : QStringLiteral("),(");
        else
            rows += u',';
        rows += literal(values[i]);
    }
    m_tables.back().rows += values.size() / m_columns;
    return m_cnn->Execute(Sql("Insert into `", newPrefix, m_tables.back().name, "` Values ", rows, ")"));
}

bool ScratchTables::complete() const
{
    return std::all_of(m_tables.begin(), m_tables.end(), [this](const Filled &table) {
        const Field count = FirstField(m_cnn, Sql("Select Count(*) from `", newPrefix, table.name, "`"));
        return !count.isNull() && count.num() == static_cast<double>(table.rows);
    });
}

bool ScratchTables::swap()
{
    if (m_tables.isEmpty() || !complete())
        return false;
    QStringList renames;
    for (const Filled &table : m_tables) {
        if (m_existing.contains(table.name.toLower()))
            renames << Sql("`", table.name, "` To `", oldPrefix, table.name, "`");
        renames << Sql("`", newPrefix, table.name, "` To `", table.name, "`");
    }
    const bool swapped = m_cnn->Execute(Sql("Rename Table ", renames.join(u',')));
    m_cnn->Execute(QStringLiteral("Flush Tables"));
    return swapped;
}
