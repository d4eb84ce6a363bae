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
    void scrambles()
    {
        using Row = std::tuple<const char *, QString, QString, QString>; // plain, scrambled, read back
        const std::vector<Row> rows{{"reversed, each 47 lower", "ABC1", "\x02\x14\x13\x12", "ABC1"},
                                    {"V is kept as a comma", "V", ",", "V"},
                                    {"[ comes back as V", "[", ",", "V"},
                                    {"lowest that can be kept", "/", QString(QChar(0)), "/"},
                                    {"empty", "", "", ""}};
        for (const auto &[name, plain, scrambled, readBack] : rows)
            QVERIFY2(ScramblePassword(plain) == scrambled && UnscramblePassword(scrambled) == readBack, name);
    }

    void storedAndReadBack()
    {
        TestModule module(*server);
        // Scrambled the second ends in a blank, the third holds a quote, the fourth a null.
        for (const char *password : {"SECRET2008", "OPEN", "VIVA", "A/B", ""}) {
            QVERIFY(GETPASSWORD() && StorePassword(password));
            AdminPassword = "FORGOTTEN";
            QVERIFY(GETPASSWORD());
            QCOMPARE(AdminPassword, QString(password));
            QCOMPARE(module.rows("Select Count(*) from TableMP"), QStringList("1"));
        }
    }

    void refusedBeforeAnythingIsSaved()
    {
        const TestModule module(*server);
        QVERIFY(GETPASSWORD() && StorePassword("FIRST"));
        ScreenUser user;
        user.open<frmsettings>();
        user.type("Text1", "FIRST");
        const std::pair<const char *, const char *> rows[] = {
            {"LONGERTHAN9", "A password has at most 10 characters."},
            {"a\xf0\x9f\x98\x80"
             "b",
             "A password can only hold letters, digits and signs of the keyboard."}}; // nobody would get in again
        for (const auto &[password, why] : rows) {
            user.paste("Text2", QString::fromUtf8(password));
            user.click("xpcmdbutton2");
            QCOMPARE(user.said(), QStringList(why));
            QVERIFY(user.screen()->isLoaded() && GETPASSWORD() && AdminPassword == "FIRST");
        }
        QCOMPARE(module.base.GetSettingINI("Settings", "LinesPP", "none"), QString("none"));
    }
};

QTEST_MAIN(TestPassword)
#include "tst_password.moc"
