#include "suite/datacare/repair.h"

#include "platform/recordset.h"
#include "suite/datacare/scratchtables.h"

namespace {

/// The server's complaint about a table; empty when it is in order.
QString complaint(Connection *cnn, const QString &table)
{
    Recordset answer;
    if (!answer.Open(Sql("Check Table `", table, "`"), cnn))
        return QStringLiteral("cannot be checked");
    QString text;
    for (; !answer.Eof(); answer.MoveNext()) {
        const QString kind = answer.Fields(u"Msg_type").text().toLower();
        const bool status = kind == u"status" || kind == u"note" || kind == u"info";
        if (!status)
            text = answer.Fields(u"Msg_text").text();
    }
    return text;
}

/// A rebuild copies every row to a fresh table; engines that know REPAIR do it by that.
void rebuild(Connection *cnn, const QString &table, const QString &engine)
{
    const bool transactional = engine.compare(QLatin1String("InnoDB"), Qt::CaseInsensitive) == 0;
    Recordset answer;
    if (transactional)
        cnn->Execute(Sql("Alter Table `", table, "` Force"));
    else
        answer.Open(Sql("Repair Table `", table, "`"), cnn);
}

struct Table
{
    QString name;
    QString engine;
};

QList<Table> tablesOf(Connection *cnn)
{
    QList<Table> tables;
    Recordset found;
    found.Open(QStringLiteral("Select TABLE_NAME,ENGINE from information_schema.TABLES"
                              " Where TABLE_SCHEMA=Database() and TABLE_TYPE='BASE TABLE' Order by TABLE_NAME"),
               cnn);
    for (; !found.Eof(); found.MoveNext()) {
        if (!IsScratchTable(found.Fields(0).text()))
            tables.append({found.Fields(0).text(), found.Fields(1).text()});
    }
    return tables;
}

void care(Connection *cnn, const Table &table, RepairReport &report)
{
    ++report.checked;
    if (!complaint(cnn, table.name).isEmpty()) {
        rebuild(cnn, table.name, table.engine);
        const QString left = complaint(cnn, table.name);
        if (left.isEmpty())
            report.repaired << table.name;
        else
            report.unrepaired << QStringLiteral("%1: %2").arg(table.name, left);
    }
    Recordset answer;
    answer.Open(Sql("Analyze Table `", table.name, "`"), cnn);
}

} // namespace

RepairReport RepairTables(Connection *cnn, const Progress &progress)
{
    RepairReport report;
    const QList<Table> tables = tablesOf(cnn);
    for (const Table &table : tables) {
        progress(report.checked, tables.size());
        care(cnn, table, report);
    }
    cnn->Execute(QStringLiteral("Flush Tables"));
    return report;
}

QString RepairReport::text() const
{
    QString text = QStringLiteral("%1 tables were checked. ").arg(checked);
    if (repaired.isEmpty() && unrepaired.isEmpty())
        return text + QStringLiteral("All of them are in order.");
    if (!repaired.isEmpty())
        text += QStringLiteral("\n\nRepaired: ") + repaired.join(QLatin1String(", "));
    if (!unrepaired.isEmpty())
        text += QStringLiteral("\n\nStill damaged, a backup should be restored:\n") + unrepaired.join(u'\n');
    return text;
}
