#pragma once

#include "masters/naturelist.h"
#include "platform/dates.h"

#include <QStringList>

/// The law of one assessment year as data: heads of section 115WB (`FBT_Head<year>`), expense items under a head
/// (`FBT_ExpHead<year>`) and the percentage of each item by nature of business (`FBT_ExpRate<year>`). A year is named by
/// its first calendar year.

struct ExpenseHead
{
    int headId = 0;
    QString section; ///< clause, such as "115WB(2)(A)"
    QString text;
};

struct ExpenseItem
{
    int srNo = 0; ///< what `FBT_Detail.ExpId` points to
    QString text;
    QStringList rates; ///< percent, one for each nature of the list in hand; empty without a rate
};

/// Heads of the law, which cannot be deleted: 1 to 19 in 2006, 1 to 20 from 2007 on. Head 21, the clause of section
/// 115WB(1)(d), is not among them.
constexpr bool IsStatutoryHead(int year, int headId)
{
    return headId <= (year == firstAssessmentYear ? 19 : 20);
}

/// Items of the base list, which cannot be deleted.
constexpr bool IsSeededItem(int srNo)
{
    return srNo <= 134;
}

/// The heads in the order of their section.
QVector<ExpenseHead> ExpenseHeads(Connection *cnn, int year);

/// Adds a head and gives its number. The number is one above the highest head that has an item, so a head that never
/// got an item shares its number with the next one. Without a value, and nothing saved, when no number could be had.
std::optional<int> AddExpenseHead(Connection *cnn, int year, const QString &section, const QString &text);

/// Writes section and text of the head with that number.
void ChangeExpenseHead(Connection *cnn, int year, const ExpenseHead &head);

/// Whether an expense of the year was entered under an item of the head. Without a value after a fault: the head then
/// counts as used.
std::optional<bool> ExpenseHeadInUse(Connection *cnn, int year, int headId);

/// Deletes a head with its items and their rates.
void DeleteExpenseHead(Connection *cnn, int year, int headId);

/// The items of a head in the order of their numbers, with a rate for each of the natures. A rate for all natures counts
/// for each of them.
QVector<ExpenseItem> ExpenseItems(Connection *cnn, int year, int headId, const QVector<Nature> &natures);

/// The number that a new item gets: the highest of all heads plus 1. Without a value after a fault.
std::optional<int> NextExpenseItemNo(Connection *cnn, int year);

/// Writes an item and one rate for each nature in the place of all rows with its number; a rate without text is 0.
/// One rate for all natures so becomes one for each, and a nature that is added later has none.
void SaveExpenseItem(Connection *cnn, int year, int headId, const ExpenseItem &item, const QVector<Nature> &natures);

/// Whether an expense of the year was entered under the item. Without a value after a fault, as for a head.
std::optional<bool> ExpenseItemInUse(Connection *cnn, int year, int srNo);

/// Deletes an item with its rates.
void DeleteExpenseItem(Connection *cnn, int year, int srNo);
