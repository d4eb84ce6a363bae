#pragma once

#include <QString>

/// A lock on a file of the data folder. The system gives it back when its program ends, in whatever way.
class FolderLock
{
public:
    enum class Kind { Shared, Sole };

    explicit FolderLock(QString path);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    /// Takes the lock, or changes its kind; waits for others that hold it. False when they keep it for all that time.
    bool take(Kind kind, int milliseconds);
    void release();
    [[nodiscard]] bool held() const { return m_file >= 0; }

private:
    QString m_path;
    int m_file = -1;
};
