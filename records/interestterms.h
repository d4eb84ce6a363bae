#pragma once

#include "platform/offer.h"

#include "records/clientyear.h"
#include "records/reading.h"

#include <QString>

class Connection;

/// One of the three kinds of interest: worked out, or an amount that the user typed in its place.
struct InterestChoice
{
    bool computed = true;
    double typed = 0; ///< rupees, as stored; 0 while the interest is worked out
};

/// What the additional information of a client and year (`FBT_AddInfo`) says about interest. Dates are `dd/mm/yyyy`.
struct InterestTerms
{
    QString interestDate; ///< up to which interest runs; the word "todate" is the day of the computation; may be empty
    QString returnDate;
    bool revised = false; ///< the return is a revised one
    QString originalDate; ///< of the original return, where it is revised
    InterestChoice wj;    ///< section 115WJ(3) or (4)
    InterestChoice wj5;   ///< section 115WJ(5)
    InterestChoice wk;    ///< section 115WK
};

/// `none()` when the client has no additional information for the year.
FBT_OFFERED Reading<InterestTerms> InterestTermsOf(Connection *cnn, const ClientYear &client);
