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
};

QTEST_MAIN(TestLaw)
#include "tst_frmfbtmas.moc"
