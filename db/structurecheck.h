#pragma once

class UpdateRun;

/// Whether the database has what the program works with: all tables, with no column missing that an update adds, and,
/// where the run left something open, heads in each year. Columns in a number that no version of the program made are
/// somebody else's affair.
[[nodiscard]] bool StructureIsWhole(UpdateRun &run);
