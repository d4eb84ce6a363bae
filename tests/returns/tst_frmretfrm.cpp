#include "returns/frmretfrm.h"

#include "calc/clientyear.h"
#include "platform/clock.h"
#include "suite/report/reportlayout.h"
#include "suite/report/repview.h"
#include "tests/support/caserow.h"
#include "tests/support/employer.h"
#include "tests/support/lawdatabase.h"
#include "tests/support/screenuser.h"

#include <QApplication>
#include <QCheckBox>
#include <QTimer>
#include <QWindow>

namespace {

/// The return of a private company without tax, before which the user sits; reports are kept, not shown.
class ReturnDesk : public ScreenUser
{
public:
    explicit ReturnDesk(int year)
        : shelf(std::make_shared<ReportShelf>())
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

    void print() { click("cmdprn"); }
    [[nodiscard]] int pages() const
    {
        ReportLayout layout(shelf->document, PageFor(*shelf->document, false));
        return layout.pageCount();
    }
    [[nodiscard]] bool printed(const char *text) const { return viewer.asText().contains(QLatin1String(text)); }

    std::shared_ptr<ReportShelf> shelf;
    RepView viewer;
    int reports = 0;
};

} // namespace

/// How the forms lie on their pages, and what goes wrong around them; the rest of the screen is told by the stories of a
/// user.
class TestFrmretfrm : public QObject
{
    Q_OBJECT

    LawDatabase m_law;

private slots:
    void initTestCase()
    {
        employer(*Cnn, "A1").status(16).natures({7});
        SetToday({2009, 8, 1});
        Base->vTmpPath = Base->AppPath + "/tmp";
        for (const char *folder : {"Data", "ITR8Fls2007", "ITR8Fls2008", "ITR8Fls2009"})
            QVERIFY(QFile::link(QString(FBT_SOURCES "/") + folder, Base->AppPath + u'/' + folder));
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
        ReturnDesk desk(year);
        if (blank)
            desk.find<QAbstractButton>("optform_1")->setChecked(true);
        desk.print();
        QTEST(desk.pages(), "pages");
        QCOMPARE(m_law.module.logLines(), QStringList());
    }

    void cancelledHalfWay()
    {
        ReturnDesk desk(2009);
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

    /// The end of the session asks nobody: what leaving the screen keeps is kept, but for a PAN that is none.
    void sessionEndSavesTheReturn()
    {
        ReturnDesk desk(2009);
        desk.type("txtfields_0", "signatory");
        desk.type("txtfields_2", "ABC");
        Screen::endSession();
        QCOMPARE(m_law.module.rows("Select Nm,PAN from FBT_SignDet"), QStringList("SIGNATORY\t"));
        Cnn->Execute("Delete from FBT_SignDet");
    }

    void focusIsScrolledTo()
    {
        ReturnDesk desk(2009);
        desk.screen()->window()->resize(300, 150);
        desk.find<QLineEdit>("txtfields_0")->setFocus();
        for (int fields = 0; fields < 8; ++fields) {
            desk.key(fields % 2 == 0 ? Qt::Key_Tab : Qt::Key_Return);
            QVERIFY2(!QApplication::focusWidget()->visibleRegion().isEmpty(), qPrintable(desk.focus()));
        }
    }

    /// The return blocks all other screens, but not the preview that it opens.
    void previewCanBeUsed()
    {
        ReturnDesk desk(2006);
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
        ReturnDesk desk(2010);
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
        ReturnDesk desk(2009);
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
        ReturnDesk desk(2006);
        desk.find<QCheckBox>("chkform")->setChecked(false);
        desk.print();
        QCOMPARE(desk.reports, 1);
        QCOMPARE(Base->GetSettingINI("Settings", "MarginL", {}), "900");
        QCOMPARE(Base->GetSettingINI("Settings", "MarginT", {}), "720");
        QVERIFY(!desk.shelf->document->images().isEmpty()); // the seal
    }
};

QTEST_MAIN(TestFrmretfrm)
#include "tst_frmretfrm.moc"
