#include "platform/ownfiles.h"

#include <QFile>
#include <QFileInfo>

void KeepPrivate(const QString &path)
{
    constexpr auto file = QFile::ReadOwner | QFile::WriteOwner;
    QFile::setPermissions(path, QFileInfo(path).isDir() ? file | QFile::ExeOwner : file);
}
