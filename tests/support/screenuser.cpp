#include "tests/support/screenuser.h"

#include <QApplication>
#include <QClipboard>
#include <QTimer>

#include <algorithm>

/// Replies in order, and what went wrong with them.
class ScreenUser::Answers : public Answerer
{
public:
    Reply message(const MessageBox &box) override
    {
        const bool question = box.buttons != Buttons::Ok;
        const bool fits = !replies.isEmpty() && box.replies().contains(replies.first());
        texts << box.text;
        surprises << (question ? QStringList() : QStringList(box.text));
        if (question && !fits)
            QTest::qFail(qPrintable("Unexpected question: " + box.text), __FILE__, __LINE__);
        return question && fits ? replies.takeFirst() : box.escapeReply();
    }
    QString file(const FileRequest &request) override
    {
        if (files.isEmpty())
            QTest::qFail(qPrintable("Unexpected file choice: " + request.title), __FILE__, __LINE__);
        return files.isEmpty() ? QString() : files.takeFirst();
    }

    QList<Reply> replies;
    QStringList files;
    QStringList texts;     // not looked at yet
    QStringList surprises; // messages among them
};

ScreenUser::ScreenUser()
    : m_answers(std::make_unique<Answers>())
    , m_scope(m_answers.get())
{
}

Screen *ScreenUser::screen() const
{
    return m_screen;
}

ScreenUser::~ScreenUser()
{
    delete m_owned;
    if (!m_answers->surprises.isEmpty())
        QTest::qFail(qPrintable("Unexpected message: " + m_answers->surprises.join(u'|')), __FILE__, __LINE__);
    if (!m_answers->replies.isEmpty() || !m_answers->files.isEmpty())
        QTest::qFail("A reply was never asked for.", __FILE__, __LINE__);
}

void ScreenUser::sitAt(Screen *screen, QWidget *host)
{
    delete m_owned;
    m_owned = m_screen = screen;
    screen->openChild(host);
    screen->setDeleteOnUnload(false);
    QVERIFY(QTest::qWaitForWindowActive(screen->window()));
}

void ScreenUser::atNextModal(std::function<void()> act)
{
    auto *watch = new QTimer(m_screen);
    const qsizetype before = Screen::modalScreens().size();
    QObject::connect(watch, &QTimer::timeout, watch, [this, watch, before, act = std::move(act)] {
        const QList<Screen *> modal = Screen::modalScreens();
        if (modal.size() <= before)
            return;
        watch->stop();
        watch->deleteLater();
        const QPointer<Screen> home = std::exchange(m_screen, modal.last());
        act();
        m_screen = home;
    });
    watch->start(0);
}

QString ScreenUser::focus() const
{
    const Screen *at = m_screen;
    const QWidget *field = at == nullptr ? nullptr : at->currentField();
    return field == nullptr ? QString() : field->objectName();
}

QStringList ScreenUser::shown(const QString &gridName) const
{
    QStringList rows;
    const Grid *of = grid(gridName);
    for (int row = of->FixedRows(); row < of->Rows(); ++row) {
        QStringList cells;
        for (int col = 0; col < of->Cols(); ++col) {
            if (!of->ColHidden(col))
                cells << of->shownText(row, col);
        }
        rows << cells.join(u' ');
    }
    return rows;
}

void ScreenUser::click(const QString &button)
{
    QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
}

void ScreenUser::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focus = QApplication::focusWidget();
    QVERIFY2(focus, "no field has the focus");
    QTest::keyClick(focus, key, modifiers);
    // A button that its key pressed clicks when it comes up again.
    QVERIFY(QTest::qWaitFor([this] {
        const Screen *at = m_screen;
        const auto buttons = at == nullptr ? QList<QAbstractButton *>() : at->findChildren<QAbstractButton *>();
        return std::none_of(buttons.begin(), buttons.end(), [](auto *button) { return button->isDown(); });
    }));
}

void ScreenUser::keys(const QString &text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void ScreenUser::type(const QString &field, const QString &text)
{
    auto *edit = find<QLineEdit>(field);
    edit->setFocus(Qt::TabFocusReason);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

void ScreenUser::paste(const QString &field, const QString &text)
{
    QApplication::clipboard()->setText(text);
    auto *edit = find<QLineEdit>(field);
    edit->setFocus(Qt::OtherFocusReason);
    QTest::keySequence(edit, QKeySequence::Paste);
}

void ScreenUser::typeCell(const QString &gridName, int row, int col, const QString &text)
{
    Grid *cells = grid(gridName);
    if (!cells->isEditing())
        cells->setFocus();
    cells->setCell(row, col);
    QVERIFY(cells->isEditing() || cells->EditCell());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    keys(text);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
}

void ScreenUser::answers(std::initializer_list<Reply> replies)
{
    m_answers->replies << replies;
}

void ScreenUser::answersFile(const QString &path)
{
    m_answers->files << path;
}

QStringList ScreenUser::said()
{
    m_answers->surprises.clear();
    return std::exchange(m_answers->texts, {});
}
