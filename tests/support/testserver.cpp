#include "tests/support/testserver.h"

#include <QDir>
#include <QFileInfo>

namespace {

// In memory where the system has such a folder: making a table on a disk takes ten times as long.
QString scratchFolder()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return (memory.isDir() && memory.isWritable() ? memory.filePath() : QDir::tempPath()) +
           QStringLiteral("/fbt-XXXXXX");
}

} // namespace

TestServer::TestServer()
    : m_folder(scratchFolder())
    , m_server(m_folder.path(), PrivateServer::Durability::Relaxed)
{
    restart();
}

void TestServer::restart()
{
    QString why;
    if (!m_server.start(&why))
        qFatal("No database server for the tests: %s", qPrintable(why));
}

void TestServer::openFreshSchema(Connection &connection)
{
    ServerAddress where = address();
    where.schema = QStringLiteral("fbt%1").arg(++m_schemas);
    Connection maker;
    Fault why;
    if (!maker.open(address(), &why) || !maker.Execute(Sql("Create Database ", where.schema)) ||
        !connection.open(where, &why))
        qFatal("No schema for the test: %s", qPrintable(why.description));
}
