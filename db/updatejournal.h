#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class Connection;

/// Lines that must each be carried out once, though each has a flush behind it, which ends a group of statements.
///
/// Some lines of the law cannot be told from the rows afterwards: heads that were renumbered look like heads that were
/// not. So a line and the note that it is done stay together or not at all, and a run that finds the notes of a run
/// that was cut off goes on behind the last of them. The notes lie in a table that exists only during the update.
class UpdateJournal
{
public:
    /// One line: statements that share one flush.
    using Line = QStringList;

    /// Makes the table of the notes and reads what an earlier run left.
    explicit UpdateJournal(Connection *connection);

    /// True when an earlier run began the lines of that name and did not end them.
    [[nodiscard]] bool isOpen(const QString &name) const { return m_done.contains(name); }

    /// Carries out the lines that are not done yet. Throws `ServerLost`; the next run goes on from there.
    /// @param name up to 20 characters
    void run(const QString &name, const QList<Line> &lines);

    /// Removes the table, unless it holds notes for the next run.
    void close();

private:
    [[nodiscard]] static QString note(const QString &name, qsizetype done, qsizetype count);

    Connection *m_connection;
    QMap<QString, int> m_done; // lines carried out, by name
};
