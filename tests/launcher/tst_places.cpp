#include "launcher/delivered.h"
#include "launcher/settings.h"
#include "platform/text.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void put(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

/// Host, port, socket, user, password and schemas as one text.
QString textOf(const LauncherSettings &settings)
{
    ServerAddress none;
    none.host = u"private"_s;
    const ServerAddress server = settings.server.value_or(none);
    return Joined(server.host, ':', server.port, ' ', server.socket, ' ', server.user, ' ', server.password, ' ',
                  settings.schema, ' ', settings.suiteSchema);
}

} // namespace

/// The settings file and the application folder.
class TestPlaces : public QObject
{
    Q_OBJECT

private slots:
    void settings()
    {
        const QTemporaryDir scratch;
        const QString path = scratch.filePath(u"x.ini"_s);
        const struct
        {
            QByteArray text;
            QString seen; // or the refusal after the path
        } rows[] = {
            {"[Settings]\nRepWin=1\n", u"private:0    pelkfbt "_s},
            {"[Server]\nhost=db\nport=3307\nuser=u\npassword=\"a,b;c\\\\\"\n", u"db:3307  u a,b;c\\ pelkfbt "_s},
            {"[Server]\nsocket=/s\nuser=u\nschema=fbt_2\n[Suite]\nschema=suite\n", u":0 /s u  fbt_2 suite"_s},
            {"[Server]\nhost=db\nsocket=/s\nuser=u\n", u"is wrong at [Server] host: name either a host or a socket."_s},
            {"[Server]\nuser=u\n", u"is wrong at [Server] host: name either a host or a socket."_s},
            {"[Server]\nhost=db\nport=70000\nuser=u\n",
             u"is wrong at [Server] port: that is not a port number from 1 to 65535."_s},
            {"[Server]\nhost=db\nuser=u\nschema=\"a; Drop\"\n",
             u"is wrong at [Server] schema: that is not a schema name of letters, digits and underscores."_s},
            {"[Sever]\nhost=db\n", u"is wrong in line 1: there is no section [Sever]."_s},
            {"[Server]\nhost=db\nuser=u\npasword=geheim\n",
             u"is wrong in line 4: there is no key pasword in the section [Server]."_s},
            {"[Server]\nhost=db\nuser=u\npassword=\"ge\\\"heim\nschema=x\n",
             u"is wrong in line 4: the value of password has a quote without its partner."_s},
            {"[Server]\nhost=db\nuser=u\npassword=ge;heim\n",
             u"is wrong in line 4: the value of password has a semicolon; put the value between quotes."_s},
            {"[Server]\nhost=db\npassword=geheim\\\nuser=u\n",
             u"is wrong in line 3: the value of password ends in a backslash; write it twice."_s},
            {"[Server]\nhost=db\nuser=u\nhost=db2\n", u"is wrong in line 4: the key host stands there twice."_s},
            {"[Server] password=geheim\n", u"is wrong in line 1: there is no section of that name."_s},
            {"[Server]\rpassword=geheim\r", u"is wrong in line 1: its line ends are not those of this system."_s},
            {"[Server]\nhost=db\nuser=u\ntls=maybe\n", u"is wrong at [Server] tls: say required, preferred or off."_s},
            {"hello\n", u"is not a settings file: it has lines that are no key=value."_s},
        };
        for (const auto &row : rows) {
            QFile::remove(path);
            put(path, row.text);
            QString why;
            const std::optional<LauncherSettings> read = ReadLauncherSettings(path, &why);
            QVERIFY((QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther)) == 0 || !read);
            QCOMPARE(read ? textOf(*read) : why, read ? row.seen : u"The settings file %1 %2"_s.arg(path, row.seen));
        }
    }

    void deliveredFilesAreToppedUpAndTheUsersAreKept()
    {
        const QTemporaryDir from;
        const QTemporaryDir to;
        const QString app = to.filePath(u"app"_s);
        QString why;
        const auto deliver = [&](const QStringList &names, const QByteArray &text) {
            for (const QString &name : names)
                put(from.filePath(u"Data/"_s + name), text);
            QVERIFY2(TopUpApplicationFolder(from.path(), {u"Data"_s, u"HTMLHelp"_s}, app, &why), qPrintable(why));
        };
        put(app + u"/Data/mine"_s, "own");
        deliver({u"mine"_s, u"kept"_s, u"edited"_s, u"lost"_s, u"deep/page"_s}, "one");
        put(app + u"/Data/edited"_s, "by the user");
        QVERIFY(QFile::remove(app + u"/Data/lost"_s));
        deliver({u"mine"_s, u"kept"_s, u"edited"_s, u"new"_s}, "two");
        deliver({}, {}); // once more changes nothing
        const QPair<QString, QByteArray> expected[] = {
            {u"mine"_s, "own"}, {u"kept"_s, "two"},           {u"new"_s, "two"},
            {u"lost"_s, "one"}, {u"edited"_s, "by the user"}, {u"deep/page"_s, "one"}};
        for (const auto &[name, text] : expected)
            QCOMPARE(content(app + u"/Data/"_s + name), text);
    }
};

QTEST_GUILESS_MAIN(TestPlaces)
#include "tst_places.moc"
