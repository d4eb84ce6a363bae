#include "controls/msgbox.h"
#include "controls/screen.h"
#include "controls/screenstack.h"
#include "launcher/application.h"
#include "launcher/modulelibrary.h"
#include "launcher/options.h"
#include "launcher/program.h"
#include "tests/support/employer.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QPointer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

constexpr int stepsOfARound = 60;

/// A target can go with the first half of a click.
void clickAt(QWidget *target, const QPoint &at)
{
    const QPointer<QWidget> alive(target);
    QTest::mousePress(target, Qt::LeftButton, {}, at);
    if (alive)
        QTest::mouseRelease(target, Qt::LeftButton, {}, at);
}

QWidget *keyTarget(QWidget *window)
{
    QWidget *focus = QApplication::focusWidget();
    return focus != nullptr ? focus : window;
}

/// Plays rounds of random keys and clicks on whatever the program shows, as a user in a hurry would. Screens are found by
/// the buttons and menus that open them, so that a new one takes part without being named. The same seed plays the same.
///
/// Each step is due whether or not the one before has returned: it may have opened a modal screen.
class KeyPlayer : public QObject, private Answerer
{
public:
    /// @param mainWindow the program's; it is never left for good
    KeyPlayer(QWidget *mainWindow, int rounds, quint32 firstSeed, std::function<void()> finished)
        : m_main(mainWindow)
        , m_rounds(rounds)
        , m_seed(firstSeed)
        , m_finished(std::move(finished))
        , m_scope(this)
    {
    }

    void beginRound()
    {
        if (m_rounds-- == 0) {
            m_finished();
            return;
        }
        std::printf("seed %u\n", m_seed);
        std::fflush(stdout); // the last one printed is the one that crashed
        m_random.seed(m_seed++);
        m_stepsLeft = stepsOfARound;
        m_closing = false;
        QTimer::singleShot(0, this, &KeyPlayer::step);
    }

private:
    Reply message(const MessageBox &box) override
    {
        if (box.text == u"Do you really want to exit ?")
            return Reply::No;
        const QList<Reply> replies = box.replies();
        return m_closing ? replies.first() : oneOf(replies);
    }

    QString file(const FileRequest &) override { return {}; }

    void step()
    {
        if (m_stepsLeft-- == 0) {
            m_closing = true;
            m_closingTries = 0;
            closeAll();
            return;
        }
        const QList<int> pauses{0, 0, 5, 50};
        QTimer::singleShot(oneOf(pauses), this, &KeyPlayer::step);
        QWidget *window = windowInFront();
        if (window != nullptr)
            act(window);
    }

    void act(QWidget *window)
    {
        using Action = void (KeyPlayer::*)(QWidget *);
        // What a user does most stands more than once.
        static const QList<Action> actions(
            QList<Action>(5, &KeyPlayer::click) + QList<Action>(2, &KeyPlayer::pressMnemonic) +
            QList<Action>(2, &KeyPlayer::twoAtOnce) + QList<Action>(2, &KeyPlayer::clickSomewhere) +
            QList<Action>(3, &KeyPlayer::pressKey) +
            QList<Action>{&KeyPlayer::chooseEntry, &KeyPlayer::typeText, &KeyPlayer::pasteText,
                          &KeyPlayer::triggerMenuEntry});
        (this->*oneOf(actions))(window);
    }

    /// Closes what a round has opened, from the front, so that the next one begins on the main screen alone.
    void closeAll()
    {
        constexpr int mostTries = 500;
        if (++m_closingTries > mostTries) {
            std::printf("A screen cannot be closed.\n");
            std::exit(1);
        }
        if (QWidget *popup = QApplication::activePopupWidget()) {
            popup->close();
        } else if (const QList<Screen *> modal = Screen::modalScreens(); !modal.isEmpty()) {
            modal.last()->Unload();
        } else if (ScreenStack *stack = ScreenStack::of(m_main); stack != nullptr && stack->screens().size() > 1) {
            stack->top()->Unload();
        } else if (QWidget *window = windowInFront(); window != m_main && window != nullptr) {
            window->close();
        } else {
            QTimer::singleShot(0, this, &KeyPlayer::beginRound);
            return;
        }
        QTimer::singleShot(0, this, &KeyPlayer::closeAll);
    }

