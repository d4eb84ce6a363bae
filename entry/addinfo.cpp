#include "entry/addinfo.h"

#include "calc/employees.h"
#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "entry/detailrows.h"
#include "platform/recordset.h"

#include <QStringList>

#include <optional>

namespace {

QString rowOfYear(const ClientYear &client)
{
    return Sql("Select * from FBT_AddInfo Where Code_No=", Quoted(client.code), " and TYear=", client.year);
}

/// A column as it goes into the new year's row.
struct NewColumn
{
    enum Kind { CopiedText, CopiedNumber, Fixed } kind;
    const char *text; ///< the column's name, or what is written in its place
};

/// The columns behind client and year, in the order of the table. What belongs to one return (its dates, its revision)
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

QString valueOf(const NewColumn &column, const Recordset &before)
{
    QString name = QString::fromLatin1(column.text);
    switch (column.kind) {
    case NewColumn::CopiedText:
        return Quoted(before.Fields(name).text());
    case NewColumn::CopiedNumber:
        return Sql(before.Fields(name).num());
    default:
        return name;
    }
}

/// The values of a new row: those of the year before, or the default ones. None when the year before could not be read:
/// default ones would stand in its place for good.
std::optional<QString> newValues(const ClientYear &client)
{
    Recordset before;
    if (!before.Open(rowOfYear({client.code, client.year - 1}), Cnn))
        return std::nullopt;
    if (before.Eof())
        return QStringLiteral("'0','','','1','0','','','0','0','0','','0','','0','0','0','0','0','0',0,0,"
                              "'','','','','','','1',0,'1',0,'1',0,''");
    TakeEmployees(before);
    QStringList values;
    for (const NewColumn &column : newColumns)
        values << valueOf(column, before);
    return values.join(u',');
}

QString bankRows(const ClientYear &client)
{
    return Sql("Select * from FBT_BankDet Where Code_No=", Quoted(client.code), " and Yr=", client.year);
}

QString bankInsert(const ClientYear &client, const Recordset &bank)
{
    const auto text = [&bank](QStringView name) { return Quoted(bank.Fields(name).text()); };
    const auto number = [&bank](QStringView name) { return Sql(bank.Fields(name).num()); };
    const QStringList values{number(u"SrNo"), text(u"BankNm"), text(u"BankAdd"), text(u"MICR"),
                             text(u"ACTyp"),  text(u"acno"),   number(u"ECS"),   text(u"DefBank")};
    return Sql("insert into FBT_BankDet values(", Quoted(client.code), ",", client.year, ",", values.join(u','), ")");
}

QStringList bankInserts(const ClientYear &client)
{
    QStringList statements;
    Recordset bank;
    for (bank.Open(bankRows({client.code, client.year - 1}), Cnn); !bank.Eof(); bank.MoveNext())
        statements << bankInsert(client, bank);
    return statements;
}

/// Takes the employee figures of the year. False when the year has no row; a reading that failed has not seen that.
bool readYear(const ClientYear &client)
{
    Recordset rs;
    const bool read = rs.Open(rowOfYear(client), Cnn);
    if (!rs.Eof())
        TakeEmployees(rs);
    return !read || !rs.Eof();
}

void insertYear(const ClientYear &client)
{
    const std::optional<QString> values = newValues(client);
    if (!values)
        return;
    Cnn->Execute(Sql("insert into FBT_AddInfo values(", Quoted(client.code), ",", client.year, ",", *values, ")"));
    Cnn->Execute(QStringLiteral("flush tables"));
}

/// Whether the year is known to have no bank account.
bool hasNoBank(const ClientYear &client)
{
    Recordset rs;
    return rs.Open(bankRows(client), Cnn) && rs.Eof();
}

} // namespace

void LOADADDINFO()
{
    ErrorTail tail(QStringLiteral("frmfbtdet"), QStringLiteral("LOADADDINFO"));
    EmpBoth = SepBooks = false;
    IndiaEmp = TotalEmp = 0;
    const ClientYear client = InHand();
    if (!readYear(client))
        insertYear(client);
    LOADBANKDATA();
}

void LOADBANKDATA()
{
    ErrorTail tail(QStringLiteral("frmfbtdet"), QStringLiteral("LOADBANKDATA"));
    const ClientYear client = InHand();
    if (!hasNoBank(client))
        return;
    for (const QString &statement : bankInserts(client)) {
        Cnn->Execute(statement);
        Cnn->Execute(QStringLiteral("Flush Tables"));
    }
}
