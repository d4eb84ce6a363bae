#pragma once

#include <QString>

class ReportDocument;

/// A report as a page of HTML that stands alone: a paragraph a line, a table a run of rows of one form.
QString ReportHtml(const ReportDocument &document);
