#pragma once

#include "platform/offer.h"

#include <QString>

class QPrinter;
class ReportLayout;
class QPageLayout;
class ReportDocument;

/// Writes a report as a PDF file. False when the file cannot be written whole; a file that was there before stays then.
FBT_OFFERED bool WritePdf(const ReportDocument &document, const QPageLayout &page, const QString &path);

/// Prints the pages `from` to `to`, counted from 1, both included. False when the printer cannot be started.
FBT_OFFERED bool PrintPages(const ReportLayout &layout, QPrinter &printer, int from, int to);
