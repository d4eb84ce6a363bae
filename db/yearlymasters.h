#pragma once

#include <QStringList>

class UpdateRun;

/// The assessment years that the masters exist for, by their first calendar year, both inclusive.
constexpr int firstMasterYear = 2006;
constexpr int lastMasterYear = 2010;

/// Names of all tables that the update makes: those without a year and the masters of each year.
[[nodiscard]] QStringList UpdatedTables();

/// Makes the heads, items and percentages of each year from those of the year before (those of the first year from the
/// tables without a year) and applies the changes of the law since, to whatever rows meet their conditions. A year that
/// has heads is not filled again; changes of section 115WC are applied at every run. A year that could not be filled or
/// restructured is left open, and no empty year is filled from it.
/// @param baseFilled whether the tables without a year hold what they should
void UpdateYearlyMasters(UpdateRun &run, bool baseFilled);
