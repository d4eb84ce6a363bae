#pragma once

#include "platform/offer.h"
#include "records/clienttables.h"
#include "records/reading.h"

#include <QSet>
#include <QString>

class Change;
class Connection;

/// Names of the base tables of the connection's schema, in lower case.
FBT_OFFERED Reading<QSet<QString>> TableNames(Connection *cnn);

/// The client tables that are there: those that always are, and the one of the return where it has come into being. Who
/// cannot know which there are changes none: rows left under an old code would be lost to the client.
FBT_OFFERED RowsRead<ClientTable> TablesOfClients(Connection *cnn);

/// Rewrites a client code in `tables`, as part of a change. False after a fault.
FBT_OFFERED bool MoveClientRows(Change &change, const std::vector<ClientTable> &tables, const QString &oldCode,
                                const QString &newCode);

/// Rewrites a client code in all client tables but the client master. False after a fault: then nothing is changed.
FBT_OFFERED bool ChangeClientCode(Connection *cnn, const QString &oldCode, const QString &newCode);

/// Removes a client from all client tables and from the client master; the master lists stay. False as above.
FBT_OFFERED bool DeleteClientRows(Connection *cnn, const QString &clientCode);
