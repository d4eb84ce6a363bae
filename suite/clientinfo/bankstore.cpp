#include "suite/clientinfo/bankstore.h"

#include "platform/nextnumber.h"

#include <optional>

namespace {

bool write(Connection *cnn, const QString &statement)
{
    const bool taken = cnn->Execute(statement);
    cnn->Execute(QStringLiteral("Flush Tables"));
    return taken;
}

QString ownRows(const QString &code, int year)
{
    return Sql(" Where Code_No=", Quoted(code), " and Yr=", year);
}

QString yesNo(bool yes)
{
    return yes ? QStringLiteral("Y") : QStringLiteral("N");
}

bool isDefault(const Recordset &account)
{
    return account.Fields(u"DefBank").text().compare(QLatin1String("Y"), Qt::CaseInsensitive) == 0;
}

/// Makes the first account the default one when none is.
void keepADefault(Connection *cnn, const QString &code, int year)
{
    Recordset accounts;
    accounts.Open(Sql("Select SrNo,DefBank from FBT_BankDet", ownRows(code, year), " order by SrNo"), cnn);
    if (accounts.Eof())
        return;
    const int first = accounts.Fields(u"SrNo").whole();
    for (; !accounts.Eof(); accounts.MoveNext()) {
        if (isDefault(accounts))
            return;
    }
    write(cnn, Sql("Update FBT_BankDet Set DefBank='Y'", ownRows(code, year), " and SrNo=", first));
}

/// The number a row is stored under: its own, or the next one. None when that could not be read.
std::optional<int> numberFor(Connection *cnn, int own, const QString &column, const QString &source)
{
    return own != 0 ? std::optional(own) : NextNumber(cnn, Sql("Select Max(", column, ") as MaxSr from ", source));
}

} // namespace

int SaveBankAccount(Connection *cnn, const QString &code, int year, const BankAccount &account)
{
    const bool fresh = account.number == 0;
    const std::optional<int> number =
        numberFor(cnn, account.number, QStringLiteral("SrNo"), QStringLiteral("FBT_BankDet") + ownRows(code, year));
    if (!number)
        return 0;
    const QString statement =
        fresh
            ? Sql("Insert into FBT_BankDet Values (", Quoted(code), ",", year, ",", *number, ",", Quoted(account.bank),
                  ",", Quoted(account.address), ",", Quoted(account.micr), ",", Quoted(account.type), ",",
                  Quoted(account.account), ",", account.ecs ? 1 : 0, ",'", yesNo(account.isDefault), "')")
            : Sql("Update FBT_BankDet Set BankNm=", Quoted(account.bank), ",BankAdd=", Quoted(account.address),
                  ",MICR=", Quoted(account.micr), ",AcTyp=", Quoted(account.type), ",AcNo=", Quoted(account.account),
                  ",ECS=", account.ecs ? 1 : 0, ",DefBank='", yesNo(account.isDefault), "'", ownRows(code, year),
                  " and SrNo=", *number);
    if (!write(cnn, statement))
        return 0;
    if (account.isDefault)
        write(cnn, Sql("Update FBT_BankDet Set DefBank='N'", ownRows(code, year), " and SrNo<>", *number));
    keepADefault(cnn, code, year);
    return *number;
}

bool DeleteBankAccount(Connection *cnn, const QString &code, int year, int number)
{
    const bool deleted = write(cnn, Sql("Delete from FBT_BankDet", ownRows(code, year), " and SrNo=", number));
    keepADefault(cnn, code, year);
    return deleted;
}

int SaveBank(Connection *cnn, const Bank &bank)
{
    const bool fresh = bank.number == 0;
    const std::optional<int> number =
        numberFor(cnn, bank.number, QStringLiteral("bank_code_no"), QStringLiteral("bank_master"));
    if (!number)
        return 0;
    const QString statement =
        fresh ? Sql("Insert into bank_master Values (", *number, ",", Quoted(bank.name), ",", Quoted(bank.branch), ",",
                    Quoted(bank.branchCode), ")")
              : Sql("Update bank_master Set bank_name=", Quoted(bank.name), ",branch=", Quoted(bank.branch),
                    ",branch_code=", Quoted(bank.branchCode), " Where bank_code_no=", *number);
    return write(cnn, statement) ? *number : 0;
}

bool DeleteBank(Connection *cnn, int number)
{
    return write(cnn, Sql("Delete from bank_master Where bank_code_no=", number));
}

bool BankIsUsed(Connection *cnn, int number)
{
    return HasRows(cnn, Sql("Select * from FBT_Challan Where BSRCode=", number, " Limit 1"));
}
