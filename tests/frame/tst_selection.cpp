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

    void firstYear()
    {
        SetToday({2010, 4, 1});
        QCOMPARE(FirstYearPosition(2007), 1); // chosen before
        QCOMPARE(FirstYearPosition(2011), 4); // a year that is not listed
    }

    void takes()
    {
        using Row = std::tuple<const char *, QString, QString, int, double, double>;
        const std::vector<Row> rows{// status and applicability of the row; year; status, surcharge, tax
                                    {"no such client", "", "2008-2009", 0, 0, 0},
                                    {"null status", "Null,'1'", "2008-2009", -1, 0, 0},
                                    {"firm", "3,''", "2007-2008", 3, 10, 30},
                                    {"association by year", "9,'001'", "2008-2009", 9, 10, 30},
                                    {"association, null", "9,Null", "2008-2009", 9, 0, 30},
                                    {"after the tax", "16,'11111'", "2010-2011", 16, 0, 0}};
        for (const auto &[name, row, year, status, surcharge, tax] : rows) {
            TestModule module(*server);
            Cnn->Execute("Create Table FBT_Info (Code_no Varchar(50), ClStatus Int(11), SurApp Varchar(255))");
            if (!row.isEmpty())
                Cnn->Execute(Sql("Insert into FBT_Info Values ('A1',", row, ")"));
            EmpBoth = true;
            IndiaEmp = 5;
            QVERIFY2(TakeClientAndYear("A1", "ACME LTD", year), name);
            QVERIFY2(Base->status == status && FBTRate[1] == tax && FBTRate[2] == surcharge, name);
            QCOMPARE(Base->Cap, " of ACME LTD for the Assessment Year " + year);
            QCOMPARE(Base->TYear, year.left(4).toInt());
            QVERIFY2(!EmpBoth && IndiaEmp == 0 && module.logLines().isEmpty(), name);
        }
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

    /// Another user has deleted the client meanwhile: nothing is opened, and the list shows who is left.
    void clientWhoHasGone()
    {
        TestModule module(*server);
        QMainWindow host;
        MdiForm = &host;
        Cnn->Execute("Create Table FBT_Info (Code_no Varchar(50), Name Varchar(50), ClStatus Int, SurApp Varchar(9))");
        Cnn->Execute("Insert into FBT_Info Values ('A1','ALPHA',16,''),('B1','BETA',16,'')");
        ScreenUser user;
        user.open<frmsbase>(&host);
        Cnn->Execute("Delete from FBT_Info Where Code_no='A1'");
        user.grid("vsf")->setFocus();
        user.key(Qt::Key_Return);
        QVERIFY(user.said().value(0).startsWith("This client is no longer there."));
        QVERIFY(!Screen::opened<frmfbtdet>() && Base->code.isEmpty());
        QCOMPARE(user.grid("vsf")->TextMatrix(1, 0), QString("B1"));
    }

    void unreadClientIsNotTaken()
    {
        TestModule module(*server);
        Base->code = "B2";
        FBTRate[1] = 30;
        QVERIFY(!TakeClientAndYear("A1", "ACME LTD", "2008-2009"));
        QCOMPARE(Base->code, "B2");
        QCOMPARE(FBTRate[1], 30.0);
    }
};

QTEST_MAIN(TestSelection)
#include "tst_selection.moc"
