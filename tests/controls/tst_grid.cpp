#include "controls/grid.h"

#include "controls/gridheader.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

/// The grid as a user and a screen meet it: the current row, keys, editing, header cells.
class TestGrid : public QObject
{
    Q_OBJECT

private:
    [[nodiscard]] QPoint centreOf(int row, int col) const;
    template<class Editor>
    [[nodiscard]] Editor *editor() const
    {
        const auto all = m_grid->viewport()->findChildren<Editor *>();
        return all.isEmpty() ? nullptr : all.last();
    }

    std::unique_ptr<Grid> m_grid;

private slots:
    void init()
    {
        m_grid = std::make_unique<Grid>();
        m_grid->setCaptions({"Sr.", "Name", "Amount"});
        for (const char *name : {"Delta", "alpha", "Charlie", "bravo"})
            m_grid->AddItem({QString::number(m_grid->Rows()), name, "10"});
        m_grid->resize(400, 300);
        m_grid->show();
        QVERIFY(QTest::qWaitForWindowActive(m_grid.get()));
    }

    void cleanup() { m_grid.reset(); }

    void noRowIsCurrentUntilOneIsSet()
    {
        m_grid->setFocus();
        QVERIFY(m_grid->Row() == 0 && !m_grid->hasDataRow());
        const QSignalSpy moves(m_grid.get(), &Grid::rowColChange);
        for (const int row : {1, 1, 99})
            m_grid->setRow(row);
        QCOMPARE(moves.size(), 1);
        QCOMPARE(moves.constFirst(), QVariantList({0, 0, 1, 0}));
    }

    void currentRowThroughChanges()
    {
        const auto current = [this] { return m_grid->TextMatrix(m_grid->Row(), 1); };
        m_grid->setRow(3);
        m_grid->Sort(1);
        QCOMPARE(current(), QString("Charlie"));
        QCOMPARE(m_grid->currentIndex().data().toString(), QString("3"));
        m_grid->AddItem({"0", "first"}, 1);
        m_grid->RemoveItem(2);
        QCOMPARE(current(), QString("Charlie"));
        m_grid->RemoveItem(1);
        QCOMPARE(current(), QString("Charlie"));
        m_grid->RemoveItem(m_grid->Row()); // the one below takes its place
        QCOMPARE(current(), QString("Delta"));
        m_grid->RemoveItem(m_grid->Row()); // there is none below
        QCOMPARE(current(), QString("bravo"));
        m_grid->RemoveItem(1);
        QCOMPARE(m_grid->Row(), 0);
        m_grid->RemoveItem(0);
        QCOMPARE(m_grid->Rows(), 1);
    }

    void fromAHiddenColumnTheKeysLeadOn()
    {
        m_grid->setCol(0);
        m_grid->setRow(1);
        m_grid->setColHidden(0, true);
        QTest::keyClick(m_grid.get(), Qt::Key_Down);
        QCOMPARE(m_grid->Row(), 2);
    }

    void hiddenRowStaysCurrent()
    {
        m_grid->setRow(2);
        const QSignalSpy moves(m_grid.get(), &Grid::rowColChange);
        m_grid->setRowsVisible([](int) { return false; });
        QVERIFY(m_grid->Row() == 2 && m_grid->RowHidden(2));
        QVERIFY(m_grid->firstVisibleRow() == -1 && !m_grid->currentIndex().isValid());
        m_grid->setRowHidden(4, false);
        QCOMPARE(m_grid->Row(), 2);
        m_grid->showAllRows();
        QCOMPARE(m_grid->currentIndex().row(), 1);
        QCOMPARE(moves.size(), 0);
    }

