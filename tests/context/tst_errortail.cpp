#include "context/errortail.h"
#include "context/faultnotice.h"
#include "tests/support/testmodule.h"

#include <QDir>
#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

/// A fault costs one statement, is logged under the procedure in force, and is shown in no box.
class TestErrorTail : public QObject
{
    Q_OBJECT
private slots:
    void logsUnderTheInnermostTail()
    {
        TestModule module(*server);
        ErrorTail outer(QStringLiteral("frmouter"), QStringLiteral("OUTER_CLICK"));
        {
            ErrorTail inner(QStringLiteral("MODFBTCALC"), QStringLiteral("INNER"));
            Cnn->Execute(QStringLiteral("Delete from Nowhere"));
            QCOMPARE(ErrText, QStringLiteral("MODFBTCALC\tINNER"));
        }
        outer([] { throw FaultError(FaultNumber::DivisionByZero, QStringLiteral("Division\nby zero")); });
        const QStringList lines = module.logLines();
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines[0].startsWith(u"1146\t") && lines[0].endsWith(u"\tMariaDB\tMODFBTCALC\tINNER"),
                 qPrintable(lines[0]));
        QCOMPARE(lines[1], QStringLiteral("11\tDivision by zero\tFBT\tfrmouter\tOUTER_CLICK"));
    }

    void theProcedureIsTheFunctionOfTheTail()
    {
        TestModule module(*server);
        setObjectName(QStringLiteral("frmthing"));
        const ErrorTail tail(this);
        Cnn->Execute(QStringLiteral("Delete from Nowhere"));
        QCOMPARE(ErrText, QStringLiteral("frmthing\tTHEPROCEDUREISTHEFUNCTIONOFTHETAIL"));
    }

    void withoutTailNothingIsLogged()
    {
        TestModule module(*server);
        Cnn->Execute(QStringLiteral("Delete from Nowhere"));
        const ErrorTail outer(QStringLiteral("frmouter"), QStringLiteral("OUTER_CLICK"));
        {
            NoTail none;
            Cnn->Execute(QStringLiteral("Delete from Nowhere"));
            QVERIFY(!none([] { throw std::runtime_error("lost"); }));
        }
        QCOMPARE(module.logLines(), QStringList());
        QCOMPARE(ErrText, QString());
    }

    void theLogIsTheUsersAloneAndPutAsideWhenItIsFull()
    {
        TestModule module(*server);
        ErrorTail tail(QStringLiteral("frmouter"), QStringLiteral("OUTER_CLICK"));
        const QString path = Base->AppPath + QStringLiteral("/FBTLogger.log");
        for (int round = 0; round < 7; ++round) {
            QFile log(path);
            QVERIFY(log.open(QIODevice::Append) && log.resize(2 * 1024 * 1024));
            Cnn->Execute("Delete from Nowhere");
        }
        QVERIFY(QFileInfo(path).size() < 1000 && QFile::exists(path + QStringLiteral(".4")));
        QCOMPARE(QDir(Base->AppPath).entryList(QDir::Files).size(), 5);
        QCOMPARE(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void theUserIsToldWhatWasNotDone_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("line");
        QTest::newRow("apostrophe") << QStringLiteral("Insert into T Values ('#')")
                                    << QStringLiteral("Not saved: the text holds an apostrophe");
        QTest::newRow("delete") << QStringLiteral("Delete from T Where A='#'")
                                << QStringLiteral("Not deleted: the text holds an apostrophe");
        QTest::newRow("another cause") << QStringLiteral("Select * from Nowhere")
                                       << QStringLiteral("Not read: Table '%1.nowhere' doesn't exist");
        QTest::newRow("no statement on rows") << QStringLiteral("Flush Nothing") << QString();
    }
    void theUserIsToldWhatWasNotDone()
    {
        QFETCH(QString, statement);
        QFETCH(QString, line);
        TestModule module(*server);
        QString told;
        SetFaultNotice([&](const QString &notice) { told = notice; });
        ErrorTail tail(QStringLiteral("frmouter"), QStringLiteral("OUTER_CLICK"));
        const qsizetype value = statement.indexOf(u'#');
        SqlText text(statement.left(value));
        if (value >= 0)
            text.addValue(u"O'NEIL").addWords(statement.mid(value + 1));
        Cnn->Execute(text);
        SetFaultNotice({});
        QCOMPARE(told, line.contains(u'%') ? line.arg(module.connection.address().schema) : line);
    }

    void causes_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("line");
        QTest::newRow("full disk") << 1114 << QStringLiteral("Not saved: the disk is full");
        QTest::newRow("lost") << 2013 << QStringLiteral("Not saved: the connection to the database was lost");
        QTest::newRow("lock") << 1205 << QStringLiteral("Not saved: another user is saving the same rows");
        QTest::newRow("right") << 1142 << QStringLiteral("Not saved: the database grants no right to it");
        QTest::newRow("other") << 1366 << QStringLiteral("Not saved: why");
    }
    void causes()
    {
        QFETCH(int, number);
        QTEST(NoticeOf({number, QStringLiteral("why"), QString(), Doing::Save}), "line");
    }

    void unwritableLogIsIgnored()
    {
        TestModule module(*server);
        QVERIFY(QDir(Base->AppPath).mkdir(QStringLiteral("FBTLogger.log"))); // a folder of that name cannot be written
        ErrorTail tail(QStringLiteral("frmouter"), QStringLiteral("OUTER_CLICK"));
        Cnn->Execute(QStringLiteral("Delete from Nowhere"));
        QCOMPARE(ErrText, QStringLiteral("frmouter\tOUTER_CLICK"));
        QVERIFY(Cnn->Execute(QStringLiteral("Create Table T (N Int(11))")));
    }
};

QTEST_GUILESS_MAIN(TestErrorTail)
#include "tst_errortail.moc"
