#include "controls/dateedit.h"
#include "controls/incremental.h"
#include "controls/matchlist.h"
#include "controls/pelkbtn.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace {

/// A page with a field and another to go to.
struct Page
{
    Page()
    {
        auto *column = new QVBoxLayout(&page);
        column->addWidget(&field);
        column->addStretch();
        page.resize(500, 400);
        page.show();
        const bool active = QTest::qWaitForWindowActive(&page);
        Q_ASSERT(active);
        Q_UNUSED(active)
        field.setFocus();
    }

    QWidget page;
    QLineEdit field;
};

} // namespace

/// The smaller controls: dates, lists of matches, incremental search, the self-drawn button.
class TestFields : public QObject
{
    Q_OBJECT

private slots:
    void typedDate_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        QTest::newRow("digits alone") << "01042007"
                                      << "01/04/2007";
        QTest::newRow("two-digit year") << "010407"
                                        << "01/04/07";
        QTest::newRow("slashes typed") << "01/04/2007"
                                       << "01/04/2007";
        QTest::newRow("one digit each") << "1/4/2007"
                                        << "1/4/2007";
        QTest::newRow("dashes") << "1-4-07"
                                << "1-4-07";
        QTest::newRow("letters are dropped") << "0a1x"
                                             << "01";
        QTest::newRow("not longer than a date") << "010420071"
                                                << "01/04/2007";
    }

    void typedDate()
    {
        QFETCH(QString, keys);
        MaskedDate date;
        QTest::keyClicks(&date, keys);
        QTEST(date.text(), "text");
        for (int i = 0; i < 10; ++i)
            QTest::keyClick(&date, Qt::Key_Backspace);
        QCOMPARE(date.text(), QString());
        QCOMPARE(date.date(), QString());
    }

    void dateTakesWhatFitsInto()
    {
        MaskedDate date;
        QApplication::clipboard()->setText(" 01/04/2007\n");
        QTest::keySequence(&date, QKeySequence::Paste);
        QCOMPARE(date.text(), QString("01/04/2007"));
        date.setCursorPosition(2);
        QTest::keyClicks(&date, "x");
        QCOMPARE(date.cursorPosition(), 2);
    }

    void dateIsConvertedOnLeaving()
    {
        Page page;
        MaskedDate date(&page.page);
        date.setConverter([](const QString &typed) { return typed == "1-4-07" ? "01/04/2007" : ""; });
        date.show();
        date.setFocus();
        QTest::keyClicks(&date, "1-4-07");
        QCOMPARE(date.text(), QString("1-4-07"));
        QCOMPARE(date.date(), QString("01/04/2007"));
        page.field.setFocus();
        QCOMPARE(date.text(), QString("01/04/2007"));
        date.setText("99");
        date.setFocus();
        page.field.setFocus();
        QCOMPARE(date.text(), QString());
    }

    void matchListFollowsTyping()
    {
        Page page;
        MatchList list(&page.page);
        list.setHeader("Head of Expenses");
        list.setItems({{"3", "Conference"}, {"1", "Conveyance"}, {"2", "Entertainment"}});
        QVERIFY(list.isHidden());
        QVERIFY(list.selectId("1"));
        list.showUnder(&page.field);
        QVERIFY(list.isVisible());
        QVERIFY(page.field.hasFocus());
        QCOMPARE(list.currentText(), QString("Conveyance"));
        QTest::keyClicks(&page.field, "e");
        QCOMPARE(list.currentId(), QString("2"));
        QTest::keyClicks(&page.field, "x"); // none: stays
        QCOMPARE(list.currentId(), QString("2"));
        QVERIFY(!list.selectId("9"));
        QCOMPARE(list.currentId(), QString());

        const QSignalSpy picks(&list, &MatchList::picked);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {20, 8});
        QCOMPARE(picks.size(), 1);
        QCOMPARE(list.currentId(), QString("3"));
        QVERIFY(page.field.hasFocus());

        const QSignalSpy dismissals(&list, &MatchList::dismissed);
        list.dismiss();
        list.dismiss();
        QCOMPARE(dismissals.size(), 1);
        QTest::keyClicks(&page.field, "e");
        QCOMPARE(list.currentId(), QString("3")); // no longer followed
    }

    void matchListKeys()
    {
        Page page;
        MatchList list(&page.page);
        std::vector<MatchList::Item> items;
        for (int i = 1; i <= 50; ++i)
            items.push_back({QString::number(i), QString("Item %1").arg(i)});
        list.setItems(items);
        list.showUnder(&page.field);
        QTest::keyClick(&page.field, Qt::Key_Down);
        QCOMPARE(list.currentId(), QString("1"));
        QTest::keyClick(&page.field, Qt::Key_Down);
        QTest::keyClick(&page.field, Qt::Key_Up);
        QTest::keyClick(&page.field, Qt::Key_Up);
        QCOMPARE(list.currentId(), QString("1"));
        QTest::keyClick(&page.field, Qt::Key_PageDown);
        const int afterPage = list.currentId().toInt();
        QVERIFY(afterPage > 5 && afterPage < 12);
        QVERIFY(list.isRowInView(list.Row()));
        for (int i = 0; i < 10; ++i)
            QTest::keyClick(&page.field, Qt::Key_PageDown);
        QCOMPARE(list.currentId(), QString("50"));
        QVERIFY(list.isRowInView(list.Row()));
        QVERIFY(page.field.hasFocus());
    }

    void matchListStaysOnThePage()
    {
        Page page;
        MatchList list(&page.page);
        list.setItems(std::vector<MatchList::Item>(30, {"1", "Item"}));
        QLineEdit low(&page.page);
        low.setGeometry(20, 370, 100, 24);
        low.show();
        list.showUnder(&low);
        QVERIFY(page.page.rect().contains(list.geometry()));
        QVERIFY(!list.geometry().intersects(low.geometry()));
    }

    void matchListFilters_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("begins with") << "AB" << QStringList{"ABC", "ABD"};
        QTest::newRow("case counts") << "ab" << QStringList{"abE"};
        QTest::newRow("none") << "ABX" << QStringList{};
    }

    void matchListFilters()
    {
        QFETCH(QString, keys);
        Page page;
        MatchList list(&page.page);
        list.setMode(MatchList::Mode::Filter);
        list.setItems({{"", "ABC"}, {"", "abE"}, {"", "ABD"}, {"", "XAB"}});
        list.showUnder(&page.field);
        QVERIFY(list.isHidden());
        QTest::keyClicks(&page.field, keys);
        QStringList shown;
        for (int row = list.FixedRows(); row < list.Rows(); ++row) {
            if (!list.RowHidden(row))
                shown.append(list.TextMatrix(row, 1));
        }
        QTEST(shown, "shown");
        QCOMPARE(list.isVisible(), !shown.isEmpty());
        page.field.clearFocus();
        QVERIFY(list.isHidden());
    }

    void incrementalSearch_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("marked");
        QTest::addColumn<int>("index");
        QTest::newRow("first that begins") << "m"
                                           << "Madhya Pradesh"
                                           << "adhya Pradesh" << 1;
        QTest::newRow("narrows, no case") << "MaH"
                                          << "Maharashtra"
                                          << "arashtra" << 2;
        QTest::newRow("none") << "mx"
                              << "Mx"
                              << "" << -1;
        QTest::newRow("all typed") << "goa"
                                   << "Goa"
                                   << "" << 0;
    }

    void incrementalSearch()
    {
        QFETCH(QString, keys);
        QComboBox combo;
        combo.addItems({"Goa", "Madhya Pradesh", "Maharashtra"});
        new IncrementalSearch(&combo);
        combo.clearEditText();
        QTest::keyClicks(&combo, keys);
        QTEST(combo.currentText(), "text");
        QTEST(combo.lineEdit()->selectedText(), "marked");
        QTEST(combo.currentIndex(), "index");
        QCOMPARE(combo.lineEdit()->cursorPosition(), static_cast<int>(keys.size()));
    }

    void button()
    {
        PelkBtn button;
        button.setText("&Challan");
        button.show();
        QVERIFY(QTest::qWaitForWindowActive(&button));
        const QSignalSpy clicks(&button, &QAbstractButton::clicked);
        button.setFocus();
        QTest::keyClick(&button, Qt::Key_Space);
        QTest::keyClick(&button, Qt::Key_Return);
        QTest::keyClick(&button, Qt::Key_C, Qt::AltModifier);
        QTRY_COMPARE(clicks.size(), 3);
    }
};

QTEST_MAIN(TestFields)
#include "tst_fields.moc"
