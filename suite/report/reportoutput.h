#pragma once

#include "platform/offer.h"

#include <QString>

class QPrinter;
class ReportLayout;

/// Writes a report as a PDF file. False when the file cannot be written whole; a file that was there before stays then.
FBT_OFFERED bool WritePdf(ReportLayout &layout, const QString &path);

/// Prints the pages `from` to `to`, counted from 1, both included. False when the printer cannot be started.
FBT_OFFERED bool PrintPages(ReportLayout &layout, QPrinter &printer, int from, int to);
