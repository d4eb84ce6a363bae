#include "bench/bareclient.h"

#include <sys/resource.h>

BareClient::BareClient(const ServerAddress &address)
    : m_mysql(mysql_init(nullptr))
{
    if (mysql_real_connect(m_mysql, address.host.toUtf8().constData(), address.user.toUtf8().constData(),
                           address.password.toUtf8().constData(), address.schema.toUtf8().constData(),
                           static_cast<unsigned>(address.port), address.socket.toUtf8().constData(), 0) == nullptr)
        qFatal("No session of the C client: %s", mysql_error(m_mysql));
    for (const char *setting : {"SET NAMES utf8mb4", "SET SESSION sql_mode=''", "SET SESSION join_cache_level=0"})
        readAll(setting);
}

BareClient::~BareClient()
{
    mysql_close(m_mysql);
}

void BareClient::readAll(const QByteArray &statement)
{
    if (mysql_real_query(m_mysql, statement.constData(), static_cast<unsigned long>(statement.size())) != 0)
        qFatal("The C client's statement was refused: %s", mysql_error(m_mysql));
    MYSQL_RES *result = mysql_store_result(m_mysql);
    if (result == nullptr)
        return;
    while (mysql_fetch_row(result) != nullptr) {
    }
    mysql_free_result(result);
}

double PeakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}
