#pragma once

#include "platform/offer.h"
#include "records/natures.h"
#include "reports/annuallines.h"

/// `natId` of a report over all natures of the client.
constexpr int aggregateNature = consolidatedNature;

/// The expenses of a client and year as they were read. What could not be read is missing in the lines.
struct AnnualExpenses
{
    std::vector<AnnualLine> lines; ///< in the order in which the items came
    bool expensesRead = true;
    bool salariesRead = true;
};

/// Reads the expenses of one nature, or of all of them (`aggregateNature`).
///
/// A client with several natures has the consolidated expenses shared over them by salary, and a nature shows its share;
/// the last nature takes what the others leave. With a single nature they are left out: the entry of that client knows no
/// consolidated expenses.
/// @param natures the client's, in the order in which they are listed
FBT_OFFERED AnnualExpenses ReadAnnualExpenses(const ClientYear &client, const std::vector<Nature> &natures, int natId);

/// What was paid for the year, in rupees.
struct AnnualPayments
{
    std::array<double, 5>
        advance{};             ///< by quarter; at 0 all of it. From A.Y. 2009-10 on the quarters are not told apart.
    double selfAssessment = 0; ///< and all else that is no advance tax
    bool read = true;
};

FBT_OFFERED AnnualPayments ReadAnnualPayments(const ClientYear &client);
