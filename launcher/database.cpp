#include "launcher/database.h"

#include "platform/recordset.h"

namespace {

constexpr int unknownSchema = 1049;

/// The server as the user knows it.
QString serverName(const ServerAddress &address)
{
    if (!address.socket.isEmpty())
        return address.socket;
    return address.port == 0 ? address.host : QStringLiteral("%1:%2").arg(address.host).arg(address.port);
}

QString unreachable(const ServerAddress &address, const Fault &fault)
{
    return QStringLiteral("The database server %1 cannot be used: %2").arg(serverName(address), fault.description);
}

bool createSchema(ServerAddress address, const QString &schema, Fault *fault)
{
    address.schema.clear();
    Connection maker;
    if (!maker.open(address, fault))
        return false;
    maker.setFaultHandler([fault](const Fault &found) { *fault = found; });
    return maker.Execute(Sql("Create Database If Not Exists ", schema));
}

} // namespace

LauncherDatabase::LauncherDatabase(LauncherSettings settings, const QString &dataFolder)
    : m_settings(std::move(settings))
{
    if (m_settings.server)
        m_address = *m_settings.server;
    else
        m_server = std::make_unique<PrivateServer>(dataFolder);
}

LauncherDatabase::~LauncherDatabase()
{
    close();
}

bool LauncherDatabase::open(QString *why)
{
    why->clear();
    return openServer(why) && openSchema(why) && openSuite(why);
}

bool LauncherDatabase::openServer(QString *why)
{
    if (m_server) {
        if (!m_server->start(why))
            return false;
        m_address = m_server->address();
        for (Connection *connection : {&m_connection, &m_suite})
            connection->setReviver([this] { return m_server->revive(); });
    }
    if (m_address.schema.isEmpty())
        m_address.schema = m_settings.schema;
    return true;
}

bool LauncherDatabase::openSchema(QString *why)
{
    Fault fault;
    if (m_connection.open(m_address, &fault))
        return true;
    if (fault.number == unknownSchema && createSchema(m_address, m_address.schema, &fault) &&
        m_connection.open(m_address, &fault))
        return true;
    *why = unreachable(m_address, fault);
    return false;
}

bool LauncherDatabase::openSuite(QString *why)
{
    if (m_settings.suiteSchema.isEmpty())
        return true;
    ServerAddress address = m_address;
    address.schema = m_settings.suiteSchema;
    Fault fault;
    if (m_suite.open(address, &fault))
        return true;
    *why = QStringLiteral("The suite database %1 cannot be opened: %2").arg(address.schema, fault.description);
    return false;
}

bool LauncherDatabase::takeScratch(QString *why)
{
    const QString &schema = m_address.schema;
    if (FirstField(&m_connection, Sql("Select get_lock('", schema, "',60)")).num() != 1) {
        *why = QStringLiteral("The scratch database %1 is in use by another program.").arg(schema);
        return false;
    }
    Fault fault;
    m_connection.setFaultHandler([&fault](const Fault &found) { fault = found; });
    dropScratch();
    if (!m_connection.Execute(Sql("Create Database ", schema)) || !m_connection.Execute(Sql("Use ", schema)))
        *why = unreachable(m_address, fault);
    m_connection.setFaultHandler({});
    return why->isEmpty();
}

void LauncherDatabase::dropScratch()
{
    m_connection.Execute(Sql("Drop Database If Exists ", m_address.schema));
}

void LauncherDatabase::close()
{
    m_connection.close();
    m_suite.close();
    if (m_server)
        m_server->stop();
}
