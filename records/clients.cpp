#include "records/clients.h"

#include "records/change.h"
#include "records/clientcode.h"
#include "records/readrows.h"

#include <QStringList>

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

QString firstText(const Recordset &row)
{
    return row.Fields(0).text();
}

QString ofNature(const QString &code, int natId)
{
    return Sql(" Where Code_No=", Quoted(code), " and NatId = ", natId);
}

constexpr int allNatures = -1; // NatId of what is entered for all natures together

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

bool AddClient(Connection *cnn, const ClientRecord &client)
{
    return WriteOne(cnn, insertText(client));
}

bool UpdateClient(Connection *cnn, const ClientRecord &client, const QString &editCode)
{
    const QStringList columns = clientColumns(cnn);
    if (columns.isEmpty())
        return false;
    const QString update = updateText(client, columns, editCode);
    const QString &code = client[ClientRecord::Code];
    if (code == editCode)
        return WriteOne(cnn, update);
    const auto tables = TablesOfClients(cnn);
    return ChangeTogether(
        cnn, [&](Change &change) { return change.write(update) && MoveClientRows(change, tables, editCode, code); });
}

RowsRead<QString> ExistingCodes(Connection *cnn)
{
    const auto clients = ReadRows(cnn, QStringLiteral("Select Code_No from FBT_Info Order by Code_No"), firstText);
    const auto parties = ReadRows(cnn, QStringLiteral("Select Code_No from biller Order by Code_No"), firstText);
    if (clients.failed() || parties.failed())
        return RowsRead<QString>::failure();
    std::vector<QString> codes = *clients;
    codes.insert(codes.end(), parties->begin(), parties->end());
    return codes;
}

RowsRead<NamedClient> ClientNames(Connection *cnn)
{
    return ReadRows(cnn, QStringLiteral("Select Code_no, Name from FBT_Info Order by Name, Code_no"),
                    [](const Recordset &row) {
                        return NamedClient{row.Fields(0).text(), row.Fields(1).text()};
                    });
}

std::optional<bool> HasNatureDetails(Connection *cnn, const QString &code, int natId)
{
    const auto expenses = FindsRow(cnn, Sql("Select * from FBT_Detail", ofNature(code, natId)));
    if (expenses.value_or(true))
        return expenses;
    return FindsRow(cnn, Sql("Select * from FBT_SalDet", ofNature(code, natId)));
}

bool DeleteNatureDetails(Connection *cnn, const QString &code, int natId)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return change.write(Sql("Delete from FBT_Detail", ofNature(code, natId))) &&
               change.write(Sql("Delete from FBT_SalDet", ofNature(code, natId)));
    });
}

std::optional<bool> HasConsolidatedExpenses(Connection *cnn, const QString &code)
{
    return FindsRow(cnn, Sql("Select * from FBT_Detail", ofNature(code, allNatures)));
}

bool DeleteConsolidatedExpenses(Connection *cnn, const QString &code)
{
    return WriteOne(cnn, Sql("Delete from FBT_Detail", ofNature(code, allNatures)));
}
