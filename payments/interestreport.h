#pragma once

#include "calc/interestlaw.h"

class ReportObject;
struct PayerDetails;

/// Shows the statement of interest on instalments that were short, with the total of the interest.
/// @param year first calendar year of the assessment year
/// @param fourInstalments section 115WJ(3), else 115WJ(4)
void ShowInterestStatement(ReportObject &report, const PayerDetails &payer, int year, bool fourInstalments,
                           const std::vector<InstalmentInterest> &instalments);
