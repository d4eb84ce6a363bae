#pragma once

#include "platform/offer.h"

class Connection;

/// The lock of the server under which a schema is updated: one program at a time. It goes with the connection that holds
/// it, so that a program which dies does not keep the others out. A server without such locks goes without.
class FBT_OFFERED UpdateLock
{
public:
    explicit UpdateLock(Connection *connection)
        : m_connection(connection)
    {
    }
    ~UpdateLock();
    UpdateLock(const UpdateLock &) = delete;
    UpdateLock &operator=(const UpdateLock &) = delete;

    /// Takes the lock if no other program holds it; does not wait. False when another one holds it.
    bool take();
    /// Sees to it that the lock is still held after the connection may have been lost. False when another program has it.
    bool keep();

private:
    Connection *m_connection;
    bool m_taken = false;
};
