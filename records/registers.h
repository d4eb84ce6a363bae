#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

#include <optional>

class Connection;

/// What the registers print of all clients.

struct ClientLine
{
    QString code;
    QString name;
    QString pan;
    std::optional<int> status; ///< `ClStatus`, where one is stored
    QString city;
    QString telephone; ///< with its STD code
};

/// All clients in the order of their names.
FBT_OFFERED RowsRead<ClientLine> ClientLines(Connection *cnn);

struct ReturnLine
{
    QString code;
    QString name;
    QString date; ///< `dd/mm/yyyy`; empty when there is none
    QString acknowledgement;
};

/// The clients whose return of the year has a date or an acknowledgement number, in the order of their names: those typed
/// on the additional information, else those of the return screen.
FBT_OFFERED RowsRead<ReturnLine> ReturnLines(Connection *cnn, int year);
