#pragma once

#include "platform/offer.h"

#include <QString>

#include <cstddef>
#include <optional>

class ReportDocument;

/// A place in a report: a block and the cell in it.
struct ReportPlace
{
    size_t block = 0;
    int cell = 0;

    bool operator==(const ReportPlace &) const = default;
};

/// The next cell (or the one before) after `from` that holds a text, whatever its capitals; from the other end of the report
/// when there is none further on. Without `from` the search begins at the end that lies first. Nothing when no cell has it.
FBT_OFFERED std::optional<ReportPlace> FindInReport(const ReportDocument &document, const QString &text,
                                                    const std::optional<ReportPlace> &from, bool forward);
