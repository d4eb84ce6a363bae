#include "records/bankaccounts.h"

#include "records/change.h"
#include "records/readrows.h"

#include <algorithm>

namespace {

QString ownRows(const ClientYear &client)
{
    return Sql(" Where Code_No=", Quoted(client.code), " and Yr=", client.year);
}

const char *mark(bool isDefault)
{
    return isDefault ? "'Y'" : "'N'";
}

QString insertText(const ClientYear &client, int number, const BankAccount &account)
{
    return Sql("Insert into FBT_BankDet Values (", Quoted(client.code), ",", client.year, ",", number, ",",
               Quoted(account.bank), ",", Quoted(account.address), ",", Quoted(account.micr), ",", Quoted(account.type),
               ",", Quoted(account.account), ",", account.ecs ? 1 : 0, ",", mark(account.isDefault), ")");
}

QString updateText(const ClientYear &client, const BankAccount &account)
{
    return Sql("Update FBT_BankDet Set BankNm=", Quoted(account.bank), ",BankAdd=", Quoted(account.address),
               ",MICR=", Quoted(account.micr), ",AcTyp=", Quoted(account.type), ",AcNo=", Quoted(account.account),
               ",ECS=", account.ecs ? 1 : 0, ",DefBank=", mark(account.isDefault), ownRows(client),
               " and SrNo=", account.number);
}

bool takeMark(Change &change, const ClientYear &client, int number)
{
    return change.write(Sql("Update FBT_BankDet Set DefBank='N'", ownRows(client), " and SrNo<>", number));
}

/// Makes the first account the default one when none is.
bool keepADefault(Change &change, const ClientYear &client)
{
    const auto accounts = BankAccounts(change.connection(), client);
    if (accounts.failed())
        return false;
    const auto isDefault = [](const BankAccount &account) { return account.isDefault; };
    if (accounts->empty() || std::any_of(accounts->begin(), accounts->end(), isDefault))
        return true;
    return change.write(
        Sql("Update FBT_BankDet Set DefBank='Y'", ownRows(client), " and SrNo=", accounts->front().number));
}

/// Writes the account and gives its number, none after a fault.
std::optional<int> writeAccount(Change &change, const ClientYear &client, const BankAccount &account, bool adding)
{
    if (!adding)
        return change.rewrite(updateText(client, account)) ? std::optional(account.number) : std::nullopt;
    const auto number = change.nextNumber(QStringLiteral("FBT_BankDet"), client.code,
                                          Sql("Select Max(SrNo) as MaxSr from FBT_BankDet", ownRows(client)));
    return number && change.write(insertText(client, *number, account)) ? number : std::nullopt;
}

} // namespace

RowsRead<BankAccount> BankAccounts(Connection *cnn, const ClientYear &client)
{
    return ReadRows(cnn, Sql("Select * from FBT_BankDet", ownRows(client), " order by SrNo"), [](const Recordset &row) {
        const auto text = [&row](QStringView column) { return row.Fields(column).text(); };
        return BankAccount{row.Fields(u"SrNo").whole(),
                           text(u"BankNm"),
                           text(u"BankAdd"),
                           text(u"MICR"),
                           text(u"AcTyp"),
                           text(u"AcNo"),
                           row.Fields(u"ECS").num() != 0,
                           text(u"DefBank").compare(QLatin1String("Y"), Qt::CaseInsensitive) == 0};
    });
}

std::optional<int> SaveBankAccount(Connection *cnn, const ClientYear &client, const BankAccount &account, bool adding)
{
    std::optional<int> number;
    const bool saved = ChangeTogether(cnn, [&](Change &change) {
        number = writeAccount(change, client, account, adding);
        return number && (!account.isDefault || takeMark(change, client, *number)) && keepADefault(change, client);
    });
    return saved ? number : std::nullopt;
}

bool DeleteBankAccount(Connection *cnn, const ClientYear &client, int number)
{
    const auto remove = [&](Change &change) {
        return change.remove(Sql("Delete from FBT_BankDet", ownRows(client), " and SrNo=", number)) &&
               keepADefault(change, client);
    };
    return ChangeTogether(cnn, remove, Doing::Delete);
}
