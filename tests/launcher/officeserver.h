#pragma once

#include "platform/connection.h"

#include <QProcess>
#include <QTemporaryDir>

/// A server as an office has it: on the network (of this machine), with accounts and passwords, set up by its
/// administrator, telling table names apart by case.
class OfficeServer
{
public:
    /// The account that the program gets has the rights that the README names, on the schema `office`.
    OfficeServer();
    ~OfficeServer();
    OfficeServer(const OfficeServer &) = delete;
    OfficeServer &operator=(const OfficeServer &) = delete;

    /// Host, port, user and password of the program's account.
    [[nodiscard]] ServerAddress address() const { return m_address; }

    /// First field of a query, asked as the administrator.
    QString ask(const QString &query);

private:
    void install();
    void launch();
    void makeAccount();

    QTemporaryDir m_folder;
    QProcess m_process;
    ServerAddress m_address;
    Connection m_administrator;
};
