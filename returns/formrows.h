#pragma once

#include "host/reportobject.h"

#include <QString>
#include <QStringList>

#include <vector>

/// Which edges of a row are ruled: one character a cell, "1" for a ruled one; a text shorter than the row rules none.
struct RowEdges
{
    QString left;
    QString right;
    QString top;
    QString bottom;
};

/// All edges of `cells` cells.
RowEdges AllEdges(int cells);

/// The left edge of the first cell and the right one of the last, and those above and below the row where asked for.
RowEdges OuterEdges(int cells, bool top = false, bool bottom = false);

/// All edges of the last cell.
RowEdges BoxedLast(int cells);

/// Rows of a form's tables in the report in hand.
class FormRows
{
public:
    /// Starts a table.
    void begin(std::vector<int> widths, std::vector<int> aligns);
    /// Other cells from here on, in the same table.
    void shape(std::vector<int> widths, std::vector<int> aligns);
    void row(const QStringList &cells, const RowEdges &edges = {}) const;
    void empty() const; ///< a row without text and rules

private:
    ReportRow m_row;
};

/// One row over the whole line, without rules.
void WriteLine(const QString &text, int align);

/// "Nil" for 0, else whole rupees.
QString NilOrRupees(double amount);

/// "Nil" for 0, else the amount as it is.
QString NilOrPlain(double amount);

/// Nothing for 0, else the amount as it is.
QString PlainOrEmpty(double amount);

/// "1" for yes, "2" for no.
QString OneOrTwo(bool yes);
