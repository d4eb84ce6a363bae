#include "db/updater.h"

#include "context/errortail.h"
#include "db/clientsteps.h"
#include "db/engines.h"
#include "db/indexes.h"
#include "db/rowkeys.h"
#include "db/schema.h"
#include "db/seed.h"
#include "db/structurecheck.h"
#include "db/updaterun.h"
#include "db/yearlymasters.h"
#include "platform/sqltext.h"
#include "records/updatemark.h"

#include <algorithm>
#include <functional>

namespace {

void fillReturnDates(UpdateRun &run, int year)
{
    if (run.findsNone(Sql("Select * from DueDt_Master Where AssYear=", year)))
        run.fill(ReturnDateInserts(year));
}

// The Finance Act, 2008 brought the due date of audited assessees forward to the 30th of September; masters filled
// before it still hold the old one.
void correctReturnDates(UpdateRun &run, int year)
{
    run.write(Sql("Update DueDt_Master Set DueDt='30/09/", year, "' Where AssYear=", year,
                  " and StatC in (1,2,4) and DueDt='31/10/", year, "'"));
}

void updateReturnDates(UpdateRun &run)
{
    fillReturnDates(run, 2006);
    fillReturnDates(run, 2007);
    fillReturnDates(run, 2008);
    if (run.findsNone(QStringLiteral("Select * from DueDt_Master Where AssYear=2008 and StatC=4")))
        run.write(QStringLiteral("Insert into DueDt_Master values(2008,4,'30/09/2008','','')"));
    correctReturnDates(run, 2008);
    fillReturnDates(run, 2009);
    correctReturnDates(run, 2009);
    fillReturnDates(run, 2010);
}

void updateInstalments(UpdateRun &run)
{
    for (int year = firstMasterYear; year <= lastMasterYear; ++year) {
        if (run.findsNone(Sql("Select * from ChallanDt_Master Where AssYear=", year)))
            run.fill(InstalmentDateInserts(year));
    }
}

void updateMasters(UpdateRun &run)
{
    bool filled = !run.isEmpty(QStringLiteral("FBT_Head")) || run.fill(HeadInserts());
    if (run.isEmpty(QStringLiteral("FBT_ExpHead")))
        filled = run.fill(ItemInserts()) && filled;
    if (run.isEmpty(QStringLiteral("FBT_Nature")))
        run.fill(NatureInserts());
    UpdateYearlyMasters(run, filled);
}

void updateServiceTax(UpdateRun &run)
{
    if (run.columnCount(QStringLiteral("SRate")) == 6)
        run.write(QStringLiteral("Alter Table SRate Add (ECess1 Double Default 0)"));
    if (run.findsNone(QStringLiteral("Select * from SRate Where Yr=2007 and Mon=5 and Dt=11")))
        run.replace(QStringList{QStringLiteral("Delete From SRate")} + ServiceTaxInserts());
}

void fillBillTypes(UpdateRun &run)
{
    if (run.findsNone(QStringLiteral("Select * from Bill_Type")))
        run.fill(BillTypeInserts());
}

using Step = void (*)(UpdateRun &);

// In this order: later steps build on the columns and rows of earlier ones.
constexpr Step steps[] = {
    AddInfoColumns,    ConvertSurcharge,  MoveSignatories, AddChallanColumns, ClearQuarters, AddAddInfoColumns,
    updateReturnDates, updateInstalments, updateMasters,   updateServiceTax,  fillBillTypes,
};

bool carryOut(UpdateRun &run, const char *procedure, const std::function<void()> &step)
{
    ErrorTail tail(QString::fromLatin1(procedure), QStringLiteral("frmupdatedb"));
    return run.carryOut(tail, step);
}

bool createTables(UpdateRun &run)
{
    return carryOut(run, "CREATETABLES", [&] {
        for (const TableShape &table : ModuleTables())
            run.send(CreateStatement(table));
        run.flush();
    });
}

bool updateRows(UpdateRun &run)
{
    return std::all_of(std::begin(steps), std::end(steps),
                       [&](Step step) { return carryOut(run, "UPDATEDB", [&] { step(run); }); });
}

bool convertEngines(UpdateRun &run)
{
    return carryOut(run, "CONVERTENGINES", [&] { CONVERTENGINES(run); });
}

bool createIndexes(UpdateRun &run)
{
    return carryOut(run, "CREATEINDEXES", [&] { CREATEINDEXES(run); });
}

bool addRowKeys(UpdateRun &run)
{
    return carryOut(run, "ADDROWKEYS", [&] { ADDROWKEYS(run); });
}

using Procedure = bool (*)(UpdateRun &);

constexpr Procedure procedures[] = {
    convertEngines, createTables,
    createIndexes, // the conversion of old clients looks each one up by its code
    updateRows,     createIndexes, addRowKeys,
};

// Without the mark a run that leaves something open could not be seen by the next start.
bool openMark(UpdateRun &run, bool &marked)
{
    return carryOut(run, "UPDATEDB", [&] {
        marked = run.send(Sql("Create Table If Not Exists ", updateMark, " (Nm Varchar(20))"));
        run.flush();
    });
}

bool closeMark(UpdateRun &run)
{
    return carryOut(run, "UPDATEDB", [&] { run.write(Sql("Drop Table If Exists ", updateMark)); });
}

bool isWhole(UpdateRun &run)
{
    bool whole = false;
    const bool looked = carryOut(run, "UPDATEDB", [&] { whole = StructureIsWhole(run); });
    return looked && whole;
}

} // namespace

bool CREATETABLES(Connection *connection)
{
    UpdateRun run(connection);
    return createTables(run);
}

bool UPDATEDB(Connection *connection)
{
    UpdateRun run(connection);
    return updateRows(run);
}

bool UpdateDatabase(Connection *connection, UpdateLock *lock)
{
    UpdateRun run(connection, lock);
    bool marked = false;
    if (!openMark(run, marked) ||
        !std::all_of(std::begin(procedures), std::end(procedures), [&](Procedure part) { return part(run); }) ||
        !isWhole(run))
        return false;
    return run.leftOpen() ? marked : closeMark(run);
}
