#include "launcher/modulescope.h"

#include "context/modbase.h"
#include "platform/connection.h"

ModuleScope::ModuleScope(Connection &connection, BaseObject &base, const QString &place)
    : m_connection(connection)
    , m_tail(QStringLiteral("LAUNCHER"), place)
{
    Cnn = &connection;
    Base = &base;
    Base->CnnObj = Cnn;
    connection.setFaultHandler(ErrorTail::dispatch);
    ErrText.clear();
}

ModuleScope::~ModuleScope()
{
    m_connection.setFaultHandler({});
    ResetModule();
}

bool ModuleScope::hasFaults()
{
    return !ErrText.isEmpty();
}

bool ModuleScope::takeFault()
{
    const bool faults = hasFaults();
    ErrText.clear();
    return faults;
}
