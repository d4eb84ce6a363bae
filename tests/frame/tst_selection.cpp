#include "frame/selection.h"

#include "calc/modfbtcalc.h"
#include "platform/clock.h"
#include "tests/support/testmodule.h"

#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

/// What the choice of a client and year hands on to the later screens.
class TestSelection : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { SetToday({}); }

    void firstYear_data()
    {
        QTest::addColumn<int>("chosenBefore");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<int>("position");
        QTest::newRow("chosen before") << 2007 << QDate(2026, 1, 1) << 1;
        QTest::newRow("last day of the last taxed year") << 0 << QDate(2010, 3, 31) << 3;
        QTest::newRow("the day after") << 0 << QDate(2010, 4, 1) << 4;
        QTest::newRow("a year that is not listed") << 2011 << QDate(2010, 4, 1) << 4;
    }
    void firstYear()
    {
        QFETCH(int, chosenBefore);
        QFETCH(QDate, today);
        SetToday(today);
        QTEST(FirstYearPosition(chosenBefore), "position");
    }

    void takes_data()
    {
        QTest::addColumn<QString>("row"); // status and surcharge applicability, empty: no such client
        QTest::addColumn<QString>("year");
        QTest::addColumn<int>("status");
        QTest::addColumn<double>("surcharge");
        QTest::addColumn<double>("tax");
        QTest::addColumn<bool>("taxed");
        QTest::newRow("no such client") << ""
                                        << "2008-2009" << 0 << 0.0 << 0.0 << true;
        QTest::newRow("null status") << "Null,'1'"
                                     << "2008-2009" << -1 << 0.0 << 0.0 << true;
        QTest::newRow("firm") << "3,''"
                              << "2007-2008" << 3 << 10.0 << 30.0 << true;
        QTest::newRow("association by year") << "9,'001'"
                                             << "2008-2009" << 9 << 10.0 << 30.0 << true;
        QTest::newRow("association, null") << "9,Null"
                                           << "2008-2009" << 9 << 0.0 << 30.0 << true;
        QTest::newRow("after the tax") << "16,'11111'"
                                       << "2010-2011" << 16 << 0.0 << 0.0 << false;
    }
    void takes()
    {
        QFETCH(QString, row);
        QFETCH(QString, year);
        TestModule module(*server);
        Cnn->Execute("Create Table FBT_Info (Code_no Varchar(50), ClStatus Int(11), SurApp Varchar(255))");
        if (!row.isEmpty())
            Cnn->Execute(Sql("Insert into FBT_Info Values ('A1',", row, ")"));
        EmpBoth = true;
        IndiaEmp = 5;
        QTEST(TakeClientAndYear(QStringLiteral("A1"), QStringLiteral("ACME LTD"), year), "taxed");
        QTEST(Base->status, "status");
        QTEST(FBTRate[1], "tax");
        QTEST(FBTRate[2], "surcharge");
        QCOMPARE(Base->Cap, QStringLiteral(" of ACME LTD for the Assessment Year ") + year);
        QCOMPARE(Base->TYear, year.left(4).toInt());
        QVERIFY(!EmpBoth && IndiaEmp == 0);
        QCOMPARE(module.logLines(), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestSelection)
#include "tst_selection.moc"
