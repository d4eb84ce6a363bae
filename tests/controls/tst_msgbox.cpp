#include "controls/msgbox.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

/// Without an answerer a question is a real message box, which the keyboard can answer.
class TestMsgBox : public QObject
{
    Q_OBJECT

private slots:
    void realBoxByKey()
    {
        using Row = std::tuple<const char *, Buttons, int, Qt::Key, Reply>;
        const std::vector<Row> rows{{"second is default", Buttons::YesNo, 2, Qt::Key_Return, Reply::No},
                                    {"escape is no", Buttons::YesNo, 1, Qt::Key_Escape, Reply::No},
                                    {"escape is cancel", Buttons::OkCancel, 1, Qt::Key_Escape, Reply::Cancel},
                                    {"escape is ok", Buttons::Ok, 1, Qt::Key_Escape, Reply::Ok}};
        for (const auto &[name, buttons, defaultButton, key, reply] : rows) {
            QTimer::singleShot(0, this, [&key = key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
            QVERIFY2(MsgBox(nullptr, "Well ?", buttons, Icon::Question, "T", defaultButton) == reply, name);
        }
    }
};

QTEST_MAIN(TestMsgBox)
#include "tst_msgbox.moc"
