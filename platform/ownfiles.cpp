#include "platform/ownfiles.h"

#include <QFile>
#include <QFileInfo>

void KeepPrivate(const QString &path)
{
    constexpr auto file = QFile::ReadOwner | QFile::WriteOwner;
    const QFileInfo info(path);
    if (info.isDir() && info.permission(QFile::WriteOther))
        return;
    QFile::setPermissions(path, info.isDir() ? file | QFile::ExeOwner : file);
}
