#include "platform/fault.h"
#include "platform/rtfdocument.h"

#include <QElapsedTimer>
#include <QTest>

#include <functional>
#include <vector>

namespace {

/// A document around a body.
QByteArray whole(const QByteArray &body)
{
    return "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 A;}}\n" + body + "}\n";
}

/// What stands between the head and the end of a document that `whole` made.
QByteArray bodyOf(const RtfDocument &document)
{
    const QByteArray bytes = document.bytes();
    const qsizetype head = bytes.indexOf('\n') + 1;
    return bytes.mid(head, bytes.lastIndexOf('}') - head);
}

QByteArray row(const QByteArrayList &cells)
{
    QByteArray rtf = "\\trowd";
    for (int i = 1; i <= cells.size(); ++i)
        rtf += "\\cellx" + QByteArray::number(i * 1000);
    for (const QByteArray &cell : cells)
        rtf += "\\pard\\intbl " + cell + "\\cell";
    return rtf + "\\row\n";
}

QString describe(const RtfDocument &document)
{
    QStringList tables;
    for (int table = 1; table <= document.tableCount(); ++table) {
        QStringList rows;
        for (int r = 1; r <= document.rowCount(table); ++r) {
            QStringList cells;
            for (int c = 1; c <= document.columnCount(table, r); ++c)
                cells << document.cellText(table, r, c);
            rows << cells.join('|');
        }
        tables << rows.join('/');
    }
    return tables.join(" ; ");
}

} // namespace

