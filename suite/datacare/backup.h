#pragma once

#include "platform/offer.h"

#include <QIODevice>
#include <QString>

#include <functional>

class Connection;

/// Tells how far the work is: `done` of `total`, both at least 0.
using Progress = std::function<void(qint64 done, qint64 total)>;

/// All functions here give false when they failed; `why` is then one sentence for the user.

/// What a whole backup holds.
struct BackupSummary
{
    int tables = 0;
    quint64 rows = 0;
    QByteArray checksum;

    bool operator==(const BackupSummary &) const = default;
};

/// Writes all rows of all base tables of the connection's schema, as they are at one moment, to a device.
FBT_OFFERED bool WriteBackup(Connection *cnn, QIODevice &device, BackupSummary &summary, const Progress &progress,
                             QString *why);

/// Reads a backup from a device to its end and checks it whole: every piece, the number of rows and the checksum.
FBT_OFFERED bool VerifyBackup(QIODevice &device, BackupSummary &summary, const Progress &progress, QString *why);

/// Makes one dated backup in a folder. It is written under another name, read back, and only then gets its own; a
/// backup that is there already is never replaced. `file` becomes the path of the new one.
FBT_OFFERED bool BackUpToFolder(Connection *cnn, const QString &folder, QString &file, const Progress &progress,
                                QString *why);

/// Replaces the tables of the schema by those of a backup that VerifyBackup has found whole. All rows go to scratch
/// tables first; one statement then puts these in the place of the old ones. After a failure nothing has changed. Tables
/// that the backup does not hold stay as they are.
FBT_OFFERED bool RestoreBackup(Connection *cnn, QIODevice &device, const Progress &progress, QString *why);
