#include "controls/exportactions.h"
#include "controls/grid.h"
#include "controls/msgbox.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

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

    /// Amounts as the user's locale writes them, all other numbers with a point; never one for the other.
    void numbersOfALocale()
    {
        QLocale::setDefault(QLocale("de_DE"));
        const auto back = qScopeGuard([] { QLocale::setDefault(QLocale::c()); });
        for (const auto &[text, number, format] :
             {std::tuple("500,00", 500.0, "0.00"), std::tuple("(1.234.500,50)", -1234500.5, "#,##0.00;(#,##0.00)"),
              std::tuple("500.00", 500.0, "0.00"), std::tuple("1.234", 1.234, "0.000"), std::tuple("12", 12.0, "")}) {
            const SheetValue value = ValueOf({text, false, true});
            QVERIFY2(value.number == number && value.format == format, text);
        }
        for (const char *none : {"1,234", "1.234.567", "1,234.50", "5,0", "01,50"})
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
        answerer.answerFile(folder.filePath("c.xlsx"));
        QTest::keyClick(&grid, Qt::Key_E, Qt::ControlModifier);
        QVERIFY(bytesOf(folder.filePath("c.xlsx")).startsWith("PK"));
        for (const char *name : {"c", "report.v2"}) {
            answerer.answerFile(folder.filePath(name));
            answerer.answer(Reply::Ok);
            QTest::keyClick(&grid, Qt::Key_E, Qt::ControlModifier);
            QCOMPARE(answerer.texts().last(), "The name of the file must end in .xlsx, .csv.");
            QVERIFY(!QFile::exists(folder.filePath(name)));
        }
        QVERIFY(!answerer.fileRequests().last().filter.contains("pdf")); // nobody here makes one
        answerer.answerFile(folder.filePath("no/d.csv"));
        answerer.answer(Reply::Ok);
        QTest::keyClick(&grid, Qt::Key_E, Qt::ControlModifier);
        QVERIFY(answerer.texts().last().startsWith("The file could not be written"));
        QCOMPARE(answerer.unexpected(), QStringList());
    }

    /// The ending is that of the chosen filter, and is there before the question whether to overwrite.
    void endingOfTheFilter()
    {
        const QTemporaryDir folder;
        QFile there(folder.filePath("keep.csv"));
        QVERIFY(there.open(QIODevice::WriteOnly));
        QString asked;
        QTimer::singleShot(0, [&asked] {
            auto *dialog = QApplication::activeModalWidget();
            auto *filters = dialog->findChild<QComboBox *>("fileTypeCombo");
            filters->setFocus();
            QTest::keyClick(filters, Qt::Key_Down);
            dialog->findChild<QLineEdit *>("fileNameEdit")->setText("keep");
            QTimer::singleShot(0, dialog, [dialog, &asked] {
                auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                asked = question == nullptr ? "nothing" : question->text();
                question != nullptr ? question->reject() : static_cast<QDialog *>(dialog)->reject();
                QTimer::singleShot(0, dialog, [dialog] { static_cast<QDialog *>(dialog)->reject(); });
            });
            QMetaObject::invokeMethod(dialog, "accept");
        });
        const QString path = ChooseFile(nullptr, FileUse::Save, "Save As", "Sheets (*.xlsx);;CSV files (*.csv)",
                                        folder.filePath("x.xlsx"));
        QVERIFY2(asked.contains("keep.csv"), qPrintable(asked));
        QCOMPARE(path, QString());
    }
};

QTEST_MAIN(TestSheet)
#include "tst_sheet.moc"
