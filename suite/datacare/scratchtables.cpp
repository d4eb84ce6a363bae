#include "suite/datacare/scratchtables.h"

#include "platform/recordset.h"
#include "records/rowkey.h"

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

bool ScratchTables::create(const QString &table, const QString &definition, int columns)
{
    static const QRegularExpression opening(
        QRegularExpression::anchoredPattern(QStringLiteral("(create table\\s+)(`[^`]*`|\\w+)(.*)")),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = opening.match(definition);
    if (!match.hasMatch())
        return false;
    // On a server that tells capitals apart the program's own spelling counts, not that of the server it came from.
    const QString name = m_existing.value(table.toLower(), table);
    m_tables.append({name, 0});
    m_columns = columns;
    if (!m_cnn->Execute(Sql(match.captured(1), "`", newPrefix, name, "`", match.captured(3))))
        return false;
    GiveRowKey(m_cnn, newPrefix + name); // a backup from before the hidden keys
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
