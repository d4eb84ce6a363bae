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
        ErrorTail outer("frmouter", "OUTER_CLICK");
        {
            ErrorTail inner("MODFBTCALC", "INNER");
            Cnn->Execute("Delete from Nowhere");
            QCOMPARE(ErrText, "MODFBTCALC\tINNER");
        }
        outer([] { throw FaultError(FaultNumber::DivisionByZero, "Division\nby zero"); });
        const QStringList lines = module.logLines();
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines[0].startsWith(u"1146\t") && lines[0].endsWith(u"\tMariaDB\tMODFBTCALC\tINNER"),
                 qPrintable(lines[0]));
        QCOMPARE(lines[1], "11\tDivision by zero\tFBT\tfrmouter\tOUTER_CLICK");
    }

    void theProcedureIsTheFunctionOfTheTail()
    {
        TestModule module(*server);
        setObjectName("frmthing");
        const ErrorTail tail(this);
        Cnn->Execute("Delete from Nowhere");
        QCOMPARE(ErrText, "frmthing\tTHEPROCEDUREISTHEFUNCTIONOFTHETAIL");
    }

    void withoutTailNothingIsLogged()
    {
        TestModule module(*server);
        Cnn->Execute("Delete from Nowhere");
        const ErrorTail outer("frmouter", "OUTER_CLICK");
        {
            NoTail none;
            Cnn->Execute("Delete from Nowhere");
            QVERIFY(!none([] { throw std::runtime_error("lost"); }));
        }
        QCOMPARE(module.logLines(), QStringList());
        QCOMPARE(ErrText, QString());
    }

    void theLogIsTheUsersAloneAndPutAsideWhenItIsFull()
    {
        TestModule module(*server);
        ErrorTail tail("frmouter", "OUTER_CLICK");
        const QString path = Base->AppPath + "/FBTLogger.log";
        for (int round = 0; round < 7; ++round) {
            QFile log(path);
            QVERIFY(log.open(QIODevice::Append) && log.resize(2 * 1024 * 1024));
            Cnn->Execute("Delete from Nowhere");
        }
        QVERIFY(QFileInfo(path).size() < 1000 && QFile::exists(path + ".4"));
        QCOMPARE(QDir(Base->AppPath).entryList(QDir::Files).size(), 5);
        QCOMPARE(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void theUserIsToldWhatWasNotDone()
    {
        TestModule module(*server);
        QString told;
        SetFaultNotice([&](const QString &notice, Doing) { told = notice; });
        const ErrorTail tail("frmouter", "OUTER_CLICK");
        const QString typed("O'NEIL");
        const QString nowhere = "Not read: Table '" + module.connection.address().schema + ".nowhere' doesn't exist";
        const std::vector<std::pair<SqlText, QString>> rows{
            {Sql("Insert into T Values ('", typed, "')"), "Not saved: the text holds an apostrophe"},
            {Sql("Delete from T Where A='", typed, "'"), "Not deleted: the text holds an apostrophe"},
            {Sql("Select * from Nowhere"), nowhere},
            {Sql("Flush Nothing"), ""}}; // no statement on rows
        for (const auto &[statement, line] : rows) {
            told.clear();
            Cnn->Execute(statement);
            QCOMPARE(told, line);
        }
        SetFaultNotice({});
    }

    void causes()
    {
        const std::vector<std::pair<int, QString>> rows{{1114, "the disk is full"},
                                                        {2013, "the connection to the database was lost"},
                                                        {1205, "another user is saving the same rows"},
                                                        {1142, "the database grants no right to it"},
                                                        {1366, "why"}};
        for (const auto &[number, cause] : rows)
            QCOMPARE(NoticeOf({number, "why", QString(), Doing::Save}), "Not saved: " + cause);
    }

    void unwritableLogIsIgnored()
    {
        TestModule module(*server);
        QVERIFY(QDir(Base->AppPath).mkdir("FBTLogger.log")); // a folder of that name cannot be written
        ErrorTail tail("frmouter", "OUTER_CLICK");
        Cnn->Execute("Delete from Nowhere");
        QCOMPARE(ErrText, "frmouter\tOUTER_CLICK");
        QVERIFY(Cnn->Execute("Create Table T (N Int(11))"));
    }
};

QTEST_GUILESS_MAIN(TestErrorTail)
#include "tst_errortail.moc"
