#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

class Connection;

/// The list of natures of business, `FBT_Nature`, one for all years, and the natures of a client, `FBT_Info.Busnat`: the
/// numbers of its natures as one text, joined by commas.

struct Nature
{
    int srNo = 0; ///< key; the law's own natures have 1 to 7
    QString text;

    bool operator==(const Nature &) const = default;
};

/// `NatId` of what is kept for all natures of a client together.
constexpr int consolidatedNature = -1;

/// The numbers in a `Busnat`, in its order; none in an empty text. A piece that is no number reads as 0.
FBT_OFFERED std::vector<int> NaturesIn(const QString &busnat);

/// The `Busnat` of these natures.
FBT_OFFERED QString BusnatOf(const std::vector<int> &natures);

/// The numbers of a client's natures, in the client's order; none without a client or without natures.
FBT_OFFERED RowsRead<int> ClientNatureNumbers(Connection *cnn, const QString &code);

/// A client's natures with their texts, in the order of their numbers. A number that the list has not is left out.
FBT_OFFERED RowsRead<Nature> ClientNatures(Connection *cnn, const QString &code);

/// The number of the nature that carries by ship; none when the list has no such nature.
FBT_OFFERED Reading<int> ShipNature(Connection *cnn);
