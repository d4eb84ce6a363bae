#include "suite/bankstore.h"

#include "platform/recordset.h"
#include "suite/clientcode.h"

namespace {

bool write(Connection *cnn, const QString &statement)
{
    const bool taken = cnn->Execute(statement);
    cnn->Execute(QStringLiteral("Flush Tables"));
    return taken;
}

/// The number that the next row takes: the largest one plus 1.
int nextNumber(Connection *cnn, const QString &column, const QString &source)
{
    return FirstField(cnn, Sql("Select Max(", column, ") as MaxSr from ", source)).whole() + 1;
}

QString ownRows(const QString &code, int year)
{
    return Sql(" Where Code_No=", Quoted(code), " and Yr=", year);
}

QString yesNo(bool yes)
{
    return yes ? QStringLiteral("Y") : QStringLiteral("N");
}

} // namespace

int SaveBankAccount(Connection *cnn, const QString &code, int year, const BankAccount &account)
{
    const bool fresh = account.number == 0;
    const int number =
        fresh ? nextNumber(cnn, QStringLiteral("SrNo"), QStringLiteral("FBT_BankDet") + ownRows(code, year))
              : account.number;
    const QString statement =
        fresh ? Sql("Insert into FBT_BankDet Values (", Quoted(code), ",", year, ",", number, ",", Quoted(account.bank),
                    ",", Quoted(account.address), ",", Quoted(account.micr), ",", Quoted(account.type), ",",
                    Quoted(account.account), ",", account.ecs ? 1 : 0, ",'", yesNo(account.isDefault), "')")
              : Sql("Update FBT_BankDet Set BankNm=", Quoted(account.bank), ",BankAdd=", Quoted(account.address),
                    ",MICR=", Quoted(account.micr), ",AcTyp=", Quoted(account.type), ",AcNo=", Quoted(account.account),
                    ",ECS=", account.ecs ? 1 : 0, ",DefBank='", yesNo(account.isDefault), "'", ownRows(code, year),
                    " and SrNo=", number);
    if (!write(cnn, statement))
        return 0;
    if (account.isDefault)
        write(cnn, Sql("Update FBT_BankDet Set DefBank='N'", ownRows(code, year), " and SrNo<>", number));
    return number;
}

bool DeleteBankAccount(Connection *cnn, const QString &code, int year, int number)
{
    return write(cnn, Sql("Delete from FBT_BankDet", ownRows(code, year), " and SrNo=", number));
}

int SaveBank(Connection *cnn, const Bank &bank)
{
    const bool fresh = bank.number == 0;
    const int number =
        fresh ? nextNumber(cnn, QStringLiteral("bank_code_no"), QStringLiteral("bank_master")) : bank.number;
    const QString statement =
        fresh ? Sql("Insert into bank_master Values (", number, ",", Quoted(bank.name), ",", Quoted(bank.branch), ",",
                    Quoted(bank.branchCode), ")")
              : Sql("Update bank_master Set bank_name=", Quoted(bank.name), ",branch=", Quoted(bank.branch),
                    ",branch_code=", Quoted(bank.branchCode), " Where bank_code_no=", number);
    return write(cnn, statement) ? number : 0;
}

bool DeleteBank(Connection *cnn, int number)
{
    return write(cnn, Sql("Delete from bank_master Where bank_code_no=", number));
}

bool BankIsUsed(Connection *cnn, int number)
{
    return HasRows(cnn, Sql("Select * from FBT_Challan Where BSRCode=", number, " Limit 1"));
}
