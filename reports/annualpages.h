#pragma once

#include "platform/offer.h"

#include <QStringList>

#include <optional>
#include <vector>

class ReportObject;
struct PayerDetails;

/// The annual report as texts, as the screen shows it.
struct AnnualTexts
{
    struct StatementLine
    {
        QStringList texts; ///< what it is, the quarters and the total
        bool bold = false;
    };

    QString title;
    QStringList unread; ///< what could not be read, in the plural and small letters
    /// A row for each expense item: number, head, nature of expenses and rate, then amount and value of the four
    /// quarters and of the year.
    std::vector<QStringList> expenses;
    std::vector<StatementLine> statement; ///< none for a single nature
};

/// The title of the report.
/// @param year first calendar year of the assessment year
/// @param nature none for all natures together
FBT_OFFERED QString AnnualTitle(int year, const std::optional<QString> &nature);

/// Writes the report: what could not be read, a table of expenses for each quarter that has one and for the year, and the statement. Writes into
/// the report in hand.
FBT_OFFERED void CREATEREPORT(ReportObject &report, const PayerDetails &client, const AnnualTexts &texts);
