#include "frame/password.h"

#include "frame/frmsettings.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

/// The administrator's password in `TableMP`.
class TestPassword : public QObject
{
    Q_OBJECT
private slots:
    void scrambles_data()
    {
        QTest::addColumn<QString>("plain");
        QTest::addColumn<QString>("scrambled");
        QTest::addColumn<QString>("readBack");
        QTest::newRow("reversed, each 47 lower") << "ABC1" << QStringLiteral("\x02\x14\x13\x12") << "ABC1";
        QTest::newRow("V is kept as a comma") << "V"
                                              << "'"
                                              << "V";
        QTest::newRow("[ comes back as V") << "["
                                           << ","
                                           << "V";
        QTest::newRow("lowest that can be kept") << "/" << QString(QChar(0)) << "/";
        QTest::newRow("empty") << ""
                               << ""
                               << "";
    }
    void scrambles()
    {
        QFETCH(QString, plain);
        QFETCH(QString, scrambled);
        const QString kept = ScramblePassword(plain);
        QCOMPARE(kept, scrambled.replace(QChar(39), QChar(44)));
        QTEST(UnscramblePassword(kept), "readBack");
    }

    void storedAndReadBack_data()
    {
        QTest::addColumn<QString>("password");
        QTest::newRow("letters and digits") << "SECRET2008";
        QTest::newRow("ends in a blank when scrambled") << "OPEN";
        QTest::newRow("holds a quote when scrambled") << "VIVA";
        QTest::newRow("holds a null when scrambled") << "A/B";
    }
    void storedAndReadBack()
    {
        QFETCH(QString, password);
        TestModule module(*server);
        GETPASSWORD();
        QCOMPARE(AdminPassword, QString());
        QCOMPARE(module.rows(QStringLiteral("Select Count(FbtRow) from TableMP")), QStringList("1"));
        StorePassword(password);
        AdminPassword.clear();
        GETPASSWORD();
        QCOMPARE(AdminPassword, password);
        StorePassword(QString());
        GETPASSWORD();
        QCOMPARE(AdminPassword, QString());
        QCOMPARE(module.rows(QStringLiteral("Select Count(*) from TableMP")), QStringList("1"));
    }

    void refusesBeforeAnythingIsSaved_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("message");
        QTest::newRow("character that cannot be scrambled") << "NEW+ONE"
                                                            << "A password cannot hold the character \"+\".";
        QTest::newRow("too long to be kept whole") << "LONGERTHAN9"
                                                   << "A password has at most 10 characters.";
    }
    void refusesBeforeAnythingIsSaved()
    {
        TestModule module(*server);
        QVERIFY(GETPASSWORD() && StorePassword(QStringLiteral("FIRST")));
        ScreenUser user;
        const auto *settings = user.open<frmsettings>();
        user.type("Text1", "FIRST");
        QFETCH(QString, password);
        user.paste("Text2", password);
        user.click("xpcmdbutton2");
        QTEST(user.said().join(u'|'), "message");
        QVERIFY(settings->isLoaded());
        QVERIFY(GETPASSWORD());
        QCOMPARE(AdminPassword, QStringLiteral("FIRST"));
        QCOMPARE(module.base.GetSettingINI("Settings", "LinesPP", "none"), QStringLiteral("none"));
    }
};

QTEST_MAIN(TestPassword)
#include "tst_password.moc"
