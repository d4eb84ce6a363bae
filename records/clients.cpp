#include "records/clients.h"

#include "records/change.h"
#include "records/clientcode.h"
#include "records/natures.h"
#include "records/readrows.h"

#include <QStringList>

#include <algorithm>

namespace {

/// A column's value as it stands in a statement.
QString valueText(const ClientRecord &client, int position)
{
    switch (position) {
    case ClientRecord::Status:
        return client[position];
    case ClientRecord::SignName:
    case ClientRecord::SignPost:
        return QStringLiteral("''");
    default:
        return Sql("'", client[position], "'");
    }
}

QString insertText(const ClientRecord &client)
{
    QString text = Sql("Insert into FBT_Info Values (", Quoted(client[ClientRecord::Code]));
    for (int position = 1; position < ClientRecord::Count; ++position)
        text += Sql(",", valueText(client, position));
    return text + Sql(",'','','", client.surApp, "')");
}

QString updateText(const ClientRecord &client, const QStringList &columns, const QString &editCode)
{
    QString text = Sql("Update FBT_Info Set code_no = ", Quoted(client[ClientRecord::Code]));
    for (int position = 1; position < ClientRecord::Count; ++position)
        text += Sql(",", columns.value(position), " = ", valueText(client, position));
    return text + Sql(",SurApp='", client.surApp, "' where code_no=", Quoted(editCode));
}

/// The names of the columns of the client master in their order; none after a fault.
QStringList clientColumns(Connection *cnn)
{
    Recordset info;
    info.Open(QStringLiteral("Select * from FBT_Info Limit 0"), cnn);
    QStringList names;
    for (int i = 0; i < info.FieldCount(); ++i)
        names << info.FieldName(i);
    return names;
}

NamedClient namedClient(const Recordset &row)
{
    return {row.Fields(0).text(), row.Fields(1).text()};
}

QString firstText(const Recordset &row)
{
    return row.Fields(0).text();
}

QString ofNature(const QString &code, int natId)
{
    return Sql(" Where Code_No=", Quoted(code), " and NatId = ", natId);
}

/// Whether a client other than `editCode`, or a billing party, has the code by now. Without a value after a fault.
std::optional<bool> codeTaken(Connection *cnn, const QString &code, const QString &editCode)
{
    for (const char *table : {"FBT_Info", "biller"}) {
        const SqlText same = Sql("Select Code_No from ", table, " Where Code_No=", Quoted(code));
        const auto found = FindsRowAgainst(Doing::Save, cnn,
                                           editCode.isEmpty() ? same : same + Sql(" and Code_No<>", Quoted(editCode)));
        if (found.value_or(true))
            return found;
    }
    return false;
}

/// Writes a client under a code that is new to him, unless it was taken since he was opened. The lock row is held to the
/// end: of two users who give the same code at once one finds that the other has it.
/// @param editCode his code so far, empty for a new client
ClientSave saveUnderNewCode(Connection *cnn, const QString &code, const QString &editCode,
                            const std::function<bool(Change &)> &write)
{
    std::optional<bool> taken;
    const bool saved = ChangeTogether(cnn, [&](Change &change) {
        taken.reset();
        if (!change.lock(QStringLiteral("FBT_Info"), {}))
            return false;
        taken = codeTaken(cnn, code, editCode);
        return taken == false && write(change);
    });
    if (saved)
        return ClientSave::Done;
    return taken == true ? ClientSave::CodeTaken : ClientSave::Failed;
}

/// Deletes what was entered for natures of a client: expenses and salaries; together for all natures there are expenses
/// only.
bool dropDetails(Change &change, const QString &code, const std::vector<int> &natures)
{
    return std::all_of(natures.begin(), natures.end(), [&](int natId) {
        return change.write(Sql("Delete from FBT_Detail", ofNature(code, natId))) &&
               (natId == consolidatedNature || change.write(Sql("Delete from FBT_SalDet", ofNature(code, natId))));
    });
}

} // namespace

