#pragma once

#include "platform/offer.h"
#include "records/clientyear.h"
#include "records/reading.h"

#include <QDate>
#include <QString>

#include <array>

class Connection;

/// The payments of a client and year as a return lists them, table `TmpSchFBT`: each challan with its bank, and with a real
/// date, so that the database can put them in the order of their dates.

struct ScheduledPayment
{
    int quarter = 0;
    bool advance = false; ///< an instalment of advance tax, else a payment for the year as a whole
    QString bank;
    QString branch;
    QString bsrCode;
    QDate date; ///< invalid for none
    QString challanNo;
    double amount = 0; ///< rupees
    int number = 0;    ///< counts in client, year and quarter

    /// Bank and branch with a comma between them, as far as they are known.
    [[nodiscard]] FBT_OFFERED QString bankAndBranch() const;
};

/// The payments as they would be scheduled now, in the order of `PaymentSchedule`; nothing is written.
FBT_OFFERED RowsRead<ScheduledPayment> PaymentsOfChallans(Connection *cnn, const ClientYear &client);

/// Makes the rows of the client and year anew from its challans and the user's list of banks; the table is made where it
/// is missing. False when the challans could not be read or the rows not written: then there are none.
FBT_OFFERED bool RebuildPaymentSchedule(Connection *cnn, const ClientYear &client);

/// All rows, advance tax first, each kind by date, quarter and number. A payment without date comes first.
FBT_OFFERED RowsRead<ScheduledPayment> PaymentSchedule(Connection *cnn, const ClientYear &client);

/// Those of one kind.
FBT_OFFERED RowsRead<ScheduledPayment> PaymentSchedule(Connection *cnn, const ClientYear &client, bool advance);

/// Advance tax by quarter; place 0 stays 0, and an instalment without quarter counts nowhere.
FBT_OFFERED Reading<std::array<double, 5>> AdvanceTaxByQuarter(Connection *cnn, const ClientYear &client);
