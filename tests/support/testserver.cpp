#include "tests/support/testserver.h"

#include <QDir>
#include <QFileInfo>

QString ScratchFolder()
{
    const QFileInfo memory("/dev/shm");
    return (memory.isDir() && memory.isWritable() ? memory.filePath() : QDir::tempPath()) + "/fbt-XXXXXX";
}

TestServer::TestServer()
    : m_folder(ScratchFolder())
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

void TestServer::openFreshSchema(Connection &connection, std::vector<Fault> *faults)
{
    ServerAddress where = address();
    where.schema = QString("fbt%1").arg(++m_schemas);
    Connection maker;
    Fault why;
    if (!maker.open(address(), &why) || !maker.Execute(Sql("Create Database ", where.schema)) ||
        !connection.open(where, &why))
        qFatal("No schema for the test: %s", qPrintable(why.description));
    if (faults != nullptr) {
        faults->clear();
        connection.setFaultHandler([faults](const Fault &fault) { faults->push_back(fault); });
    }
}
