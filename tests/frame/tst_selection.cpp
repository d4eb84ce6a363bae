#include "frame/selection.h"

#include "calc/modfbtcalc.h"
#include "entry/frmfbtdet.h"
#include "frame/frmsbase.h"
#include "platform/clock.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QMainWindow>
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
        QTest::newRow("no such client") << ""
                                        << "2008-2009" << 0 << 0.0 << 0.0;
        QTest::newRow("null status") << "Null,'1'"
                                     << "2008-2009" << -1 << 0.0 << 0.0;
        QTest::newRow("firm") << "3,''"
                              << "2007-2008" << 3 << 10.0 << 30.0;
        QTest::newRow("association by year") << "9,'001'"
                                             << "2008-2009" << 9 << 10.0 << 30.0;
        QTest::newRow("association, null") << "9,Null"
                                           << "2008-2009" << 9 << 0.0 << 30.0;
        QTest::newRow("after the tax") << "16,'11111'"
                                       << "2010-2011" << 16 << 0.0 << 0.0;
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
        QVERIFY(TakeClientAndYear(QStringLiteral("A1"), QStringLiteral("ACME LTD"), year));
        QTEST(Base->status, "status");
        QTEST(FBTRate[1], "tax");
        QTEST(FBTRate[2], "surcharge");
        QCOMPARE(Base->Cap, QStringLiteral(" of ACME LTD for the Assessment Year ") + year);
        QCOMPARE(Base->TYear, year.left(4).toInt());
        QVERIFY(!EmpBoth && IndiaEmp == 0);
        QCOMPARE(module.logLines(), QStringList());
    }

    /// In a plain window every screen has a window of its own, and another client can be chosen beside the working screen.
    void workingScreenKeepsItsClient()
    {
        TestModule module(*server);
        QMainWindow host;
        MdiForm = &host;
        Cnn->Execute("Create Table FBT_Info (Code_no Varchar(50), Name Varchar(50), ClStatus Int, SurApp Varchar(9))");
        Cnn->Execute("Insert into FBT_Info Values ('A1','ALPHA',16,''),('B1','BETA',16,'')");
        ScreenUser user;
        user.open<frmsbase>(&host);
        user.grid("vsf")->setFocus();
        user.key(Qt::Key_Return);
        const QPointer<frmfbtdet> first = Screen::opened<frmfbtdet>();
        QVERIFY(first && first->windowTitle().contains("ALPHA"));

        const auto chooseBeta = [&](Reply reply) {
            user.grid("vsf")->setFocus();
            user.grid("vsf")->setRow(2);
            user.answers({reply});
            QTest::keyClick(user.grid("vsf"), Qt::Key_Return);
        };
        chooseBeta(Reply::No);
        QCOMPARE(Screen::opened<frmfbtdet>(), first.data());
        QCOMPARE(Base->code, QString("A1"));
        chooseBeta(Reply::Yes);
        QCOMPARE(Base->code, QString("B1"));
        QVERIFY(Screen::opened<frmfbtdet>()->windowTitle().contains("BETA"));
        user.said();
    }

    void unreadClientIsNotTaken()
    {
        TestModule module(*server);
        Base->code = QStringLiteral("B2");
        FBTRate[1] = 30;
        QVERIFY(!TakeClientAndYear(QStringLiteral("A1"), QStringLiteral("ACME LTD"), QStringLiteral("2008-2009")));
        QCOMPARE(Base->code, QStringLiteral("B2"));
        QCOMPARE(FBTRate[1], 30.0);
    }
};

QTEST_MAIN(TestSelection)
#include "tst_selection.moc"
