#include "controls/exportactions.h"
#include "controls/grid.h"
#include "controls/msgbox.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/// The parts of a spreadsheet file that hold what is in its cells.
QByteArray partOf(const QString &path, const QString &part)
{
    QProcess unpack;
    unpack.start("unzip", {"-p", path, part});
    return unpack.waitForFinished() ? unpack.readAllStandardOutput() : QByteArray();
}

class FilledGrid : public Grid
{
public:
    FilledGrid()
    {
        setCaptions({"Name", "Amount", "Hidden", "Date", "On"});
        setColAlignment(1, Qt::AlignRight);
        setColFormat(1, "0.00");
        setColHidden(2, true);
        setColCheck(4);
        AddItem({"=1+1, \"x\"", "1234.5", "h", "15/06/2007", "-1"});
        AddItem({"gone", "1", "", "", ""});
        AddItem({"00123", "-7", "", "31/02/2007", "0"});
        setRowHidden(2, true);
    }
};

} // namespace

/// Grids on their way out of the program.
class TestSheet : public QObject
{
    Q_OBJECT

private slots:
    void numbers()
    {
        const QPair<const char *, const char *> rows[] = {
            {"1200", "1200"}, {"12,34,567.50", "1234567.5"}, {"(1,000.00)", "-1000"}, {"0.00", "0"}};
        for (const auto &[text, number] : rows)
            QCOMPARE(ShownNumber(text).value_or(99), QString(number).toDouble());
        for (const char *none : {"(1000", "0012345", "12345678901234567", "-", "1,2,3", "01/02/2007"})
            QVERIFY2(!ShownNumber(none), none);
    }

    void gridToTextAndCsv()
    {
        const FilledGrid grid;
        QCOMPARE(
            SheetText(SheetOfGrid(&grid)),
            QString("Name\tAmount\tDate\tOn\n=1+1, \"x\"\t1234.50\t15/06/2007\tYes\n00123\t-7.00\t31/02/2007\tNo\n"));
        const QTemporaryDir folder;
        const QString path = folder.filePath("a.csv");
        QVERIFY(WriteCsv(SheetOfGrid(&grid), path));
        QCOMPARE(bytesOf(path), QByteArray("\xef\xbb\xbfName,Amount,Date,On\r\n\"'=1+1, \"\"x\"\"\",1234.50,15/06/2007,"
                                           "Yes\r\n00123,-7.00,31/02/2007,No\r\n"));
        QVERIFY(!WriteCsv(SheetOfGrid(&grid), folder.filePath("no/a.csv")));
    }

    void gridToSpreadsheet()
    {
        const FilledGrid grid;
        const QTemporaryDir folder;
        const QString path = folder.filePath("a.xlsx");
        QVERIFY(WriteXlsx(SheetOfGrid(&grid), path));
        const QByteArray cells = partOf(path, "xl/worksheets/sheet1.xml");
        // A number, a date (15 June 2007), and texts: no formula, no number, no date.
        for (const char *part : {"<v>1234.5</v>", "<v>39248</v>", "=1+1, \"x\"", "<t>00123</t>", "<t>31/02/2007</t>"})
            QVERIFY2(cells.contains(part), part);
        QVERIFY(!cells.contains("<f>"));
        QVERIFY(!WriteXlsx(SheetOfGrid(&grid), folder.filePath("no/a.xlsx")));
    }

    void keysAndMenu()
    {
        FilledGrid grid;
        ScriptedAnswerer answerer;
        const AnswererScope answers(&answerer);
        const QTemporaryDir folder;
        grid.show();
        QVERIFY(QTest::qWaitForWindowActive(&grid));
        grid.setFocus();
        grid.setRow(3);
        QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QString("00123\t-7.00\t31/02/2007\tNo\n"));
        grid.setSelectionBehavior(QAbstractItemView::SelectItems);
        QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QString("00123\n"));
        QCOMPARE(grid.actions().size(), 3);

        answerer.answerFile(folder.filePath("b.CSV"));
        QTest::keyClick(&grid, Qt::Key_E, Qt::ControlModifier);
        QVERIFY(bytesOf(folder.filePath("b.CSV")).startsWith("\xef\xbb\xbfName"));
        answerer.answerFile(folder.filePath("c"));
        QTest::keyClick(&grid, Qt::Key_E, Qt::ControlModifier);
        QVERIFY(bytesOf(folder.filePath("c.xlsx")).startsWith("PK"));
        QVERIFY(!answerer.fileRequests().last().filter.contains("pdf")); // nobody here makes one
        answerer.answerFile(folder.filePath("no/d.csv"));
        answerer.answer(Reply::Ok);
        QTest::keyClick(&grid, Qt::Key_E, Qt::ControlModifier);
        QVERIFY(answerer.texts().last().startsWith("The file could not be written"));
        QCOMPARE(answerer.unexpected(), QStringList());
    }
};

QTEST_MAIN(TestSheet)
#include "tst_sheet.moc"
