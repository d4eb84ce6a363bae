#pragma once

#include "host/suitecontext.h"
#include "platform/offer.h"

class Connection;
class ReportObject;

/// The list of all clients, by name.
FBT_OFFERED void ReportClients(Connection *cnn, const SuiteContext &context, ReportObject &report);

/// The register of the returns of an assessment year: client, form, date, acknowledgement, tax and balance, one row for
/// each client whose return has a date or an acknowledgement number.
FBT_OFFERED void ReportReturns(Connection *cnn, int year, const SuiteContext &context, ReportObject &report);
