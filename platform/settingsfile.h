#pragma once

#include "platform/offer.h"

#include <QSettings>
#include <QString>

/// The user's settings file. What is saved is on disk at once, so that a killed program keeps it.
class FBT_OFFERED SettingsFile
{
public:
    explicit SettingsFile(const QString &path)
        : m_file(path, QSettings::IniFormat)
    {
    }

    /// A value as text, `defaultValue` when the key is not there. A value that was typed into the file with commas
    /// and without quotes reads as that text.
    [[nodiscard]] QString value(const QString &section, const QString &key, const QString &defaultValue) const;
    /// False when the file could not be written.
    bool save(const QString &section, const QString &key, const QString &value);

private:
    QSettings m_file;
};
