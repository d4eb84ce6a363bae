#pragma once

#include "platform/offer.h"

#include <QString>

#include <vector>

class ReportObject;

/// What of a return can be printed by itself, and how a report of several such items is put together.

/// The section of the settings that the return keeps.
inline const QString returnSettings = QStringLiteral("Settings");

struct ReturnItem
{
    QString text;
    bool pageBreak = false; ///< it begins a page, as long as the user has not said otherwise
};

/// The items of form "3B" or "ITR-8" in their order; the first is the acknowledgement.
FBT_OFFERED std::vector<ReturnItem> ReturnItems(const QString &FormNm);

/// Page breaks as they are kept: a number for each item, 0 for none, with commas between them.
FBT_OFFERED QString PageBreaksText(const std::vector<bool> &breaks);

/// The kept page breaks of a form; those that the items come with, as far as none are kept.
FBT_OFFERED std::vector<bool> PageBreaksKept(const QString &FormNm);
FBT_OFFERED void KeepPageBreaks(const QString &FormNm, const std::vector<bool> &breaks);

/// What the foot of each page says.
struct FooterOptions
{
    bool print = true;
    bool code = true;
    bool client = true;
    bool year = true;
    bool page = true;

    bool operator==(const FooterOptions &) const = default;
};

FBT_OFFERED FooterOptions FooterOptionsKept(const QString &FormNm);
FBT_OFFERED void KeepFooterOptions(const QString &FormNm, const FooterOptions &options);

/// Writes the footer of the report in hand.
/// @param year first calendar year of the assessment year
FBT_OFFERED void WriteReturnFooter(ReportObject &report, const FooterOptions &options, const QString &code,
                                   const QString &name, int year);

/// Opens the report of a return. Its margins are narrower than those of other reports, whose settings stay as they are.
FBT_OFFERED void OpenReturnReport(ReportObject &report, const QString &FormNm);

/// What stands between two items: a new page, or a little room on the same one.
FBT_OFFERED void WriteItemBreak(ReportObject &report, const QString &FormNm, bool pageBreak);

/// Tokens of the report's text language.
namespace reporttoken {
inline const QString normalPitch = QStringLiteral("\x1b\x12\x1bP;");
inline const QString smallPitch = QStringLiteral("\x1b\x12\x1bM;");
inline const QString footerPitch = QStringLiteral("\x1b\x12\x1bN;");
inline const QString newPage = QStringLiteral("\f");
inline QString fontSize(int points)
{
    return QStringLiteral("[##ST##FONT##SIZE##]=%1=[##EN##FONT##SIZE##]").arg(points);
}
} // namespace reporttoken
