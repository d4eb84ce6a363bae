#include "suite/datacare/tabledefinition.h"

#include "records/rowkey.h"

#include <QRegularExpression>

namespace {

QRegularExpression whole(const char *pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromLatin1(pattern)),
                              QRegularExpression::CaseInsensitiveOption);
}

/// A word after its own keyword, or nothing at all.
QString optional(const char *keyword, const QString &word)
{
    return word.isEmpty() ? QString() : QLatin1String(keyword) + word;
}

/// `name` type, character set, "not null" and default.
bool readColumn(const QString &line, TableDefinition &table)
{
    static const QRegularExpression column =
        whole(R"(`(\w+)` ((?:(?:tiny|small|medium|big)?int|float|double|decimal|(?:var)?char|)"
              R"((?:tiny|medium|long)?text|date|datetime|timestamp)(?:\(\d+(?:,\d+)?\))?(?: unsigned)?))"
              R"((?: CHARACTER SET (\w+))?(?: COLLATE (\w+))?((?: NOT)? NULL)?)"
              R"((?: DEFAULT (NULL|-?\d+(?:\.\d+)?|'[^'\\]*'))?)");
    const QRegularExpressionMatch found = column.match(line);
    if (!found.hasMatch())
        return false;
    table.columns << found.captured(1);
    table.parts << u'`' + found.captured(1) + QLatin1String("` ") + found.captured(2) +
                       optional(" Character Set ", found.captured(3)) + optional(" Collate ", found.captured(4)) +
                       found.captured(5) + optional(" Default ", found.captured(6));
    return true;
}

bool readIndex(const QString &line, TableDefinition &table)
{
    static const QRegularExpression index =
        whole(R"(((?:PRIMARY |UNIQUE )?KEY)( `\w+`)? \((`\w+`(?:\(\d+\))?(?:,`\w+`(?:\(\d+\))?)*)\)(?: USING BTREE)?)");
    const QRegularExpressionMatch found = index.match(line);
    if (found.hasMatch())
        table.parts << found.captured(1) + found.captured(2) + QLatin1String(" (") + found.captured(3) + u')';
    return found.hasMatch();
}

/// The last line. Engine and counters are the server's own affair.
bool readOptions(const QString &line, TableDefinition &table)
{
    static const QRegularExpression options =
        whole(R"(\) ENGINE=\w+(?: AUTO_INCREMENT=\d+)?(?: DEFAULT CHARSET=(\w+))?(?: COLLATE=(\w+))?)"
              R"((?: (?:ROW_FORMAT|PAGE_CHECKSUM|STATS_PERSISTENT|CHECKSUM)=\w+)*)");
    const QRegularExpressionMatch found = options.match(line);
    table.options = optional(" Default Charset=", found.captured(1)) + optional(" Collate=", found.captured(2));
    return found.hasMatch();
}

bool readLine(QString line, TableDefinition &table)
{
    line = line.trimmed();
    if (line.endsWith(u','))
        line.chop(1);
    const bool hidden =
        line.startsWith(QLatin1String("PRIMARY KEY (`") + QLatin1String(rowKey) + QLatin1String("`)")) ||
        line.startsWith(u'`' + QLatin1String(rowKey) + u'`');
    return hidden || readColumn(line, table) || readIndex(line, table);
}

} // namespace

std::optional<TableDefinition> ReadTableDefinition(const QString &definition)
{
    static const QRegularExpression opening = whole(R"(CREATE TABLE `\w+` \()");
    QStringList lines = definition.split(u'\n');
    TableDefinition table;
    if (lines.size() < 3 || !opening.match(lines.takeFirst()).hasMatch() || !readOptions(lines.takeLast(), table))
        return std::nullopt;
    for (const QString &line : std::as_const(lines)) {
        if (!readLine(line, table))
            return std::nullopt;
    }
    return table;
}

SqlText TableDefinition::createStatement(const QString &name) const
{
    return Sql("Create Table `", name, "` (", parts.join(QLatin1String(", ")), ")", options);
}
