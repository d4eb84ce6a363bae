#include "platform/browserprofile.h"

#include "platform/startedprocess.h"

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

namespace {

QString nameStart()
{
    return QStringLiteral("pelkfbt-browser-");
}

/// The browser's own note says which process uses the folder: "HOST-NUMBER".
bool isInUse(const QFileInfo &profile)
{
    const QString owner = QFileInfo(profile.filePath() + QStringLiteral("/SingletonLock")).symLinkTarget();
    return !owner.isEmpty() && IsRunning(ProcessOf(owner.section(u'-', -1).toLongLong()));
}

} // namespace

QString NewProfile()
{
    QTemporaryDir folder(QDir::temp().filePath(nameStart() + QStringLiteral("XXXXXX")));
    folder.setAutoRemove(false);
    return folder.isValid() ? folder.path() : QString();
}

void RemoveProfile(const QString &profile)
{
    if (QFileInfo(profile).fileName().startsWith(nameStart()))
        QDir(profile).removeRecursively();
}

void RemoveOldProfiles()
{
    constexpr qint64 starting = 3600; // seconds; one that is younger may not be noted as in use yet
    const QDir all = QDir::temp();
    const QDateTime now = QDateTime::currentDateTime();
    for (const QFileInfo &profile : all.entryInfoList({nameStart() + u'*'}, QDir::Dirs | QDir::NoSymLinks)) {
        if (profile.lastModified().secsTo(now) > starting && !isInUse(profile))
            RemoveProfile(profile.filePath());
    }
}
