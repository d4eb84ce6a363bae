#pragma once

#include "platform/offer.h"
#include "records/expenses.h"

#include <array>
#include <optional>
#include <vector>

/// One line of the annual screen: an expense with its four quarters.
struct FBT_OFFERED AnnualRow
{
    /// What a quarter holds, when it holds something.
    struct Cell
    {
        double amount = 0; ///< rupees
        double value = 0;  ///< whole rupees
        int srNo = 0;
    };

    int natId = 0;
    int headId = 0;
    int expId = 0;
    double rate = 0;                             ///< percent
    std::array<std::optional<Cell>, 4> quarters; ///< index 0 is the first quarter

    [[nodiscard]] double amount() const; ///< of the year, rupees
    [[nodiscard]] double value() const;  ///< of the year, rupees
};

/// Lines expenses up by item: the nth of a kind in each quarter stand on one line, in the order in which lines are first
/// needed. A row outside quarters 1 to 4 has no place and is left out.
FBT_OFFERED std::vector<AnnualRow> LineUp(const std::vector<Expense> &rows);

/// Amounts of the four quarters in rupees.
using QuarterAmounts = std::array<double, 4>;

/// Saves an expense of the year, all of it or nothing: a row for each quarter with an amount. Where a quarter of `before`
/// had a row it keeps its number, and without an amount it is deleted; all others get a new number.
/// @param before the line as it stands in the table; none for a new expense
/// @return the line as it was written: its quarters and numbers; none when the table is as before
FBT_OFFERED std::optional<AnnualRow> SaveAnnual(Connection *cnn, const ClientYear &client, int natId, int expId,
                                                const QuarterAmounts &amounts, const std::optional<AnnualRow> &before);

/// Deletes the rows of a line in all its quarters, all or none. A row without number and amount stays.
FBT_OFFERED bool DeleteAnnual(Connection *cnn, const ClientYear &client, const AnnualRow &line);

/// What a line is found by again as long as nobody changes its first quarter.
int KeyOf(const AnnualRow &line);

/// Whether a line is the one that was written: it has the same item and number in the first quarter that was written.
FBT_OFFERED bool IsLine(const AnnualRow &line, const AnnualRow &written);
