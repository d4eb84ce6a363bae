#include "returns/workfolder.h"

#include "context/modbase.h"
#include "platform/ownfiles.h"

#include <QDir>

namespace {

/// The code as the name of a folder. A code of dots would lead to a folder of someone else's.
QString folderName(QString code)
{
    code.replace(u'\\', u'-').replace(u'/', u'-');
    return code == u"." || code == u".." ? QStringLiteral("-") : code;
}

/// In a temporary folder that all users share, a link could lead what is deleted and written to another place.
bool ownFolder(const QString &path)
{
    const QFileInfo folder(path);
    return (folder.isDir() || QDir().mkpath(path)) && !QFileInfo(path).isSymLink() && QFileInfo(path).isWritable();
}

WorkFolder folderIn(const QString &parent, const QString &code, int year)
{
    const QString client = parent + u'/' + folderName(code);
    WorkFolder folder{client + u'/' + QString::number(year), false};
    if (!ownFolder(client))
        return folder;
    KeepPrivate(client);
    QDir(folder.TmpPath).removeRecursively();
    folder.made = QDir().mkdir(folder.TmpPath) || (QFileInfo(folder.TmpPath).isDir() && QDir(folder.TmpPath).isEmpty());
    return folder;
}

} // namespace

WorkFolder GETMYTEMPPATH(const QString &code, int year)
{
    const WorkFolder temporary = folderIn(Base->vTmpPath, code, year);
    return temporary.made ? temporary : folderIn(Base->AppPath, code, year);
}
