#pragma once

#include "launcher/sample.h"
#include "platform/offer.h"

/// The computed figures of one sample employer and year as plain text: every computation line with its amount and
/// value, the quarters, the total and the taxable value, the tax with surcharge and cesses, and the payments.
/// Reads the results of the computation, which must have run for this employer and year.
FBT_OFFERED QString SampleReport(const SampleEmployer &employer, const SampleYear &year);
