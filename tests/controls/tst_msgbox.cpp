#include "controls/msgbox.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

/// Questions reach an answerer when there is one, and else a real message box that the keyboard can answer.
class TestMsgBox : public QObject
{
    Q_OBJECT

private slots:
    void scriptedReplies();
    void recordLine_data();
    void recordLine();
    void realBoxByKey_data();
    void realBoxByKey();
    void realBoxShowsTextAsItIs();
    void fileChoice();
};

void TestMsgBox::scriptedReplies()
{
    ScriptedAnswerer script;
    const AnswererScope scope(&script);
    script.answer(Reply::No);
    script.answer(Reply::Ok);
    QCOMPARE(MsgBox(nullptr, "First ?", Buttons::YesNo), Reply::No);
    QVERIFY(script.unexpected().isEmpty());
    // "ok" is no reply to a Yes/No question, and then nothing is waiting: both take the default button.
    QCOMPARE(MsgBox(nullptr, "Second ?", Buttons::YesNo, Icon::Question, "Confirmation", 2), Reply::No);
    QCOMPARE(MsgBox(nullptr, "Third ?", Buttons::OkCancel), Reply::Ok);
    QCOMPARE(script.texts(), QStringList({"First ?", "Second ?", "Third ?"}));
    QCOMPARE(script.unexpected(), QStringList({"Second ?", "Third ?"}));
}

void TestMsgBox::recordLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("waiting");
    QTest::addColumn<QString>("line");
    QTest::newRow("answered") << "Sure ?"
                              << "Confirmation" << true << "message\tConfirmation\tSure ?\tno";
    QTest::newRow("default, usual title") << "Sure ?"
                                          << "" << false << "message\tPelk FBT\tSure ?\tdefault:yes";
    QTest::newRow("line ends") << "A\r\nB\nC"
                               << "T" << true << "message\tT\tA\\nB\\nC\tno";
}

void TestMsgBox::recordLine()
{
    QFETCH(QString, text);
    QFETCH(QString, title);
    QFETCH(bool, waiting);
    ScriptedAnswerer script;
    const AnswererScope scope(&script);
    if (waiting)
        script.answer(Reply::No);
    MsgBox(nullptr, text, Buttons::YesNo, Icon::None, title);
    QTEST(script.records().constFirst().line(), "line");
}

void TestMsgBox::realBoxByKey_data()
{
    QTest::addColumn<Buttons>("buttons");
    QTest::addColumn<int>("defaultButton");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Reply>("reply");
    QTest::newRow("yes by enter") << Buttons::YesNo << 1 << Qt::Key_Return << Reply::Yes;
    QTest::newRow("second is default") << Buttons::YesNo << 2 << Qt::Key_Return << Reply::No;
    QTest::newRow("escape is no") << Buttons::YesNo << 1 << Qt::Key_Escape << Reply::No;
    QTest::newRow("escape is cancel") << Buttons::OkCancel << 1 << Qt::Key_Escape << Reply::Cancel;
    QTest::newRow("escape is ok") << Buttons::Ok << 1 << Qt::Key_Escape << Reply::Ok;
}

void TestMsgBox::realBoxByKey()
{
    QFETCH(Buttons, buttons);
    QFETCH(int, defaultButton);
    QFETCH(Qt::Key, key);
    QTimer::singleShot(0, this, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
    QTEST(MsgBox(nullptr, "Well ?", buttons, Icon::Question, "T", defaultButton), "reply");
}

void TestMsgBox::realBoxShowsTextAsItIs()
{
    QString shown;
    Qt::TextFormat format = Qt::AutoText;
    QTimer::singleShot(0, this, [&] {
        const auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        shown = box->text();
        format = box->textFormat();
        box->button(QMessageBox::Ok)->click();
    });
    MsgBox(nullptr, "<b>A & B</b>");
    QCOMPARE(shown, QString("<b>A & B</b>"));
    QCOMPARE(format, Qt::PlainText);
}

void TestMsgBox::fileChoice()
{
    ScriptedAnswerer script;
    const AnswererScope scope(&script);
    script.answerFile("/tmp/a.xml");
    QCOMPARE(ChooseFile(nullptr, FileUse::Save, "Save", "XML (*.xml)", "/tmp"), QString("/tmp/a.xml"));
    QVERIFY(script.unexpected().isEmpty());
    QVERIFY(ChooseFile(nullptr, FileUse::Open, "Open").isEmpty());
    QCOMPARE(script.unexpected(), QStringList("Open"));
    QCOMPARE(script.fileRequests().size(), 2);
    QCOMPARE(script.fileRequests().constFirst().filter, QString("XML (*.xml)"));
}

QTEST_MAIN(TestMsgBox)
#include "tst_msgbox.moc"
