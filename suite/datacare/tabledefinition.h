#pragma once

#include "platform/sqltext.h"

#include <QStringList>

#include <optional>

/// A table as a backup says that it was made. A backup comes from outside: its words are taken apart, and the statement
/// that makes the table is put together anew from the parts that the program's own tables can have. Whatever else stands
/// there (another statement, a place on the server's disk, a computed column) makes the definition unreadable.
struct TableDefinition
{
    QStringList columns; ///< names, without the hidden key, which the restored table gets anew
    QStringList parts;   ///< columns and indexes as the new statement has them
    QString options;     ///< character set of the table, if any

    /// The statement that makes the table under a name of the program's own.
    [[nodiscard]] SqlText createStatement(const QString &name) const;
};

/// Reads what `Show Create Table` gave. Nothing when one word of it is not known.
std::optional<TableDefinition> ReadTableDefinition(const QString &definition);
