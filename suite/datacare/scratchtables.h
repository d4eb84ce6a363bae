#pragma once

#include "platform/offer.h"

#include <QByteArrayList>
#include <QHash>
#include <QString>
#include <QStringList>

class Connection;

/// Whether a table is one that a restore works with: not data of the user's.
FBT_OFFERED bool IsScratchTable(const QString &name);

/// Tables that are filled beside the real ones and then take their place in one statement. What was not swapped is
/// removed again at the end, and so is what an earlier restore that was cut off has left behind.
class FBT_OFFERED ScratchTables
{
public:
    explicit ScratchTables(Connection *cnn);
    ~ScratchTables();
    ScratchTables(const ScratchTables &) = delete;
    ScratchTables &operator=(const ScratchTables &) = delete;

    /// Makes the scratch table for `table` as its definition says. Further rows go there. Only a table, columns and types
    /// that the program knows; no word of the definition is run as it stands.
    bool create(const QString &table, const QString &definition, int columns);
    /// Adds rows, value by value; a null array is `Null`.
    bool insert(const QByteArrayList &values);
    /// Puts the scratch tables in the place of the real ones: all or none.
    bool swap();

    /// Why a definition was refused, one sentence for the user; empty when none was.
    [[nodiscard]] QString refusal() const { return m_refusal; }

private:
    [[nodiscard]] bool isKnown(const QString &table) const;
    [[nodiscard]] QString unknownColumn(const QString &table, const QStringList &columns) const;
    bool refuse(const QString &what);
    bool complete() const;
    void removeAll();

    struct Filled
    {
        QString name; // of the real table
        qint64 rows = 0;
    };

    Connection *m_cnn;
    QHash<QString, QString> m_existing;      // spelling in the database by the name in lower case
    QHash<QString, QStringList> m_columnsOf; // both in lower case
    QList<Filled> m_tables;
    QString m_refusal;
    int m_columns = 0;
};
