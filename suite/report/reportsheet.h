#pragma once

#include "controls/sheet.h"
#include "platform/offer.h"

#include <memory>

class ReportDocument;

/// A report as a sheet: a row for each line and each row of a table.
FBT_OFFERED Sheet SheetOfReport(const std::shared_ptr<const ReportDocument> &document, const QString &title);

/// A sheet as a report: its title, and a table with all cells ruled.
FBT_OFFERED std::shared_ptr<ReportDocument> ReportOfSheet(const Sheet &sheet);
