#pragma once

class Connection;

/// Gives those tables of the module the transactional engine that were made with another one, by an older program or on a
/// server with another default: rows that are written together must all stay or none.
/// Returns false when the server was lost.
bool CONVERTENGINES(Connection *connection);
