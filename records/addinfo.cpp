#include "records/addinfo.h"

#include "platform/text.h"
#include "records/change.h"
#include "records/readrows.h"

#include <QHash>

#include <algorithm>

namespace {

SqlText rowOfYear(const ClientYear &client)
{
    return Sql("Select * from FBT_AddInfo Where Code_No=", Quoted(client.code), " and TYear=", client.year);
}

Employees employeesIn(const Recordset &addInfo)
{
    return {addInfo.Fields(u"EmpBoth").num() != 0, addInfo.Fields(u"SepBooks").num() != 0,
            addInfo.Fields(u"IndiaEmp").whole(), addInfo.Fields(u"TotalEmp").whole()};
}

/// A column after client and year.
struct Column
{
    enum Kind { Text, Number } kind;
    const char *name;
    const char *first; ///< what a client's first row holds
    bool carried;      ///< taken over from the year before; what belongs to one return (dates, revision) starts anew
};

/// In the order of the table.
constexpr Column columns[] = {
    {Column::Text, "ChAdd", "0", false},       {Column::Text, "Ward", "", true},
    {Column::Text, "OldWard", "", true},       {Column::Text, "Section", "1", true},
    {Column::Text, "RevRet", "0", false},      {Column::Text, "RevRecNo", "", false},
    {Column::Text, "RevRecDt", "", false},     {Column::Text, "NOB", "0", true},
    {Column::Text, "Ac44AA", "0", true},       {Column::Text, "Ac44AB", "0", true},
    {Column::Text, "Dt44AB", "", false},       {Column::Text, "Ac44ABC", "0", true},
    {Column::Text, "Dt44ABC", "", false},      {Column::Text, "PEIndia", "0", true},
    {Column::Text, "DTRel1", "0", true},       {Column::Text, "DTRel2", "0", true},
    {Column::Text, "PEOut", "0", true},        {Column::Text, "EmpBoth", "0", true},
    {Column::Text, "SepBooks", "0", true},     {Column::Number, "IndiaEmp", "0", true},
    {Column::Number, "TotalEmp", "0", true},   {Column::Text, "RetDt", "", false},
    {Column::Text, "RetAckNo", "", false},     {Column::Text, "areacd", "", true},
    {Column::Text, "aotyp", "", true},         {Column::Text, "aorng", "", true},
    {Column::Text, "aono", "", true},          {Column::Text, "Calc115WJ", "1", false},
    {Column::Number, "Amt115WJ", "0", false},  {Column::Text, "Calc115WK", "1", false},
    {Column::Number, "Amt115WK", "0", false},  {Column::Text, "Calc115WJ5", "1", false},
    {Column::Number, "Amt115WJ5", "0", false}, {Column::Text, "IntDt", "", false},
};

/// The insert of a row whose values `of` gives, column by column, as texts.
template<typename Of>
SqlText insertRow(const ClientYear &client, Of of)
{
    SqlText values;
    for (const Column &column : columns) {
        const QString value = of(column);
        values += column.kind == Column::Text ? Sql(",", Quoted(value)) : Sql(",", value);
    }
    return Sql("insert into FBT_AddInfo values(", Quoted(client.code), ",", client.year, values, ")");
}

SqlText copiedRow(const ClientYear &client, const Recordset &before)
{
    return insertRow(client, [&before](const Column &column) {
        const QString name = QString::fromLatin1(column.name);
        if (!column.carried)
            return QString::fromLatin1(column.first);
        return column.kind == Column::Text ? before.Fields(name).text() : NumberText(before.Fields(name).num());
    });
}

SqlText firstRow(const ClientYear &client, const Employees &employees, const QString &filed = {})
{
    const QHash<QString, QString> given{{"EmpBoth", QString::number(employees.EmpBoth ? 1 : 0)},
                                        {"SepBooks", QString::number(employees.SepBooks ? 1 : 0)},
                                        {"IndiaEmp", QString::number(employees.IndiaEmp)},
                                        {"TotalEmp", QString::number(employees.TotalEmp)},
                                        {"RetDt", filed}};
    return insertRow(client, [&given](const Column &column) {
        const auto own = given.constFind(QString::fromLatin1(column.name));
        return own != given.constEnd() ? *own : QString::fromLatin1(column.first);
    });
}

SqlText banksOfYear(const ClientYear &client)
{
    return Sql("Select * from FBT_BankDet Where Code_No=", Quoted(client.code), " and Yr=", client.year);
}

SqlText bankInsert(const ClientYear &client, const Recordset &bank)
{
    const auto text = [&bank](QStringView name) { return Quoted(bank.Fields(name).text()); };
    const auto number = [&bank](QStringView name) { return bank.Fields(name).num(); };
    return Sql("insert into FBT_BankDet values(", Quoted(client.code), ",", client.year, ",", number(u"SrNo"), ",",
               text(u"BankNm"), ",", text(u"BankAdd"), ",", text(u"MICR"), ",", text(u"ACTyp"), ",", text(u"acno"), ",",
               number(u"ECS"), ",", text(u"DefBank"), ")");
}

/// The accounts of the year before, unless another user has copied them meanwhile.
bool copyBanks(Change &change, const ClientYear &client)
{
    if (!change.lock("FBT_BankDet", client.code))
        return false;
    const auto has = FindsRow(change.connection(), banksOfYear(client));
    const auto inserts = ReadRows(change.connection(), banksOfYear({client.code, client.year - 1}),
                                  [&](const Recordset &bank) { return bankInsert(client, bank); });
    if (!has || *has || inserts.failed())
        return has.value_or(false) && !inserts.failed();
    return std::all_of(inserts->begin(), inserts->end(),
                       [&](const SqlText &statement) { return change.write(statement); });
}

} // namespace

Reading<Employees> EmployeesOfYear(Connection *cnn, const ClientYear &client)
{
    Recordset rows;
    if (!rows.Open(rowOfYear(client), cnn))
        return Reading<Employees>::failure();
    return rows.Eof() ? Reading<Employees>::nothing() : employeesIn(rows);
}

ColumnValues AddInfoDefaults()
{
    ColumnValues values;
    for (const Column &column : columns)
        values.append({QString::fromLatin1(column.name), QString::fromLatin1(column.first)});
    return values;
}

bool InsertDefaultAddInfo(Change &change, const ClientYear &client, const Employees &employees, const QString &filed)
{
    return change.write(firstRow(client, employees, filed));
}

Reading<Employees> OpenAddInfoYear(Connection *cnn, const ClientYear &client)
{
    Reading<Employees> employees = EmployeesOfYear(cnn, client);
    if (!employees.none())
        return employees;
    const bool opened = ChangeTogether(cnn, [&](Change &change) {
        if (!change.lock("FBT_AddInfo", client.code))
            return false;
        employees = EmployeesOfYear(cnn, client); // another user may have opened the year meanwhile
        if (!employees.none())
            return employees.found();
        Recordset before;
        if (!before.Open(rowOfYear({client.code, client.year - 1}), cnn)) {
            employees = Reading<Employees>::failure();
            return false;
        }
        employees = before.Eof() ? Employees() : employeesIn(before);
        return change.write(before.Eof() ? firstRow(client, {}) : copiedRow(client, before));
    });
    return opened ? employees : Reading<Employees>::failure();
}

bool CarryBanksForward(Connection *cnn, const ClientYear &client)
{
    const auto has = FindsRow(cnn, banksOfYear(client));
    if (!has || *has)
        return has.has_value();
    return ChangeTogether(cnn, [&](Change &change) { return copyBanks(change, client); });
}
