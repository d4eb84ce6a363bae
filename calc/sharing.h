#pragma once

#include "platform/offer.h"

#include <array>
#include <vector>

/// Shares a consolidated amount over the natures of business by salary.
///
/// Every nature but the last takes Round(salary / total salary * amount), ties to the even number; with no total salary
/// it takes 0. The last nature takes the rest, rounded, so that the shares of a whole amount add up to it.
///
/// @param amount rupees
/// @param salaries salary of each nature in rupees, in the order of the client's natures; not empty
/// @param totalSalary salary of all natures together as the user stated it, not their sum
/// @return one share for each salary, whole rupees
FBT_OFFERED std::vector<double> ShareBySalary(double amount, const std::vector<double> &salaries, double totalSalary);

/// Salary and wages of a client in one quarter.
struct FBT_OFFERED QuarterSalary
{
    std::vector<double> ofNatures; ///< rupees, in the order of the client's natures
    double total = 0;              ///< of all natures together, as the user stated it; rupees

    /// Notes the salary of one of these natures, or with `consolidatedNature` that of all together; that of another nature
    /// is passed over.
    /// @param natures by number, one for each of `ofNatures`
    void set(const std::vector<int> &natures, int natId, double amount);

    bool operator==(const QuarterSalary &other) const = default;
    [[nodiscard]] double sum() const; ///< of the natures
    /// A stated total below the sum cannot be right; above it there are people whom no nature claims.
    /// Compared in whole paise: 0.10 and 0.20 are a total of 0.30.
    [[nodiscard]] bool totalTooSmall() const;
};

/// Salary and wages of a client and year by nature of business and quarter.
class FBT_OFFERED Salaries
{
public:
    /// @param natures the client's natures by number, in the client's order; not empty
    explicit Salaries(std::vector<int> natures);

    /// Notes the salary of a nature, or with `consolidatedNature` the salary of all natures together. A later amount replaces an
    /// earlier one; a nature that is not the client's is passed over.
    /// @param quarter 0 to 4; beyond it the bound is broken (FaultError)
    void set(int natId, int quarter, double amount);

    /// The shares of a consolidated amount in a quarter, as `ShareBySalary` makes them. One nature takes the whole
    /// without a look at its salary; else a quarter outside 0 to 4 breaks the bound (FaultError).
    [[nodiscard]] std::vector<double> shares(double amount, int quarter) const;

    /// The shares when no salary is known: all falls on the last nature.
    [[nodiscard]] std::vector<double> sharesWithoutSalary(double amount) const;

private:
    static constexpr int quarterCount = 5;

    static int inBounds(int quarter);

    std::vector<int> m_natures;
    std::array<QuarterSalary, quarterCount> m_quarters;
};
