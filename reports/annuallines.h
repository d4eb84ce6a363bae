#pragma once

#include "platform/offer.h"
#include "records/expenses.h"

#include <array>
#include <optional>
#include <vector>

constexpr int quartersOfYear = 4;

/// An expense item of the year with what was spent on it, quarter by quarter. Amounts are rupees.
struct FBT_OFFERED AnnualLine
{
    struct Quarter
    {
        double amount = 0; ///< of expense
        double value = 0;  ///< of the fringe benefit: each expense valued and rounded by itself, then added up
    };

    int headId = 0;  ///< 0 for an item that is not among the year's items
    int expId = 0;   ///< item
    double rate = 0; ///< percent, of the expense that came first; with several natures the others may have another
    std::array<std::optional<Quarter>, quartersOfYear> quarters; ///< none where nothing was added

    [[nodiscard]] Quarter total() const;
};

/// Adds an expense, or a nature's share of it, to the line of its item, which is made when it is not there. With a quarter
/// outside 1 to 4 the line is all that comes of it.
/// @param amount rupees; the amount of the expense, or the share
FBT_OFFERED void AddToLines(std::vector<AnnualLine> &lines, const Expense &expense, double amount);

/// What all lines come to in a quarter.
/// @param quarter 1 to 4
FBT_OFFERED AnnualLine::Quarter SumOfQuarter(const std::vector<AnnualLine> &lines, int quarter);
