#pragma once

#include "platform/offer.h"

#include "records/clientyear.h"
#include "records/reading.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class Change;
class Connection;

/// The payments of a client and year, table `FBT_Challan`. Amounts are rupees, dates `dd/mm/yyyy` texts.

/// The type of an instalment of advance tax; all other payments are made for the year as a whole, after its end.
constexpr const char *advanceTax = "Advance Tax (100)";

/// The types of payment in the order of the list that offers them. The first is `advanceTax`.
FBT_OFFERED QStringList PaymentTypes();

/// One challan. `Null` reads as empty and as 0.
struct ChallanRecord
{
    int quarter = 0; ///< 1 to 4 for advance tax, else 0
    int srNo = 0;    ///< counts in client, year and quarter
    QString payType;
    QString date;
    double ITAmt = 0;  ///< tax
    double SCAmt = 0;  ///< surcharge
    double ECAmt = 0;  ///< education cess
    double ECAmt1 = 0; ///< secondary and higher education cess
    double IntAmt = 0;
    double PenAmt = 0;
    double OthAmt = 0;
    double TotAmt = 0;
    QString payMode; ///< empty, "Cash", "Debit to A/c" or "Cheque"
    QString chequeNo;
    QString chequeDate;
    QString bankName;
    QString challanNo;
    int bank = 0; ///< `bank_code_no` of the bank that took the payment, 0 for none

    bool operator==(const ChallanRecord &) const = default;
};

enum class PaymentKind { Any, Advance, Other };

/// What the interest needs of a challan.
struct Payment
{
    QString date;
    double amount = 0; ///< the total of the challan
};

/// Amounts by head of payment.
enum Head { TaxHead, SurchargeHead, EduCessHead, SHECessHead, InterestHead };
using HeadAmounts = std::array<double, 5>;

/// What a challan pays by head; penalty and others have none.
FBT_OFFERED HeadAmounts HeadsOf(const ChallanRecord &challan);

/// All challans, in the order of writing.
FBT_OFFERED RowsRead<ChallanRecord> Challans(Connection *cnn, const ClientYear &client,
                                             PaymentKind kind = PaymentKind::Any);

/// Date and total of the challans; those of the kind `Other` by quarter and number.
FBT_OFFERED RowsRead<Payment> Payments(Connection *cnn, const ClientYear &client, PaymentKind kind);

/// The sum of the totals of the challans of a kind, whatever their dates.
FBT_OFFERED Reading<double> TaxPaid(Connection *cnn, const ClientYear &client, PaymentKind kind = PaymentKind::Any);

/// The sums of the totals by quarter, 1 to 4; at 0 those of what was paid for the year as a whole. Challans without a
/// quarter are left out.
FBT_OFFERED Reading<std::array<double, 5>> PaidByQuarter(Connection *cnn, const ClientYear &client);

/// What was paid by head in a quarter; with quarter 0 by all challans of the year, of whatever type.
FBT_OFFERED Reading<HeadAmounts> PaidByHead(Connection *cnn, const ClientYear &client, int quarter);

/// Stores a new challan under the next number of its quarter and returns that number; none when the database did not take
/// it, and nothing is stored then.
FBT_OFFERED std::optional<int> AddChallan(Connection *cnn, const ClientYear &client, const ChallanRecord &challan);

/// Writes a challan under the number that it has.
FBT_OFFERED bool InsertChallan(Change &change, const ClientYear &client, const ChallanRecord &challan);

/// Rewrites the challan that `before` names by quarter and number; in another quarter it gets the next number there. Where
/// two challans have the same number, only that one is rewritten which is as `before` tells.
/// Returns its number; none when the database did not take it or the challan is there no more.
FBT_OFFERED std::optional<int> ChangeChallan(Connection *cnn, const ClientYear &client, const ChallanRecord &before,
                                             const ChallanRecord &challan);

/// Removes a challan, of two with the same number the one that is as told. False when the database did not.
FBT_OFFERED bool DeleteChallan(Connection *cnn, const ClientYear &client, const ChallanRecord &challan);