    QWidget *windowInFront()
    {
        if (QWidget *popup = QApplication::activePopupWidget())
            return popup;
        if (QWidget *modal = QApplication::activeModalWidget())
            return modal;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window != m_main && window->isVisible() && window->windowType() == Qt::Window)
                return window;
        }
        return m_main;
    }

    template<class W>
    W *anyOf(QWidget *window)
    {
        QList<W *> usable = window->findChildren<W *>();
        usable.removeIf([](const W *widget) { return !widget->isVisible() || !widget->isEnabled(); });
        return usable.isEmpty() ? nullptr : oneOf(usable);
    }

    void click(QWidget *window)
    {
        if (auto *button = anyOf<QAbstractButton>(window))
            clickAt(button, button->rect().center());
    }

    void clickSomewhere(QWidget *window)
    {
        auto *widget = anyOf<QWidget>(window);
        if (widget == nullptr || widget->size().isEmpty())
            return;
        const QPointer<QWidget> alive(widget);
        const QPoint at(upTo(widget->width()), upTo(widget->height()));
        clickAt(widget, at);
        if (alive && upTo(3) == 0)
            QTest::mouseDClick(widget, Qt::LeftButton, {}, at);
    }

    void pressMnemonic(QWidget *window)
    {
        const auto *button = anyOf<QAbstractButton>(window);
        const QKeySequence keys = button == nullptr ? QKeySequence() : QKeySequence::mnemonic(button->text());
        if (!keys.isEmpty())
            QTest::keySequence(keyTarget(window), keys);
    }

    /// A button that its key pressed clicks a tenth of a second later: meanwhile another one is clicked.
    void twoAtOnce(QWidget *window)
    {
        const QPointer<QWidget> alive(window);
        pressMnemonic(window);
        if (alive)
            click(window);
    }

    void triggerMenuEntry(QWidget *window)
    {
        QList<QAction *> entries;
        for (const Screen *screen : window->findChildren<Screen *>()) {
            if (screen->isVisible())
                entries << screen->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
        }
        if (entries.isEmpty())
            click(window);
        else
            oneOf(entries)->trigger();
    }

    void chooseEntry(QWidget *window)
    {
        auto *combo = anyOf<QComboBox>(window);
        if (combo == nullptr || combo->count() == 0)
            return;
        combo->setFocus();
        combo->setCurrentIndex(upTo(combo->count()));
    }

    void pressKey(QWidget *window)
    {
        static const QList<Qt::Key> keys{Qt::Key_Return, Qt::Key_Return,    Qt::Key_Return, Qt::Key_Tab,
                                         Qt::Key_Tab,    Qt::Key_Backtab,   Qt::Key_Escape, Qt::Key_Escape,
                                         Qt::Key_Up,     Qt::Key_Down,      Qt::Key_Down,   Qt::Key_Left,
                                         Qt::Key_Right,  Qt::Key_PageDown,  Qt::Key_Home,   Qt::Key_Space,
                                         Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F7,     Qt::Key_F8};
        QTest::keyClick(keyTarget(window), oneOf(keys));
    }

    void typeText(QWidget *window)
    {
        static const QStringList texts{"a",          "abc",    "1",           "12.50",    "-3",
                                       "01/04/2007", "1-4-07", "99999999999", "x'y",      "Acme & Co.",
                                       "K1",         "0",      "  ",          "31022008", "AAACA1234A"};
        for (const QChar c : oneOf(texts))
            QTest::keyClick(keyTarget(window), c.toLatin1());
    }

    void pasteText(QWidget *window)
    {
        static const QStringList texts{" 01/04/2007", "acme ltd", "12,500.00", "x\ny", QString()};
        QApplication::clipboard()->setText(oneOf(texts));
        QTest::keySequence(keyTarget(window), upTo(3) == 0 ? QKeySequence::Undo : QKeySequence::Paste);
    }

    [[nodiscard]] int upTo(int count) { return m_random.bounded(count); }
    template<class List>
    typename List::const_reference oneOf(const List &list)
    {
        return list.at(upTo(static_cast<int>(list.size())));
    }

    QPointer<QWidget> m_main;
    int m_rounds;
    quint32 m_seed;
    std::function<void()> m_finished;
    AnswererScope m_scope;
    int m_stepsLeft = 0;
    int m_closingTries = 0;
    bool m_closing = false;
    QRandomGenerator m_random;
};

/// Employers enough for lists to scroll, some with expenses and more than one nature of business.
void addEmployers(Connection &connection)
{
    for (int i = 1; i <= 30; ++i)
        employer(connection, QString("K%1").arg(i, 2, 10, QChar(u'0'))).name("EMPLOYER");
    employer(connection, "TWO").natures({1, 7}).expense(2007, 1, 1, 18, 1000).expense(2007, 2, 7, 65, 2300);
}

/// Clicks that no control takes are part of the game; only what is worse than a warning is told.
void tellFaults(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

int play(int rounds, quint32 firstSeed)
{
    const QTemporaryDir scratch;
    Program program({scratch.filePath("app"), scratch.filePath("db"), scratch.filePath("pelkfbt.ini"),
                     DeliveredFolder(), ModuleLibrary::usualPath()},
                    LauncherSettings());
    QString why;
    if (!program.start(&why)) {
        fprintf(stderr, "%s\n", qPrintable(why));
        return 1;
    }
    int played = 1;
    KeyPlayer player(program.window(), rounds, firstSeed, [&played] {
        played = 0;
        QCoreApplication::exit(0); // quit() would ask the windows
    });
    QTimer::singleShot(0, qApp, [&] {
        program.show();
        addEmployers(program.connection());
        player.beginRound();
    });
    QApplication::exec();
    program.stop();
    return played;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(tellFaults);
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QCoreApplication::arguments();
    constexpr int fewRounds = 40;
    const int rounds = arguments.size() > 1 ? arguments.at(1).toInt() : fewRounds;
    return play(rounds, arguments.size() > 2 ? arguments.at(2).toUInt() : 1);
}
