#include "launcher/demofolder.h"

#include "server/privateserver.h"

#include <QDateTime>
#include <QDir>

#include <unistd.h>

namespace {

QString pattern(const QString &ending)
{
    return QStringLiteral("pelkfbt-demo-") + ending;
}

/// A demonstration has its database from soon after its start to its end. One that was killed before leaves a folder
/// that only its age tells from one that starts at this moment.
bool hasGone(const QFileInfo &folder)
{
    const QString data = folder.filePath() + QStringLiteral("/db");
    if (PrivateServer::knows(data))
        return !PrivateServer::inUse(data);
    return folder.lastModified().addDays(1) < QDateTime::currentDateTime();
}

void removeLeftOver()
{
    const QFileInfoList folders =
        QDir::temp().entryInfoList({pattern(QStringLiteral("*"))}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo &folder : folders) {
        if (folder.ownerId() == geteuid() && hasGone(folder))
            QDir(folder.filePath()).removeRecursively();
    }
}

} // namespace

DemoFolder::DemoFolder()
    : m_folder(QDir::temp().filePath(pattern(QStringLiteral("XXXXXX"))))
{
    removeLeftOver();
}
