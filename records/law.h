#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

#include <optional>

class Connection;

/// The law of one assessment year as data: heads of section 115WB (`FBT_Head<year>`), expense items under a head
/// (`FBT_ExpHead<year>`) and the percentage of each item by nature of business (`FBT_ExpRate<year>`). A year is named by
/// its first calendar year.

struct ExpenseHead
{
    int headId = 0;
    QString section; ///< clause, such as "115WB(2)(A)"
    QString text;

    bool operator==(const ExpenseHead &) const = default;
};

struct ExpenseItem
{
    int srNo = 0; ///< what `FBT_Detail.ExpId` points to
    QString text;
};

/// The percentage of an item for one nature.
struct NatureRate
{
    int natId = 0; ///< 0: for all natures
    QString percent;
};

struct RatedItem
{
    ExpenseItem item;
    std::vector<NatureRate> rates; ///< as stored
};

/// The heads in the order of their section.
FBT_OFFERED RowsRead<ExpenseHead> ExpenseHeads(Connection *cnn, int year);

/// Adds a head and gives it its number: one above the highest head that has an item, so a head that never got an item
/// shares its number with the next one. False, and nothing saved, after a fault.
FBT_OFFERED bool AddExpenseHead(Connection *cnn, int year, ExpenseHead *head);

/// Writes section and text of a head. Of heads that share its number only the one that reads as `before` is changed.
/// False after a fault or when there is no such head.
FBT_OFFERED bool ChangeExpenseHead(Connection *cnn, int year, const ExpenseHead &before, const ExpenseHead &head);

/// Whether an expense of the year was entered under an item of the head. Without a value after a fault: the head then
/// counts as used.
FBT_OFFERED std::optional<bool> ExpenseHeadInUse(Connection *cnn, int year, int headId);

/// Deletes a head with its items and their rates: all of them, or nothing after a fault. While another head has its
/// number, that one keeps the items.
FBT_OFFERED bool DeleteExpenseHead(Connection *cnn, int year, const ExpenseHead &head);

/// The items of all heads, or of one.
FBT_OFFERED RowsRead<ExpenseItem> ExpenseItems(Connection *cnn, int year);
FBT_OFFERED RowsRead<ExpenseItem> ExpenseItems(Connection *cnn, int year, int headId);

/// The items of a head with their rates, in the order of their numbers.
FBT_OFFERED RowsRead<RatedItem> RatedItems(Connection *cnn, int year, int headId);

/// Adds an item with its rates under a new number, the highest of all heads plus 1, and gives it; the item's own number is
/// not looked at. A rate without text is 0. Without a value, and nothing saved, after a fault.
FBT_OFFERED std::optional<int> AddRatedItem(Connection *cnn, int year, int headId, const RatedItem &item);

/// Writes an item and its rates in the place of all rows with its number. False, and nothing changed, after a fault or when
/// there is no such row.
FBT_OFFERED bool ChangeRatedItem(Connection *cnn, int year, int headId, const RatedItem &item);

/// Whether an expense of the year was entered under the item. Without a value after a fault, as for a head.
FBT_OFFERED std::optional<bool> ExpenseItemInUse(Connection *cnn, int year, int srNo);

/// Deletes an item with its rates, or nothing after a fault.
FBT_OFFERED bool DeleteExpenseItem(Connection *cnn, int year, int srNo);
