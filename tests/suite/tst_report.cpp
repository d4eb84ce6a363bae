#include "suite/report/pageview.h"
#include "suite/report/reporthtml.h"
#include "suite/report/reportlayout.h"
#include "suite/report/reportoutput.h"
#include "suite/report/repview.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString esc(QChar(27));
const QString small = esc + QChar(18) + esc + "M;";
const QString normal = esc + QChar(18) + esc + "P;";
const QString sizeFive = "[##ST##FONT##SIZE##]=5=[##EN##FONT##SIZE##]";
const QString formFeed(QChar(12));

/// Pieces of a text as "look:text", one letter for each thing that is on.
QStringList piecesOf(const QString &text, TextLook look = {})
{
    QStringList pieces;
    for (const TextPiece &piece : ParseReportText(text, look).pieces) {
        QString letters;
        letters += piece.look.bold ? "b" : "";
        letters += piece.look.underline ? "u" : "";
        letters += piece.look.strike ? "s" : "";
        letters += piece.look.italic ? "i" : "";
        letters += piece.look.pitch == Pitch::Small ? "m" : piece.look.pitch == Pitch::Footer ? "n" : "";
        letters += piece.look.size > 0 ? QString::number(piece.look.size) : QString();
        pieces << letters + ':' + piece.text;
    }
    return pieces;
}

ReportRow row(const QStringList &cells, const std::vector<int> &widths = {}, const std::vector<int> &aligns = {})
{
    ReportRow one;
    one.cells = cells;
    one.widths = widths;
    one.aligns = aligns;
    return one;
}

/// How much of a rectangle of a page is not white, the rectangle in twentieths of a point.
int ink(const ReportLayout &layout, int page, const QRectF &area)
{
    constexpr double scale = 0.05; // one pixel a point
    QImage image((layout.pageSize() * scale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    layout.drawPage(painter, page);
    painter.end();
    const QRect pixels = QRectF(area.topLeft() * scale, area.size() * scale).toRect() & image.rect();
    int dark = 0;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x)
            dark += qGray(image.pixel(x, y)) < 200 ? 1 : 0;
    }
    return dark;
}

int ink(const ReportLayout &layout, int page)
{
    return ink(layout, page, QRectF(QPointF(), layout.pageSize()));
}

} // namespace

