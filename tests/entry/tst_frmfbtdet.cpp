#include "entry/addinfo.h"
#include "entry/frmannualfbt.h"
#include "entry/frmfbtdet.h"
#include "tests/entry/entrydesk.h"

#include <QApplication>
#include <QLabel>

namespace {

constexpr auto allRows = "Select * from FBT_AddInfo Order by TYear";

/// A row whose columns tell which column they were.
constexpr auto rowOf2007 =
    "insert into FBT_AddInfo values('A1',2007,'1','King''s \\\\ 4','Old','2','1','Rec','01/02/2007','3','1','0',"
    "'02/02/2007','1','03/02/2007','1','0','1','0','1','0',12,34,'04/02/"
    "2007','Ack','area','typ','rng','no','0',5,'0',6,"
    "'0',7,'05/02/2007')";

} // namespace

/// The quarterly screen, as far as no story of a user's year shows it.
class TestFrmFbtDet : public QObject
{
    Q_OBJECT
private slots:
    void everyColumnThatStaysIsCarriedIntoTheYear()
    {
        EntryDesk desk(2008, {1});
        Cnn->Execute(rowOf2007);
        Cnn->Execute("insert into FBT_BankDet values('A1',2007,4,'Bank B',Null,'O''NEIL ROAD','','8',0,'N')");
        QVERIFY(LOADADDINFO({"A1", 2008}));
        QCOMPARE(
            desk.module.rows(allRows).value(1),
            "A1\t2008\t0\tKing's \\ 4\tOld\t2\t0\t\t\t3\t1\t0\t\t1\t\t1\t0\t1\t0\t1\t0\t12\t34\t\t\tarea\ttyp\trng\t"
            "no\t1\t0\t1\t0\t1\t0\t");
        QCOMPARE(desk.module.rows("Select * from FBT_BankDet Where Yr=2008"),
                 QStringList("A1\t2008\t4\tBank B\t\tO'NEIL ROAD\t\t8\t0\tN"));
    }

    /// A reading that failed, of the year or of the year before, has not seen that the row is missing: a default row
    /// would stand in its place for good.
    void failedReadingWritesNothing()
    {
        for (const int year : {2007, 2008}) {
            EntryDesk desk(2008, {1});
            Cnn->Execute(rowOf2007);
            Cnn->setObserver([](const QString &statement) {
                if (statement.startsWith(u"Select * from FBT_AddInfo") && statement.endsWith(u"2007"))
                    Cnn->Execute("Rename Table FBT_AddInfo to Elsewhere");
                else if (statement.startsWith(u"insert into FBT_AddInfo"))
                    Cnn->Execute("Rename Table Elsewhere to FBT_AddInfo");
            });
            QVERIFY(!LOADADDINFO({"A1", year}));
            Cnn->setObserver({});
            Cnn->Execute("Rename Table if exists Elsewhere to FBT_AddInfo");
            QCOMPARE(desk.module.rows(allRows).size(), 1);
        }
    }

    /// A year whose row could not be written is as good as unread: saved there, a default row would stay for good.
    void unwrittenYearIsNotOpened()
    {
        EntryDesk desk(2008, {1});
        Cnn->Execute(rowOf2007);
        desk.open<frmfbtdet>();
        Cnn->Execute("Delete from FBT_AddInfo Where TYear=2008");
        auto refusing = std::make_unique<Refusing>("Insert", "FBT_AddInfo");
        QVERIFY(!LOADADDINFO({"A1", 2008}));
        refusing.reset();
        QVERIFY(LOADADDINFO({"A1", 2008}));
        QCOMPARE(IndiaEmp, 12);
    }

    /// After a delete that failed the same row is current, so that a second try hits no other. After a save that failed,
    /// since another user has deleted the row, the list shows what is left.
    void rowOfAFailedChange()
    {
        for (const bool annual : {false, true}) {
            EntryDesk desk(2008, {1});
            desk.client.expense(2008, 1, 1, localConveyance, 10).expense(2008, 1, 1, festival, 40);
            if (annual) {
                auto *screen = new frmannualfbt({"A1", 2008});
                screen->Load();
                screen->INITDATA(1);
                desk.sitAt(screen);
            } else {
                desk.open<frmfbtdet>();
            }
            Grid *list = desk.grid("vsf2");
            const int second = list->FixedRows() + 1;
            list->setRow(second);
            {
                const Refusing refusing("Delete", "FBT_Detail");
                desk.answers({Reply::Yes});
                desk.click("cmddeleteded");
            }
            QCOMPARE(list->Row(), second);
            QCOMPARE(desk.text("txtdedflds_2"), "40.00");
            desk.click("cmdmodifyded");
            Cnn->Execute("Delete from FBT_Detail Where ExpId=102");
            desk.type("txtdedflds_2", "50");
            desk.click("cmdupdateded");
            QCOMPARE(desk.focus(), "txtdedflds_0");
            desk.click("cmdcancelded");
            QCOMPARE(list->Rows(), second);
            QCOMPARE(desk.text("txtdedflds_2"), "10.00");
            desk.said();
        }
    }

