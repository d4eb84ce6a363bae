#include "controls/gridmodel.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QTest>

namespace {

void fill(GridModel &model, const QStringList &texts)
{
    model.setCols(2);
    model.setFixedRows(1);
    for (const QString &text : texts)
        model.insertGridRow({text, QString::number(model.rows())});
}

QStringList column(const GridModel &model, int col)
{
    QStringList texts;
    for (int row = model.fixedRows(); row < model.rows(); ++row)
        texts.append(model.text(row, col));
    return texts;
}

QStringList shownColumn(const GridModel &model, int col)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, col).data().toString());
    return texts;
}

} // namespace

/// The flat model: its texts, its order and its hidden rows, against plain lists, with a tester watching each signal.
class TestGridModel : public QObject
{
    Q_OBJECT

private slots:
    void textsSurviveEditsAndCompaction()
    {
        CellTexts texts(3);
        for (int i = 0; i < 200; ++i)
            texts.addSlot();
        for (int round = 0; round < 60; ++round) {
            for (CellTexts::Slot slot = 0; slot < 200; ++slot)
                texts.setText(slot, 1, QString::number(slot).repeated(round % 7));
        }
        texts.setText(7, 0, u"kept");
        texts.freeSlots(std::array{CellTexts::Slot{199}});
        QCOMPARE(texts.text(7, 0).toString(), QString("kept"));
        QCOMPARE(texts.text(198, 1).toString(), QString("198").repeated(3));
        QVERIFY(texts.waste() <= texts.runLength() / 2 + 4096);
        QVERIFY(texts.runLength() < 12000); // without compaction 60 rounds leave more than 20,000 characters

        const CellTexts::Slot again = texts.addSlot();
        QCOMPARE(again, 199U);
        QVERIFY(texts.text(again, 1).isEmpty());
        texts.setCols(2);
        QCOMPARE(texts.text(198, 1).toString(), QString("198").repeated(3));
    }

    void ownTextCanBeStoredAgain()
    {
        CellTexts texts(2);
        const CellTexts::Slot slot = texts.addSlot();
        texts.setText(slot, 0, u"a text that moves when the run grows");
        for (int i = 0; i < 50; ++i) {
            texts.setText(slot, 1, u"");
            texts.setText(slot, 1, texts.text(slot, 0));
        }
        QCOMPARE(texts.text(slot, 1).toString(), QString("a text that moves when the run grows"));
    }

    void randomChangesMatchPlainList()
    {
        GridModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        fill(model, {});
        QList<std::pair<QString, bool>> plain; // text, hidden
        QRandomGenerator random(20070401);
        for (int step = 0; step < 3000; ++step) {
            const QString text = QString::number(random.bounded(1000));
            model.setExposed(random.bounded(4) > 0); // not exposed it must tell nothing
            const int at = plain.isEmpty() ? -1 : random.bounded(static_cast<int>(plain.size()));
            switch (at < 0 ? 0 : random.bounded(8)) {
            case 0:
                model.insertGridRow({text}, std::max(at, 0) + 1);
                plain.insert(std::max(at, 0), {text, false});
                break;
            case 1:
                model.removeGridRow(at + 1);
                plain.removeAt(at);
                break;
            case 2:
            case 3:
                model.setText(at + 1, 0, text);
                plain[at].first = text;
                break;
            case 4:
            case 5:
                model.setRowHidden(at + 1, step % 2 == 0);
                plain[at].second = step % 2 == 0;
                break;
            case 6: {
                const int count = std::min(static_cast<int>(plain.size()), 40) + step % 3 - 1;
                model.setRows(count + 1);
                plain.resize(count, {QString(), false});
                break;
            }
            default:
                model.sort(0, Qt::AscendingOrder);
                std::stable_sort(plain.begin(), plain.end(), [](const auto &a, const auto &b) {
                    return (a.first.isEmpty() ? -1 : a.first.toInt()) < (b.first.isEmpty() ? -1 : b.first.toInt());
                });
            }
            QStringList all;
            QStringList shown;
            for (const auto &[rowText, hidden] : plain) {
                all.append(rowText);
                if (!hidden)
                    shown.append(rowText);
            }
            model.setExposed(true);
            QCOMPARE(column(model, 0), all);
            QCOMPARE(shownColumn(model, 0), shown);
        }
        model.setCols(4);
        model.setCols(1);
        model.setFixedRows(2);
        QCOMPARE(model.rows(), std::max(2, static_cast<int>(plain.size()) + 1));
    }

