#pragma once

#include "host/objecttable.h"
#include "platform/offer.h"

#include <QStringList>

#include <vector>

class QStatusBar;

/// One row of a report's table, as `WriteToReport` takes it.
struct ReportRow
{
    enum Align { Left = 0, Centre = 1, Right = 2, Justified = 3, CentredHeader = 5 };

    QStringList cells;
    std::vector<int> widths; ///< in columns of a line; kept from row to row until changed
    std::vector<int> aligns; ///< values of Align
    QStringList text1;       ///< left empty by all callers
    QStringList text2;       ///< left empty by all callers
    bool flag = false;       ///< stays false
    QString left;            ///< per edge one character a cell, "1" rules that edge of the cell;
    QString right;           ///< a text shorter than the row means no rule on any cell
    QString top;
    QString bottom;
};

/// The report viewer (`PrjWexaRep.RepView`): holds a document, previews and prints it.
class FBT_OFFERED ReportObject : public SuiteObject
{
public:
    QString setcallfrom;
    QStatusBar *StatusBarobj = nullptr;
    QString Setapppath;
    QString Settmppath;
    bool WinModeReport = false; ///< windowed preview of a tabular report

    [[nodiscard]] virtual int MyDllVersion() const = 0;
    /// Starts an empty document.
    virtual void NewReport() = 0;
    /// Adds a free line with the report tokens in it; an empty text is an empty line.
    virtual void printtext(const QString &text = {}) = 0;
    /// Starts a ruled table of that many columns.
    virtual void CreateTable(int tables, int columns) = 0;
    /// Adds one table row.
    virtual void WriteToReport(const ReportRow &row) = 0;
    /// Shows the preview, from which the user prints.
    virtual void ShowReport() = 0;
};
