#include "payments/challan.h"

#include "calc/modfbtcalc.h"
#include "db/updater.h"
#include "host/reportobject.h"
#include "platform/clock.h"
#include "tests/support/employer.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QLabel>
#include <QRadioButton>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

/// The screen of a private company, A.Y. 2008-09, whose first quarter has 33,990 of tax, in front of a user.
class Stage : public ScreenUser
{
public:
    explicit Stage(TestModule &testModule, int status = 16)
        : module(testModule)
    {
        for (const char *table : {"FBT_Info", "FBT_Challan", "FBT_Detail", "FBT_AddInfo", "bank_master"})
            sql(QStringLiteral("Delete from ") + QLatin1String(table));
        employer(module.connection, QStringLiteral("A1")).status(status).natures({7}).expense(2008, 1, 7, 57, 500000);
        sql(QStringLiteral("Insert into bank_master Values (4,'BANK','TOWN','0004')"));
        module.base.code = QStringLiteral("A1");
        module.base.TYear = 2008;
        module.base.status = status;
        FBTRate = RatesFor(2008, status, QString());
        SetToday({2007, 6, 20});
        QFile::remove(module.base.AppPath + QStringLiteral("/FBTLogger.log"));
    }
    ~Stage() { module.connection.setObserver({}); }

    void sql(const QString &statement) { QVERIFY2(module.connection.Execute(statement), qPrintable(statement)); }
    void challan(int quarter, int srNo, const QString &date, double tax)
    {
        sql(Sql("Insert into FBT_Challan Values ('A1',2008,", quarter, ",", srNo, ",'",
                quarter == 0 ? "Self Assessment Tax (300)" : "Advance Tax (100)", "','", date, "',", tax, ",0,0,0,0,0,",
                tax, ",'','','','','',4,0)"));
    }
    void away(const QString &table) { sql(Sql("Rename Table ", table, " to Away")); }
    void back(const QString &table) { sql(Sql("Rename Table Away to ", table)); }
    /// Begins a challan of advance tax.
    void add()
    {
        click(QStringLiteral("cmdadd"));
        choose(QStringLiteral("Combo1"), 0);
    }
    QStringList stored()
    {
        return module.rows(QStringLiteral("Select quarter,srno,TotAmt,BSRCode from FBT_Challan Order by quarter,srno"));
    }
    [[nodiscard]] QString caption() const { return screen()->windowTitle(); }
    [[nodiscard]] bool logged(const QString &procedure) const
    {
        const QStringList lines = module.logLines();
        return std::any_of(lines.begin(), lines.end(), [&](const QString &line) { return line.endsWith(procedure); });
    }

    TestModule &module;
};

/// Counts the reports that are shown.
class CountedReports : public ReportObject
{
public:
    CountedReports() { Reporter = this; }
    ~CountedReports() override { Reporter = nullptr; }

    [[nodiscard]] int MyDllVersion() const override { return 1; }
    void NewReport() override {}
    void printtext(const QString & /*text*/) override {}
    void CreateTable(int /*tables*/, int /*columns*/) override {}
    void WriteToReport(const ReportRow & /*row*/) override {}
    void ShowReport() override { ++shown; }

    int shown = 0;
};

} // namespace

/// What goes wrong around the challans; what goes well is told by the stories of a user.
class TestChallan : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestServer> m_server;
    std::unique_ptr<TestModule> m_module;

