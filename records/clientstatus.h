#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

class Connection;

/// What of a client decides on its percentages: two columns of `FBT_Info`.
struct ClientStatus
{
    int status = 0; ///< `ClStatus`; -1 when it is `Null`
    QString surApp; ///< one digit for each assessment year from 2006 on, "1" where surcharge was chosen
};

/// None when there is no such client.
FBT_OFFERED Reading<ClientStatus> StatusOfClient(Connection *cnn, const QString &code);

/// When an employer bears surcharge: never, always, or in the years of its choice, since it depends on the income.
enum class Surcharge { Never, Always, Chosen };

/// By the status under which new clients are stored; the second codes of older databases bear none.
FBT_OFFERED Surcharge SurchargeOf(int clStatus);

/// Whether surcharge was chosen for an assessment year (by its first calendar year). A text too short says no.
FBT_OFFERED bool SurchargeChosen(int year, const QString &surApp);
