#pragma once

#include "server/privateserver.h"

#include <QTemporaryDir>

/// The template of a scratch folder. In memory where the system has such a place: making a table on a disk takes ten
/// times as long.
QString ScratchFolder();

/// A real private server on a scratch folder, with a schema of its own for each test.
class TestServer
{
public:
    TestServer();

    /// Makes an empty schema of a new name and opens `connection` on it. Fails the program when there is no server:
    /// a test without its database has seen nothing.
    /// @param faults if given, is emptied and receives the faults of the connection
    void openFreshSchema(Connection &connection, std::vector<Fault> *faults = nullptr);

    /// Kills the server as a power cut would, and starts it again on the same folder.
    void kill() { m_server.kill(); }
    void restart();

    [[nodiscard]] ServerAddress address() const { return m_server.address(); }

private:
    QTemporaryDir m_folder;
    PrivateServer m_server;
    int m_schemas = 0;
};
