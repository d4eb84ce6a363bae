#pragma once

#include "launcher/settings.h"
#include "platform/connection.h"
#include "platform/offer.h"
#include "server/privateserver.h"

#include <memory>

/// The module's database as the launcher opens it: the office server of the settings, or the private server on a data
/// folder. A schema that is missing is made.
class FBT_OFFERED LauncherDatabase
{
public:
    /// @param dataFolder of the private server; not touched when the settings name an office server
    LauncherDatabase(LauncherSettings settings, const QString &dataFolder);
    ~LauncherDatabase();
    LauncherDatabase(const LauncherDatabase &) = delete;
    LauncherDatabase &operator=(const LauncherDatabase &) = delete;

    /// On failure `why` is one sentence for the user.
    bool open(QString *why);

    /// Closes the connections, then leaves the private server.
    void close();

    /// Makes the open schema an empty scratch database, whatever a run before left in it. Only one program at a time
    /// has it; another one waits for a minute.
    bool takeScratch(QString *why);
    void dropScratch();

    [[nodiscard]] Connection &connection() { return m_connection; }
    [[nodiscard]] Connection *suiteConnection() { return m_suite.State() == Connection::Open ? &m_suite : nullptr; }

private:
    bool openServer(QString *why);
    bool openSchema(QString *why);
    bool openSuite(QString *why);

    LauncherSettings m_settings;
    ServerAddress m_address;
    std::unique_ptr<PrivateServer> m_server;
    Connection m_connection;
    Connection m_suite;
};
