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

/// The report viewer (`PrjWexaRep.RepView`): holds a report, previews and prints it.
///
/// A tabular report runs `WinModeReport`, `NewReport`, lines and tables, `ShowReport`. A form from a template document
/// runs `newreportnew`, `SetText` for each mark, `ShowReport`. A return joins both: `InItReport`, lines, documents filled
/// one by one and appended, a footer, `ShowReport`.
///
/// Template documents are RTF, whatever their names end in. What goes wrong with one (it is missing, is no RTF, is cut
/// off, has no such mark, table or cell) is thrown as a FaultError; what can be read of a document is open all the same,
/// and with none open the operations on it do nothing, so that one broken file is one fault. A report viewer without
/// template documents leaves the members for them as they are here: they do nothing.
class FBT_OFFERED ReportObject : public SuiteObject
{
public:
    QString setcallfrom;
    QStatusBar *StatusBarobj = nullptr;
    QString Setapppath;
    QString Settmppath;
    bool WinModeReport = false; ///< windowed preview of a tabular report
    QString title;              ///< of the preview and of the files saved from it; a new report has none

    [[nodiscard]] virtual int MyDllVersion() const = 0;
    /// Starts an empty report. Its margins are those of the settings ("Settings", "MarginL", "MarginT", "MarginR",
    /// "MarginB", in twentieths of a point, 720 without a setting), read now.
    virtual void NewReport() = 0;
    /// Adds a free line with the report tokens in it; an empty text is an empty line.
    virtual void printtext(const QString &text = {}) = 0;
    /// Starts a ruled table of that many columns.
    virtual void CreateTable(int tables, int columns) = 0;
    /// Adds one table row.
    virtual void WriteToReport(const ReportRow &row) = 0;
    /// Shows the preview, from which the user prints. It returns at once.
    virtual void ShowReport() = 0;

    /// As NewReport with `start`; without it the report in hand goes on after a document was appended, in the normal
    /// pitch and without bold, italic and the like.
    virtual void InItReport(bool /*start*/, bool /*windowed*/ = false) {}
    /// (-1, 4, 4): what follows is the footer of every page; (0, 0): what follows is the report again.
    virtual void SelectHF(int /*which*/, int /*first*/, int /*last*/ = 0) {}
    /// The page number with a text before and after it, in that cell of the footer's last table, counted from 1; where
    /// the table has no such cell, on a line of its own in the middle.
    virtual void InsertPgNo_TB(int /*row*/, int /*column*/, const QString & /*before*/, const QString & /*after*/) {}
    /// Turns each "_/" of the report into the tick sign, also once it is shown.
    virtual void ReplaceTickM() {}
    /// Puts the image of a file at each "###IMG...###" of that name, also once the report is shown. Throws when the file
    /// is no image.
    virtual void insertimg(const QString & /*token*/, const QString & /*path*/) {}

    // --- a form: one template document is the report ---
    virtual void newreportnew(const QString & /*path*/) {}
    /// Replaces every occurrence of a mark, wherever a word processor has cut it into runs. The value takes the look of
    /// the mark's first character; ESC "S" and ESC "T" in it switch strike-through on and off, CR LF breaks the line.
    virtual void SetText(const QString & /*mark*/, const QString & /*value*/) {}

    // --- documents filled one by one; tables, rows and columns count from 1 ---
    virtual void OpenMasterFile(const QString & /*path*/) {}
    virtual void NewSetText(const QString & /*key*/, const QString & /*value*/) {} ///< as SetText
    /// Makes a table current. The numbers are those of the opened document: rows that are deleted do not change them.
    virtual void FindTable(int /*number*/) {}
    /// Writes a cell. It keeps the look of the text that stood there.
    virtual void TextMatrix(int /*row*/, int /*column*/, const QString & /*value*/) {}
    /// Adds `count` rows in front of `row` (or at the end, for the number of rows plus 1), copies of the row above it with
    /// empty cells. The first new row has the number `row`.
    virtual void InsertRows(int /*row*/, int /*count*/) {}
    virtual void deleteRow(int /*row*/) {}
    virtual void SaveMasterFile(const QString & /*path*/) {}
    /// Appends a saved document to the report, after what is in it, on the same page as far as there is room.
    virtual void AppendFile(const QString & /*path*/) {}
};
