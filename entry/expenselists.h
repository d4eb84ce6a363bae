#pragma once

#include "records/reading.h"

#include <QString>

class Grid;

/// Heads of expense and expense items of an assessment year, as the entry screens list them.
struct ExpenseChoice
{
    int id = 0; ///< `HeadId` of a head, `SrNo` of an item
    QString text;
};

/// The heads of the year, sorted by description.
RowsRead<ExpenseChoice> HeadChoices(int year);

/// The items under a head of the year, sorted by description.
RowsRead<ExpenseChoice> ItemChoices(int year, int headId);

/// A head as the lists of expenses hold it: empty for an item that is not among the year's items.
QString HeadText(int headId);

/// What `GETITEMS` reads, as a screen tells that it could not be read.
inline const QString itemTexts = QStringLiteral("descriptions of heads and items");

/// Lets columns 1 (`HeadId`) and 2 (`FBT_ExpHead.SrNo`) of a list of expenses show descriptions.
void GETITEMS(Grid *grid, int year);
