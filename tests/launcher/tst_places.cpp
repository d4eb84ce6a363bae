#include "launcher/delivered.h"
#include "launcher/settings.h"

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

} // namespace

/// The settings file and the application folder.
class TestPlaces : public QObject
{
    Q_OBJECT

private slots:
    void settings_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>(
            "seen"); // host:port socket user password schema suite, or the refusal behind the path
        QTest::newRow("no server") << QByteArray("[Settings]\nRepWin=1\n") << u"private pelkfbt "_s;
        QTest::newRow("host") << QByteArray("[Server]\nhost=db\nport=3307\nuser=u\npassword=\"a,b;c\\\\\"\n")
                              << u"db:3307  u a,b;c\\ pelkfbt "_s;
        QTest::newRow("socket") << QByteArray("[Server]\nsocket=/s\nuser=u\nschema=fbt_2\n[Suite]\nschema=suite\n")
                                << u":0 /s u  fbt_2 suite"_s;
        QTest::newRow("host and socket") << QByteArray("[Server]\nhost=db\nsocket=/s\nuser=u\n")
                                         << u"is wrong at [Server] host: name either a host or a socket."_s;
        QTest::newRow("neither") << QByteArray("[Server]\nuser=u\n")
                                 << u"is wrong at [Server] host: name either a host or a socket."_s;
        QTest::newRow("port") << QByteArray("[Server]\nhost=db\nport=70000\nuser=u\n")
                              << u"is wrong at [Server] port: that is not a port number from 1 to 65535."_s;
        QTest::newRow("no user") << QByteArray("[Server]\nhost=db\n")
                                 << u"is wrong at [Server] user: the user is missing."_s;
        QTest::newRow("schema that is a statement")
            << QByteArray("[Server]\nhost=db\nuser=u\nschema=\"a; Drop\"\n")
            << u"is wrong at [Server] schema: that is not a schema name of letters, digits and underscores."_s;
        QTest::newRow("a section that is none")
            << QByteArray("[Sever]\nhost=db\n") << u"is wrong in line 1: there is no section [Sever]."_s;
        QTest::newRow("a key that is none")
            << QByteArray("[Server]\nhost=db\nuser=u\npasword=geheim\n")
            << u"is wrong in line 4: there is no key pasword in the section [Server]."_s;
        QTest::newRow("a lone quote")
            << QByteArray("[Server]\nhost=db\nuser=u\npassword=\"ge\\\"heim\nschema=x\n")
            << u"is wrong in line 4: the value of password has a quote without its partner."_s;
        QTest::newRow("encryption") << QByteArray("[Server]\nhost=db\nuser=u\ntls=maybe\n")
                                    << u"is wrong at [Server] tls: say required, preferred or off."_s;
        QTest::newRow("no settings file at all")
            << QByteArray("hello\n") << u"is not a settings file: it has lines that are no key=value."_s;
    }

    void settings()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, seen);
        const QTemporaryDir scratch;
        const QString path = scratch.filePath(u"x.ini"_s);
        put(path, text);
        QString why;
        const std::optional<LauncherSettings> read = ReadLauncherSettings(path, &why);
        QVERIFY((QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther)) == 0 || !read);
        if (!read) {
            QCOMPARE(why, u"The settings file %1 %2"_s.arg(path, seen));
            return;
        }
        const QString server = read->server ? u"%1:%2 %3 %4 %5"_s.arg(read->server->host)
                                                  .arg(read->server->port)
                                                  .arg(read->server->socket, read->server->user, read->server->password)
                                            : u"private"_s;
        QCOMPARE(u"%1 %2 %3"_s.arg(server, read->schema, read->suiteSchema), seen);
    }

    void aMissingSettingsFileMeansThePrivateServer()
    {
        QString why;
        const auto read = ReadLauncherSettings(u"/nowhere/x.ini"_s, &why);
        QVERIFY2(read && !read->server, qPrintable(why));
    }

    void deliveredFilesAreToppedUpAndTheUsersAreKept()
    {
        const QTemporaryDir from;
        const QTemporaryDir to;
        const QString app = to.filePath(u"app"_s);
        const auto topUp = [&] {
            QString why;
            QVERIFY2(TopUpApplicationFolder(from.path(), {u"Data"_s, u"HTMLHelp"_s}, app, &why), qPrintable(why));
        };
        put(app + u"/Data/mine"_s, "own");
        for (const QString &name : {u"mine"_s, u"kept"_s, u"edited"_s, u"lost"_s, u"deep/page"_s})
            put(from.filePath(u"Data/"_s + name), "one");
        topUp();
        QCOMPARE(content(app + u"/Data/deep/page"_s), QByteArray("one"));
        QCOMPARE(content(app + u"/Data/mine"_s), QByteArray("own"));
        put(app + u"/Data/edited"_s, "by the user");
        QVERIFY(QFile::remove(app + u"/Data/lost"_s));
        for (const QString &name : {u"mine"_s, u"kept"_s, u"edited"_s, u"new"_s})
            put(from.filePath(u"Data/"_s + name), "two");
        topUp();
        topUp(); // once more changes nothing
        QCOMPARE(content(app + u"/Data/kept"_s), QByteArray("two"));
        QCOMPARE(content(app + u"/Data/new"_s), QByteArray("two"));
        QCOMPARE(content(app + u"/Data/lost"_s), QByteArray("one"));
        QCOMPARE(content(app + u"/Data/edited"_s), QByteArray("by the user"));
        QCOMPARE(content(app + u"/Data/mine"_s), QByteArray("own"));
    }

    void anApplicationFolderThatCannotBeIsNamed()
    {
        const QTemporaryDir scratch;
        const QString plain = scratch.filePath(u"plain"_s);
        put(plain, "x");
        put(scratch.filePath(u"from/Data/a"_s), "x");
        put(scratch.filePath(u"app/Data"_s), "a file where a folder must be");
        QString why;
        QVERIFY(!TopUpApplicationFolder(scratch.filePath(u"from"_s), {u"Data"_s}, plain, &why));
        QCOMPARE(why, u"The application folder %1 is a file."_s.arg(plain));
        QVERIFY(!TopUpApplicationFolder(scratch.filePath(u"from"_s), {u"Data"_s}, scratch.filePath(u"app"_s), &why));
        QCOMPARE(why, u"The file Data/a cannot be written into the application folder %1."_s.arg(
                          scratch.filePath(u"app"_s)));
    }
};

QTEST_GUILESS_MAIN(TestPlaces)
#include "tst_places.moc"
