#include "db/updater.h"

#include "context/errortail.h"
#include "db/clientsteps.h"
#include "db/dbsteps.h"
#include "db/engines.h"
#include "db/indexes.h"
#include "db/schema.h"
#include "db/seed.h"
#include "db/yearlymasters.h"
#include "platform/connection.h"
#include "records/updatemark.h"

#include <algorithm>

namespace {

void fillReturnDates(Connection *connection, int year)
{
    if (FindsNone(connection, Sql("Select * from DueDt_Master Where AssYear=", year)))
        Fill(connection, ReturnDateInserts(year));
}

// The Finance Act, 2008 brought the due date of audited assessees forward to the 30th of September; masters filled
// before it still hold the old one.
void correctReturnDates(Connection *connection, int year)
{
    Write(connection, Sql("Update DueDt_Master Set DueDt='30/09/", year, "' Where AssYear=", year,
                          " and StatC in (1,2,4) and DueDt='31/10/", year, "'"));
}

void updateReturnDates(Connection *connection)
{
    fillReturnDates(connection, 2006);
    fillReturnDates(connection, 2007);
    fillReturnDates(connection, 2008);
    if (FindsNone(connection, QStringLiteral("Select * from DueDt_Master Where AssYear=2008 and StatC=4")))
        Write(connection, QStringLiteral("Insert into DueDt_Master values(2008,4,'30/09/2008','','')"));
    correctReturnDates(connection, 2008);
    fillReturnDates(connection, 2009);
    correctReturnDates(connection, 2009);
    fillReturnDates(connection, 2010);
}

void fillInstalmentDates(Connection *connection)
{
    for (int year = firstMasterYear; year <= lastMasterYear; ++year) {
        if (FindsNone(connection, Sql("Select * from ChallanDt_Master Where AssYear=", year)))
            Fill(connection, InstalmentDateInserts(year));
    }
}

void fillBaseMasters(Connection *connection)
{
    if (IsEmpty(connection, QStringLiteral("FBT_Head")))
        Fill(connection, HeadInserts());
    if (IsEmpty(connection, QStringLiteral("FBT_ExpHead")))
        Fill(connection, ItemInserts());
    if (IsEmpty(connection, QStringLiteral("FBT_Nature")))
        Fill(connection, NatureInserts());
}

void updateServiceTax(Connection *connection)
{
    if (ColumnCount(connection, QStringLiteral("SRate")) == 6)
        Write(connection, QStringLiteral("Alter Table SRate Add (ECess1 Double Default 0)"));
    if (FindsNone(connection, QStringLiteral("Select * from SRate Where Yr=2007 and Mon=5 and Dt=11")))
        Fill(connection, QStringList{QStringLiteral("Delete From SRate")} + ServiceTaxInserts());
}

void fillBillTypes(Connection *connection)
{
    if (FindsNone(connection, QStringLiteral("Select * from Bill_Type")))
        Fill(connection, BillTypeInserts());
}

using Step = void (*)(Connection *);

// In this order: later steps build on the columns and rows of earlier ones.
constexpr Step steps[] = {
    AddInfoColumns,    ConvertSurcharge,    MoveSignatories, AddChallanColumns,   ClearQuarters,    AddAddInfoColumns,
    updateReturnDates, fillInstalmentDates, fillBaseMasters, UpdateYearlyMasters, updateServiceTax, fillBillTypes,
};

// When the server is lost before the mark stands, nobody would run the update again: that is worth a second try.
void openMark(Connection *connection)
{
    const QString statement = Sql("Create Table If Not Exists ", updateMark, " (Nm Varchar(20))");
    connection->Execute(statement);
    if (connection->lastStatementLost())
        Send(connection, statement);
    FlushTables(connection);
}

using Procedure = bool (*)(Connection *);

constexpr Procedure procedures[] = {
    CONVERTENGINES, CREATETABLES,
    CREATEINDEXES, // the conversion of old clients looks each one up by its code
    UPDATEDB,       CREATEINDEXES,
};

} // namespace

bool CREATETABLES(Connection *connection)
{
    ErrorTail tail(QStringLiteral("CREATETABLES"), QStringLiteral("frmupdatedb"));
    return CarryOut(tail, [connection] {
        for (const TableShape &table : ModuleTables())
            Send(connection, CreateStatement(table));
        FlushTables(connection);
    });
}

bool UPDATEDB(Connection *connection)
{
    ErrorTail tail(QStringLiteral("UPDATEDB"), QStringLiteral("frmupdatedb"));
    return std::all_of(std::begin(steps), std::end(steps),
                       [&](Step step) { return CarryOut(tail, [&] { step(connection); }); });
}

void UpdateDatabase(Connection *connection)
{
    ErrorTail tail(QStringLiteral("UPDATEDB"), QStringLiteral("frmupdatedb"));
    CarryOut(tail, [connection] {
        openMark(connection);
        const bool ended = std::all_of(std::begin(procedures), std::end(procedures),
                                       [&](Procedure procedure) { return procedure(connection); });
        if (ended)
            Write(connection, Sql("Drop Table If Exists ", updateMark));
    });
}
