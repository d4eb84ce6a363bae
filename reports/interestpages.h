#pragma once

#include "calc/interest.h"
#include "platform/offer.h"

#include <vector>

class ReportObject;
struct PayerDetails;

/// The head of a report about a client: its name, its address where there is one, and the title.
FBT_OFFERED void WriteHeading(ReportObject &report, const PayerDetails &client, const QString &title);

/// The table of interest on instalments, with its total.
/// @param rows fields as `InstalmentInterest::fields` gives them
/// @param total rupees
FBT_OFFERED void WriteInstalments(ReportObject &report, const std::vector<QStringList> &rows, double total);

/// The title of the statement of all interest.
/// @param year first calendar year of the assessment year
FBT_OFFERED QString InterestTitle(int year);

/// The statement of all interest of the year that has a detail, a table for each kind. Writes into the report in hand.
/// @param year first calendar year of the assessment year
/// @param status of the employer, which tells the subsection of the instalments
FBT_OFFERED void CREATEREPORT_INTEREST(ReportObject &report, const PayerDetails &client, int year, int status,
                                       const InterestOfYear &interest);
