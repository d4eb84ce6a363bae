#include "records/banks.h"

#include "records/change.h"
#include "records/readrows.h"

namespace {

QString insertText(int number, const Bank &bank)
{
    return Sql("Insert into bank_master Values (", number, ",", Quoted(bank.name), ",", Quoted(bank.branch), ",",
               Quoted(bank.branchCode), ")");
}

QString updateText(const Bank &bank)
{
    return Sql("Update bank_master Set bank_name=", Quoted(bank.name), ",branch=", Quoted(bank.branch),
               ",branch_code=", Quoted(bank.branchCode), " Where bank_code_no=", bank.number);
}

} // namespace

RowsRead<Bank> Banks(Connection *cnn)
{
    return ReadRows(cnn, QStringLiteral("bank_master"), [](const Recordset &row) {
        return Bank{row.Fields(0).whole(), row.Fields(1).text(), row.Fields(2).text(), row.Fields(3).text()};
    });
}

std::optional<int> SaveBank(Connection *cnn, const Bank &bank, bool adding)
{
    std::optional<int> number;
    const bool saved = ChangeTogether(cnn, [&](Change &change) {
        number = bank.number;
        if (!adding)
            return change.rewrite(updateText(bank));
        number =
            change.nextNumber(QStringLiteral("bank_master"), {}, "Select Max(bank_code_no) as MaxSr from bank_master");
        return number && change.write(insertText(*number, bank));
    });
    return saved ? number : std::nullopt;
}

bool DeleteBank(Connection *cnn, int number)
{
    return ChangeTogether(
        cnn, [&](Change &change) { return change.remove(Sql("Delete from bank_master Where bank_code_no=", number)); },
        Doing::Delete);
}

std::optional<bool> BankInUse(Connection *cnn, int number)
{
    return FindsRowAgainst(Doing::Delete, cnn, Sql("Select * from FBT_Challan Where BSRCode=", number, " Limit 1"));
}
