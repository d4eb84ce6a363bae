#include "entry/frmannualfbt.h"
#include "tests/entry/entrydesk.h"

#include <QRegularExpression>

Q_GLOBAL_STATIC(EntryDatabase, database)

namespace {

class AnnualDesk : public EntryDesk
{
public:
    AnnualDesk(std::initializer_list<int> natures)
        : EntryDesk(database->module, 2008, natures)
    {
    }
    void openOn(int nature)
    {
        auto *annual = new frmannualfbt({QStringLiteral("A1"), 2008});
        annual->Load();
        annual->INITDATA(nature);
        sitAt(annual);
    }
    void row(int quarter, int nature, int srNo, int expId, double amount)
    {
        Cnn->Execute(Sql("Insert into FBT_Detail Values('A1',2008,", quarter, ",", nature, ",", srNo, ",", expId, ",",
                         amount, ")"));
    }
};

} // namespace

/// All quarters of an expense in one line.
class TestFrmAnnualFbt : public QObject
{
    Q_OBJECT
private slots:
    void linesUpEqualExpenses()
    {
        AnnualDesk desk{1, 3};
        desk.client.expense(2008, 1, 1, localConveyance, 100)
            .expense(2008, 1, 1, localConveyance, 12.5)
            .expense(2008, 3, 1, localConveyance, 7)
            .expense(2008, 1, -1, festival, 50);
        desk.openOn(1);
        // 20% of 12.5 = 2.5, to the even 2; 1.4. Consolidated rows are not shared out here.
        QCOMPARE(desk.shown("vsf2"),
                 QStringList({"1 Conveyance Local conveyance 20 100.00 20.00   7.00 1.00   107.00 21.00",
                              "2 Conveyance Local conveyance 20 12.50 2.00       12.50 2.00"}));
        desk.choose("cbonature", 2);
        QCOMPARE(desk.shown("vsf2"),
                 QStringList("1 Festival Celebration Expenses Puja Festivals for employees 50.00    50.00"));
    }

    void modifies()
    {
        AnnualDesk desk{1};
        desk.client.expense(2008, 1, 1, localConveyance, 10)
            .expense(2008, 1, 1, localConveyance, 11)
            .expense(2008, 2, 1, localConveyance, 20)
            .expense(2008, 2, 1, localConveyance, 21)
            .expense(2008, 3, 1, festival, 30);
        desk.openOn(1);
        desk.grid("vsf2")->setRow(3);
        desk.click("cmdmodifyded");
        desk.type("txtdedflds_2", "");   // was 11
        desk.type("txtdedflds_3", "22"); // was 21
        desk.type("txtdedflds_4", "33"); // had none
        desk.click("cmdupdateded");
        QCOMPARE(desk.details(), QStringList({"1\t1\t1\t57\t10", "2\t1\t1\t57\t20", "2\t1\t2\t57\t22",
                                              "3\t1\t1\t102\t30", "3\t1\t2\t57\t33"}));
        // Rows are listed as they were written: 33 now stands on the first line of its kind, 22 on the last of all.
        QCOMPARE(desk.text("txtdedflds_3"), "22.00");
    }

    /// Rows of other hands that have no number: one with an amount can be told from others and gets a number when it is
    /// changed; one without stays, and with it all others that have no number.
    void rowsWithoutNumber_data()
    {
        QTest::addColumn<double>("second");     // amount of the line's row without number in the second quarter
        QTest::addColumn<QString>("typed");     // into that quarter; empty: the line is deleted
        QTest::addColumn<QStringList>("after"); // of that quarter
        const QString other = "2\t2\t0\t58\t70";
        const QString empty = "2\t1\t0\t57\t0";
        QTest::newRow("amount changed") << 20.0 << "25" << QStringList("2\t1\t1\t57\t25");
        QTest::newRow("amount cleared") << 20.0 << "0" << QStringList();
        QTest::newRow("nothing stays nothing") << 0.0 << "0" << QStringList({empty, other});
        QTest::newRow("nothing gets an amount") << 0.0 << "25" << QStringList({empty, other, "2\t1\t1\t57\t25"});
        QTest::newRow("line deleted") << 0.0 << "" << QStringList({empty, other});
    }
    void rowsWithoutNumber()
    {
        QFETCH(double, second);
        QFETCH(QString, typed);
        AnnualDesk desk{1};
        desk.row(1, 1, 1, localConveyance, 10);
        desk.row(2, 1, 0, localConveyance, second);
        desk.row(2, 2, 0, 58, 70);
        desk.openOn(1);
        if (typed.isEmpty()) {
            desk.answers({Reply::Yes});
            desk.click("cmddeleteded");
        } else {
            desk.click("cmdmodifyded");
            desk.type("txtdedflds_3", typed);
            desk.click("cmdupdateded");
        }
        QTEST(desk.details().filter(QRegularExpression("^2")), "after");
        desk.said();
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("message");
        QTest::newRow("txtdedflds_2") << "0.00"
                                      << "Please specify Amount.";
        QTest::newRow("txtdedflds_3") << "5x"
                                      << "Please Enter Numeric Value.";
    }
    void refusals()
    {
        QFETCH(QString, second);
        QFETCH(QString, message);
        AnnualDesk desk{1};
        desk.openOn(1);
        desk.key(Qt::Key_A, Qt::AltModifier);
        desk.type("txtdedflds_0", "conv");
        desk.type("txtdedflds_1", "loc");
        desk.type("txtdedflds_3", second);
        desk.key(Qt::Key_S, Qt::AltModifier);
        QCOMPARE(desk.said(), QStringList(message));
        QCOMPARE(desk.focus(), QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(desk.details(), QStringList());
    }

    /// Without a highest number there is no new one: number 1 would replace the row that has it. Nothing of the line is
    /// saved then.
    void noNumberNoSave()
    {
        AnnualDesk desk{1};
        desk.client.expense(2008, 1, 1, localConveyance, 10).expense(2008, 4, 1, festival, 40);
        desk.openOn(1);
        desk.click("cmdmodifyded");
        desk.type("txtdedflds_2", "11");
        desk.type("txtdedflds_5", "44");
        Cnn->setObserver([](const QString &statement) {
            if (statement.startsWith(u"Select Max"))
                database->server.kill();
        });
        desk.click("cmdupdateded");
        Cnn->setObserver({});
        database->server.restart();
        QCOMPARE(desk.details(), QStringList({"1\t1\t1\t57\t10", "4\t1\t1\t102\t40"}));
        QVERIFY(desk.enabled("Frame4"));
        QCOMPARE(desk.text("txtdedflds_5"), "44.00");
    }
};

QTEST_MAIN(TestFrmAnnualFbt)
#include "tst_frmannualfbt.moc"
