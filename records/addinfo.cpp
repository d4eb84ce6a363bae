#include "records/addinfo.h"

#include "platform/recordset.h"
#include "records/change.h"

#include <algorithm>

namespace {

using Text = decltype(Sql());

Text rowOfYear(const ClientYear &client)
{
    return Sql("Select * from FBT_AddInfo Where Code_No=", Quoted(client.code), " and TYear=", client.year);
}

Employees employeesIn(const Recordset &addInfo)
{
    return {addInfo.Fields(u"EmpBoth").num() != 0, addInfo.Fields(u"SepBooks").num() != 0,
            addInfo.Fields(u"IndiaEmp").whole(), addInfo.Fields(u"TotalEmp").whole()};
}

/// A column as it goes into the new year's row.
struct NewColumn
{
    enum Kind { CopiedText, CopiedNumber, Fixed } kind;
    const char *text; ///< the column's name, or what is written in its place
};

/// The columns after client and year, in the order of the table. What belongs to one return (its dates, its revision)
/// starts anew.
constexpr NewColumn newColumns[] = {
    {NewColumn::Fixed, "'0'"}, // ChAdd
    {NewColumn::CopiedText, "Ward"},
    {NewColumn::CopiedText, "OldWard"},
    {NewColumn::CopiedText, "Section"},
    {NewColumn::Fixed, "'0'"}, // RevRet
    {NewColumn::Fixed, "''"},  // RevRecNo
    {NewColumn::Fixed, "''"},  // RevRecDt
    {NewColumn::CopiedText, "NOB"},
    {NewColumn::CopiedText, "Ac44AA"},
    {NewColumn::CopiedText, "Ac44AB"},
    {NewColumn::Fixed, "''"}, // Dt44AB
    {NewColumn::CopiedText, "Ac44ABC"},
    {NewColumn::Fixed, "''"}, // Dt44ABC
    {NewColumn::CopiedText, "PEIndia"},
    {NewColumn::CopiedText, "DTRel1"},
    {NewColumn::CopiedText, "DTRel2"},
    {NewColumn::CopiedText, "PEOut"},
    {NewColumn::CopiedText, "EmpBoth"},
    {NewColumn::CopiedText, "SepBooks"},
    {NewColumn::CopiedNumber, "IndiaEmp"},
    {NewColumn::CopiedNumber, "TotalEmp"},
    {NewColumn::Fixed, "''"}, // RetDt
    {NewColumn::Fixed, "''"}, // RetAckNo
    {NewColumn::CopiedText, "areacd"},
    {NewColumn::CopiedText, "aotyp"},
    {NewColumn::CopiedText, "aorng"},
    {NewColumn::CopiedText, "aono"},
    {NewColumn::Fixed, "'1',0,'1',0,'1',0,''"}, // interest: all computed, up to no date yet
};

Text valueOf(const NewColumn &column, const Recordset &before)
{
    const QString name = QString::fromLatin1(column.text);
    switch (column.kind) {
    case NewColumn::CopiedText:
        return Sql(Quoted(before.Fields(name).text()));
    case NewColumn::CopiedNumber:
        return Sql(before.Fields(name).num());
    default:
        return Sql(column.text);
    }
}

Text copiedValues(const Recordset &before)
{
    Text values;
    for (const NewColumn &column : newColumns)
        values = Sql(values, &column == std::begin(newColumns) ? "" : ",", valueOf(column, before));
    return values;
}

Text insertRow(const ClientYear &client, const Text &values)
{
    return Sql("insert into FBT_AddInfo values(", Quoted(client.code), ",", client.year, ",", values, ")");
}

Text defaultValues(const Employees &employees)
{
    return Sql("'0','','','1','0','','','0','0','0','','0','','0','0','0','0','", employees.EmpBoth ? 1 : 0, "','",
               employees.SepBooks ? 1 : 0, "',", employees.IndiaEmp, ",", employees.TotalEmp,
               ",'','','','','','','1',0,'1',0,'1',0,''");
}

Text banksOfYear(const ClientYear &client)
{
    return Sql("Select * from FBT_BankDet Where Code_No=", Quoted(client.code), " and Yr=", client.year);
}

Text bankInsert(const ClientYear &client, const Recordset &bank)
{
    const auto text = [&bank](QStringView name) { return Quoted(bank.Fields(name).text()); };
    const auto number = [&bank](QStringView name) { return bank.Fields(name).num(); };
    return Sql("insert into FBT_BankDet values(", Quoted(client.code), ",", client.year, ",", number(u"SrNo"), ",",
               text(u"BankNm"), ",", text(u"BankAdd"), ",", text(u"MICR"), ",", text(u"ACTyp"), ",", text(u"acno"), ",",
               number(u"ECS"), ",", text(u"DefBank"), ")");
}

} // namespace

Reading<Employees> EmployeesOfYear(Connection *cnn, const ClientYear &client)
{
    Recordset rows;
    if (!rows.Open(rowOfYear(client), cnn))
        return Reading<Employees>::failure();
    return rows.Eof() ? Reading<Employees>::nothing() : employeesIn(rows);
}

bool InsertDefaultAddInfo(Change &change, const ClientYear &client, const Employees &employees)
{
    return change.write(insertRow(client, defaultValues(employees)));
}

Reading<Employees> OpenAddInfoYear(Connection *cnn, const ClientYear &client)
{
    Reading<Employees> employees = EmployeesOfYear(cnn, client);
    if (!employees.none())
        return employees;
    Recordset before;
    if (!before.Open(rowOfYear({client.code, client.year - 1}), cnn))
        return Reading<Employees>::failure();
    if (!before.Eof())
        employees = employeesIn(before);
    WriteOne(cnn, insertRow(client, before.Eof() ? defaultValues({}) : copiedValues(before)));
    return *employees; // known even when the row could not be written
}

bool CarryBanksForward(Connection *cnn, const ClientYear &client)
{
    Recordset banks;
    if (!banks.Open(banksOfYear(client), cnn))
        return false;
    if (!banks.Eof())
        return true;
    std::vector<Text> statements;
    if (!banks.Open(banksOfYear({client.code, client.year - 1}), cnn))
        return false;
    for (; !banks.Eof(); banks.MoveNext())
        statements.push_back(bankInsert(client, banks));
    return statements.empty() || ChangeTogether(cnn, [&](Change &change) {
               return std::all_of(statements.begin(), statements.end(),
                                  [&](const Text &statement) { return change.write(statement); });
           });
}
