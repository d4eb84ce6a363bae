#pragma once

class Grid;
class ReportObject;

/// Prints a list as it is shown, with the columns that are not hidden.
void WriteErrorReport(ReportObject &report, const Grid &list);
