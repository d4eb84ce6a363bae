#include "db/updatejournal.h"

#include "db/dbsteps.h"
#include "platform/connection.h"
#include "platform/recordset.h"

UpdateJournal::UpdateJournal(Connection *connection)
    : m_connection(connection)
{
    Write(connection, QStringLiteral("Create Table If Not Exists TmpUpdFBT (Nm Varchar(20), Done Int(11))"));
    Recordset notes;
    notes.Open(QStringLiteral("Select Nm, Max(Done) as MaxDone from TmpUpdFBT Group by Nm"), connection);
    for (; !notes.Eof(); notes.MoveNext())
        m_done[notes.Fields(u"Nm").text()] = notes.Fields(u"MaxDone").whole();
}

QString UpdateJournal::note(const QString &name, qsizetype done, qsizetype count)
{
    if (done == count)
        return Sql("Delete from TmpUpdFBT Where Nm='", name, "'");
    return Sql("Insert into TmpUpdFBT Values ('", name, "',", done, ")");
}

void UpdateJournal::run(const QString &name, const QList<Line> &lines)
{
    for (qsizetype done = m_done.value(name); done < lines.size(); ++done) {
        WriteTogether(m_connection, lines[done] + Line{note(name, done + 1, lines.size())});
        FlushTables(m_connection);
    }
}

void UpdateJournal::close()
{
    if (IsEmpty(m_connection, QStringLiteral("TmpUpdFBT")))
        Write(m_connection, QStringLiteral("Drop Table TmpUpdFBT"));
}
