#include "launcher/delivered.h"

#include "platform/ownfiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QSaveFile>

namespace {

using Checksums = QMap<QString, QByteArray>; // by path relative to the application folder

QString checksumFile(const QString &appPath)
{
    return appPath + QStringLiteral("/delivered.sum");
}

/// The file's checksum; empty when it cannot be read.
QByteArray checksum(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result().toHex();
}

Checksums readChecksums(const QString &appPath)
{
    Checksums known;
    QFile file(checksumFile(appPath));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return known;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        const qsizetype gap = line.indexOf("  ");
        if (gap > 0)
            known.insert(QString::fromUtf8(line.mid(gap + 2)), line.left(gap));
    }
    return known;
}

bool writeWhole(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
}

bool writeChecksums(const QString &appPath, const Checksums &known)
{
    QByteArray text;
    for (auto entry = known.cbegin(); entry != known.cend(); ++entry)
        text += entry.value() + "  " + entry.key().toUtf8() + '\n';
    return writeWhole(checksumFile(appPath), text);
}

bool copyWhole(const QString &source, const QString &target)
{
    QFile file(source);
    return file.open(QIODevice::ReadOnly) && QDir().mkpath(QFileInfo(target).path()) &&
           writeWhole(target, file.readAll());
}

/// One delivered file. False when it could not be brought over.
bool topUp(const QString &source, const QString &name, const QString &appPath, Checksums &known)
{
    const QString target = appPath + u'/' + name;
    const QByteArray delivered = checksum(source);
    const bool missing = !QFileInfo::exists(target);
    const QByteArray present = missing ? QByteArray() : checksum(target);
    const bool untouched = missing || present == known.value(name) || present == delivered;
    if (!untouched)
        return true;
    if (present != delivered && !copyWhole(source, target))
        return false;
    known.insert(name, delivered);
    return true;
}

} // namespace

bool TopUpApplicationFolder(const QString &from, const QStringList &folders, const QString &appPath, QString *why)
{
    why->clear();
    if (QFileInfo info(appPath); info.exists() && !info.isDir())
        *why = QStringLiteral("The application folder %1 is a file.").arg(appPath);
    else if (!QDir().mkpath(appPath))
        *why = QStringLiteral("The application folder %1 cannot be made.").arg(appPath);
    if (!why->isEmpty())
        return false;
    KeepPrivate(appPath);
    const Checksums before = readChecksums(appPath);
    Checksums known = before;
    for (const QString &folder : folders) {
        QDirIterator files(from + u'/' + folder, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext() && why->isEmpty()) {
            const QString source = files.next();
            const QString name = QDir(from).relativeFilePath(source);
            if (!topUp(source, name, appPath, known))
                *why =
                    QStringLiteral("The file %1 cannot be written into the application folder %2.").arg(name, appPath);
        }
    }
    if (known != before && !writeChecksums(appPath, known) && why->isEmpty())
        *why = QStringLiteral("The application folder %1 cannot be written.").arg(appPath);
    return why->isEmpty();
}
