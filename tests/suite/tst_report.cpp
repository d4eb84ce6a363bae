#include "controls/msgbox.h"
#include "platform/fault.h"
#include "platform/rtfdocument.h"
#include "platform/settingsfile.h"
#include "suite/report/frmrepview.h"
#include "suite/report/pageview.h"
#include "suite/report/reporthtml.h"
#include "suite/report/reportlayout.h"
#include "suite/report/reportoutput.h"
#include "suite/report/reportsearch.h"
#include "suite/report/reportsheet.h"
#include "suite/report/repview.h"
#include "suite/report/rtfpages.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
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
int ink(ReportLayout &layout, int page, const QRectF &area)
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

int ink(ReportLayout &layout, int page)
{
    return ink(layout, page, QRectF(QPointF(), layout.pageSize()));
}

ReportLayout layoutOf(const ReportDocument &document)
{
    return {std::make_shared<const ReportDocument>(document), PageFor(document, false)};
}

/// A picture that can be seen.
QString blackImage(const QTemporaryDir &folder)
{
    QImage image(80, 80, QImage::Format_RGB32);
    image.fill(Qt::black);
    const QString path = folder.filePath("black.png");
    return image.save(path) ? path : QString();
}

QString written(const QTemporaryDir &folder, const QString &name, const QByteArray &bytes)
{
    QFile file(folder.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

/// A document of two cells and a table of one row, with marks.
const QByteArray formRtf = "{\\rtf1\\paperw11906\\paperh16838\\margl1000\\margr1000\\margt1000\\margb1000"
                           "\\pard{\\b ##1}## and ##2##\\par\\trowd\\clbrdrt\\brdrs\\brdrw10\\cellx4000\\cellx9000"
                           "\\pard\\intbl a\\cell b\\cell\\row\\pard\\par}";

} // namespace

/// The report from its text language to the pages.
class TestReport : public QObject
{
    Q_OBJECT

private slots:
    void tokens()
    {
        const std::vector<std::pair<QString, QStringList>> rows{
            {"a" + esc + "Eb" + esc + "Fc", {":a", "b:b", ":c"}},
            {esc + "E" + esc + "-1x" + esc + "-0y" + esc + "F", {"bu:x", "b:y"}},
            {esc + "S" + esc + "4x" + esc + "T" + esc + "5y", {"si:x", ":y"}},
            {small + "x" + normal + "y", {"m:x", ":y"}},
            {sizeFive + "x" + normal + "y", {"5:x", ":y"}}, // the pitch sets the size back
            {"[##ST##FONT##SIZE##]=x", {":[##ST##FONT##SIZE##]=x"}},
            {"a\r\nb", {":a\nb"}},
            {"a###IMGGOI###b", {":a", ":", ":b"}}, // a picture's place
            {esc + "Zx", {":" + esc + "Zx"}},      // an unknown escape stays
            {"a" + formFeed + "b", {":a"}}};
        for (const auto &[text, pieces] : rows)
            QCOMPARE(piecesOf(text), pieces);
    }

    void lines()
    {
        const std::vector<std::pair<QString, QString>> rows{{"", "\n"},
                                                            {normal, ""}, // only a pitch
                                                            {sizeFive, "\n"},
                                                            {formFeed, "\f\n"},
                                                            {formFeed + ";", "\f\n"},
                                                            {formFeed + normal, "\f\n"},
                                                            {"a" + formFeed + "b", "a\n\f\nb\n"}};
        for (const auto &[text, shown] : rows) {
            ReportDocument document;
            document.addLine(text);
            QCOMPARE(document.asText(), shown);
        }
    }

    void rowsKeepWidthsAndLooks()
    {
        ReportDocument document;
        document.addLine(esc + "E"); // stays on until it is switched off
        document.beginTable();
        document.addRow(row({"a", "b"}, {30, 10}, {ReportRow::Left, ReportRow::Right}));
        document.addRow(row({"c" + esc + "F", "d\r\ne"}));
        document.addRow(row({"one"}, {78}));
        document.addRow(row({"x", "y"}, {40, 20}));
        document.addRow(row({"a" + formFeed + "cell"}));
        document.addRow(row({"x", "y"}));
        QCOMPARE(document.asText(), QString("a\tb\nc\td\\ne\none\nx\ty\na\\ncell\nx\ty\n"));
        const std::vector<ReportBlock> &blocks = document.blocks();
        QCOMPARE(blocks[0].form, blocks[1].form);                 // shared
        QCOMPARE(blocks[5].form->widths, blocks[3].form->widths); // whatever the row between has
        QVERIFY(blocks[1].look.bold);
        QVERIFY(!blocks[2].look.bold);
        QCOMPARE(blocks[2].form->widths, std::vector<double>{78});
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

    void headerRowsComeAgain()
    {
        ReportDocument document;
        document.addLine("title");
        document.beginTable();
        document.addRow(row({"Head"}, {78}, {ReportRow::CentredHeader}));
        for (int i = 0; i < 120; ++i)
            document.addRow(row({QString()}, {78}, {ReportRow::Left}));
        ReportLayout layout = layoutOf(document);
        QVERIFY(layout.pageCount() > 1);
        for (int page = 1; page < layout.pageCount(); ++page)
            QVERIFY2(ink(layout, page) > 0, qPrintable(QString::number(page))); // nothing else is written there
    }

    /// Wherever a page ends, a title and the captions below it stay with their first row.
    void titleStaysWithItsRow()
    {
        for (int lines = 0; lines < 70; ++lines) {
            ReportDocument document;
            for (int i = 0; i < lines; ++i)
                document.addLine("");
            document.addLine("title");
            document.beginTable();
            document.addRow(row({"a", "b"}, {39, 39}, {ReportRow::CentredHeader, ReportRow::CentredHeader}));
            document.addRow(row({"1", "2"}, {39, 39}, {ReportRow::Left, ReportRow::Left}));
            ReportLayout layout = layoutOf(document);
            const auto first = static_cast<size_t>(lines);
            QVERIFY2(layout.pageOf(first) == layout.pageOf(first + 2), qPrintable(QString::number(lines)));
        }
    }

    void longTextGoesOnOverPages()
    {
        ReportDocument document;
        QString text;
        for (int i = 0; i < 4000; ++i)
            text += QStringLiteral("word%1 ").arg(i);
        document.beginTable();
        document.addRow(row({text}, {78}));
        document.addLine("after");
        ReportLayout layout = layoutOf(document);
        QVERIFY(layout.pageCount() > 3);
        for (int page = 0; page + 1 < layout.pageCount(); ++page)
            QVERIFY(ink(layout, page) > 1000);
    }

    void wordIsBrokenOnlyWhenMuchTooLong()
    {
        const auto heightOf = [](const QString &cell) {
            ReportDocument document;
            document.beginTable();
            document.addRow(row({cell, "b"}, {10, 78}));
            return layoutOf(document).placeOf(0, 0).height();
        };
        const double line = heightOf("a");
        QCOMPARE_LT(heightOf(esc + "EInstallment" + esc + "F"), 1.5 * line);
        QCOMPARE_GT(heightOf(QString(30, 'W')), 1.5 * line);
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
        ReportLayout layout = layoutOf(document);
        const double half = layout.pageSize().width() / 2;
        QCOMPARE(ink(layout, 0, {0, 0, half * 1.5, 2000}), 0); // right in the right half
        QVERIFY(ink(layout, 0, {half * 1.5, 0, half, 2000}) > 0);
    }

    /// A page is laid out when it is asked for, and comes out the same as when all are.
    void pagesAreLaidOutWhenAskedFor()
    {
        ReportDocument document;
        document.beginTable();
        for (int i = 0; i < 10000; ++i)
            document.addRow(row({QString::number(i), "a text that is long enough to be broken"}, {10, 20}));
        ReportLayout layout = layoutOf(document);
        QVERIFY(layout.hasPage(2));
        QVERIFY(!layout.isWhole());
        QVERIFY(layout.partDone() < 0.1);
        const int dark = ink(layout, 2);
        const int page = layout.pageOf(9999);
        QCOMPARE(page, layout.pageCount() - 1);
        QVERIFY(!layout.hasPage(page + 1));
        QCOMPARE(ink(layout, 2), dark);
        QVERIFY(ink(layout, page, layout.placeOf(9999, 0)) > 0);
    }

    void footerStandsOnEachPage()
    {
        QTemporaryDir folder;
        RepView viewer(SuiteContext(), std::make_shared<ReportShelf>());
        viewer.setObserver([] {});
        viewer.InItReport(true, false);
        viewer.SelectHF(-1, 4, 4);
        viewer.printtext(esc + QChar(18) + esc + "N;");
        viewer.CreateTable(1, 3);
        viewer.WriteToReport(
            row({"", "", "Pelk FBT"}, {36, 8, 36}, {ReportRow::Left, ReportRow::Centre, ReportRow::Right}));
        viewer.InsertPgNo_TB(1, 2, "-", "-");
        viewer.SelectHF(0, 0, 0);
        viewer.printtext("body" + formFeed);
        viewer.ShowReport();
        QCOMPARE(viewer.asText(), QString("body\n\f\n"));
        ReportDocument document;
        document.writeFooter(true);
        document.addRow(row({"", ""}, {39, 39}));
        document.addPageNumber(1, 2, "-", "-");
        document.addPageNumber(7, 1, "", ""); // no such cell
        QCOMPARE(document.footer().size(), 2U);
        QCOMPARE(document.footer()[0].texts[1], "-" + pageNumberMark + "-");
        document.writeFooter(false);
        document.addLine(formFeed);
        ReportLayout layout = layoutOf(document);
        QCOMPARE(layout.pageCount(), 2);
        const QRectF low(0, layout.pageSize().height() * 0.8, layout.pageSize().width(), 3000);
        QVERIFY(ink(layout, 0, low) > 0);
        QCOMPARE(ink(layout, 0), ink(layout, 0, low));
        QVERIFY(ink(layout, 1, low) != ink(layout, 0, low)); // another number
    }

    void picturesAndTicksComeAfterTheReportIsShown()
    {
        QTemporaryDir folder;
        RepView viewer(SuiteContext(), std::make_shared<ReportShelf>());
        viewer.setObserver([] {});
        viewer.NewReport();
        viewer.CreateTable(1, 1);
        viewer.WriteToReport(row({"###IMGGOI###"}, {78}, {ReportRow::Centre}));
        viewer.WriteToReport(row({"[_/] Yes"}));
        viewer.ShowReport();
        QCOMPARE(viewer.asText(), QString("\n[_/] Yes\n"));
        viewer.ReplaceTickM();
        viewer.insertimg("###IMGGOI###", blackImage(folder));
        QCOMPARE(viewer.asText(), QString("\n[%1] Yes\n").arg(QChar(0x2713)));
        QVERIFY_THROWS_EXCEPTION(FaultError, viewer.insertimg("###IMGGOI###", folder.filePath("none.bmp")));

        ReportDocument document;
        document.addRow(row({"###IMGX###"}, {78}));
        ReportLayout empty = layoutOf(document);
        document.setImage("###IMGX###", QImage(blackImage(folder)));
        ReportLayout filled = layoutOf(document);
        QVERIFY(ink(empty, 0) == 0 && ink(filled, 0) > 500);
    }

    void marginsAreThoseOfTheSettings()
    {
        QTemporaryDir folder;
        SuiteContext context;
        context.settingsFile = folder.filePath("settings.ini");
        SettingsFile settings(context.settingsFile);
        const auto shelf = std::make_shared<ReportShelf>();
        RepView viewer(context, shelf);
        viewer.setObserver([] {});
        settings.save("Settings", "MarginL", "360");
        settings.save("Settings", "MarginT", "x");
        settings.save("Settings", "MarginB", "-5");
        viewer.NewReport();
        settings.save("Settings", "MarginL", "720"); // what is read is read at the start
        viewer.ShowReport();
        QCOMPARE(shelf->document->margins(), QMarginsF(360, 720, 720, 0));
    }

    void formIsFilledAndShown()
    {
        QTemporaryDir folder;
        const auto shelf = std::make_shared<ReportShelf>();
        RepView viewer(SuiteContext(), shelf);
        viewer.setObserver([] {});
        viewer.newreportnew(written(folder, "form.doc", formRtf));
        viewer.SetText("##1##", "Cash");
        QVERIFY_THROWS_EXCEPTION(FaultError, viewer.SetText("##9##", "x"));
        viewer.SetText("##2##", "_/");
        viewer.ShowReport();
        QCOMPARE(viewer.asText(), QString("Cash and _/\na\tb\n\n"));
        const RichParagraph &first = shelf->document->blocks()[0].rich().paragraph;
        QVERIFY(first.runs[0].style.bold && !first.runs[1].style.bold);
        QCOMPARE(PageFor(*shelf->document, true).margins(), QMarginsF(50, 50, 50, 50));
        ReportLayout layout = layoutOf(*shelf->document);
        QCOMPARE(layout.pageCount(), 1);
        QVERIFY(ink(layout, 0) > 50);
    }

    /// Each broken document is one fault, and what can be filled is.
    void brokenDocuments()
    {
        QTemporaryDir folder;
        ScriptedAnswerer answerer;
        const AnswererScope answers(&answerer);
        RepView viewer(SuiteContext(), std::make_shared<ReportShelf>());
        int shown = 0;
        viewer.setObserver([&shown] { ++shown; });
        QVERIFY_THROWS_EXCEPTION(FaultError, viewer.newreportnew(folder.filePath("missing.doc")));
        viewer.SetText("##1##", "x");
        answerer.answer(Reply::Ok);
        viewer.ShowReport(); // says so in place of an empty page
        QCOMPARE(answerer.texts().size(), 1);
        QCOMPARE(shown, 0);
        QVERIFY_THROWS_EXCEPTION(
            FaultError, viewer.newreportnew(written(folder, "cut.doc", formRtf.left(formRtf.indexOf(" a\\cell")))));
        viewer.SetText("##1##", "x");
        viewer.SetText("##9##", "in the part that is not there");
        viewer.ShowReport();
        QVERIFY(viewer.asText().startsWith("x and"));
        // A head of pages is not drawn, nor is what a word processor keeps as deleted; the rest is shown.
        QVERIFY_THROWS_EXCEPTION(FaultError, viewer.newreportnew(written(folder, "head.doc",
                                                                         "{\\rtf1{\\header Head\\par}{\\footer \\par}"
                                                                         "{\\deleted gone }body\\par}")));
        viewer.ShowReport();
        QCOMPARE(viewer.asText(), QString("body\n"));
        viewer.newreportnew(written(folder, "foot.doc", "{\\rtf1{\\footer \\par}body\\par}"));

        viewer.InItReport(true, false);
        QVERIFY_THROWS_EXCEPTION(FaultError, viewer.OpenMasterFile(written(folder, "word.doc", "\xd0\xcf\x11\xe0")));
        viewer.NewSetText("##1##", "x");
        viewer.FindTable(1);
        viewer.TextMatrix(1, 1, "x");
        viewer.SaveMasterFile(folder.filePath("word.rtf"));
        viewer.AppendFile(folder.filePath("word.rtf"));
        viewer.OpenMasterFile(written(folder, "good.doc", formRtf));
        QVERIFY_THROWS_EXCEPTION(FaultError, viewer.FindTable(2));
        viewer.TextMatrix(1, 1, "nowhere"); // no table is current
        viewer.FindTable(1);
        viewer.TextMatrix(1, 2, "here");
        viewer.SaveMasterFile(folder.filePath("good.rtf"));
        viewer.AppendFile(folder.filePath("good.rtf"));
        QVERIFY_THROWS_EXCEPTION(FaultError, viewer.SaveMasterFile(folder.filePath("no/folder.rtf")));
        viewer.ShowReport();
        QCOMPARE(viewer.asText(), QString("##1## and ##2##\na\there\n\n"));
    }

    /// Documents share a page with the lines around them, and begin a new one where they say so.
    void documentsFlow()
    {
        QTemporaryDir folder;
        const auto shelf = std::make_shared<ReportShelf>();
        RepView viewer(SuiteContext(), shelf);
        viewer.setObserver([] {});
        viewer.InItReport(true, false);
        viewer.printtext("before");
        viewer.AppendFile(written(folder, "one.rtf", formRtf));
        viewer.InItReport(false, false);
        viewer.printtext("between");
        viewer.AppendFile(written(folder, "two.rtf", "{\\rtf1\\pard\\pagebb next\\par}"));
        viewer.ShowReport();
        ReportLayout layout = layoutOf(*shelf->document);
        QCOMPARE(layout.pageCount(), 2);
    }

    void mergedCellsAndTallRows()
    {
        QByteArray rtf = "{\\rtf1\\paperw11906\\paperh16838";
        for (int i = 0; i < 3; ++i)
            rtf += QByteArray("\\trowd\\trrh2000") + (i == 0 ? "\\clvmgf" : "\\clvmrg") +
                   "\\clbrdrr\\brdrs\\cellx3000\\clcbpat1\\cellx6000\\pard\\intbl x\\cell y\\cell\\row";
        RtfDocument document(rtf + "}");
        const RichPages pages = ReadRtfPages(document.tokens());
        QCOMPARE(pages.blocks.size(), 1U); // they stay together
        QCOMPARE(pages.blocks[0].rows.size(), 3U);
        const RichLayout layout(pages.blocks[0], 9000);
        QCOMPARE(layout.height(), 6000.0);
    }

    void searchGoesRound()
    {
        ReportDocument document;
        document.addLine("Total");
        document.beginTable();
        document.addRow(row({"a", "total", "TOTAL"}, {1, 1, 1}));
        document.addLine("none");
        using Place = std::optional<ReportPlace>;
        const std::vector<std::tuple<QString, Place, bool, Place>> rows{
            {"total", {}, true, ReportPlace{0, 0}},
            {"total", ReportPlace{0, 0}, true, ReportPlace{1, 1}},
            {"total", ReportPlace{1, 1}, true, ReportPlace{1, 2}},
            {"total", ReportPlace{1, 2}, true, ReportPlace{0, 0}},
            {"total", ReportPlace{0, 0}, false, ReportPlace{1, 2}},
            {"none", ReportPlace{2, 0}, true, ReportPlace{2, 0}},
            {"x", {}, true, {}}};
        for (const auto &[text, from, forward, place] : rows)
            QCOMPARE(FindInReport(document, text, from, forward), place);
    }

    void previewTurnsPagesSearchesAndSaves()
    {
        QTemporaryDir folder;
        ScriptedAnswerer answerer;
        const AnswererScope answers(&answerer);
        ReportDocument document;
        document.beginTable();
        for (int i = 0; i < 10000; ++i)
            document.addRow(row({QString::number(i), "a text that is long enough to be broken"}, {10, 20}));
        document.setTitle("Numbers");
        auto *view = new frmrepview(std::make_shared<const ReportDocument>(document), false, folder.filePath("s.ini"));
        view->openChild(nullptr);
        auto *page = view->findChild<QSpinBox *>("spnpage");
        auto *pages = view->findChild<QLabel *>("lblpage");
        QTRY_VERIFY(!pages->text().endsWith("..."));
        QVERIFY(page->maximum() > 100);
        QCOMPARE(view->findChild<QSpinBox *>("spnto")->value(), page->maximum());
        // Another text may stand in the cell that was found.
        ReportLayout layout = layoutOf(document);
        for (const auto &[text, found] :
             {std::pair("1234", 1234), std::pair("234", 1234), std::pair("234", 2234), std::pair("9999", 9999)}) {
            view->findChild<QLineEdit *>("txtfind")->setText(text);
            view->findChild<QPushButton *>("cmdfindnext")->click();
            QCOMPARE(page->value(), layout.pageOf(static_cast<size_t>(found)) + 1);
        }
        QCOMPARE(view->windowTitle(), "Numbers");
        answerer.answerFile(folder.filePath("r.csv"));
        view->findChild<QPushButton *>("cmdsave")->click();
        QVERIFY(answerer.fileRequests().last().filter.contains("*.pdf"));
        QCOMPARE(QFileInfo(folder.filePath("r.csv")).size() > 400000, true);
        QVERIFY(view->Unload());
    }

    void sheetsOfReportsAndBack()
    {
        ReportDocument document;
        document.addLine(esc + "ETitle" + esc + "F");
        document.beginTable();
        document.addRow(row({"Head", "Amount"}, {30, 12}, {ReportRow::CentredHeader, ReportRow::CentredHeader}));
        document.addRow(row({"a", "1,234.50"}, {}, {ReportRow::Left, ReportRow::Right}));
        const Sheet sheet = SheetOfReport(std::make_shared<const ReportDocument>(document), "t");
        QCOMPARE(sheet.widths, (std::vector<double>{30, 12}));
        QCOMPARE(ReportOfSheet(sheet)->asText(), QString("t\n\nTitle\nHead\tAmount\na\t1,234.50\n"));
    }

    void pageViewMovesByPages()
    {
        ReportDocument document;
        for (int i = 0; i < 3; ++i)
            document.addLine("a" + formFeed);
        PageView view;
        view.resize(700, 500);
        view.show();
        const auto pages =
            std::make_shared<ReportLayout>(std::make_shared<const ReportDocument>(document), PageFor(document, false));
        QCOMPARE(pages->pageCount(), 4);
        view.setPages(pages);
        QVERIFY(view.pageCount() == 4 && view.currentPage() == 1);
        // Where all pages are in view, the scroll bar does not tell them apart.
        view.setZoom(0.25);
        QStringList went;
        for (const int page : {view.currentPage(), 2, 3, 4, 3, 2, 1}) {
            view.showPage(page);
            went << QString::number(view.currentPage());
        }
        QCOMPARE(went.join(' '), "1 2 3 4 3 2 1");
        view.setZoom(1);
        view.showPage(3);
        view.setZoom(view.zoom() * 2);
        QCOMPARE(view.currentPage(), 3); // the place stays
        view.resize(900, 500);
        view.fitWidth();
        QCOMPARE(view.horizontalScrollBar()->maximum(), 0);
        QTest::keyClick(&view, Qt::Key_End);
        QCOMPARE(view.currentPage(), 4);
    }
};

QTEST_MAIN(TestReport)
#include "tst_report.moc"
