#include "platform/recordset.h"
#include "server/privateserver.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The program itself, as a user starts it from a shell.
class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        put(u"plain"_s, "x");
    }

    void theSampleEmployersArePrintedAndLeaveNothingBehind()
    {
        QCOMPARE(run({u"--sample"_s, u"--data"_s, path(u"db"_s), u"--app"_s, path(u"app"_s)}), 0);
        QVERIFY2(m_err.isEmpty(), qPrintable(m_err));
        QCOMPARE(m_out.count(u"Assessment Year"), 16);
        QCOMPARE(m_out.count(u"Tax in all"), 16);
        QVERIFY(!QFile::exists(path(u"db/server.pid"_s)));
        PrivateServer server(path(u"db"_s));
        QString why;
        QVERIFY2(server.start(&why), qPrintable(why));
        Connection connection;
        QVERIFY(connection.open(server.address()));
        QVERIFY(!HasRows(&connection, u"Select * from information_schema.SCHEMATA Where SCHEMA_NAME like 'pelk%'"_s));
    }

    void refusals()
    {
        const struct
        {
            QString arguments; // %1 stands for the scratch folder
            QByteArray settings;
            QString why;
        } rows[] = {
            {u"--sample --app %1/app --data %1/plain"_s, "", u"The data folder %1/plain is a file.\n"_s},
            {u"--app %1/plain"_s, "", u"The application folder %1/plain is a file.\n"_s},
            {u"--app %1/app"_s, "[Server]\nhost=db\n",
             u"The settings file %1/config/pelkfbt/pelkfbt.ini is wrong at [Server] user: the user is missing.\n"_s},
            {u"--check 1999 --app %1/app --data %1/db"_s, "",
             u"There are returns for the assessment years 2006 (2006-07) to 2009 (2009-10) only.\n"_s},
            {u"--check 2009 --app %1/app --data %1/db"_s, "", u"The version of the database could not be read.\n"_s},
            {u"--demo --data %1/db"_s, "",
             u"The demonstration has folders of its own: it takes neither --app nor --data.\n"_s},
            {u"--smaple"_s, "", u"Unknown option 'smaple'.\n"_s},
            {u"client"_s, "", u"There is nothing to do with \"client\".\n"_s},
        };
        for (const auto &row : rows) {
            put(u"config/pelkfbt/pelkfbt.ini"_s, row.settings);
            QCOMPARE(run(placed(row.arguments).split(u' ')), 1);
            QCOMPARE(m_err, placed(row.why));
            QCOMPARE(m_out, QString());
        }
    }

    void withoutADisplayItSaysSo()
    {
        m_environment.remove(u"QT_QPA_PLATFORM"_s);
        m_environment.remove(u"DISPLAY"_s);
        m_environment.remove(u"WAYLAND_DISPLAY"_s);
        QCOMPARE(run({}), 1);
        QVERIFY2(m_err.startsWith(u"There is no display"_s), qPrintable(m_err));
        QCOMPARE(run({u"--version"_s}), 0);
        QCOMPARE(m_out, u"pelkfbt 2.10.1\n"_s);
    }

private:
    [[nodiscard]] QString path(const QString &name) const { return m_scratch->filePath(name); }
    [[nodiscard]] QString placed(QString text) const { return text.replace(u"%1"_s, m_scratch->path()); }

    void put(const QString &name, const QByteArray &content) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(path(name)).path()));
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    int run(const QStringList &arguments)
    {
        constexpr int patienceMs = 120'000;
        QProcessEnvironment environment = m_environment;
        environment.insert(u"XDG_CONFIG_HOME"_s, path(u"config"_s));
        environment.insert(u"XDG_RUNTIME_DIR"_s, m_scratch->path());
        environment.insert(u"XDG_DATA_HOME"_s, path(u"share"_s));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationDirPath() + u"/pelkfbt"_s, arguments);
        const bool ended = process.waitForFinished(patienceMs);
        m_out = QString::fromUtf8(process.readAllStandardOutput());
        m_err = QString::fromUtf8(process.readAllStandardError());
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QString m_out;
    QString m_err;
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