    void reloadWithRedrawOff()
    {
        m_grid->setRow(3);
        const QSignalSpy moves(m_grid.get(), &Grid::rowColChange);
        m_grid->setRedraw(false);
        m_grid->setRedraw(false);
        m_grid->clearBody();
        m_grid->AddItem({"1", "only"});
        m_grid->setRow(1);
        m_grid->setRedraw(true);
        QCOMPARE(m_grid->model()->rowCount(), 0);
        m_grid->setRedraw(true);
        QCOMPARE(m_grid->model()->rowCount(), 1);
        QCOMPARE(moves.size(), 1);
        QCOMPARE(moves.constFirst(), QVariantList({3, 0, 1, 0}));
        QCOMPARE(m_grid->currentIndex().row(), 0);
    }

    void keysMoveAndAreTold()
    {
        m_grid->setRow(1);
        m_grid->setRowHidden(2, true);
        const QSignalSpy keys(m_grid.get(), &Grid::keyPress);
        QTest::keyClick(m_grid.get(), Qt::Key_Down);
        QCOMPARE(m_grid->Row(), 3);
        QTest::keyClick(m_grid.get(), Qt::Key_PageDown);
        QCOMPARE(m_grid->Row(), 4);
        QTest::keyClick(m_grid.get(), Qt::Key_Return);
        QTest::keyClick(m_grid.get(), Qt::Key_Escape);
        QVERIFY(keys.size() == 2 && keys[0][0].toInt() == 13 && keys[1][0].toInt() == 27);
    }

    void typedEditIsValidatedAndTold()
    {
        m_grid->setEditable([](int, int col) { return col == 2; });
        m_grid->setValidateEdit([](int, int, QString &text) {
            text += ".00";
            return true;
        });
        QStringList order;
        connect(m_grid.get(), &Grid::afterEdit, this, [&](int row, int col) {
            order.append(m_grid->TextMatrix(row, col));
            QVERIFY(!m_grid->isEditing());
        });
        m_grid->setCell(2, 1);
        QVERIFY(!m_grid->EditCell());
        m_grid->setCol(2);
        QTest::keyClick(m_grid.get(), Qt::Key_4);
        QVERIFY(m_grid->isEditing());
        QTest::keyClicks(editor<QLineEdit>(), "2");
        QTest::keyClick(editor<QLineEdit>(), Qt::Key_Return);
        QCOMPARE(order, QStringList("42.00"));
        QVERIFY(m_grid->Row() == 2 && m_grid->hasFocus());
    }

