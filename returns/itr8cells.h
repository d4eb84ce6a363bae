#pragma once

#include "platform/offer.h"

#include <QString>

#include <vector>

struct ReturnForm;

/// What form ITR-8 says and where: the fields of its documents by table, row and column, counted from 1 in the documents
/// that `templates/itr8.py` describes. Amounts are in whole rupees, ties to the even number.

struct FormCell
{
    int table = 0;
    int row = 0;
    int column = 0;
    QString value;
};
using FormCells = std::vector<FormCell>;

/// A text of a document that a value replaces.
struct FormMark
{
    QString key;
    QString value;
};
using FormMarks = std::vector<FormMark>;

/// The documents in the order in which they are printed.
enum class Itr8Page { Acknowledgement, PartA, PartB, ScheduleFBI, ScheduleFB, ScheduleFBT };

/// The name of its file without an ending.
FBT_OFFERED QString DocumentOf(Itr8Page page);

/// The cells that a filled form has, but for the rows of schedule FBT. The figures of the computation are those in hand.
FBT_OFFERED FormCells CellsOf(Itr8Page page, const ReturnForm &form);

/// The marks of a document. A blank form has the year and the form's name only, and lines to write on.
/// @param relation how the signatory stands to the father named, "Son of"; empty leaves the form's own words
FBT_OFFERED FormMarks MarksOf(Itr8Page page, const ReturnForm &form, const QString &relation, bool blank);
