#pragma once

#include "entry/detailrows.h"

#include <vector>

/// Salary and wages of a client in one quarter, by which consolidated expenses are shared.
struct QuarterSalary
{
    std::vector<double> ofNatures; ///< rupees, in the order of the natures on the screen
    double total = 0;              ///< of all natures together, as the user stated it; rupees

    [[nodiscard]] double sum() const; ///< of the natures
    /// A stated total below the sum cannot be right; above it there are people whom no nature claims.
    /// Compared in whole paise: 0.10 and 0.20 are a total of 0.30.
    [[nodiscard]] bool totalTooSmall() const;
};

/// The stored salaries; a nature without a row has 0, a row of another nature is passed over.
QuarterSalary ReadSalary(const ClientYear &client, int quarter, const std::vector<Nature> &natures);

/// Replaces the stored salaries of the quarter: a row for each nature, whatever its amount, and one for the total.
void SaveSalary(const ClientYear &client, int quarter, const std::vector<Nature> &natures, const QuarterSalary &salary);