Reading<ClientRecord> ReadClient(Connection *cnn, const QString &code)
{
    return ReadFirst(cnn, Sql("Select * from FBT_Info where code_no=", Quoted(code)), [](const Recordset &info) {
        ClientRecord client;
        for (int position = 0; position < ClientRecord::Count; ++position)
            client[position] = info.Fields(position).text();
        client.surApp = info.Fields(u"SurApp").text();
        return client;
    });
}

ClientSave AddClient(Connection *cnn, const ClientRecord &client)
{
    const QString insert = insertText(client);
    return saveUnderNewCode(cnn, client[ClientRecord::Code], {},
                            [&insert](Change &change) { return change.write(insert); });
}

ClientSave UpdateClient(Connection *cnn, const ClientRecord &client, const QString &editCode,
                        const std::vector<int> &dropped)
{
    const QStringList columns = clientColumns(cnn);
    if (columns.isEmpty())
        return ClientSave::Failed;
    const QString update = updateText(client, columns, editCode);
    const auto write = [&](Change &change) { return dropDetails(change, editCode, dropped) && change.rewrite(update); };
    const QString &code = client[ClientRecord::Code];
    if (code == editCode)
        return ChangeTogether(cnn, write) ? ClientSave::Done : ClientSave::Failed;
    const auto tables = TablesOfClients(cnn);
    if (tables.failed())
        return ClientSave::Failed;
    return saveUnderNewCode(cnn, code, editCode, [&](Change &change) {
        return write(change) && MoveClientRows(change, *tables, editCode, code);
    });
}

RowsRead<QString> ExistingCodes(Connection *cnn)
{
    const auto clients = ReadRows(cnn, QStringLiteral("Select Code_No from FBT_Info"), firstText);
    const auto parties = ReadRows(cnn, QStringLiteral("Select Code_No from biller"), firstText);
    if (clients.failed() || parties.failed())
        return RowsRead<QString>::failure();
    std::vector<QString> codes = *clients;
    codes.insert(codes.end(), parties->begin(), parties->end());
    std::sort(codes.begin(), codes.end(), [](const QString &one, const QString &other) {
        const int order = one.compare(other, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : one < other;
    });
    codes.erase(std::unique(codes.begin(), codes.end()), codes.end());
    return codes;
}

RowsRead<NamedClient> ClientNames(Connection *cnn)
{
    return ReadRows(cnn, "Select Code_no, Name from FBT_Info Order by Name, Code_no", namedClient);
}

RowsRead<NamedClient> ClientsOfYear(Connection *cnn, int year)
{
    return ReadRows(
        cnn,
        Sql("Select FBT_Info.Code_no, Name from FBT_Info Join (Select Code_No from FBT_AddInfo Where Tyear=", year,
            " Union Select Code_No from FBT_Detail Where Tyear=", year,
            " Union Select Code_No from FBT_Challan Where t_year=", year,
            ") as Working on FBT_Info.Code_no=Working.Code_No Order by Name, FBT_Info.Code_no"),
        namedClient);
}

std::optional<bool> HasNatureDetails(Connection *cnn, const QString &code, int natId)
{
    const auto expenses = FindsRowAgainst(Doing::Save, cnn, Sql("Select * from FBT_Detail", ofNature(code, natId)));
    if (expenses.value_or(true))
        return expenses;
    return FindsRowAgainst(Doing::Save, cnn, Sql("Select * from FBT_SalDet", ofNature(code, natId)));
}

bool DeleteNatureDetails(Connection *cnn, const QString &code, const std::vector<int> &natures)
{
    return ChangeTogether(cnn, [&](Change &change) { return dropDetails(change, code, natures); });
}

std::optional<bool> HasConsolidatedExpenses(Connection *cnn, const QString &code)
{
    return FindsRowAgainst(Doing::Save, cnn, Sql("Select * from FBT_Detail", ofNature(code, consolidatedNature)));
}