private slots:
    void initTestCase()
    {
        m_server = std::make_unique<TestServer>();
        m_module = std::make_unique<TestModule>(*m_server);
        UpdateDatabase(Cnn);
    }
    void cleanupTestCase()
    {
        m_module.reset();
        m_server.reset();
    }

    /// All would seem to be unpaid, so the fields stay as they are.
    void paymentsUnreadableWhileImporting()
    {
        Stage stage(*m_module);
        stage.open<Challan>();
        stage.add();
        stage.type("txtfields_4", "77");
        stage.away("FBT_Challan");
        stage.click("cmdimp");
        QCOMPARE(stage.text("txtfields_4"), "77");
        QVERIFY(stage.caption() != "Challan");
        QVERIFY(stage.logged("Challan\tCMDIMP_CLICK"));
        stage.back("FBT_Challan");
        stage.click("cmdimp");
        QCOMPARE(stage.text("txtfields_4"), "30000");
        QCOMPARE(stage.caption(), "Challan");
    }

    void refusedSaveKeepsTheEntry()
    {
        Stage stage(*m_module);
        stage.open<Challan>();
        stage.add();
        stage.type("txtfields_4", "120");
        stage.away("FBT_Challan");
        stage.key(Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(stage.caption(), "Challan - could not be saved");
        QVERIFY(stage.visible("famact2"));
        QCOMPARE(stage.text("txtfields_4"), "120");
        QVERIFY(stage.logged("Challan\tCMDUPDATE_CLICK"));
        stage.back("FBT_Challan");
        stage.click("cmdupdate");
        QCOMPARE(stage.stored(), QStringList("1\t1\t120\t0"));
        QCOMPARE(stage.caption(), "Challan");
    }

    /// Without the payments an instalment's balance would be all of it: nothing is shown, and nothing can be transferred.
    void paymentsUnreadableWhileThePanelOpens()
    {
        Stage stage(*m_module);
        stage.challan(1, 1, "10/06/2007", 1000);
        stage.open<Challan>();
        stage.click("cmdmodify");
        stage.away("FBT_Challan");
        stage.click("cmdcalcadv");
        stage.grid("vsfa")->setRow(2);
        QCOMPARE(stage.grid("vsfa")->TextMatrix(2, 0), "15/06/2007");
        QCOMPARE(stage.grid("vsfa")->TextMatrix(2, 13), QString());
        stage.click("cmdtrans");
        stage.click("cmdintcalc");
        QVERIFY(stage.visible("famcalcadv"));
        QVERIFY(stage.logged("Challan\tGETDEPAMT") || stage.logged("Challan\tCALCADVTAX"));
        stage.back("FBT_Challan");
        stage.find<QRadioButton>("optadv_1")->click();
        stage.find<QRadioButton>("optadv_0")->click();
        QCOMPARE(stage.grid("vsfa")->TextMatrix(2, 13), "5098"); // 15 % of 33,990, 5,098.5
        QCOMPARE(stage.grid("vsfa")->TextMatrix(2, 15), "4098");
    }

    void listUnreadable()
    {
        Stage stage(*m_module);
        stage.challan(1, 1, "10/06/2007", 1000);
        stage.away("FBT_Challan");
        stage.open<Challan>();
        QVERIFY(stage.caption() != "Challan");
        QVERIFY(!stage.enabled("cmdmodify") && !stage.enabled("cmddelete"));
        stage.back("FBT_Challan");
    }

    /// A challan keeps the bank that it has when the list of banks is not there to show it, or comes only later.
    void banksUnreadable()
    {
        Stage stage(*m_module);
        stage.challan(1, 1, "10/06/2007", 1000);
        stage.away("bank_master");
        stage.open<Challan>();
        stage.click("cmdmodify");
        stage.click("cmdupdate");
        QCOMPARE(stage.stored(), QStringList("1\t1\t1000\t4"));
        stage.click("cmdmodify");
        stage.back("bank_master");
        stage.click("cmdbankm");
        QCOMPARE(stage.find<QComboBox>("cbobsrcode")->currentText(), "0004 - BANK, TOWN");
        QVERIFY(stage.shown("vsf").constFirst().contains("0004"));
        stage.click("cmdupdate");
        QCOMPARE(stage.stored(), QStringList("1\t1\t1000\t4"));
    }

    /// What cannot be read is named, and the fields stay as they are.
    void unreadableWhileImporting_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("named");
        QTest::newRow("expenses") << "FBT_Detail"
                                  << "figures of the tax";
        QTest::newRow("due dates") << "AdvTaxDueDt"
                                   << "due dates";
        QTest::newRow("employer and natures") << "FBT_Info"
                                              << "figures of the tax, client data";
    }
    void unreadableWhileImporting()
    {
        QFETCH(const QString, table);
        Stage stage(*m_module);
        stage.open<Challan>();
        stage.click("cmdadd");
        stage.choose("Combo1", 1);
        stage.away(table);
        stage.click("cmdimp");
        stage.back(table);
        QFETCH(const QString, named);
        QVERIFY2(stage.find<QLabel>("unreadStrip")->text().contains(": " + named + '.'),
                 qPrintable(stage.find<QLabel>("unreadStrip")->text()));
        QCOMPARE(stage.text("txtfields_4"), QString());
        stage.click("cmdimp");
        QCOMPARE(stage.text("txtfields_4"), "30000");
        QCOMPARE(stage.caption(), "Challan");
    }

    /// Shares of nothing are a fault that leaves their cells empty; what was paid shows all the same.
    void allRatesZero()
    {
        Stage stage(*m_module, 1);
        stage.challan(1, 1, "10/06/2007", 1000);
        stage.open<Challan>();
        stage.click("cmdmodify");
        stage.click("cmdcalcadv");
        const Grid *vsfa = stage.grid("vsfa");
        QVERIFY(vsfa->RowHidden(2));
        QStringList cells;
        for (const int col : {1, 2, 3, 4, 5, 6, 13, 14, 15})
            cells << vsfa->TextMatrix(3, col);
        QCOMPARE(cells, QStringList({"0", "1000", "-1000", "", "0", "0", "0", "1000", "-1000"}));
        QVERIFY(stage.logged("Challan\tCALCADVTAX"));
    }

    void dateThatIsNone()
    {
        Stage stage(*m_module);
        stage.challan(1, 1, "10/06/2007", 1000);
        stage.challan(1, 2, "31/02/2008", 500);
        stage.open<Challan>();
        QVERIFY(stage.logged("Challan\tLOADGRID"));
        QCOMPARE(stage.text("txtfields_3"), "31/02/2008"); // sorts first
        stage.click("cmdmodify");
        stage.click("cmdcalcadv");
        QCOMPARE(stage.grid("vsfa")->TextMatrix(5, 14), "1000");
        stage.key(Qt::Key_Escape);
        stage.click("cmdupdate");
        QCOMPARE(stage.said(), QStringList("Please Specity Date of Challan."));
        QCOMPARE(stage.focus(), "txtfields_3");
    }

    void changedChallanIsGone()
    {
        Stage stage(*m_module);
        stage.challan(1, 1, "10/06/2007", 1000);
        stage.open<Challan>();
        stage.click("cmdmodify");
        stage.type("txtfields_2", "7");
        stage.sql("Delete from FBT_Challan");
        stage.click("cmdupdate");
        QCOMPARE(stage.caption(), "Challan - could not be saved");
        QCOMPARE(stage.text("txtfields_2"), "7");
        QVERIFY(stage.stored().isEmpty());
        stage.key(Qt::Key_Escape);
        QVERIFY(stage.shown("vsf").isEmpty() && !stage.enabled("cmdmodify"));
    }

    /// An amount is stored to the rupee or not at all; what was typed stays.
    void longAmounts()
    {
        Stage stage(*m_module);
        stage.open<Challan>();
        stage.add();
        for (const char *amount : {"1234567890123456", "1E20"}) {
            stage.type("txtfields_5", amount);
            stage.click("cmdupdate");
            QCOMPARE(stage.caption(), "Challan - could not be saved");
            QCOMPARE(stage.focus(), "txtfields_5");
            QCOMPARE(stage.text("txtfields_5"), amount);
        }
        stage.type("txtfields_5", "500000000000000");
        stage.type("txtfields_6", "500000000000000"); // the total has 16 digits
        stage.click("cmdupdate");
        QCOMPARE(stage.focus(), "txtfields_4");
        stage.type("txtfields_6", "499999999999999");
        stage.click("cmdupdate");
        QCOMPARE(stage.stored(), QStringList("1\t1\t999999999999999\t0"));
    }

    /// Rows that an older program, or two at once, left behind: each is changed and deleted by itself, and keeps what it has.
    void unusualRows()
    {
        Stage stage(*m_module);
        stage.challan(1, 1, "10/06/2007", 1000);
        stage.challan(1, 1, "11/06/2007", 2000);
        stage.challan(0, 1, "12/05/2008", 3000);
        stage.sql(
            "Update FBT_Challan Set srno=Null,paytype='self assessment tax (300)',paymode='cheque' Where quarter=0");
        stage.open<Challan>();
        stage.grid("vsf")->setRow(3);
        stage.click("cmdmodify");
        stage.type("txtfields_4", "3001");
        stage.click("cmdupdate");
        QCOMPARE(m_module->rows("Select paytype,paymode,ITAmt from FBT_Challan Where quarter=0"),
                 QStringList("Self Assessment Tax (300)\tCheque\t3001"));
        stage.grid("vsf")->setRow(2);
        stage.click("cmdmodify");
        stage.type("txtfields_4", "2002");
        stage.click("cmdupdate");
        QCOMPARE(stage.grid("vsf")->Row(), 2);
        for (const int row : {1, 2}) {
            stage.grid("vsf")->setRow(row);
            stage.answers({Reply::Yes});
            stage.click("cmddelete");
        }
        QCOMPARE(stage.said().size(), 2);
        QCOMPARE(stage.stored(), QStringList("1\t1\t2002\t4"));
    }

    /// A button pressed by its key takes the amount that is still being typed.
    void proposedAmountByKey()
    {
        Stage stage(*m_module);
        stage.open<Challan>();
        stage.add();
        stage.click("cmdcalcadv");
        stage.grid("vsfa")->setRow(2);
        stage.find<QRadioButton>("optadv_1")->click();
        stage.find<QLineEdit>("txtadvamt_1")->setFocus();
        stage.keys("200000");
        stage.key(Qt::Key_T, Qt::AltModifier);
        QTRY_COMPARE(stage.text("txtfields_11"), "10197"); // 15 % of 67,980
    }

    /// Each number of a quarter is given once, and no challan is lost.
    void twoProgramsAddToTheSameQuarter()
    {
        constexpr int each = 15;
        Stage stage(*m_module);
        const ClientYear client{"A1", 2008};
        ChallanRecord challan;
        challan.quarter = 1;
        challan.payType = PaymentTypes().constFirst();
        std::atomic<int> stored = 0;
        const auto addAll = [&](Connection &connection) {
            for (int i = 0; i < each; ++i)
                stored += AddChallan(&connection, client, challan) ? 1 : 0;
        };
        const std::unique_ptr<QThread> other(QThread::create([&] {
            Connection connection;
            if (connection.open(stage.module.connection.address()))
                addAll(connection);
        }));
        other->start();
        addAll(stage.module.connection);
        other->wait();
        QCOMPARE(stored.load(), 2 * each);
        QCOMPARE(stage.module.rows("Select Count(*),Count(Distinct srno),Max(srno) from FBT_Challan"),
                 QStringList("30\t30\t30"));
    }

    /// All of it by the keyboard: a challan by cheque, saved, changed, and left.
    void byKeyboardAlone()
    {
        Stage stage(*m_module);
        stage.open<Challan>();
        stage.key(Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(stage.focus(), "Combo1");
        stage.key(Qt::Key_Down);
        stage.key(Qt::Key_Return);
        QCOMPARE(stage.focus(), "optq_1");
        stage.key(Qt::Key_Right);
        QCOMPARE(stage.focus(), "optq_2");
        stage.key(Qt::Key_Return);
        QCOMPARE(stage.focus(), "txtfields_2"); // Enter leads past the buttons that would change what is typed
        stage.key(Qt::Key_I, Qt::AltModifier);
        QCOMPARE(stage.focus(), "txtfields_4");
        stage.keys("250.5");
        stage.key(Qt::Key_Return);
        QCOMPARE(stage.text("txtfields_4"), "250");
        QCOMPARE(stage.text("txtfields_11"), "250");
        stage.key(Qt::Key_F, Qt::AltModifier);
        QCOMPARE(stage.focus(), "optmop_0");
        for (int i = 0; i < 3; ++i)
            stage.key(Qt::Key_Right);
        stage.key(Qt::Key_Return);
        QCOMPARE(stage.focus(), "txtfields_12");
        stage.key(Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(stage.stored(), QStringList("2\t1\t250\t0"));
        QCOMPARE(stage.focus(), "vsf");
        stage.key(Qt::Key_M, Qt::AltModifier);
        QTRY_COMPARE(stage.focus(), "Combo1");
        stage.key(Qt::Key_L, Qt::AltModifier);
        QTRY_COMPARE(stage.focus(), "optadv_0");
        stage.key(Qt::Key_Escape);
        QCOMPARE(stage.focus(), "cmdcalcadv");
        stage.key(Qt::Key_Escape);
        QCOMPARE(stage.focus(), "vsf");
        stage.answers({Reply::Yes});
        stage.key(Qt::Key_Escape);
        QVERIFY(!stage.screen()->isLoaded());
        QCOMPARE(stage.said(), QStringList("Do you want to exit?"));
    }

    /// Without a challan a form would say that nothing was paid; one that could not be read may be there by now.
    void onlyAChallanIsPrinted()
    {
        Stage stage(*m_module);
        CountedReports reports;
        stage.open<Challan>();
        QVERIFY(!stage.enabled("cmdprintwin"));
        stage.challan(1, 1, "15/06/2007", 100);
        stage.away("FBT_Challan");
        stage.open<Challan>();
        stage.click("cmdprintwin");
        QCOMPARE(reports.shown, 0);
        stage.back("FBT_Challan");
        stage.click("cmdprintwin");
        QCOMPARE(reports.shown, 1);
        QCOMPARE(stage.text("txtfields_4"), "100");
    }
};

QTEST_MAIN(TestChallan)
#include "tst_challan.moc"
