#pragma once

#include "platform/offer.h"

#include <QString>

#include <array>

/// The percentages of a client and assessment year: 1 tax, 2 surcharge, 3 education cess, 4 secondary and higher
/// education cess. Index 0 stays 0.
using FBTRates = std::array<double, 5>;

/// The last assessment year (by its first calendar year) that bears fringe benefit tax.
constexpr int lastTaxedYear = 2009;

/// The first assessment year with secondary and higher education cess (Finance Act, 2007).
constexpr int firstYearWithSecondCess = 2008;

/// The first assessment year whose tax is worked out once, on the year's value, and not quarter by quarter.
constexpr int firstYearTaxedWhole = 2009;

/// The percentages that apply to an employer in an assessment year (section 115WA with the Finance Act of the year).
///
/// @param year first calendar year of the assessment year
/// @param status employer status code; individuals, families and an unknown status (up to 1) bear no tax
/// @param surApp one digit for each assessment year from 2006 on, "1" where surcharge applies; it decides for
///        associations, bodies of individuals and artificial juridical persons only, and a text too short says no
/// @return all 0 when no tax is borne, as for every year above `lastTaxedYear`
FBT_OFFERED FBTRates RatesFor(int year, int status, const QString &surApp);
