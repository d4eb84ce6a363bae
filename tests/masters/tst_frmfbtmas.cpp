#include "masters/frmfbtmas.h"

#include "tests/support/lawdatabase.h"
#include "tests/support/screenuser.h"

/// The rates of an item under the mouse; all else of the screen is told by the stories of a user.
class TestLaw : public QObject
{
    Q_OBJECT
private slots:
    void aClickGoesToItsRate()
    {
        const LawDatabase law;
        ScreenUser user;
        user.open<frmfbtmas>();
        user.choose("Combo4", "2008-09");
        user.grid("vsf")->setRow(user.grid("vsf")->FindRow("5", 1, 3));
        user.click("cmdpaydet");
        user.grid("vsf2")->setRow(user.grid("vsf2")->FindRow("18", 2, 2));
        user.click("cmdmodifyded");
        Grid *vsfr = user.grid("vsfr");
        const auto clickRate = [vsfr](int row) {
            const QPoint at = vsfr->visualRect(vsfr->model()->index(row - 1, 1)).center();
            QTest::mouseClick(vsfr->viewport(), Qt::LeftButton, {}, at);
        };
        vsfr->setCell(5, 1); // the rate left last: the first one gets current with the focus, and must not open
        clickRate(3);
        QCoreApplication::processEvents();
        QVERIFY(vsfr->Row() == 3 && vsfr->isEditing());
        user.keys("9");
        clickRate(1);
        QCOMPARE(vsfr->Row(), 1);
        QCOMPARE(vsfr->TextMatrix(4, 1), QString("9.00"));
        user.key(Qt::Key_Escape);
        QVERIFY(!vsfr->isEditing());
        user.key(Qt::Key_Return); // Enter goes down from a rate that is not open, too
        QVERIFY(vsfr->Row() == 2 && vsfr->isEditing());
        user.key(Qt::Key_Tab);
        QVERIFY(!vsfr->isEditing() && !vsfr->hasFocus());
    }

    /// A head that never got an item shares its number with the next one: the one chosen is changed, the one chosen goes.
    void headsOfOneNumber()
    {
        LawDatabase law;
        ScreenUser user;
        user.open<frmfbtmas>();
        user.choose("Combo4", "2008-09");
        for (const char *section : {"ZZ1", "ZZ2"}) {
            user.click("cmdaddch");
            user.type("txtchflds_0", section);
            user.type("txtchflds_1", "TEXT");
            user.click("cmdupdatech");
        }
        const auto stored = [&law] {
            return law.module.rows("Select Section,HeadDesc from FBT_Head2008 Where HeadId>21 Order by Section");
        };
        const auto choose = [&user](const char *section) {
            user.grid("vsf")->setRow(user.grid("vsf")->FindRow(section, 1, 1));
        };
        choose("ZZ2");
        user.click("cmdmodifych");
        user.type("txtchflds_1", "OTHER");
        user.click("cmdupdatech");
        QCOMPARE(stored(), QStringList({"ZZ1\tTEXT", "ZZ2\tOTHER"}));
        choose("ZZ1");
        user.answers({Reply::Yes});
        user.click("cmddeletech");
        QCOMPARE(stored(), QStringList("ZZ2\tOTHER"));
        user.said();
    }
};

QTEST_MAIN(TestLaw)
#include "tst_frmfbtmas.moc"
