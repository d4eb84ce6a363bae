#include "masters/clientrecord.h"

#include "controls/typedtext.h"
#include "platform/recordset.h"

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

void appendCodes(QStringList &codes, const QString &query, Connection *cnn)
{
    Recordset rows;
    for (rows.Open(query, cnn); !rows.Eof(); rows.MoveNext())
        codes << rows.Fields(0).text();
}

/// A code as the database compares it: without regard to case, accents and trailing blanks.
QString comparedCode(const QString &code)
{
    QString plain;
    for (const QChar c : code.normalized(QString::NormalizationForm_D)) {
        if (!c.isMark())
            plain += c;
    }
    while (plain.endsWith(u' '))
        plain.chop(1);
    return plain.toCaseFolded();
}

} // namespace

std::optional<ClientRecord> ReadClient(Connection *cnn, const QString &code)
{
    Recordset info;
    if (!info.Open(Sql("Select * from FBT_Info where code_no=", Quoted(code)), cnn) || info.Eof())
        return std::nullopt;
    ClientRecord client;
    for (int position = 0; position < ClientRecord::Count; ++position)
        client[position] = info.Fields(position).text();
    client.surApp = info.Fields(u"SurApp").text();
    return client;
}

QString InsertClientText(const ClientRecord &client)
{
    QString text = Sql("Insert into FBT_Info Values (", Quoted(client[ClientRecord::Code]));
    for (int position = 1; position < ClientRecord::Count; ++position)
        text += Sql(",", valueText(client, position));
    return text + Sql(",'','','", client.surApp, "')");
}

QString UpdateClientText(const ClientRecord &client, const QStringList &columns, const QString &editCode)
{
    QString text = Sql("Update FBT_Info Set code_no = ", Quoted(client[ClientRecord::Code]));
    for (int position = 1; position < ClientRecord::Count; ++position)
        text += Sql(",", columns.value(position), " = ", valueText(client, position));
    return text + Sql(",SurApp='", client.surApp, "' where code_no=", Quoted(editCode));
}

QStringList ClientColumns(Connection *cnn)
{
    Recordset info;
    info.Open(QStringLiteral("Select * from FBT_Info Limit 0"), cnn);
    QStringList names;
    for (int i = 0; i < info.FieldCount(); ++i)
        names << info.FieldName(i);
    return names;
}

QSet<double> NatureNumbers(const QString &busnat)
{
    QSet<double> numbers;
    if (busnat.isEmpty())
        return numbers;
    for (const QString &number : busnat.split(u','))
        numbers.insert(Val(number));
    return numbers;
}

QString CleanCode(const QString &typed)
{
    return Capitals(typed.trimmed());
}

bool CodeMayBeKept(const QString &code)
{
    return !code.trimmed().isEmpty() && !code.contains(u'\'') && !code.contains(u'\\');
}

bool SameCode(const QString &one, const QString &other)
{
    return comparedCode(one) == comparedCode(other);
}

bool CodeTaken(const QStringList &codes, const QString &code)
{
    return std::any_of(codes.begin(), codes.end(), [&](const QString &taken) { return SameCode(taken, code); });
}

QStringList ExistingCodes(Connection *cnn)
{
    QStringList codes;
    appendCodes(codes, QStringLiteral("Select Code_No from FBT_Info"), cnn);
    appendCodes(codes, QStringLiteral("Select Code_No from biller"), cnn);
    return codes;
}

QString PinCodeFault(const QString &pin)
{
    constexpr int digits = 6;
    if (pin.isEmpty())
        return {};
    if (pin.contains(u' '))
        return QStringLiteral("Pin Code can not contain Spaces.");
    return pin.size() == digits ? QString() : QStringLiteral("Pin Code should be 6 digit Number.");
}
