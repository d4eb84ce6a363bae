#pragma once

#include "platform/offer.h"
#include "records/natures.h"
#include "records/salaries.h"

/// Salary and wages of a client in one quarter, by which consolidated expenses are shared.
struct FBT_OFFERED QuarterSalary
{
    std::vector<double> ofNatures; ///< rupees, in the order of the natures on the screen
    double total = 0;              ///< of all natures together, as the user stated it; rupees

    bool operator==(const QuarterSalary &other) const = default;
    [[nodiscard]] double sum() const; ///< of the natures
    /// A stated total below the sum cannot be right; above it there are people whom no nature claims.
    /// Compared in whole paise: 0.10 and 0.20 are a total of 0.30.
    [[nodiscard]] bool totalTooSmall() const;
};

/// The salaries of a quarter by these natures; a nature without a row has 0, a row of another nature is passed over.
FBT_OFFERED QuarterSalary SalaryByNature(const std::vector<Salary> &rows, const std::vector<Nature> &natures);

/// The rows to store: one for each nature, whatever its amount, and one for the total.
FBT_OFFERED std::vector<Salary> SalaryRows(const QuarterSalary &salary, int quarter,
                                           const std::vector<Nature> &natures);
