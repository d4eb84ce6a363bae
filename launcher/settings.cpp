#include "launcher/settings.h"

#include "platform/ownfiles.h"
#include "platform/settingsfile.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
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
            refuse(key, QStringLiteral("that is not a port number from 1 to 65535"));
        return port;
    }

    /// A schema's name stands in statements as it is.
    QString schema(const QString &key, const QString &usual)
    {
        static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_]{1,64}$"));
        const QString value = text(key);
        if (!value.isEmpty() && !plain.match(value).hasMatch())
            refuse(key, QStringLiteral("that is not a schema name of letters, digits and underscores"));
        return value.isEmpty() ? usual : value;
    }

    ServerAddress::Tls tls(const QString &key)
    {
        using Tls = ServerAddress::Tls;
        static const QHash<QString, Tls> words{{QString(), Tls::Preferred},
                                               {QStringLiteral("preferred"), Tls::Preferred},
                                               {QStringLiteral("required"), Tls::Required},
                                               {QStringLiteral("off"), Tls::Off}};
        const auto found = words.constFind(text(key).toLower());
        if (found != words.constEnd())
            return *found;
        refuse(key, QStringLiteral("say required, preferred or off"));
        return Tls::Required;
    }

    QString file(const QString &key)
    {
        QString path = text(key);
        if (!path.isEmpty() && !QFileInfo(path).isReadable())
            refuse(key, QStringLiteral("that file cannot be read"));
        return path;
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

/// The keys that a section may have; none named: any key, which the program itself has written there.
const QHash<QString, QStringList> &sections()
{
    static const QHash<QString, QStringList> known{
        {QStringLiteral("Server"), QStringLiteral("host port socket user password schema tls ca").split(u' ')},
        {QStringLiteral("Suite"), {QStringLiteral("schema")}},
        {QStringLiteral("EPay"), QStringLiteral("driver browser portal").split(u' ')},
        {QStringLiteral("Settings"), {}},
        {QStringLiteral("Windows"), {}},
    };
    return known;
}

/// Looks at the lines of the file one after the other, for what the reader of the values would take otherwise than it
/// stands there: a password cut at a semicolon, a key swallowed by the line before it.
class LineCheck
{
public:
    /// Why a line cannot stand there, empty when it can. No value is told: it may be a password, or part of one.
    QString mistakeIn(const QString &line)
    {
        if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#'))
            return {};
        if (line.contains(u'\r'))
            return QStringLiteral("its line ends are not those of this system");
        return line.startsWith(u'[') ? mistakeInSection(line) : mistakeInKey(line);
    }

private:
    QString mistakeInSection(const QString &line)
    {
        static const QRegularExpression heading(QStringLiteral("^\\[ *([A-Za-z0-9]{1,30}) *\\]$"));
        const QRegularExpressionMatch match = heading.match(line);
        if (!match.hasMatch())
            return QStringLiteral("there is no section of that name");
        m_section = match.captured(1);
        return sections().contains(m_section) ? QString() : QStringLiteral("there is no section [%1]").arg(m_section);
    }

    QString mistakeInKey(const QString &line)
    {
        static const QRegularExpression word(QStringLiteral("^[A-Za-z0-9]{1,30}$"));
        const QString key = line.section(u'=', 0, 0).trimmed();
        const QStringList keys = sections().value(m_section);
        if (m_section.isEmpty() || (!keys.isEmpty() && !keys.contains(key))) {
            return line.contains(u'=') && word.match(key).hasMatch()
                       ? QStringLiteral("there is no key %1 in the section [%2]").arg(key, m_section)
                       : QStringLiteral("there is no such key in the section [%1]").arg(m_section);
        }
        if (m_seen.contains(m_section + u'/' + key))
            return QStringLiteral("the key %1 stands there twice").arg(key);
        m_seen << m_section + u'/' + key;
        return mistakeInValue(line, key);
    }

    static QString mistakeInValue(const QString &line, const QString &key)
    {
        static const QRegularExpression escaped(QStringLiteral(R"(\\.)"));
        static const QRegularExpression quoted(QStringLiteral(R"("[^"]*")"));
        QString rest = QString(line).remove(escaped);
        if (rest.count(u'"') % 2 != 0)
            return QStringLiteral("the value of %1 has a quote without its partner").arg(key);
        rest.remove(quoted);
        if (rest.contains(u';'))
            return QStringLiteral("the value of %1 has a semicolon; put the value between quotes").arg(key);
        return rest.contains(u'\\') ? QStringLiteral("the value of %1 ends in a backslash; write it twice").arg(key)
                                    : QString();
    }

    QString m_section;
    QStringList m_seen;
};

bool wellFormed(const QString &path, QString *why)
{
    QFile file(path);
    LineCheck check;
    if (!file.open(QIODevice::ReadOnly)) {
        if (file.exists() || QFileInfo(path).isSymLink())
            *why = QStringLiteral("The settings file %1 cannot be read.").arg(path);
        return why->isEmpty();
    }
    for (int number = 1; !file.atEnd(); ++number) {
        const QString mistake = check.mistakeIn(QString::fromUtf8(file.readLine()).trimmed());
        if (mistake.isEmpty())
            continue;
        *why = QStringLiteral("The settings file %1 is wrong in line %2: %3.").arg(path).arg(number).arg(mistake);
        return false;
    }
    return true;
}

/// A section without a key counts too: whoever wrote it wanted another database than the private one.
bool hasServer(const QString &path)
{
    static const QRegularExpression heading(QStringLiteral("^\\s*\\[\\s*Server\\b"),
                                            QRegularExpression::MultilineOption);
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) &&
           heading.match(QString::fromUtf8(file.readAll())).hasMatch();
}

ServerAddress readServer(SectionReader &server)
{
    ServerAddress address;
    address.host = server.text(QStringLiteral("host"));
    address.port = server.port(QStringLiteral("port"));
    address.socket = server.text(QStringLiteral("socket"));
    address.user = server.text(QStringLiteral("user"));
    address.password = server.text(QStringLiteral("password"));
    address.tls = server.tls(QStringLiteral("tls"));
    address.ca = server.file(QStringLiteral("ca"));
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
    if (!readable(path, why) || !wellFormed(path, why))
        return std::nullopt;
    if (QFileInfo::exists(path)) {
        KeepPrivate(path);
        KeepPrivate(QFileInfo(path).path());
    }
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
