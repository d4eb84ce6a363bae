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
    void numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown"); // of the number; empty when it is none
        QTest::newRow("whole") << "1200"
                               << "1200";
        QTest::newRow("Indian groups") << "12,34,567.50"
                                       << "1234567.5";
        QTest::newRow("in brackets") << "(1,000.00)"
                                     << "-1000";
        QTest::newRow("one bracket") << "(1000"
                                     << "";
        QTest::newRow("zero") << "0.00"
                              << "0";
        QTest::newRow("a code") << "0012345"
                                << "";
        QTest::newRow("an account") << "12345678901234567"
                                    << "";
        QTest::newRow("a dash") << "-"
                                << "";
        QTest::newRow("a list") << "1,2,3"
                                << "";
        QTest::newRow("a date") << "01/02/2007"
                                << "";
    }
    void numbers()
    {
        QFETCH(QString, text);
        const std::optional<double> number = ShownNumber(text);
        QTEST(number ? QString::number(*number, 'g', 15) : QString(), "shown");
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
        QVERIFY(cells.contains("<v>1234.5</v>")); // a number
        QVERIFY(cells.contains("<v>39248</v>"));  // a date: 15 June 2007
        QVERIFY(cells.contains("=1+1, \"x\""));   // a text, no formula
        QVERIFY(!cells.contains("<f>"));
        QVERIFY(cells.contains("<t>00123</t>"));
        QVERIFY(cells.contains("<t>31/02/2007</t>"));
        QVERIFY(cells.contains("<cols>"));
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
