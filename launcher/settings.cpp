#include "launcher/settings.h"

#include "platform/settingsfile.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

/// The keys of one section as they are asked for; the first mistake stays.
class SectionReader
{
public:
    SectionReader(const QString &path, QString section)
        : m_file(path)
        , m_section(std::move(section))
        , m_path(path)
    {
    }

    QString text(const QString &key) { return m_file.value(m_section, key, QString()).trimmed(); }

    int port(const QString &key)
    {
        constexpr int highest = 65535;
        const QString value = text(key);
        bool number = false;
        const int port = value.toInt(&number);
        if (!value.isEmpty() && (!number || port < 1 || port > highest))
            refuse(key, QStringLiteral("\"%1\" is not a port number from 1 to 65535").arg(value));
        return port;
    }

    /// A schema's name stands in statements as it is.
    QString schema(const QString &key, const QString &usual)
    {
        static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_]{1,64}$"));
        const QString value = text(key);
        if (!value.isEmpty() && !plain.match(value).hasMatch())
            refuse(key, QStringLiteral("\"%1\" is not a schema name of letters, digits and underscores").arg(value));
        return value.isEmpty() ? usual : value;
    }

    void refuse(const QString &key, const QString &what)
    {
        if (m_why.isEmpty())
            m_why = QStringLiteral("The settings file %1 is wrong at [%2] %3: %4.").arg(m_path, m_section, key, what);
    }

    [[nodiscard]] QString why() const { return m_why; }

private:
    SettingsFile m_file;
    QString m_section;
    QString m_path;
    QString m_why;
};

bool readable(const QString &path, QString *why)
{
    if (!QFileInfo::exists(path))
        return true;
    QSettings file(path, QSettings::IniFormat);
    file.allKeys();
    if (!QFileInfo(path).isReadable() || file.status() == QSettings::AccessError)
        *why = QStringLiteral("The settings file %1 cannot be read.").arg(path);
    else if (file.status() == QSettings::FormatError)
        *why = QStringLiteral("The settings file %1 is not a settings file: it has lines that are no key=value.")
                   .arg(path);
    return why->isEmpty();
}

bool hasServer(const QString &path)
{
    QSettings file(path, QSettings::IniFormat);
    return file.childGroups().contains(QStringLiteral("Server"));
}

ServerAddress readServer(SectionReader &server)
{
    ServerAddress address;
    address.host = server.text(QStringLiteral("host"));
    address.port = server.port(QStringLiteral("port"));
    address.socket = server.text(QStringLiteral("socket"));
    address.user = server.text(QStringLiteral("user"));
    address.password = server.text(QStringLiteral("password"));
    if (address.host.isEmpty() == address.socket.isEmpty())
        server.refuse(QStringLiteral("host"), QStringLiteral("name either a host or a socket"));
    if (address.user.isEmpty())
        server.refuse(QStringLiteral("user"), QStringLiteral("the user is missing"));
    return address;
}

} // namespace

QString UserSettingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/pelkfbt.ini");
}

std::optional<LauncherSettings> ReadLauncherSettings(const QString &path, QString *why)
{
    why->clear();
    if (!readable(path, why))
        return std::nullopt;
    LauncherSettings settings;
    SectionReader server(path, QStringLiteral("Server"));
    SectionReader suite(path, QStringLiteral("Suite"));
    if (hasServer(path)) {
        settings.server = readServer(server);
        settings.schema = server.schema(QStringLiteral("schema"), settings.schema);
    }
    settings.suiteSchema = suite.schema(QStringLiteral("schema"), QString());
    *why = server.why().isEmpty() ? suite.why() : server.why();
    return why->isEmpty() ? std::optional(settings) : std::nullopt;
}
