#pragma once

#include <QTemporaryDir>

/// The scratch folder in which the demonstration keeps everything. It is removed at the end; one that a killed
/// demonstration left in the temporary folder is removed by the next.
class DemoFolder
{
public:
    DemoFolder();

    [[nodiscard]] bool isValid() const { return m_folder.isValid(); }
    [[nodiscard]] QString errorString() const { return m_folder.errorString(); }
    [[nodiscard]] QString appPath() const { return m_folder.filePath(QStringLiteral("app")); }
    [[nodiscard]] QString dataFolder() const { return m_folder.filePath(QStringLiteral("db")); }
    [[nodiscard]] QString settingsFile() const { return m_folder.filePath(QStringLiteral("pelkfbt.ini")); }

private:
    QTemporaryDir m_folder;
};
