#pragma once

#include "entry/natures.h"

#include <QString>

#include <optional>
#include <vector>

/// A client and an assessment year by its first calendar year.
struct ClientYear
{
    QString code;
    int year = 0;
};

/// The client and year in hand.
ClientYear InHand();

/// One expense as the entry screens list it. Nothing is rounded but the value of the benefit, which is worked out.
struct DetailRow
{
    int quarter = 0; ///< 1 to 4
    QString headId;  ///< empty when the item is not among the year's items
    int expId = 0;
    double rate = 0;   ///< percent of the expense that counts (section 115WC)
    double amount = 0; ///< rupees
    int srNo = 0;      ///< -1 for a share of a consolidated expense
};

/// Serial number of a row that is a share, and no row of the table.
constexpr int shareSrNo = -1;

/// The query of the expenses of a nature: their number, item and amount, with the head of the item.
/// @param quarter 1 to 4; 0 asks for all quarters, with the quarter as first column
/// @param natId the nature whose expenses are asked for, or `consolidatedNature`
/// @param rateOf the nature whose rates go with them; `consolidatedNature` leaves the rate out
QString DetailQuery(const ClientYear &client, int quarter, int natId, int rateOf);

/// The rows of such a query; columns that it leaves out are 0.
std::vector<DetailRow> ReadDetails(const QString &query);

/// The number of a new row: the highest of the client's quarter, across natures, plus 1. Without a value after a fault:
/// a number that is in use would replace its row.
std::optional<int> NextSrNo(const ClientYear &client, int quarter);

/// Removes the row (all rows) with a serial number in a quarter.
void DeleteDetail(const ClientYear &client, int quarter, int srNo);

/// Writes one row. `amount` is rupees; it goes in with up to 15 significant digits.
void InsertDetail(const ClientYear &client, int quarter, int natId, int srNo, int expId, double amount);

/// Removes what stands under the row's number and writes the row: a row has no key that could be updated.
void ReplaceDetail(const ClientYear &client, int quarter, int natId, int srNo, int expId, double amount);

/// Takes all expenses of the quarter before, of all natures and the consolidated ones too, over into a quarter with
/// amount 0. One number is skipped; a second import brings the rows once more.
/// @param quarter 2 to 4
void ImportLastQuarter(const ClientYear &client, int quarter);
