#pragma once

#include "platform/connection.h"

#include <mysql.h>

#include <QByteArray>

/// A session of the C client with the settings of the program's own, as the measure of what the server alone costs.
class BareClient
{
public:
    explicit BareClient(const ServerAddress &address);
    ~BareClient();
    BareClient(const BareClient &) = delete;
    BareClient &operator=(const BareClient &) = delete;

    /// Sends a statement and fetches all rows of its answer. Ends the program when the server refuses it.
    void readAll(const QByteArray &statement);

private:
    MYSQL *m_mysql;
};

/// The most memory that this program has held so far.
double PeakMegabytes();
