#pragma once

/// Additional information of the client and year in hand, as far as the entry of expenses needs it.

/// Reads the employee figures (`EmpBoth`, `SepBooks`, `IndiaEmp`, `TotalEmp`). A year without a row gets one: what
/// changes slowly is copied from the year before, the rest is empty and interest is set to be computed; without a year
/// before, the default row. The bank accounts follow by `LOADBANKDATA`.
void LOADADDINFO();

/// Copies the bank accounts of the year before when the year has none.
void LOADBANKDATA();
