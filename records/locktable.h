#pragma once

/// One row for each table and client in which a number was taken: who takes a number by "maximum plus 1" first writes the
/// row, in the same transaction, so that a second user waits for the first one. `Tbl` is the table as its Create Table
/// spells it, `Code` the client's code, empty for a table without clients. `N` counts up, so
/// that the row really changes: two nodes of a cluster conflict only then. Made after the tables of the module; the rows
/// stay.
constexpr const char *lockTable = "FBT_Lock";
constexpr const char *lockTableColumns =
    "Tbl Varchar(64) Not Null, Code Varchar(50) Not Null, N Bigint Not Null Default 0, Primary Key (Tbl, Code)";
