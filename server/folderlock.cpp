#include "server/folderlock.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <utility>

FolderLock::FolderLock(QString path)
    : m_path(std::move(path))
{
}

FolderLock::~FolderLock()
{
    release();
}

bool FolderLock::take(Kind kind, int milliseconds)
{
    constexpr int pollMs = 10;
    constexpr mode_t mine = 0600;
    if (m_file < 0)
        m_file = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, mine);
    const QDeadlineTimer deadline(milliseconds);
    while (m_file >= 0 && ::flock(m_file, (kind == Kind::Sole ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0) {
        if (deadline.hasExpired()) {
            release();
            break;
        }
        QThread::msleep(pollMs);
    }
    return held();
}

void FolderLock::release()
{
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
}
