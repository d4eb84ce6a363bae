#include "records/paymentschedule.h"

#include "platform/dates.h"
#include "records/challans.h"
#include "records/change.h"
#include "records/readrows.h"
#include "records/rowkey.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr const char *scheduleColumns =
    "Code_No Varchar(50), AsYr Int(11), Quarter Int(11), SrNo Int(11), Typ Int(11), BankNm Varchar(255), "
    "BankBr Varchar(255), BankBSR Varchar(20), ChDt Date, ChNo Varchar(50), ChAmt Double";

SqlText ownRows(const ClientYear &client)
{
    return Sql(" From TmpSchFBT Where Code_No=", Quoted(client.code), " and AsYr=", client.year);
}

/// A date as the database reads it; empty for none.
QString databaseDate(const QDate &date)
{
    return date.isValid() ? date.toString(u"yyyy-MM-dd 00:00:00") : QString();
}

/// Names of banks are copied from a list of the suite's, which may have any character in them.
SqlText insertOf(const ClientYear &client, const ScheduledPayment &payment)
{
    return Sql("Insert into TmpSchFBT Values (", Quoted(client.code), ",", client.year, ",", payment.quarter, ",",
               payment.number, ",", payment.advance ? "'1'" : "'2'", ",", Quoted(payment.bank), ",",
               Quoted(payment.branch), ",", Quoted(payment.bsrCode), ",", Quoted(databaseDate(payment.date)), ",",
               Quoted(payment.challanNo), ",", payment.amount, ")");
}

/// A text that is no `dd/mm/yyyy` date is none to the department either.
ScheduledPayment paymentOf(const Recordset &row)
{
    const auto text = [&row](QStringView column) { return row.Fields(column).text().trimmed(); };
    return {row.Fields(u"Quarter").whole(),
            row.Fields(u"Paytype").text().compare(QLatin1String(advanceTax), Qt::CaseInsensitive) == 0,
            text(u"Bank_Name"),
            text(u"Branch"),
            text(u"branch_code"),
            DateFromText(row.Fields(u"challan_dt").text()),
            text(u"challanno"),
            row.Fields(u"TotAmt").num(),
            row.Fields(u"SrNo").whole()};
}

/// A payment whose bank the list has twice is there twice.
RowsRead<ScheduledPayment> paidAndBanked(Connection *cnn, const ClientYear &client)
{
    return ReadRows(cnn,
                    Sql("Select * From FBT_Challan Left Join bank_master on "
                        "FBT_Challan.BSRCode=bank_master.bank_code_no Where FBT_Challan.code_no=",
                        Quoted(client.code), " and FBT_Challan.t_year=", client.year, " order by Quarter,SrNo"),
                    paymentOf);
}

/// In the order of the schedule: a payment without date comes first.
bool before(const ScheduledPayment &one, const ScheduledPayment &other)
{
    const auto place = [](const ScheduledPayment &payment) {
        return std::tuple(!payment.advance, payment.date, payment.quarter, payment.number);
    };
    return place(one) < place(other);
}

ScheduledPayment paymentIn(const Recordset &row)
{
    const auto text = [&row](QStringView column) { return row.Fields(column).text(); };
    return {row.Fields(u"Quarter").whole(),
            row.Fields(u"Typ").whole() == 1,
            text(u"BankNm"),
            text(u"BankBr"),
            text(u"BankBSR"),
            DateFromText(text(u"ChDt")),
            text(u"ChNo"),
            row.Fields(u"ChAmt").num(),
            row.Fields(u"SrNo").whole()};
}

RowsRead<ScheduledPayment> schedule(Connection *cnn, const ClientYear &client, const SqlText &rest)
{
    return ReadRows(cnn, Sql("Select *") + ownRows(client) + rest, paymentIn);
}

} // namespace

QString ScheduledPayment::bankAndBranch() const
{
    return Joined(bank, bank.isEmpty() || branch.isEmpty() ? "" : ", ", branch);
}

bool RebuildPaymentSchedule(Connection *cnn, const ClientYear &client)
{
    WriteOne(cnn, Sql("Create Table If Not Exists TmpSchFBT (", scheduleColumns, ")"));
    GiveRowKey(cnn, QStringLiteral("TmpSchFBT"));
    const RowsRead<ScheduledPayment> rows = paidAndBanked(cnn, client);
    const bool written = ChangeTogether(cnn, [&](Change &change) {
        return change.write(Sql("Delete") + ownRows(client)) &&
               (rows.failed() || std::all_of(rows->begin(), rows->end(), [&](const ScheduledPayment &payment) {
                    return change.write(insertOf(client, payment));
                }));
    });
    return written && !rows.failed();
}

RowsRead<ScheduledPayment> PaymentsOfChallans(Connection *cnn, const ClientYear &client)
{
    const RowsRead<ScheduledPayment> rows = paidAndBanked(cnn, client);
    if (rows.failed())
        return RowsRead<ScheduledPayment>::failure();
    std::vector<ScheduledPayment> payments = *rows;
    std::stable_sort(payments.begin(), payments.end(), before);
    return payments;
}

RowsRead<ScheduledPayment> PaymentSchedule(Connection *cnn, const ClientYear &client)
{
    return schedule(cnn, client, " Order by Typ,ChDt,Quarter,SrNo");
}

RowsRead<ScheduledPayment> PaymentSchedule(Connection *cnn, const ClientYear &client, bool advance)
{
    return schedule(cnn, client, Sql(" and Typ", advance ? "=1" : "<>1", " Order by ChDt,Quarter,SrNo"));
}

Reading<std::array<double, 5>> AdvanceTaxByQuarter(Connection *cnn, const ClientYear &client)
{
    const auto sums =
        ReadRows(cnn,
                 Sql("Select quarter, sum(TotAmt) as TotAmt from FBT_Challan Where code_no=", Quoted(client.code),
                     " and t_year=", client.year, " and paytype='", advanceTax, "' group by quarter"),
                 [](const Recordset &row) { return std::pair(row.Fields(0).whole(), row.Fields(1).num()); });
    if (sums.failed())
        return Reading<std::array<double, 5>>::failure();
    std::array<double, 5> byQuarter{};
    for (const auto &[quarter, amount] : *sums) {
        if (quarter > 0 && quarter < static_cast<int>(byQuarter.size()))
            byQuarter[static_cast<std::size_t>(quarter)] = amount;
    }
    return byQuarter;
}
