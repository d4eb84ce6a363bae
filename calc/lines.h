#pragma once

#include "platform/offer.h"

/// The highest computation line. A line is one row of the return forms: a head of expense, divided in some heads by the
/// nature of business. Line 25 has no source.
constexpr int lastComputationLine = 31;

/// The computation line of an expense (the clauses of section 115WB, the lower percentages of section 115WC).
///
/// @param headId head of expense, 2 to 21
/// @param year first calendar year of the assessment year; the lines divide further from 2007 on
/// @param natId nature of business of the expense
/// @param shipNatId the nature that carries by ship, 0 when the list of natures has none; natures 3, 4 and 6 go before it
/// @return 1 to `lastComputationLine`; 0 for a head that has no line (head 1 and all outside 2 to 21)
FBT_OFFERED int ComputationLine(int headId, int year, int natId, int shipNatId);
