#pragma once

#include "calc/sharing.h"
#include "records/natures.h"
#include "records/salaries.h"

/// The salaries of a quarter, by which consolidated expenses are shared, between the table and the screen.

/// The salaries of a quarter by these natures; a nature without a row has 0, a row of another nature is passed over.
QuarterSalary SalaryByNature(const std::vector<Salary> &rows, const std::vector<Nature> &natures);

/// The rows to store: one for each nature, whatever its amount, and one for the total.
std::vector<Salary> SalaryRows(const QuarterSalary &salary, int quarter, const std::vector<Nature> &natures);
