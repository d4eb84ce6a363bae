#pragma once

#include <QSet>
#include <QString>

class Connection;

/// Names of the base tables of the connection's schema, in lower case.
QSet<QString> TableNames(Connection *cnn);

/// Rewrites a client code in all client tables but the client master. Tables that do not exist yet are passed over.
void ChangeClientCode(Connection *cnn, const QString &oldCode, const QString &newCode);

/// Removes a client from all client tables and from the client master; the master lists stay.
void DeleteClientRows(Connection *cnn, const QString &clientCode);
