#include "context/errortail.h"
#include "tests/support/testmodule.h"

#include <QDir>
#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

/// A fault costs one statement, is logged under the procedure in force, and is never shown.
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
