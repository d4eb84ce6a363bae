#pragma once

#include "platform/offer.h"
#include "records/natures.h"

#include <QString>
#include <QVector>

#include <optional>

class Connection;

/// The list of natures of business, `FBT_Nature`: one list for all years.

/// Whether a nature is one of the law's own, which cannot be deleted.
constexpr bool IsSeededNature(int srNo)
{
    return srNo <= 7;
}

/// All natures in the order of their numbers. Without a value after a fault: what is kept for each nature, such as the
/// rates of an expense, can then neither be shown nor saved.
FBT_OFFERED std::optional<QVector<Nature>> Natures(Connection *cnn);

/// Whether another nature than `srNo` (0: any nature) has the text, as the database compares texts. Without a value when
/// the question could not be asked: the text then cannot be saved either.
FBT_OFFERED std::optional<bool> NatureTextTaken(Connection *cnn, const QString &text, int srNo);

/// The number that a new nature gets: the highest plus 1. Without a value after a fault.
FBT_OFFERED std::optional<int> NextNatureNo(Connection *cnn);

/// Writes a nature in the place of the row with its number, if there is one.
FBT_OFFERED void SaveNature(Connection *cnn, const Nature &nature);

/// Whether a client has the nature, a rate of the base list other than 0 belongs to it, or an expense was entered for it.
/// Without a value after a fault: the nature then counts as used.
FBT_OFFERED std::optional<bool> NatureInUse(Connection *cnn, int srNo);

/// Deletes a nature with its rates of the base list. The lists of the years keep theirs, which no client can reach.
FBT_OFFERED void DeleteNature(Connection *cnn, int srNo);
