#include "controls/dateedit.h"
#include "controls/incremental.h"
#include "controls/matchlist.h"

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
        (new QVBoxLayout(&page))->addWidget(&field, 0, Qt::AlignTop);
        page.resize(500, 400);
        page.show();
        [&] { QVERIFY(QTest::qWaitForWindowActive(&page)); }();
        field.setFocus();
    }

    QWidget page;
    QLineEdit field;
};

} // namespace

/// The smaller controls: dates, lists of matches, incremental search.
class TestFields : public QObject
{
    Q_OBJECT

private slots:
    void typedDate()
    {
        const QPair<const char *, QString> rows[] = {
            {"01042007", "01/04/2007"}, {"010407", "01/04/07"}, {"01/04/2007", "01/04/2007"}, {"1/4/2007", "1/4/2007"},
            {"1-4-07", "1-4-07"},       {"0a1x", "01"},         {"010420071", "01/04/2007"}};
        for (const auto &[keys, text] : rows) {
            MaskedDate date;
            QTest::keyClicks(&date, keys);
            QVERIFY2(date.text() == text, keys);
            for (int i = 0; i < 10; ++i)
                QTest::keyClick(&date, Qt::Key_Backspace);
            QVERIFY2(date.text().isEmpty() && date.date().isEmpty(), keys);
        }
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
        QApplication::clipboard()->setText("31 Jan 2007");
        date.selectAll();
        QTest::keySequence(&date, QKeySequence::Paste);
        QCOMPARE(date.text(), QString("01/04/2007"));
    }

    void matchListFollowsTyping()
    {
        Page page;
        MatchList list(&page.page);
        list.setHeader("Head of Expenses");
        list.setItems({{"3", "Conference"}, {"1", "Conveyance"}, {"2", "Entertainment"}});
        QVERIFY(list.isHidden() && list.selectId("1"));
        list.showUnder(&page.field);
        QVERIFY(list.isVisible() && page.field.hasFocus());
        QCOMPARE(list.currentText(), QString("Conveyance"));
        QTest::keyClicks(&page.field, "e");
        QCOMPARE(list.currentId(), QString("2"));
        QTest::keyClicks(&page.field, "x"); // none: stays
        QCOMPARE(list.currentId(), QString("2"));
        QVERIFY(!list.selectId("9") && list.currentId().isEmpty());

        const QSignalSpy picks(&list, &MatchList::picked);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {20, 8});
        QVERIFY(picks.size() == 1 && page.field.hasFocus());
        QCOMPARE(list.currentId(), QString("3"));

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
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Up})
            QTest::keyClick(&page.field, key);
        QCOMPARE(list.currentId(), QString("1"));
        for (int i = 0; i < 11; ++i)
            QTest::keyClick(&page.field, Qt::Key_PageDown);
        QCOMPARE(list.currentId(), QString("50"));
        QVERIFY(list.isRowInView(list.Row()) && page.field.hasFocus());
    }

    void matchListFilters()
    {
        using Row = std::tuple<const char *, QString, QStringList>;
        const std::vector<Row> rows{
            {"begins with", "AB", {"ABC", "ABD"}}, {"case counts", "ab", {"abE"}}, {"none", "ABX", {}}};
        for (const auto &[name, keys, expected] : rows) {
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
                    shown << list.TextMatrix(row, 1);
            }
            QVERIFY2(shown == expected && list.isVisible() != shown.isEmpty(), name);
            page.field.clearFocus();
            QVERIFY2(list.isHidden(), name);
        }
    }

    void incrementalSearch()
    {
        using Row = std::tuple<const char *, QString, QString, QString, int>; // keys, text, what is marked, entry
        const std::vector<Row> rows{{"first that begins", "m", "Madhya Pradesh", "adhya Pradesh", 1},
                                    {"narrows, no case", "MaH", "Maharashtra", "arashtra", 2},
                                    {"none", "mx", "Mx", "", -1},
                                    {"all typed", "goa", "Goa", "", 0}};
        for (const auto &[name, keys, text, marked, index] : rows) {
            QComboBox combo;
            combo.addItems({"Goa", "Madhya Pradesh", "Maharashtra"});
            new IncrementalSearch(&combo);
            combo.clearEditText();
            QTest::keyClicks(&combo, keys);
            QVERIFY2(combo.currentText() == text && combo.currentIndex() == index, name);
            QVERIFY2(combo.lineEdit()->selectedText() == marked, name);
            QVERIFY2(combo.lineEdit()->cursorPosition() == keys.size(), name);
        }
    }
};

QTEST_MAIN(TestFields)
#include "tst_fields.moc"
