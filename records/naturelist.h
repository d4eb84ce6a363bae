#pragma once

#include "platform/offer.h"
#include "records/natures.h"

#include <optional>

/// The master of the natures of business: all of them, and what changes them.

/// Whether a nature is one of the law's own, which cannot be deleted.
constexpr bool IsSeededNature(int srNo)
{
    return srNo <= 7;
}

/// All natures in the order of their numbers.
FBT_OFFERED RowsRead<Nature> Natures(Connection *cnn);

/// Whether a nature, or another nature than `srNo`, has the text, as the database compares texts. Without a value when
/// the question could not be asked: the text then cannot be saved either.
FBT_OFFERED std::optional<bool> NatureTextTaken(Connection *cnn, const QString &text, std::optional<int> srNo);

/// Adds a nature under a new number, the highest plus 1, and gives it. Without a value, and nothing saved, after a fault.
FBT_OFFERED std::optional<int> AddNature(Connection *cnn, const QString &text);

/// Writes a nature in the place of the row with its number. False, and nothing changed, after a fault or when there is no
/// such row.
FBT_OFFERED bool ChangeNature(Connection *cnn, const Nature &nature);

/// Whether a client has the nature, a rate of the base list other than 0 belongs to it, or an expense was entered for it.
/// Without a value after a fault: the nature then counts as used.
FBT_OFFERED std::optional<bool> NatureInUse(Connection *cnn, int srNo);

/// Deletes a nature with its rates of the base list, or nothing after a fault. The lists of the years keep theirs, which
/// no client can reach.
FBT_OFFERED bool DeleteNature(Connection *cnn, int srNo);
