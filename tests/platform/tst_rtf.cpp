#include "platform/fault.h"
#include "platform/rtfdocument.h"
#include "tests/support/caserow.h"

#include <QElapsedTimer>

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
    void untouchedBytesStay()
    {
        const QByteArrayList good{whole("\\b x\\b0  y\\par"),
                                  whole("\\b-x\\'zz\\u-3 ?\\*\\~ \\\r\n\\x-5-5 \\fs20a"), // odd control words
                                  whole("{\\pict\\bin5 }{\\\\}}\\par"),                   // bytes of a picture
                                  "{\\rtf1}"};
        const QByteArrayList broken{whole("\\bin99999999999 x"), // longer than announced
                                    whole("a") + "more {",
                                    whole("a}b"),
                                    "{\\rtf1 a\\pa",
                                    "{\\rtf1\\trowd\\cellx9\\intbl a\\cell}",
                                    "{\\rtf1 a\\"};
        for (const QByteArray &bytes : good + broken) {
            RtfDocument document(bytes);
            QVERIFY2(document.bytes() == bytes && document.isWhole() == good.contains(bytes), bytes.constData());
            QVERIFY2(document.replace("no such mark", "x") == 0 && document.bytes() == bytes, bytes.constData());
        }
    }

    void replace_data()
    {
        Columns<QByteArray, QString, int, QByteArray>({"body", "value", "count", "after"});
        const QString esc(QChar(27));
        const auto one = [](const char *name, const QByteArray &body, const QByteArray &after) {
            Case(name, body, "X", body == after ? 0 : 1, after);
        };
        one("one run", "a ##1## b\\par", "a X b\\par");
        one("across runs", "{\\b #}{\\i #1}\n{\\ul ##}.", "{\\b X}{\\i }\n{\\ul }.");
        one("not across paragraphs", "##\\par 1##", "##\\par 1##");
        one("letters as codes", "\\'23#\\u49 ?##", "X");
        one("stand-ins of several letters", "{\\uc2 \\u35 ab#1##}", "{\\uc2 X}");
        one("a word before it needs no blank", "\\b ##1##", "\\b X");
        one("blank kept apart from a word", "\\b\\'23#1##", "\\b X");
        one("in a page's foot", "{\\footer ##1##\\par}", "{\\footer X\\par}");
        one("in a text box", "{\\shp{\\*\\shpinst{\\sp{\\sn ##1##}}{\\shptxt ##1##\\par}}}",
            "{\\shp{\\*\\shpinst{\\sp{\\sn ##1##}}{\\shptxt X\\par}}}");
        one("not in a field's code", "{\\field{\\*\\fldinst ##1##}{\\fldrslt ##1##}}",
            "{\\field{\\*\\fldinst ##1##}{\\fldrslt X}}");
        one("not in what the file says of itself", "{\\info{\\title ##1##}}", "{\\info{\\title ##1##}}");
        Case("twice in a paragraph", QByteArray("##1####1##"), "X", 2, QByteArray("XX"));
        const auto value = [](const char *name, const QString &text, const QByteArray &after) {
            Case(name, QByteArray("##1##"), text, 1, after);
        };
        value("the value is not searched", "##1##", "##1##");
        value("reserved letters", "{a\\b}", "\\{a\\\\b\\}");
        value("beyond ASCII", "é€₹", "{\\uc1\\u233\\'e9}{\\uc1\\u8364\\'80}{\\uc1\\u8377 ?}");
        value("struck out", esc + "SCash" + esc + "T/b", "{\\strike Cash}/b");
        value("struck to the end", esc + "Sa" + esc + "S", "{\\strike a}");
        value("two lines", "a\r\nb", "a\\line b");
        value("empty", "", "");
    }
    void replace()
    {
        const auto [body, value, count, after] = Row<QByteArray, QString, int, QByteArray>();
        RtfDocument document(whole(body));
        QCOMPARE(document.replace("##1##", value), count);
        QCOMPARE(bodyOf(document), after);
        // What came out is read as it was meant.
        const RtfDocument again(document.bytes());
        QVERIFY(again.isWhole() && again.bytes() == document.bytes());
    }

    void tables()
    {
        const std::vector<std::pair<QByteArray, QString>> rows{
            {"a\\par", ""},
            {row({"a", "b"}) + row({"c"}) + "\\pard x\\par\n" + row({"d"}), "a|b/c ; d"},
            {row({"{\\b a}b\\par c", ""}), "abc|"},
            {"\\trowd\\cellx9\\pard\\intbl{a\\cell }{\\trowd\\cellx9\\row }" // form told after the cells
             "\\pard\\intbl{b\\cell }{\\trowd\\cellx9\\row }",
             "a/b"},
            {row({"a"}) + "\\pard\\intbl b\\cell\\row", "a/b"}, // form of the row before
            {row({"a{\\pard\\intbl\\itap2 n\\nestcell{\\*\\nesttableprops\\trowd\\cellx5\\nestrow}}", "b"}), "an|b"},
            {"{\\header " + row({"h"}) + "}" + row({"a"}), "a"}};
        for (const auto &[body, found] : rows)
            QCOMPARE(describe(RtfDocument(whole(body))), found);
    }

    void cells()
    {
        const QPair<QByteArray, QByteArray> rows[] = {{"old", "X"},
                                                      {"{\\b o}ld\\par{\\i er}", "{\\b X}{\\i }"},
                                                      {"\\fs20", "\\fs20X"},
                                                      {"{\\b\\fs20}", "{\\b\\fs20X}"},
                                                      {"{\\pict 89}old", "{\\pict 89}X"}};
        for (const auto &[cell, after] : rows) {
            RtfDocument document(whole(row({cell, "z"})));
            document.setCell(1, 1, 1, "X");
            QCOMPARE(bodyOf(document), row({after, "z"}));
        }
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