    /// The screen goes on with the client that it was opened for, with its employees and percentages.
    void otherClientInHandMeanwhile()
    {
        EntryDesk desk(2008, {1});
        desk.client.expense(2008, 1, 1, localConveyance, 5020);
        auto *screen = desk.open<frmfbtdet>();
        // What the screen of additional information stores: 3 of 8 employees are in India.
        Cnn->Execute("Update FBT_AddInfo Set EmpBoth='1', IndiaEmp=3, TotalEmp=8 Where Code_No='A1'");
        desk.click("cmdaddinfo");
        // 20% of 5020 = 1004, 3/8 of it 376.5, to the even 376
        const QStringList figures{"1004.00", "376.00", "113.00", "11.00", "2.00", "1.00", "127.00"};
        QCOMPARE(desk.figures().mid(1), figures);
        QCOMPARE(desk.find<QLabel>("lbltaxfbt")->toolTip(),
                 QString::fromUtf8("(3[Employees in India] ÷8[Total Employees]) X 1004.00[Value of Fringe Benefit]"));
        TakeClientYear("B2", 2006);
        screen->FORM_ACTIVATE();
        QCOMPARE(Base->code, "A1");
        desk.choose("cboquarter", 1);
        desk.key(Qt::Key_A, Qt::AltModifier);
        for (const char *typed : {"conv", "loc", "5020"}) {
            desk.keys(typed);
            desk.key(Qt::Key_Return);
        }
        desk.key(Qt::Key_Return); // on the button that saves
        QCOMPARE(desk.figures().mid(1), figures);
        QCOMPARE(desk.details().last(), "2\t1\t1\t57\t5020");
    }

    /// Rows of other hands, without a number or with one that others have: a change or a delete touches the row that
    /// was chosen, and no other.
    void rowsWithoutANumberOfTheirOwn()
    {
        for (const char *number : {"Null", "0", "3"}) {
            for (const char *button : {"cmdmodifyded", "cmddeleteded"}) {
                EntryDesk desk(2008, {1});
                for (const char *row : {"1,%1,57,10.1", "2,%1,58,70"})
                    Cnn->Execute("Insert into FBT_Detail Values('A1',2008,1," + QString(row).arg(number) + ")");
                desk.open<frmfbtdet>();
                if (button == QStringLiteral("cmddeleteded"))
                    desk.answers({Reply::Yes});
                desk.click(button);
                if (desk.enabled("Frame4")) {
                    desk.type("txtdedflds_2", "11");
                    desk.click("cmdupdateded");
                }
                const QStringList after = desk.module.rows("Select NatId, Amt from FBT_Detail Order by NatId");
                const bool modified = button == QStringLiteral("cmdmodifyded");
                QVERIFY2(after == (modified ? QStringList{"1\t11", "2\t70"} : QStringList{"2\t70"}), number);
                desk.said();
            }
        }
    }

    /// What fails half way through leaves nothing of it.
    void importIsWholeOrNotAtAll()
    {
        EntryDesk desk(2008, {1});
        desk.client.expense(2008, 1, 1, localConveyance, 20).expense(2008, 1, 1, festival, 21);
        desk.open<frmfbtdet>();
        desk.choose("cboquarter", 1);
        int inserts = 0;
        Cnn->setObserver([&](const QString &statement) {
            if (statement.startsWith(u"Insert into FBT_Detail") && ++inserts == 2)
                database->server.kill();
        });
        desk.answers({Reply::Yes});
        desk.click("cmdimp");
        Cnn->setObserver({});
        database->server.restart();
        QCOMPARE(inserts, 2);
        QCOMPARE(desk.details().size(), 2);
    }

    void unread()
    {
        const QPair<const char *, QString> rows[] = {{"FBT_Detail", "expenses"},
                                                     {"FBT_Info", "natures of business"},
                                                     {"FBT_AddInfo", "additional information"},
                                                     {"FBT_BankDet", "additional information"},
                                                     {"FBT_Head2008", "descriptions of heads and items"}};
        for (const auto &[table, what] : rows) {
            EntryDesk desk(2008, {1});
            const WithoutTable without(table);
            QVERIFY2(!desk.open<frmfbtdet>()->couldRead(what), table);
            const bool descriptions = what == "descriptions of heads and items";
            QVERIFY2(desk.find<QLabel>("unreadStrip")->text().contains("figures") != descriptions, table);
            desk.click("cmdaddinfo");
            // Nothing is entered over rows of the year before that did not come, nor for a client who cannot be found.
            const bool opened = what != "additional information" && what != "natures of business";
            QVERIFY2(desk.module.base.calls.isEmpty() != opened, table);
        }
    }

    /// Who passes through the fields leaves an expense as it is, also where the list does not have it.
    void passingThrough()
    {
        const struct
        {
            const char *name;
            int expId;
            const char *missing; // the table that cannot be read meanwhile
        } rows[] = {{"an item that the year's law does not know", 999, "FBT_SignDet"},
                    {"heads that cannot be read", localConveyance, "FBT_Head2008"},
                    {"items that cannot be read", localConveyance, "FBT_ExpHead2008"}};
        for (const auto &row : rows) {
            EntryDesk desk(2008, {1});
            desk.client.expense(2008, 1, 1, row.expId, 100);
            desk.open<frmfbtdet>();
            const QString head = desk.text("txtdedflds_0");
            const QString item = desk.text("txtdedflds_1");
            {
                const WithoutTable without(row.missing);
                desk.click("cmdmodifyded");
                for (int field = 0; field < 2; ++field)
                    desk.key(Qt::Key_Return);
                QVERIFY2(desk.text("txtdedflds_0") == head && desk.text("txtdedflds_1") == item, row.name);
            }
            desk.keys("200");
            desk.click("cmdupdateded");
            QVERIFY2(desk.details() == QStringList(QStringLiteral("1\t1\t1\t%1\t200").arg(row.expId)), row.name);
        }
    }
};

QTEST_MAIN(TestFrmFbtDet)
#include "tst_frmfbtdet.moc"
