#pragma once

#include <QStringList>

/// Starts a server under a keeper: a small process of its own that ends the server in order once no program holds the
/// lock file any more, even when the last one was killed. The server goes the same way when its keeper is killed.
/// @param lockFile which each program that uses the server holds, shared
/// @param leftovers files and empty folders that the keeper removes after the server's end
/// @return the server's process, 0 when there is none
qint64 StartKept(const QString &program, const QStringList &arguments, const QString &lockFile,
                 const QStringList &leftovers);
