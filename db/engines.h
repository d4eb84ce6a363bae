#pragma once

class UpdateRun;

/// Gives those tables of the module the transactional engine that were made with another one, by an older program or on a
/// server with another default: rows that are written together must all stay or none.
void CONVERTENGINES(UpdateRun &run);
