#pragma once

class Recordset;

/// Takes the four employee figures from the current row of `FBT_AddInfo`: `EmpBoth`, `SepBooks`, `IndiaEmp`, `TotalEmp`.
/// `Null` counts as no and as 0.
void TakeEmployees(const Recordset &addInfo);
