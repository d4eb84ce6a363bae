#pragma once

#include "platform/offer.h"
#include "records/clientyear.h"
#include "records/reading.h"

#include <QString>

class Change;
class Connection;

/// Payments of a client and year, `FBT_Challan`.

/// A payment as far as it is known without its way of payment. Amounts are rupees.
struct Payment
{
    int quarter = 0; ///< 1 to 4 for an instalment of advance tax, 0 for any other payment
    int srNo = 0;    ///< number within client, year and quarter
    QString payType; ///< text of `paytype`
    QString date;    ///< `dd/mm/yyyy`
    double tax = 0;
    double surcharge = 0;
    double eduCess = 0;
    double sheCess = 0;
    double interest = 0;

    [[nodiscard]] double total() const { return tax + surcharge + eduCess + sheCess + interest; }
};

/// Writes one payment without penalty, other amount and way of payment.
FBT_OFFERED bool InsertPayment(Change &change, const ClientYear &client, const Payment &payment);

/// Tax with surcharge and cesses that was paid for a year, in rupees; interest and penalties do not count. A part that is
/// `Null` counts as 0, as does a year without payments.
FBT_OFFERED Reading<double> TaxPaid(Connection *cnn, const ClientYear &client);
