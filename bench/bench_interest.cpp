#include "bench/amongclients.h"
#include "calc/interest.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "platform/recordset.h"
#include "tests/support/employer.h"

namespace {

constexpr int year = measuredYear;
constexpr int challansOfClient = 200;
constexpr int challansOfOthers = 20;

/// A company with 200 challans over two years, two thirds of them advance tax, that pay a fifth of its tax.
void addMeasuredClient(Connection &connection)
{
    employer(connection, QStringLiteral("A1")).status(16).natures({7}).expense(year, 1, 7, 57, 500000000);
    for (int i = 0; i < challansOfClient; ++i) {
        const bool advance = i % 3 != 0;
        const QDate date = QDate(advance ? year - 1 : year, 4, 1).addDays(i);
        connection.Execute(Sql("Insert into FBT_Challan Values ('A1',", year, ",", advance ? 1 + i % 4 : 0, ",", i + 1,
                               ",'", PaymentTypes().at(advance ? 0 : 1), "','", DateText(date),
                               "',0,0,0,0,0,0,34000,'Cheque','123456','','SOME BANK','00017',1,0)"));
    }
}

/// The challans of clients B2 to B<count>.
void addOtherClients(Connection &connection, int count)
{
    connection.Execute(
        Sql("Insert into FBT_Challan Select Concat('B', seq), t_year, quarter, srno, paytype, challan_dt, "
            "ITAmt, SCAmt, ECAmt, IntAmt, PenAmt, OthAmt, TotAmt, paymode, chq_no, chq_dt, bank_nm, "
            "ChallanNo, BSRCode, ECAmt1 from FBT_Challan, seq_2_to_",
            count, " Where Code_No='A1' and srno<=", challansOfOthers));
    connection.Execute(
        Sql("Insert into FBT_Info Select Concat('B', seq), Name, PAN, Flat, Building, Street, Area, City, "
            "State, Pin, STD, TelNo, ClStatus, AuditC, Busnat, SignP, SignD, Doi, Email, ResSt, SexM, "
            "FName, SurApp from FBT_Info, seq_2_to_",
            count, " Where Code_No='A1'"));
}

void fill(Connection &connection, int clients)
{
    addMeasuredClient(connection);
    addOtherClients(connection, clients);
}

/// The interest of a client with 200 challans, without the computation that it follows.
void interest(benchmark::State &state)
{
    SetToday({year, 12, 15});
    MeasureAmongClients(
        state, {.fill = fill, .prepare = [] { CALCFBT(); }, .work = [] { benchmark::DoNotOptimize(CALCINTEREST()); }});
    state.counters["challans"] = FirstField(Cnn, QStringLiteral("Select Count(*) from FBT_Challan")).num();
    state.counters["interest"] = CALCINTEREST().total();
}

} // namespace

BENCHMARK(interest)->Arg(fewClients)->Arg(manyClients)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2);

BENCHMARK_MAIN();
