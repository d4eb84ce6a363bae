#include "returns/frmretfrm.h"

#include "calc/clientyear.h"
#include "db/updater.h"
#include "platform/clock.h"
#include "suite/report/reportlayout.h"
#include "suite/report/repview.h"
#include "tests/support/caserow.h"
#include "tests/support/employer.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QTimer>
#include <QWindow>

namespace {

/// The return of a private company without tax, before which the user sits; reports are kept, not shown.
class ReturnDesk : public ScreenUser
{
public:
    ReturnDesk(TestModule &testModule, int year)
        : module(testModule)
        , shelf(std::make_shared<ReportShelf>())
        , viewer(SuiteContext(), shelf)
    {
        viewer.setObserver([this] { ++reports; });
        Reporter = &viewer;
        TakeClientYear("A1", year);
        auto *made = new frmretfrm;
        made->Load();
        made->LOADPRNGRID(ReturnFormOf(year));
        sitAt(made);
    }
    ~ReturnDesk() { Reporter = nullptr; }

    void turnOff(const char *checkBox) { find<QCheckBox>(checkBox)->setChecked(false); }
    void print() { click("cmdprn"); }
    [[nodiscard]] int pages() const
    {
        ReportLayout layout(shelf->document, PageFor(*shelf->document, false));
        return layout.pageCount();
    }
    [[nodiscard]] bool printed(const char *text) const { return viewer.asText().contains(QLatin1String(text)); }

    TestModule &module;
    std::shared_ptr<ReportShelf> shelf;
    RepView viewer;
    int reports = 0;
};

} // namespace

/// What goes wrong on the screen of the return, and how its forms lie on their pages; what goes well is told by the
/// stories of a user.
class TestFrmretfrm : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestServer> m_server;
    std::unique_ptr<TestModule> m_module;

    static void sql(const SqlText &statement) { QVERIFY2(Cnn->Execute(statement), qPrintable(statement)); }
    static void payment(int year, int number, double amount)
    {
        sql(Sql("Insert into FBT_Challan (Code_No,T_Year,Quarter,SrNo,PayType,challan_dt,TotAmt) Values ('A1',", year,
                ",1,", number, ",'Advance Tax (100)','14/06/2007',", amount, ")"));
    }

