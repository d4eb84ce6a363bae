#pragma once

#include "platform/offer.h"

#include <QString>

#include <span>

/// One table of the module's database.
struct TableShape
{
    const char *name;    ///< the one spelling that every statement uses
    const char *columns; ///< the column list in its order, which rows written without column names rely on
};

/// The tables that a database always has, in the order in which they are made. No table has a key or a constraint: the
/// same serial number can stand in several quarters, and a change is a delete and an insert with the same number.
/// The yearly masters are made year by year when the law is filled in (yearlymasters.h).
[[nodiscard]] FBT_OFFERED std::span<const TableShape> ModuleTables();

/// The yearly masters, without their year: heads, expense items and percentages.
[[nodiscard]] FBT_OFFERED std::span<const TableShape> YearlyTables();

/// Makes a table where there is none.
/// @param suffix the year of a yearly master, else empty
[[nodiscard]] FBT_OFFERED QString CreateStatement(const TableShape &table, const QString &suffix = {});
