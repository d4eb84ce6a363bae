#pragma once

#include "platform/connection.h"

#include <QProcess>
#include <QTemporaryDir>

/// A server as an office has it: on the network (of this machine), with accounts and passwords, set up by its
/// administrator, telling table names apart by case.
class OfficeServer
{
public:
    /// Whether it can encrypt, with a certificate of its own in `tests/launcher`.
    enum class Encrypts { No, Yes };
    /// The account that the program gets has the rights that the README names, on the schema `office`.
    explicit OfficeServer(Encrypts encrypts = Encrypts::No);
    ~OfficeServer();
    OfficeServer(const OfficeServer &) = delete;
    OfficeServer &operator=(const OfficeServer &) = delete;

    /// Host, port, user and password of the program's account.
    [[nodiscard]] ServerAddress address() const { return m_address; }

    /// Stops it in order and starts it again.
    void restart();

    /// First field of a query, asked as the administrator.
    QString ask(const QString &query);

private:
    void install();
    void launch();
    void makeAccount();

    void stop();

    Encrypts m_encrypts;
    QTemporaryDir m_folder;
    QProcess m_process;
    ServerAddress m_address;
    Connection m_administrator;
};