private slots:
    void initTestCase()
    {
        m_server = std::make_unique<TestServer>();
        m_module = std::make_unique<TestModule>(*m_server);
        UpdateDatabase(Cnn);
        employer(*Cnn, "A1").status(16).natures({7});
        SetToday({2009, 8, 1});
        Base->vTmpPath = Base->AppPath + "/tmp";
        for (const char *folder : {"Data", "ITR8Fls2007", "ITR8Fls2008", "ITR8Fls2009"})
            QVERIFY(QFile::link(QString(FBT_SOURCES "/") + folder, Base->AppPath + u'/' + folder));
    }
    void cleanupTestCase()
    {
        m_module.reset();
        m_server.reset();
    }
    void init()
    {
        for (const char *table : {"FBT_SignDet", "FBT_RetDet", "FBT_Challan"})
            sql(Sql("Delete from ", table));
        QFile::remove(Base->AppPath + "/FBTLogger.log");
    }

    /// Each part has a page of its own, but for the short schedule after part B of form ITR-8.
    void formsFillTheirPages_data()
    {
        Columns<int, bool, int>({"year", "blank", "pages"});
        Case("form 3B", 2006, false, 6);
        for (const int year : {2007, 2008, 2009}) {
            Case(Joined("ITR-8 of ", year), year, false, 5);
            Case(Joined("ITR-8 of ", year, ", blank"), year, true, 5);
        }
    }
    void formsFillTheirPages()
    {
        QFETCH(int, year);
        QFETCH(bool, blank);
        ReturnDesk desk(*m_module, year);
        if (blank)
            desk.find<QAbstractButton>("optform_1")->setChecked(true);
        desk.print();
        QTEST(desk.pages(), "pages");
        QCOMPARE(m_module->logLines(), QStringList());
    }

    void cancelledHalfWay()
    {
        ReturnDesk desk(*m_module, 2009);
        QTimer::singleShot(0, desk.find<QAbstractButton>("cmdcancel"), &QAbstractButton::click);
        desk.print();
        QVERIFY(desk.printed("Received with thanks"));
        QVERIFY(!desk.printed("PART A"));
        QVERIFY(desk.shelf->document->footer().empty());
        QVERIFY(desk.visible("famprn"));
        QCOMPARE(desk.focus(), "cmdprn");
        desk.print(); // the whole of it now
        QVERIFY(desk.printed("Schedule FBT"));
        QVERIFY(!desk.shelf->document->footer().empty());
    }

    void lastItemKeepsItsBreak()
    {
        ReturnDesk desk(*m_module, 2009);
        desk.click("cmdpgbrk");
        const auto breaks = [&desk] {
            QString marks;
            for (int item = 1; item <= 6; ++item)
                marks += desk.grid("vsP")->TextMatrix(item, 3) == u"0" ? u'0' : u'1';
            return marks;
        };
        const auto clickCaption = [&desk] { emit desk.grid("vsP")->horizontalHeader()->sectionClicked(3); };
        QCOMPARE(breaks(), "011011");
        clickCaption();
        QCOMPARE(breaks(), "111111");
        clickCaption();
        QCOMPARE(breaks(), "000001");
        desk.key(Qt::Key_Escape); // goes back, and keeps them
        QVERIFY(desk.visible("famprn"));
        QCOMPARE(PageBreaksText(PageBreaksKept("ITR-8")), "0,0,0,0,0,-1");
        Base->SaveSettingINI("Settings", "PgBrkNITR-8", {});
    }

    void panIsChecked()
    {
        ReturnDesk desk(*m_module, 2009);
        desk.type("txtfields_2", "ABC");
        desk.find<QLineEdit>("txtfields_3")->setFocus();
        QCOMPARE(desk.said(), QStringList("Invalid PAN."));
        QCOMPARE(desk.focus(), "txtfields_2");
        desk.key(Qt::Key_P, Qt::AltModifier); // the button by its letter
        QCOMPARE(desk.said(), QStringList("Invalid PAN."));
        QCOMPARE(desk.reports, 0);
        desk.type("txtfields_2", "abcde1234f");
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.focus(), "txtfields_3");
        desk.key(Qt::Key_P, Qt::AltModifier);
        QTRY_COMPARE(desk.reports, 1);
    }

    void wrongPanIsNotSaved()
    {
        sql(Sql("Insert into FBT_SignDet Values ('A1',2009,'OLD','','','ABCDE1234F','')"));
        ReturnDesk desk(*m_module, 2009);
        desk.type("txtfields_2", "ABC");
        QVERIFY(!desk.screen()->Unload());
        QCOMPARE(desk.said(), QStringList("Invalid PAN."));
        QVERIFY(desk.screen()->Unload());
        QCOMPARE(m_module->rows("Select Nm,PAN from FBT_SignDet"), QStringList("OLD\tABCDE1234F"));
    }

    /// What the lists do not have is kept until another entry is chosen.
    void unknownCodesAreKept()
    {
        payment(2009, 1, 500);
        sql(Sql("Insert into FBT_SignDet Values ('A1',2009,'OLD','2','','','')"));
        sql(Sql("Insert into FBT_RetDet Values ('A1',2009,'','','','',0,'5')"));
        const auto codes = [this] { return m_module->rows("Select Relat,RefM from FBT_SignDet,FBT_RetDet"); };
        ReturnDesk desk(*m_module, 2009);
        QCOMPARE(desk.find<QComboBox>("cborelat")->currentIndex(), 0);
        QCOMPARE(desk.find<QComboBox>("cborefm")->currentIndex(), 0);
        QVERIFY(desk.screen()->Unload());
        QCOMPARE(codes(), QStringList("2\t5"));
        ReturnDesk again(*m_module, 2009);
        again.choose("cborelat", 2);
        again.choose("cborefm", 1);
        QVERIFY(again.screen()->Unload());
        QCOMPARE(codes(), QStringList("1\t1"));
    }

    void focusIsScrolledTo()
    {
        ReturnDesk desk(*m_module, 2009);
        desk.screen()->window()->resize(300, 150);
        desk.find<QLineEdit>("txtfields_0")->setFocus();
        for (int fields = 0; fields < 8; ++fields) {
            desk.key(fields % 2 == 0 ? Qt::Key_Tab : Qt::Key_Return);
            QVERIFY2(!QApplication::focusWidget()->visibleRegion().isEmpty(), qPrintable(desk.focus()));
        }
    }

    void placeIsTheCityOrTyped()
    {
        ReturnDesk desk(*m_module, 2009);
        desk.type("txtfields_4", "here");
        desk.find<QCheckBox>("chkplace")->click();
        desk.type("txtfields_4", "there"); // locked
        QCOMPARE(desk.text("txtfields_4"), "Town");
        desk.find<QCheckBox>("chkplace")->click();
        QCOMPARE(desk.text("txtfields_4"), "HERE");
    }

    /// A text that the database does not take is not given up without a question; the old row stays in any case.
    void refusedSignatoryStays()
    {
        sql(Sql("Insert into FBT_SignDet Values ('A1',2009,'OLD','','','','')"));
        ReturnDesk desk(*m_module, 2009);
        QPointer<Screen> screen = desk.screen();
        desk.type("txtfields_0", "o'brien");
        QVERIFY(!screen->Unload());
        QCOMPARE(desk.text("txtfields_0"), "O'BRIEN");
        desk.answers({Reply::No, Reply::Yes});
        QVERIFY(!screen->Unload());
        QVERIFY(screen->Unload());
        QCOMPARE(desk.said(), QStringList(2, "What was typed could not be saved. Leave without it?"));
        QCOMPARE(m_module->rows("Select Nm from FBT_SignDet"), QStringList("OLD"));
    }

    void unreadSignatoryIsNotWrittenOver()
    {
        sql(Sql("Insert into FBT_SignDet Values ('A1',2009,'OLD','','','','')"));
        sql(Sql("Rename Table FBT_SignDet to Away"));
        ReturnDesk desk(*m_module, 2009);
        sql(Sql("Rename Table Away to FBT_SignDet"));
        QVERIFY(desk.screen()->windowTitle() != "Return Form ITR-8"); // it says so
        desk.type("txtfields_5", "77");
        QVERIFY(desk.screen()->Unload());
        QCOMPARE(m_module->rows("Select Nm from FBT_SignDet"), QStringList("OLD"));
        QCOMPARE(m_module->rows("Select EflNo,EflDt,RefM from FBT_RetDet"), QStringList("77\t\t0"));
    }

    /// What was typed joins what is stored, as soon as that can be read.
    void typedOverUnreadDetails()
    {
        sql(Sql("Insert into FBT_RetDet Values ('A1',2009,'1','02/08/2009','','',0,'2')"));
        payment(2009, 1, 500);
        sql(Sql("Rename Table FBT_RetDet to Away"));
        ReturnDesk desk(*m_module, 2009);
        desk.type("txtfields_5", "77");
        QVERIFY(!desk.screen()->Unload());
        sql(Sql("Rename Table Away to FBT_RetDet"));
        QVERIFY(desk.screen()->Unload());
        QCOMPARE(m_module->rows("Select EflNo,EflDt,RefM from FBT_RetDet"), QStringList("77\t02/08/2009\t2"));
    }

    /// Nothing is stated that is not known, and how the refund is paid stays as it was.
    void unreadFigures()
    {
        sql(Sql("Insert into FBT_RetDet Values ('A1',2009,'','','','',0,'1')"));
        payment(2009, 1, 500);
        sql(Sql("Rename Table FBT_Challan to Away"));
        ReturnDesk desk(*m_module, 2009);
        desk.print();
        QCOMPARE(desk.reports, 0);
        QCOMPARE(desk.said().size(), 1);
        QVERIFY(desk.screen()->Unload());
        QCOMPARE(m_module->rows("Select RefM from FBT_RetDet"), QStringList("1"));
        ReturnDesk again(*m_module, 2009);
        sql(Sql("Rename Table Away to FBT_Challan"));
        again.print();
        QVERIFY(again.printed("\t500\n") && again.enabled("cborefm"));
    }

    void paymentsFillTheirSchedule_data()
    {
        Columns<int, QString>({"payments", "text"});
        const QString captions("Date of Deposit (DD/MM/YYYY)\tSerial Number of Challan\tAmount (Rs)\n\n");
        const QString caption("Advance tax and self-assessment tax, each in the order of the dates of deposit\n");
        const QString note("\nNOTE: Enter the totals of advance tax and self-assessment tax in 8a and 8b of Part B\n");
        Case("none", 0, captions + "Nil\n");
        Case("three", 3,
             captions + caption + "1.\t\t\t14/06/2007\t\t1\n2.\t\t\t14/06/2007\t\t2\n3.\t\t\t14/06/2007\t\t4\n" + note);
    }
    void paymentsFillTheirSchedule()
    {
        QFETCH(int, payments);
        QFETCH(QString, text);
        for (int number = 1; number <= payments; ++number)
            payment(2008, number, number == 3 ? 3.5 : number); // to the even rupee
        ReturnDesk desk(*m_module, 2008);
        desk.print();
        QVERIFY2(desk.viewer.asText().contains(text), qPrintable(desk.viewer.asText()));
        QCOMPARE(desk.printed("NOTE:"), payments > 0);
    }

    /// The rest is printed, and the schedule does not say that nothing was paid.
    void unreadablePayments()
    {
        payment(2008, 1, 500);
        ReturnDesk desk(*m_module, 2008);
        desk.print();
        QVERIFY(desk.printed("\t500\n"));
        sql(Sql("Rename Table FBT_Challan to Away"));
        desk.print();
        QVERIFY(desk.printed("Schedule FBT") && desk.printed("Name of Bank and Branch"));
        QVERIFY(!desk.printed("Nil") && !desk.printed("14/06/2007"));
        QVERIFY(desk.screen()->windowTitle() != "Return Form ITR-8");
        sql(Sql("Rename Table Away to FBT_Challan"));
        desk.print();
        QVERIFY(desk.printed("14/06/2007"));
    }

    /// The return blocks all other screens, but not the preview that it opens.
    void previewCanBeUsed()
    {
        ReturnDesk desk(*m_module, 2006);
        desk.viewer.setObserver({});
        bool blocked = true;
        desk.atNextModal([&] {
            desk.print();
            for (QWidget *window : QApplication::topLevelWidgets()) {
                if (Screen *preview = window->findChild<Screen *>("frmrepview"); preview && preview->isVisible())
                    blocked = QGuiApplication::modalWindow() != nullptr &&
                              !QGuiApplication::modalWindow()->isAncestorOf(preview->window()->windowHandle());
            }
            desk.screen()->Unload();
        });
        frmretfrm modal;
        modal.Load();
        modal.LOADPRNGRID("3B");
        modal.showModal();
        QVERIFY(!blocked);
    }

    void documentsNotThere()
    {
        ReturnDesk desk(*m_module, 2010);
        desk.print();
        QCOMPARE(desk.said(), QStringList(Joined("ITR Forms Directory [", Base->AppPath, "/ITR8Fls2010] not Found.")));
        QCOMPARE(desk.reports, 0);
    }

    /// Neither in the temporary folder nor in that of the program.
    void workFolderCannotBeMade()
    {
        const QString temporary = std::exchange(Base->vTmpPath, Base->AppPath + "/Data/GOI.bmp");
        QFile inTheWay(Base->AppPath + "/A1");
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        ReturnDesk desk(*m_module, 2009);
        desk.print();
        QCOMPARE(desk.said(), QStringList(Joined("Failed to Save to Directory [", Base->AppPath, "/A1/2009].")));
        QCOMPARE(desk.reports, 0);
        QVERIFY(inTheWay.remove());
        Base->vTmpPath = temporary;
    }

    /// The margins of other reports stay as the user set them.
    void marginsStay()
    {
        Base->SaveSettingINI("Settings", "MarginL", "900");
        ReturnDesk desk(*m_module, 2006);
        desk.turnOff("chkform");
        desk.print();
        QCOMPARE(desk.reports, 1);
        QCOMPARE(Base->GetSettingINI("Settings", "MarginL", {}), "900");
        QCOMPARE(Base->GetSettingINI("Settings", "MarginT", {}), "720");
        QVERIFY(!desk.shelf->document->images().isEmpty()); // the seal
    }
};

QTEST_MAIN(TestFrmretfrm)
#include "tst_frmretfrm.moc"
