#pragma once

#include "platform/offer.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

/// A table of texts on its way out of the program: to the clipboard, to a CSV, XLSX or PDF file. A grid and a report each
/// come to one.

struct SheetCell
{
    QString text;
    bool bold = false;
    bool right = false; ///< aligned to the right; a text that is a number counts as one then
    bool centre = false;
};

struct SheetRow
{
    std::vector<SheetCell> cells;
    bool header = false;
};

struct Sheet
{
    QString title;              ///< proposed as the name of the file
    std::vector<double> widths; ///< of the columns, in characters
    /// Gives row after row, so that a long table is never held twice. False after the last one.
    std::function<bool(SheetRow &row)> next;
};

/// The number that a text shows: up to 15 digits, a sign before it or brackets for a negative amount. A text with leading
/// zeros is a code, not a number. Digits are in groups as the user's locale has them only where two decimals follow its
/// decimal sign, as amounts have them; all else has a point, and groups only where the locale's decimal sign is one.
FBT_OFFERED std::optional<double> ShownNumber(const QString &text);

/// What a spreadsheet takes the cells of a text for.
struct SheetValue
{
    enum class Kind { Text, Number, Date };
    Kind kind = Kind::Text;
    double number = 0; ///< of a number; of a date the days since 30 December 1899
    QString format;    ///< how a spreadsheet shows it
};

/// Numbers where the cell is aligned to the right, dates as dd/mm/yyyy anywhere, all else text.
FBT_OFFERED SheetValue ValueOf(const SheetCell &cell);

/// Tabs between cells, a line a row. Tabs and line ends inside a cell become blanks.
FBT_OFFERED QString SheetText(const Sheet &sheet);

/// UTF-8 with a mark, commas, lines that end in CR LF. A text that a spreadsheet would take for a formula gets an
/// apostrophe before it. False when the file cannot be written; one that was there before stays then.
FBT_OFFERED bool WriteCsv(const Sheet &sheet, const QString &path);

/// Numbers as numbers, dates as dates, with bold and widths, the header in view. False when it cannot be written; see
/// WriteCsv.
FBT_OFFERED bool WriteXlsx(const Sheet &sheet, const QString &path);

using SheetPdfWriter = std::function<bool(const Sheet &sheet, const QString &path)>;

/// Pages are laid out by the reporter, which lies above this room: it says here how. Without it no PDF is offered.
FBT_OFFERED void SetSheetPdfWriter(SheetPdfWriter writer);
[[nodiscard]] FBT_OFFERED const SheetPdfWriter &SheetPdf();
