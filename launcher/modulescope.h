#pragma once

#include "context/errortail.h"

class BaseObject;
class Connection;

/// The module's state for a run without a window, as long as this lives: the connection and the base object, and faults that
/// go to the log.
class ModuleScope
{
public:
    /// @param place what the log calls the run
    ModuleScope(Connection &connection, BaseObject &base, const QString &place);
    ~ModuleScope();
    ModuleScope(const ModuleScope &) = delete;
    ModuleScope &operator=(const ModuleScope &) = delete;

    [[nodiscard]] static bool hasFaults(); ///< since this was made, or a fault was taken
    static bool takeFault();               ///< whether there were faults; they count no longer

private:
    Connection &m_connection;
    ErrorTail m_tail;
};
