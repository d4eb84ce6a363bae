#pragma once

#include "platform/offer.h"

#include <QString>

class ReportDocument;

/// A report as a page of HTML that stands alone: a paragraph a line, a table a run of rows of one form.
FBT_OFFERED QString ReportHtml(const ReportDocument &document);
