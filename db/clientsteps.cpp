#include "db/clientsteps.h"

#include "db/updaterun.h"
#include "platform/recordset.h"

namespace {

/// What an older database's status code becomes, and whether surcharge applies to it in all years.
struct Conversion
{
    int from;
    int to;
    bool surcharge;
};

// Codes that are not here keep their number and get no surcharge. Code 7 and code 8 both become 9, but only those that
// had the later code 8 (or 10) were bodies to whom surcharge applied.
constexpr Conversion conversions[] = {
    {2, 15, true}, {3, 3, true},   {5, 5, true},   {7, 9, false},  {8, 9, true},
    {10, 9, true}, {12, 11, true}, {14, 13, true}, {15, 15, true}, {16, 16, true},
};

Conversion conversionOf(int code)
{
    for (const Conversion &conversion : conversions) {
        if (conversion.from == code)
            return conversion;
    }
    return {code, code, false};
}

void convertClient(UpdateRun &run, const Recordset &client)
{
    const Conversion conversion = conversionOf(client.Fields(u"ClStatus").whole());
    run.write(Sql("Update FBT_Info Set ClStatus=", conversion.to, ",SurApp='", conversion.surcharge ? "11111" : "00000",
                  "' Where Code_No=", Quoted(client.Fields(u"Code_No").text())));
}

} // namespace

void AddInfoColumns(UpdateRun &run)
{
    const int columns = run.columnCount(QStringLiteral("FBT_Info"));
    if (columns == 17)
        run.write(QStringLiteral("Alter Table FBT_Info Add (Doi Varchar(10) Default '', Email Varchar(255) Default '', "
                                 "ResSt Char(1) Default '0', SexM Char(1) Default '0', FName Varchar(100) Default '', "
                                 "SurApp Varchar(255) Default '')"));
    else if (columns == 22)
        run.write(QStringLiteral("Alter Table FBT_Info Add (SurApp Varchar(255) Default '')"));
}

void ConvertSurcharge(UpdateRun &run)
{
    Recordset clients;
    run.probe(clients, QStringLiteral("Select * from FBT_Info Where SurApp=''"));
    for (; !clients.Eof(); clients.MoveNext())
        convertClient(run, clients);
}

void MoveSignatories(UpdateRun &run)
{
    if (run.isEmpty(QStringLiteral("FBT_SignDet")))
        run.write(QStringLiteral("Insert Into FBT_SignDet Select Code_No,0,SignP,SexM,FName,'',SignD From FBT_Info "
                                 "Where SignP<>'' or FName<>'' or SignD<>''"));
}

void AddChallanColumns(UpdateRun &run)
{
    const int columns = run.columnCount(QStringLiteral("FBT_Challan"));
    if (columns == 17)
        run.write(QStringLiteral("Alter Table FBT_Challan Add (ChallanNo VarChar(50) Default '', "
                                 "BSRCode Int(11) Default 0, ECAmt1 Double Default 0)"));
    else if (columns == 19)
        run.write(QStringLiteral("Alter Table FBT_Challan Add (ECAmt1 Double Default 0)"));
}

void ClearQuarters(UpdateRun &run)
{
    run.write(QStringLiteral("Update FBT_Challan Set Quarter=0 Where Quarter<>0 and paytype<>'Advance Tax (100)'"));
}

void AddAddInfoColumns(UpdateRun &run)
{
    const QString officer = QStringLiteral("areacd VarChar(50) Default '',aotyp VarChar(50) Default '',"
                                           "aorng VarChar(50) Default '',aono VarChar(50) Default '', ");
    const QString interest = QStringLiteral("Calc115WJ Char(1) Default '1', Amt115WJ Double Default 0, "
                                            "Calc115WK Char(1) Default '1', Amt115WK Double Default 0, ");
    const QString deferred = QStringLiteral("Calc115WJ5 Char(1) Default '1', Amt115WJ5 Double Default 0, ");
    const QString upto = QStringLiteral("IntDt Varchar(10) Default ''");
    const auto add = [&](const QString &columns) { run.write(Sql("Alter Table FBT_AddInfo Add (", columns, ")")); };
    switch (run.columnCount(QStringLiteral("FBT_AddInfo"))) {
    case 25:
        run.write(QStringLiteral("Alter Table FBT_AddInfo Change NOB NOB Char(10)"));
        return add(officer + interest + deferred + upto);
    case 29:
        return add(interest + deferred + upto);
    case 33:
        return add(deferred + upto);
    case 35:
        return add(upto);
    default:
        return; // the current shape, or one that no version made
    }
}