/// The report from its text language to the pages.
class TestReport : public QObject
{
    Q_OBJECT

private slots:
    void tokens_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("pieces");
        QTest::newRow("plain") << "Total" << QStringList{":Total"};
        QTest::newRow("bold piece") << "a" + esc + "Eb" + esc + "Fc" << QStringList{":a", "b:b", ":c"};
        QTest::newRow("nested") << esc + "E" + esc + "-1x" + esc + "-0y" + esc + "F" << QStringList{"bu:x", "b:y"};
        QTest::newRow("strike and italic")
            << esc + "S" + esc + "4x" + esc + "T" + esc + "5y" << QStringList{"si:x", ":y"};
        QTest::newRow("pitches") << small + "x" + normal + "y" << QStringList{"m:x", ":y"};
        QTest::newRow("pitch sets the size back") << sizeFive + "x" + normal + "y" << QStringList{"5:x", ":y"};
        QTest::newRow("no size mark") << "[##ST##FONT##SIZE##]=x" << QStringList{":[##ST##FONT##SIZE##]=x"};
        QTest::newRow("lines in a cell") << "a\r\nb" << QStringList{":a\nb"};
        QTest::newRow("unknown escape stays") << esc + "Zx" << QStringList{":" + esc + "Zx"};
        QTest::newRow("behind a form feed") << "a" + formFeed + "b" << QStringList{":a"};
    }
    void tokens()
    {
        QFETCH(QString, text);
        QTEST(piecesOf(text), "pieces");
    }

    void lines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("empty line") << ""
                                    << "\n";
        QTest::newRow("only a pitch") << normal << "";
        QTest::newRow("a size is a line of that height") << sizeFive << "\n";
        QTest::newRow("page break alone") << formFeed << "\f\n";
        QTest::newRow("page break and semicolon") << formFeed + ";"
                                                  << "\f\n";
        QTest::newRow("page break and pitch") << formFeed + normal << "\f\n";
        QTest::newRow("text around a page break") << "a" + formFeed + "b"
                                                  << "a\n\f\nb\n";
    }
    void lines()
    {
        QFETCH(QString, text);
        ReportDocument document;
        document.addLine(text);
        QTEST(document.asText(), "shown");
    }

    void rowsKeepWidthsAndLooks()
    {
        ReportDocument document;
        document.addLine(esc + "E"); // stays on until it is switched off
        document.beginTable();
        document.addRow(row({"a", "b"}, {30, 10}, {ReportRow::Left, ReportRow::Right}));
        document.addRow(row({"c" + esc + "F", "d\r\ne"}));
        document.addRow(row({"one"}, {78}));
        QCOMPARE(document.asText(), QString("a\tb\nc\td\\ne\none\n"));
        const std::vector<ReportBlock> &blocks = document.blocks();
        QCOMPARE(blocks.size(), 3U);
        QCOMPARE(blocks[0].form, blocks[1].form); // shared
        QVERIFY(blocks[1].look.bold);
        QVERIFY(!blocks[2].look.bold);
        QCOMPARE(blocks[2].form->widths, std::vector<double>{78});
    }

    void rules()
    {
        const RowForm form{{1, 1, 1}, {0, 0, 0}, "101", "0", "", "1111"};
        QVERIFY(form.ruled(form.left, 0));
        QVERIFY(!form.ruled(form.left, 1));
        QVERIFY(!form.ruled(form.right, 0)); // shorter than the row
        QVERIFY(!form.ruled(form.top, 2));
        QVERIFY(form.ruled(form.bottom, 2));
    }

    void htmlEscapesAndRules()
    {
        ReportDocument document;
        document.addLine(esc + "E<A & B>" + esc + "F");
        document.beginTable();
        ReportRow ruled = row({"1", ""}, {60, 20}, {ReportRow::Right, ReportRow::Centre});
        ruled.left = "11";
        document.addRow(ruled);
        const QString html = ReportHtml(document);
        QVERIFY(html.contains("font-weight:bold\">&lt;A &amp; B&gt;</span>"));
        QVERIFY(html.contains("text-align:right;width:75.00%;border-left:1px solid"));
        QCOMPARE(html.count("<table>"), 1);
        QCOMPARE(html.count("</table>"), 1);
    }

    void pagesFillAndBreak()
    {
        ReportDocument document;
        document.addLine("first");
        document.addLine(formFeed);
        for (int i = 0; i < 200; ++i)
            document.addLine(QString::number(i));
        const ReportLayout layout(document, PageFor(document, false));
        QVERIFY(layout.pageCount() > 3 && layout.pageCount() < 7);
        QVERIFY(ink(layout, 0) > 0);
        QVERIFY(ink(layout, 1) > 10 * ink(layout, 0));
    }

    void headerRowsComeAgain()
    {
        ReportDocument document;
        document.addLine("title");
        document.beginTable();
        document.addRow(row({"Head"}, {78}, {ReportRow::CentredHeader}));
        for (int i = 0; i < 120; ++i)
            document.addRow(row({QString()}, {78}, {ReportRow::Left}));
        const ReportLayout layout(document, PageFor(document, false));
        QVERIFY(layout.pageCount() > 1);
        for (int page = 1; page < layout.pageCount(); ++page)
            QVERIFY2(ink(layout, page) > 0, qPrintable(QString::number(page))); // nothing else is written there
    }

    void longTextGoesOnOverPages()
    {
        ReportDocument document;
        QString text;
        for (int i = 0; i < 4000; ++i)
            text += QStringLiteral("word%1 ").arg(i);
        document.beginTable();
        document.addRow(row({text}, {78}));
        document.addLine("behind");
        const ReportLayout layout(document, PageFor(document, false));
        QVERIFY(layout.pageCount() > 3);
        for (int page = 0; page + 1 < layout.pageCount(); ++page)
            QVERIFY(ink(layout, page) > 1000);
    }

    void wideTableTurnsThePageOnlyWhereItMay()
    {
        ReportDocument wide;
        wide.beginTable();
        wide.addRow(row({"a", "b"}, {90, 40}));
        QCOMPARE(PageFor(wide, true).orientation(), QPageLayout::Landscape);
        QCOMPARE(PageFor(wide, false).orientation(), QPageLayout::Portrait);
        ReportDocument plain;
        plain.addRow(row({"a", "b"}, {60, 40}));
        QCOMPARE(PageFor(plain, true).orientation(), QPageLayout::Portrait);
    }

    void columnsLieWhereTheirWidthsSay()
    {
        ReportDocument document;
        document.beginTable();
        document.addRow(row({"", "XXXX"}, {39, 39}, {ReportRow::Left, ReportRow::Right}));
        const ReportLayout layout(document, PageFor(document, false));
        const double half = layout.pageSize().width() / 2;
        QCOMPARE(ink(layout, 0, {0, 0, half * 1.5, 2000}), 0); // right in the right half
        QVERIFY(ink(layout, 0, {half * 1.5, 0, half, 2000}) > 0);
    }

    void viewerKeepsTheReportShownLast()
    {
        QTemporaryDir folder;
        SuiteContext context;
        context.settingsFile = folder.filePath("settings.ini");
        RepView viewer(context, std::make_shared<ReportShelf>());
        int shown = 0;
        viewer.setObserver([&shown] { ++shown; });
        QCOMPARE(viewer.MyDllVersion(), 1);
        QCOMPARE(viewer.asText(), QString());
        viewer.NewReport();
        viewer.printtext("first");
        viewer.ShowReport();
        viewer.NewReport();
        viewer.printtext("second");
        QCOMPARE(viewer.asText(), QString("first\n")); // the second one was not shown yet
        viewer.ShowReport();
        QCOMPARE(viewer.asText(), QString("second\n"));
        QCOMPARE(shown, 2);

        const QString pdf = folder.filePath("report.pdf");
        QVERIFY(viewer.writePdf(pdf));
        QFile file(pdf);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.read(5) == "%PDF-");
        QVERIFY(!viewer.writePdf(folder.filePath("missing/report.pdf")));
    }

    void pageViewMovesByPages()
    {
        ReportDocument document;
        for (int i = 0; i < 3; ++i)
            document.addLine("a" + formFeed);
        PageView view;
        view.resize(700, 500);
        view.show();
        view.setPages(std::make_shared<const ReportLayout>(document, PageFor(document, false)));
        QCOMPARE(view.pageCount(), 4);
        QCOMPARE(view.currentPage(), 1);
        view.showPage(3);
        QCOMPARE(view.currentPage(), 3);
        view.setZoom(view.zoom() * 2);
        QCOMPARE(view.currentPage(), 3); // the place stays
        view.resize(900, 500);
        view.fitWidth();
        QVERIFY(view.horizontalScrollBar()->maximum() == 0);
        QTest::keyClick(&view, Qt::Key_End);
        QCOMPARE(view.currentPage(), 4);
    }
};

QTEST_MAIN(TestReport)
#include "tst_report.moc"
