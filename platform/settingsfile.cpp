#include "platform/settingsfile.h"

#include "platform/ownfiles.h"

#include <QStringList>

QString SettingsFile::value(const QString &section, const QString &key, const QString &defaultValue) const
{
    const QVariant found = m_file.value(section + u'/' + key, defaultValue);
    return found.typeId() == QMetaType::QStringList ? found.toStringList().join(u',') : found.toString();
}

bool SettingsFile::save(const QString &section, const QString &key, const QString &value)
{
    m_file.setValue(section + u'/' + key, value);
    m_file.sync();
    KeepPrivate(m_file.fileName());
    return m_file.status() == QSettings::NoError;
}