    void sorts()
    {
        using Row = std::tuple<const char *, QStringList, QString, Qt::SortOrder, QStringList>;
        const std::vector<Row> rows{
            {"numbers by value", {"10", "9.5", "-1", ""}, "", Qt::AscendingOrder, {"", "-1", "9.5", "10"}},
            {"one text makes them texts", {"10", "9", "N/A"}, "", Qt::AscendingOrder, {"10", "9", "N/A"}},
            {"texts without case", {"b", "A", "a", "B"}, "", Qt::AscendingOrder, {"A", "a", "b", "B"}},
            {"descending stays stable", {"b", "A", "a", "B"}, "", Qt::DescendingOrder, {"b", "B", "A", "a"}},
            {"by the list", {"1", "3", "2", "9"}, "#3;Zero|#2;One|#1;Two", Qt::AscendingOrder, {"9", "3", "2", "1"}}};
        for (const auto &[name, texts, list, order, sorted] : rows) {
            GridModel model;
            fill(model, texts);
            const TranslationList translation(list);
            model.changeColumn(0, [&translation](GridColumn &look) { look.list = translation; });
            model.sort(0, order);
            QVERIFY2(column(model, 0) == sorted, name);
        }
    }

    void findsRows()
    {
        GridModel model;
        fill(model, {"ABC", "x", "ab"});
        model.setRowHidden(3, true);
        using Row = std::tuple<const char *, QString, int, Qt::CaseSensitivity, bool, int>;
        const std::vector<Row> rows{{"begins, no case", "ab", 1, Qt::CaseInsensitive, false, 1},
                                    {"goes on after a row", "ab", 2, Qt::CaseInsensitive, false, 3},
                                    {"case counts", "ab", 1, Qt::CaseSensitive, false, 3},
                                    {"whole text", "ab", 1, Qt::CaseInsensitive, true, 3},
                                    {"none", "zz", 1, Qt::CaseInsensitive, false, -1},
                                    {"empty begins any", "", 2, Qt::CaseInsensitive, false, 2},
                                    {"header counts from 0", "", 0, Qt::CaseInsensitive, true, 0}};
        for (const auto &[name, text, from, sensitivity, full, row] : rows)
            QVERIFY2(model.findRow(text, from, 0, sensitivity, full) == row, name);
    }

    void showsTexts()
    {
        using Row = std::tuple<const char *, QString, QString, QString, QString>; // stored, format, list, shown
        const std::vector<Row> rows{
            {"format", "12.345", "###0.00", "", "12.35"},
            {"empty stays empty", "", "###0.00", "", ""},
            {"no number stays", "-", "###0.00", "", "-"},
            {"translated", "4", "", "#0;Annual|#4;January-March", "January-March"},
            {"not in the list", "5", "", "#0;Annual", "5"},
            {"shown empty", "0", "", "#0;|#1;A", ""},
            {"entry for itself", "Cash", "", "Cash|#1;Cheque", "Cash"},
        };
        for (const auto &[name, stored, format, list, shown] : rows) {
            GridModel model;
            fill(model, {stored});
            GridColumn wanted;
            wanted.format = format;
            wanted.list = TranslationList(list);
            model.changeColumn(0, [&wanted](GridColumn &look) { look = wanted; });
            QVERIFY2(model.shownText(1, 0) == shown && model.text(1, 0) == stored, name);
        }
    }
};

QTEST_MAIN(TestGridModel)
#include "tst_gridmodel.moc"