/// RTF documents: what is touched changes, all else stays byte for byte.
class TestRtf : public QObject
{
    Q_OBJECT

private slots:
    void untouchedBytesStay_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isWhole");
        QTest::newRow("plain") << whole("\\b x\\b0  y\\par") << true;
        QTest::newRow("odd control words") << whole("\\b-x\\'zz\\u-3 ?\\*\\~ \\\r\n\\x-5-5 \\fs20a") << true;
        QTest::newRow("bytes of a picture") << whole("{\\pict\\bin5 }{\\\\}}\\par") << true;
        QTest::newRow("longer than announced") << whole("\\bin99999999999 x") << false;
        QTest::newRow("after the end") << whole("a") + "more {" << false;
        QTest::newRow("brace too many") << whole("a}b") << false;
        QTest::newRow("cut in a word") << QByteArray("{\\rtf1 a\\pa") << false;
        QTest::newRow("cut in a row") << QByteArray("{\\rtf1\\trowd\\cellx9\\intbl a\\cell}") << false;
        QTest::newRow("cut after a backslash") << QByteArray("{\\rtf1 a\\") << false;
        QTest::newRow("bare head") << QByteArray("{\\rtf1}") << true;
    }
    void untouchedBytesStay()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, isWhole);
        RtfDocument document(bytes);
        QCOMPARE(document.bytes(), bytes);
        QCOMPARE(document.isWhole(), isWhole);
        QCOMPARE(document.replace("no such mark", "x"), 0);
        QCOMPARE(document.bytes(), bytes);
    }

    void replace_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("count");
        QTest::addColumn<QByteArray>("after");
        const QString esc(QChar(27));
        QTest::newRow("one run") << QByteArray("a ##1## b\\par") << "X" << 1 << QByteArray("a X b\\par");
        QTest::newRow("twice in a paragraph") << QByteArray("##1####1##") << "X" << 2 << QByteArray("XX");
        QTest::newRow("across runs") << QByteArray("{\\b #}{\\i #1}\n{\\ul ##}.") << "X" << 1
                                     << QByteArray("{\\b X}{\\i }\n{\\ul }.");
        QTest::newRow("not across paragraphs") << QByteArray("##\\par 1##") << "X" << 0 << QByteArray("##\\par 1##");
        QTest::newRow("letters as codes") << QByteArray("\\'23#\\u49 ?##") << "X" << 1 << QByteArray("X");
        QTest::newRow("stand-ins of several letters")
            << QByteArray("{\\uc2 \\u35 ab#1##}") << "X" << 1 << QByteArray("{\\uc2 X}");
        QTest::newRow("a word before it needs no blank") << QByteArray("\\b ##1##") << "X" << 1 << QByteArray("\\b X");
        QTest::newRow("blank kept apart from a word") << QByteArray("\\b\\'23#1##") << "X" << 1 << QByteArray("\\b X");
        QTest::newRow("in a page's foot")
            << QByteArray("{\\footer ##1##\\par}") << "X" << 1 << QByteArray("{\\footer X\\par}");
        QTest::newRow("in a text box") << QByteArray("{\\shp{\\*\\shpinst{\\sp{\\sn ##1##}}{\\shptxt ##1##\\par}}}")
                                       << "X" << 1
                                       << QByteArray("{\\shp{\\*\\shpinst{\\sp{\\sn ##1##}}{\\shptxt X\\par}}}");
        QTest::newRow("not in a field's code") << QByteArray("{\\field{\\*\\fldinst ##1##}{\\fldrslt ##1##}}") << "X"
                                               << 1 << QByteArray("{\\field{\\*\\fldinst ##1##}{\\fldrslt X}}");
        QTest::newRow("not in what the file says of itself")
            << QByteArray("{\\info{\\title ##1##}}") << "X" << 0 << QByteArray("{\\info{\\title ##1##}}");
        QTest::newRow("the value is not searched") << QByteArray("##1##") << "##1##" << 1 << QByteArray("##1##");
        QTest::newRow("reserved letters") << QByteArray("##1##") << "{a\\b}" << 1 << QByteArray("\\{a\\\\b\\}");
        QTest::newRow("beyond ASCII") << QByteArray("##1##") << QString::fromUtf8("é€₹") << 1
                                      << QByteArray("{\\uc1\\u233\\'e9}{\\uc1\\u8364\\'80}{\\uc1\\u8377 ?}");
        QTest::newRow("struck out") << QByteArray("##1##") << esc + "SCash" + esc + "T/b" << 1
                                    << QByteArray("{\\strike Cash}/b");
        QTest::newRow("struck to the end")
            << QByteArray("##1##") << esc + "Sa" + esc + "S" << 1 << QByteArray("{\\strike a}");
        QTest::newRow("two lines") << QByteArray("##1##") << "a\r\nb" << 1 << QByteArray("a\\line b");
        QTest::newRow("empty value") << QByteArray("[##1##]") << "" << 1 << QByteArray("[]");
    }
    void replace()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, value);
        RtfDocument document(whole(body));
        QTEST(document.replace("##1##", value), "count");
        QTEST(bodyOf(document), "after");
        // What came out is read as it was meant.
        RtfDocument again(document.bytes());
        QVERIFY(again.isWhole());
        QCOMPARE(again.bytes(), document.bytes());
    }

    void tables_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("tables");
        QTest::newRow("none") << QByteArray("a\\par") << "";
        QTest::newRow("two") << row({"a", "b"}) + row({"c"}) + "\\pard x\\par\n" + row({"d"}) << "a|b/c ; d";
        QTest::newRow("runs and paragraphs") << row({"{\\b a}b\\par c", ""}) << "abc|";
        QTest::newRow("form told after the cells")
            << QByteArray("\\trowd\\cellx9\\pard\\intbl{a\\cell }{\\trowd\\cellx9\\row }"
                          "\\pard\\intbl{b\\cell }{\\trowd\\cellx9\\row }")
            << "a/b";
        QTest::newRow("form of the row before") << row({"a"}) + "\\pard\\intbl b\\cell\\row"
                                                << "a/b";
        QTest::newRow("table in a cell")
            << row({"a{\\pard\\intbl\\itap2 n\\nestcell{\\*\\nesttableprops\\trowd\\cellx5\\nestrow}}", "b"}) << "an|b";
        QTest::newRow("not in a page's head") << "{\\header " + row({"h"}) + "}" + row({"a"}) << "a";
    }
    void tables()
    {
        QFETCH(QByteArray, body);
        const RtfDocument document(whole(body));
        QTEST(describe(document), "tables");
    }

    void cells_data()
    {
        QTest::addColumn<QByteArray>("cell");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("text") << QByteArray("old") << QByteArray("X");
        QTest::newRow("look of the first letter")
            << QByteArray("{\\b o}ld\\par{\\i er}") << QByteArray("{\\b X}{\\i }");
        QTest::newRow("empty") << QByteArray("\\fs20") << QByteArray("\\fs20X");
        QTest::newRow("empty with a look") << QByteArray("{\\b\\fs20}") << QByteArray("{\\b\\fs20X}");
        QTest::newRow("a picture stays") << QByteArray("{\\pict 89}old") << QByteArray("{\\pict 89}X");
    }
    void cells()
    {
        QFETCH(QByteArray, cell);
        QFETCH(QByteArray, after);
        RtfDocument document(whole(row({cell, "z"})));
        document.setCell(1, 1, 1, "X");
        QCOMPARE(bodyOf(document), row({after, "z"}));
    }

    void rowsAreCopiedEmpty()
    {
        RtfDocument document(whole(row({"head"}) + row({"{\\b a}", "b\\par c"}) + "\\pard\\par" + row({"next"})));
        document.insertRows(1, 3, 2);
        QCOMPARE(describe(document), QString("head/a|bc/|/| ; next"));
        document.setCell(1, 3, 1, "x");
        document.insertRows(1, 3, 1);
        document.setCell(1, 3, 2, "y");
        QCOMPARE(describe(document), QString("head/a|bc/|y/x|/| ; next"));
        QVERIFY(bodyOf(document).contains("{\\b x}")); // the look came with the copy
        QCOMPARE(describe(RtfDocument(document.bytes())), describe(document));
    }

    void deletedRowsLeaveTheNumbers()
    {
        RtfDocument document(whole(row({"a"}) + "\\pard\\par" + row({"b"}) + row({"c"})));
        document.deleteRow(1, 1);
        document.deleteRow(2, 2);
        document.setCell(2, 1, 1, "d");
        QCOMPARE(describe(document), QString(" ; d"));
        QCOMPARE(bodyOf(document), "\\pard\\par" + row({"d"}));
    }

    void whatIsMissingIsAFault()
    {
        RtfDocument document(whole(row({"a"})));
        const QByteArray before = document.bytes();
        const std::vector<std::function<void()>> wrong = {
            [&] { document.setCell(2, 1, 1, "x"); }, [&] { document.setCell(1, 2, 1, "x"); },
            [&] { document.setCell(1, 1, 2, "x"); }, [&] { document.setCell(0, 0, 0, "x"); },
            [&] { document.insertRows(1, 1, 1); },   [&] { document.insertRows(1, 3, 1); },
            [&] { document.deleteRow(1, 2); },       [&] { (void)document.rowCount(-1); },
        };
        for (const auto &step : wrong)
            QVERIFY_THROWS_EXCEPTION(FaultError, step());
        QCOMPARE(document.bytes(), before);
    }

    /// Filling a schedule row by row takes time in proportion to its rows.
    void manyRows()
    {
        constexpr int rows = 3000;
        RtfDocument document(whole(row({"head", "x"}) + row({"a", "b"})));
        QElapsedTimer clock;
        clock.start();
        for (int i = 2; i < rows; ++i) {
            document.insertRows(1, i + 1, 1);
            document.setCell(1, i + 1, 1, QString::number(i));
        }
        QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(document.cellText(1, rows, 1), QString::number(rows - 1));
    }
};

QTEST_APPLESS_MAIN(TestRtf)
#include "tst_rtf.moc"
