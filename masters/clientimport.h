#pragma once

#include "platform/offer.h"
#include "records/clients.h"
#include "records/suiteclients.h"

/// What the suite keeps of a client, brought into the shape of the client master.

/// Status and residential status of a client of the suite, as places in their lists.
struct SuiteStatus
{
    int position = 0;
    int resident = 0;
};

/// A telephone number and its STD code.
struct Telephone
{
    QString std;
    QString number;
};

/// The status of a row of `Main_Info1`. What no rule names is an individual.
/// @param status `status` of the row
/// @param stat the status word of the client list, which tells the associations apart
/// @param mrr `MRR` is 1: for companies and families, that they are not resident
FBT_OFFERED SuiteStatus MapSuiteStatus(int status, const QString &stat, bool mrr);

/// "011-23456789" into "011" and "23456789". Without a "-" the whole is the number.
FBT_OFFERED Telephone SplitTelephone(const QString &phone);

/// A client of the suite, with what its line of the client list says (its code gets capitals) and its further data, where
/// there are any.
FBT_OFFERED ClientRecord ImportedClient(const SuiteClientLine &line, const Reading<SuiteClient> &data);
