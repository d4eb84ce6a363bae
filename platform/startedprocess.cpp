#include "platform/startedprocess.h"

#include <QDir>
#include <QFile>

#include <csignal>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// When a process was started; empty for one that is not there, or has ended and only waits to be noticed.
QByteArray birthOf(qint64 pid)
{
    constexpr qsizetype afterName = 2; // the name stands between brackets and may hold brackets itself
    constexpr qsizetype statePlace = 0;
    constexpr qsizetype birthPlace = 19;
    const QByteArray line = contentOf(QStringLiteral("/proc/%1/stat").arg(pid));
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + afterName).split(' ');
    return fields.value(statePlace) == "Z" ? QByteArray() : fields.value(birthPlace);
}

} // namespace

StartedProcess ProcessOf(qint64 pid)
{
    return {pid, pid > 0 ? birthOf(pid) : QByteArray()};
}

bool IsRunning(const StartedProcess &process)
{
    return !process.birth.isEmpty() && birthOf(process.pid) == process.birth;
}

void EndProcess(const StartedProcess &process, bool asked)
{
    if (IsRunning(process))
        ::kill(static_cast<pid_t>(process.pid), asked ? SIGTERM : SIGKILL);
}

QList<StartedProcess> ChildrenOf(const StartedProcess &process)
{
    QList<StartedProcess> children;
    if (!IsRunning(process))
        return children;
    const QDir threads(QStringLiteral("/proc/%1/task").arg(process.pid));
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        for (const QByteArray &child : contentOf(threads.filePath(thread) + QStringLiteral("/children")).split(' ')) {
            if (child.toLongLong() > 0)
                children << ProcessOf(child.toLongLong());
        }
    }
    return children;
}