    void refusedEditStaysOpen()
    {
        m_grid->setEditable([](int, int col) { return col == 2; });
        int asked = 0;
        m_grid->setValidateEdit([&](int, int, const QString &text) {
            ++asked;
            return text != "bad";
        });
        const QSignalSpy edits(m_grid.get(), &Grid::afterEdit);
        m_grid->setCell(1, 2);
        QVERIFY(m_grid->EditCell());
        auto *line = editor<QLineEdit>();
        QTest::keyClicks(line, "bad");
        QTest::keyClick(line, Qt::Key_Return);
        QVERIFY(m_grid->isEditing() && line->selectedText() == "bad");
        QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, centreOf(3, 1));
        QVERIFY(m_grid->isEditing() && m_grid->Row() == 1);
        QTRY_VERIFY(line->hasFocus());
        QCOMPARE(edits.size(), 0);
        QTest::keyClicks(line, "77");
        QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, centreOf(3, 1));
        QCOMPARE(m_grid->TextMatrix(1, 2), QString("77"));
        QVERIFY(m_grid->Row() == 3 && edits.size() == 1 && asked == 3);
    }

    void finishesAnEditWithoutTheFocus()
    {
        QVERIFY(m_grid->finishEdit()); // nothing to finish
        m_grid->setEditable([](int, int) { return true; });
        m_grid->setValidateEdit([](int, int, QString &text) { return text != "bad"; });
        const QSignalSpy edits(m_grid.get(), &Grid::afterEdit);
        m_grid->setCell(1, 2);
        QVERIFY(m_grid->EditCell());
        QTest::keyClicks(editor<QLineEdit>(), "bad");
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(!m_grid->finishEdit() && m_grid->isEditing());
        QCOMPARE(m_grid->window()->focusWidget(), editor<QLineEdit>());
        QCOMPARE(m_grid->TextMatrix(1, 2), QString("10"));
        editor<QLineEdit>()->setText("77");
        QVERIFY(m_grid->finishEdit() && !m_grid->isEditing());
        QCOMPARE(m_grid->TextMatrix(1, 2), QString("77"));
        QCOMPARE(edits.size(), 1);
    }

    void goesWithAnEditorOpen()
    {
        int asked = 0;
        m_grid->setEditable([](int, int) { return true; });
        m_grid->setValidateEdit([&](int, int, QString &) { return ++asked, true; });
        m_grid->setCell(1, 2);
        QVERIFY(m_grid->EditCell());
        m_grid.reset();
        QCOMPARE(asked, 0);
    }

    void checkBoxBySpaceAndClick()
    {
        m_grid->setColCheck(2);
        m_grid->setTextMatrix(1, 2, "0");
        m_grid->setEditable([](int row, int col) { return col == 2 && row != 2; });
        const QSignalSpy edits(m_grid.get(), &Grid::afterEdit);
        const auto boxAfter = [this](int row, int col, bool byMouse) {
            m_grid->setCell(row, col);
            if (byMouse)
                QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, centreOf(row, col));
            else
                QTest::keyClick(m_grid.get(), Qt::Key_Space);
            return m_grid->TextMatrix(row, 2);
        };
        QCOMPARE(boxAfter(1, 2, false), QString("-1"));
        QCOMPARE(boxAfter(1, 2, true), QString("0"));
        QCOMPARE(boxAfter(2, 2, true), QString("10"));  // not editable
        QCOMPARE(boxAfter(1, 0, false), QString("-1")); // the only box of the row
        QCOMPARE(edits.size(), 3);
        m_grid->setValidateEdit([](int, int, QString &) { return false; });
        QCOMPARE(boxAfter(1, 2, true), QString("-1"));
        m_grid->setValidateEdit([](int, int, QString &) { return true; });
        m_grid->setColCheck(1); // which of the two is meant cannot be told
        m_grid->setEditable([](int, int col) { return col > 0; });
        QCOMPARE(boxAfter(1, 0, false), QString("-1"));
        m_grid->setRowHidden(1, true);
        m_grid->setEditable([](int, int col) { return col == 2; });
        QCOMPARE(boxAfter(1, 0, false), QString("-1"));
    }

    void headerBlocks()
    {
        Grid grid;
        grid.setCols(6);
        grid.setFixedRows(2);
        const QList<QStringList> captions{{"Sr.", "April", "hidden", "April", "", ""},
                                          {"Sr.", "April", "x", "Value", "", ""}};
        for (int cell = 0; cell < 12; ++cell)
            grid.setTextMatrix(cell / 6, cell % 6, captions.at(cell / 6).at(cell % 6));
        grid.setColHidden(2, true);
        grid.setMergeHeaders(true);
        using Row = std::tuple<const char *, int, int, QList<int>>; // row, column; top, bottom, left, right
        const std::vector<Row> rows{{"downwards", 0, 0, {0, 1, 0, 0}},
                                    {"to the side, over a hidden column", 0, 1, {0, 0, 1, 3}},
                                    {"from the right end", 0, 3, {0, 0, 1, 3}},
                                    {"its own", 1, 3, {1, 1, 3, 3}},
                                    {"empty cells stay apart", 1, 4, {1, 1, 4, 4}},
                                    {"wider above does not join", 1, 1, {1, 1, 1, 1}}};
        for (const auto &[name, row, col, expected] : rows) {
            const GridHeader::Block block = grid.gridHeader()->blockAt(row, col);
            QVERIFY2((QList{block.top, block.bottom, block.left, block.right}) == expected, name);
        }
    }
};

QPoint TestGrid::centreOf(int row, int col) const
{
    const GridModel *model = m_grid->gridModel();
    return m_grid->visualRect(model->index(model->viewRow(row), col)).center();
}

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"
