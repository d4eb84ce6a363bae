#pragma once

#include "platform/offer.h"

#include <QString>

#include <functional>
#include <optional>

class Connection;

/// One employer as the lists of employers show it.
struct ListedClient
{
    QString code;
    QString name;
    std::optional<int> status; ///< `ClStatus`; nothing for `Null`
    QString pan;
    QString address; ///< on one line, see AppendAddress
};

/// Hands every row of `FBT_Info` to `take`, in the order of the table, without keeping any: there can be 100,000 of them.
/// The line is the same object each time. False when the table could not be read.
FBT_OFFERED bool ReadClientList(Connection *connection, const std::function<void(const ListedClient &)> &take);

/// One more part of an address (not the pin code): without blanks around it, ", " before it unless it is the first; an
/// empty part adds nothing.
FBT_OFFERED void AppendAddress(QString &line, QStringView part);
