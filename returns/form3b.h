#pragma once

#include "platform/offer.h"

struct ReturnForm;

/// Prints form 3B, the return of A.Y. 2006-07, into the report in hand. The figures of the computation are those in hand.
/// What cannot be read is logged under the procedure and its place stays empty. An amount of 0 reads "Nil" where the form
/// has it so; others are whole rupees, ties to the even number, unless the form gives them as they are.

/// The acknowledgement. The token "###IMGGOI###" stands where the seal goes.
FBT_OFFERED void FORM3B_ANX(const ReturnForm &form);

/// The return: parts A and B and the verification.
FBT_OFFERED void FORM3B_MAIN(const ReturnForm &form);

/// The four schedules.
/// @param paymentsKnown the schedule of payments is whole; without it no rows of payments are printed
FBT_OFFERED void FORM3B_SCHS(const ReturnForm &form, bool paymentsKnown);

/// The place of the seal in the acknowledgement.
inline constexpr const char *sealToken = "###IMGGOI###";
