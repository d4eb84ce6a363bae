#include "controls/msgbox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

/// Questions reach an answerer when there is one, and else a real message box that the keyboard can answer.
class TestMsgBox : public QObject
{
    Q_OBJECT

private slots:
    void realBoxByKey_data()
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

    void realBoxByKey()
    {
        QFETCH(Buttons, buttons);
        QFETCH(int, defaultButton);
        QFETCH(Qt::Key, key);
        QTimer::singleShot(0, this, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
        QTEST(MsgBox(nullptr, "Well ?", buttons, Icon::Question, "T", defaultButton), "reply");
    }

    void realBoxShowsTextAsItIs()
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
};

QTEST_MAIN(TestMsgBox)
#include "tst_msgbox.moc"
