#include "controls/grid.h"
#include "controls/msgbox.h"
#include "controls/screen.h"
#include "controls/screenstack.h"
#include "launcher/application.h"
#include "launcher/program.h"
#include "tests/support/employer.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

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

/// Plays rounds of random keys and clicks on whatever the program shows, as a user in a hurry would, and then ends the
/// event loop. Screens are found by the buttons and menus that open them, so that a new one takes part without being
/// named. The same seed plays the same.
///
/// Each step is due whether or not the one before has returned: it may have opened a modal screen.
class KeyPlayer : public QObject, private Answerer
{
public:
    KeyPlayer(Program &program, int rounds, quint32 firstSeed)
        : m_program(program)
        , m_rounds(rounds)
        , m_seed(firstSeed)
        , m_before(SetAnswerer(this))
    {
    }
    ~KeyPlayer() override { SetAnswerer(m_before); }

    void beginRound();

private:
    Reply message(const MessageBox &box) override;
    QString file(const FileRequest & /*request*/) override { return {}; }

    int upTo(qsizetype count) { return m_random.bounded(static_cast<int>(count)); }
    template<class T>
    const T &anyIn(const QList<T> &list)
    {
        return list[upTo(list.size())];
    }
    /// One that a user could reach; null when there is none.
    template<class W>
    W *anyOf(const QWidget *place)
    {
        QList<W *> usable = place->findChildren<W *>();
        usable.removeIf([](const W *widget) { return !widget->isVisible() || !widget->isEnabled(); });
        return usable.isEmpty() ? nullptr : anyIn(usable);
    }

    void step();
    void act(QWidget *window);
    void closeAll();
    [[nodiscard]] QWidget *windowInFront() const;

    void click(QWidget *window);
    void clickSomewhere(QWidget *window);
    void pressMnemonic(QWidget *window);
    void twoAtOnce(QWidget *window);
    void triggerMenuEntry(QWidget *window);
    void chooseEntry(QWidget *window);
    void pressKey(QWidget *window);
    void typeText(QWidget *window);
    void pasteText(QWidget *window);
    void fillCell(QWidget *window);
    void save(QWidget *window);

    Program &m_program;
    int m_rounds;
    quint32 m_seed;
    int m_stepsLeft = 0;
    int m_closingTries = 0;
    bool m_closing = false;
    QRandomGenerator m_random;
    QString m_lastMessage;
    Answerer *m_before;
};

void KeyPlayer::beginRound()
{
    constexpr int stepsOfARound = 80;
    if (m_rounds-- == 0) {
        QCoreApplication::exit(0); // quit() would ask the windows
        return;
    }
    std::fprintf(stderr, "seed %u\n", m_seed); // the last one printed is the one that crashed
    m_random.seed(m_seed++);
    m_stepsLeft = stepsOfARound;
    m_closing = false;
    QTimer::singleShot(0, this, &KeyPlayer::step);
}

Reply KeyPlayer::message(const MessageBox &box)
{
    m_lastMessage = box.text;
    if (box.text == u"Do you really want to exit ?")
        return Reply::No;
    // "Yes" to saving keeps a screen open for what cannot be saved; "No" lets it go.
    return m_closing ? box.replies()[m_closingTries % box.replies().size()] : anyIn(box.replies());
}

void KeyPlayer::step()
{
    if (m_stepsLeft-- == 0) {
        m_closing = true;
        m_closingTries = 0;
        closeAll();
        return;
    }
    QTimer::singleShot(anyIn(QList<int>{0, 0, 5, 50}), this, &KeyPlayer::step);
    if (QWidget *window = windowInFront())
        act(window);
}

void KeyPlayer::act(QWidget *window)
{
    using Action = void (KeyPlayer::*)(QWidget *);
    // What a user does most comes more often.
    static const std::pair<Action, int> weights[] = {{&KeyPlayer::click, 5},
                                                     {&KeyPlayer::pressMnemonic, 2},
                                                     {&KeyPlayer::twoAtOnce, 2},
                                                     {&KeyPlayer::chooseEntry, 1},
                                                     {&KeyPlayer::clickSomewhere, 2},
                                                     {&KeyPlayer::pressKey, 3},
                                                     {&KeyPlayer::typeText, 1},
                                                     {&KeyPlayer::pasteText, 1},
                                                     {&KeyPlayer::fillCell, 1},
                                                     {&KeyPlayer::triggerMenuEntry, 1},
                                                     {&KeyPlayer::save, 2}};
    static const QList<Action> actions = [] {
        QList<Action> all;
        for (const auto &[action, times] : weights)
            all += QList<Action>(times, action);
        return all;
    }();
    (this->*anyIn(actions))(window);
}

/// Closes what a round has opened, from the front, so that the next one begins on the main screen alone.
void KeyPlayer::closeAll()
{
    constexpr int mostTries = 500;
    if (++m_closingTries > mostTries)
        qFatal("%s cannot be closed; the last message was: %s",
               Screen::inFront() == nullptr ? "A window" : qPrintable(Screen::inFront()->objectName()),
               qPrintable(m_lastMessage));
    const ScreenStack *stack = ScreenStack::of(m_program.window());
    if (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
    } else if (const QList<Screen *> modal = Screen::modalScreens(); !modal.isEmpty()) {
        modal.last()->Unload();
    } else if (stack != nullptr && stack->screens().size() > 1) {
        stack->top()->Unload();
    } else if (QWidget *window = windowInFront(); window != m_program.window() && window != nullptr) {
        window->close();
    } else {
        QTimer::singleShot(0, this, &KeyPlayer::beginRound);
        return;
    }
    QTimer::singleShot(0, this, &KeyPlayer::closeAll);
}

QWidget *KeyPlayer::windowInFront() const
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window != m_program.window() && window->isVisible() && window->windowType() == Qt::Window)
            return window;
    }
    return m_program.window();
}

void KeyPlayer::click(QWidget *window)
{
    if (auto *button = anyOf<QAbstractButton>(window))
        clickAt(button, button->rect().center());
}

void KeyPlayer::clickSomewhere(QWidget *window)
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

void KeyPlayer::pressMnemonic(QWidget *window)
{
    static const QRegularExpression mnemonic("&([A-Za-z0-9])");
    const auto *button = anyOf<QAbstractButton>(window);
    const QString letter = button == nullptr ? QString() : mnemonic.match(button->text()).captured(1);
    if (!letter.isEmpty())
        QTest::keyClick(keyTarget(window), letter.toLower()[0].toLatin1(), Qt::AltModifier);
}

/// A button that its key pressed clicks a tenth of a second later: meanwhile another one is clicked.
void KeyPlayer::twoAtOnce(QWidget *window)
{
    const QPointer<QWidget> alive(window);
    pressMnemonic(window);
    if (alive)
        click(window);
}

void KeyPlayer::triggerMenuEntry(QWidget *window)
{
    QList<QAction *> entries;
    for (const Screen *screen : window->findChildren<Screen *>()) {
        if (screen->isVisible())
            entries << screen->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
    }
    entries.isEmpty() ? click(window) : anyIn(entries)->trigger();
}

void KeyPlayer::chooseEntry(QWidget *window)
{
    auto *combo = anyOf<QComboBox>(window);
    if (combo == nullptr || combo->count() == 0)
        return;
    combo->setFocus();
    combo->setCurrentIndex(upTo(combo->count()));
}

void KeyPlayer::pressKey(QWidget *window)
{
    static const QList<Qt::Key> keys{
        Qt::Key_Return, Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab,  Qt::Key_Tab,  Qt::Key_Backtab,  Qt::Key_Escape,
        Qt::Key_Escape, Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Down, Qt::Key_Left, Qt::Key_Right,    Qt::Key_PageDown,
        Qt::Key_Home,   Qt::Key_Space,  Qt::Key_Delete, Qt::Key_F7,   Qt::Key_F8,   Qt::Key_Backspace};
    QTest::keyClick(keyTarget(window), anyIn(keys));
}

void KeyPlayer::typeText(QWidget *window)
{
    static const QStringList texts{"a",          "abc", "1", "12.50", "-3",       "01/04/2007", "1-4-07", "99999999999",
                                   "Acme & Co.", "K1",  "0", "  ",    "31022008", "AAACA1234A", "it's"};
    for (const QChar c : anyIn(texts))
        QTest::keyClick(keyTarget(window), c.toLatin1());
}

void KeyPlayer::pasteText(QWidget *window)
{
    static const QStringList texts{" 01/04/2007", "acme ltd", "é", "12,500.00", "x\ny", QString()};
    QApplication::clipboard()->setText(anyIn(texts));
    QTest::keySequence(keyTarget(window), upTo(3) == 0 ? QKeySequence::Undo : QKeySequence::Paste);
}

void KeyPlayer::fillCell(QWidget *window)
{
    auto *grid = anyOf<Grid>(window);
    if (grid == nullptr || !grid->hasDataRow())
        return click(window);
    grid->setFocus();
    grid->setCell(grid->FixedRows() + upTo(grid->Rows() - grid->FixedRows()), upTo(grid->Cols()));
    if (grid->isEditing() || grid->EditCell())
        typeText(window);
}

/// By the button that does so, where what was filled in can be saved.
void KeyPlayer::save(QWidget *window)
{
    static const QRegularExpression saving("^cmd(update|save)");
    for (auto *button : window->findChildren<QAbstractButton *>(saving)) {
        if (button->isVisible() && button->isEnabled())
            return clickAt(button, button->rect().center());
    }
}

/// Employers enough for lists to scroll, each with expenses of two natures of business.
void addEmployers(Connection &connection)
{
    for (int i = 1; i <= 30; ++i)
        employer(connection, QString("K%1").arg(i, 2, 10, QChar(u'0')))
            .natures({1, 7})
            .expense(2007, 1, 1, 18, 1000)
            .expense(2008, 2, 7, 65, 2300)
            .salary(2008, 1, 1, 500);
}

/// Clicks that no control takes are part of the game; only what is worse than a warning is told.
void tellFaults(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

void play(int rounds, quint32 firstSeed)
{
    const QTemporaryDir scratch;
    Program program({scratch.filePath("app"), scratch.filePath("db"), scratch.filePath("pelkfbt.ini")},
                    LauncherSettings());
    QString why;
    if (!program.start(&why))
        qFatal("%s", qPrintable(why));
    KeyPlayer player(program, rounds, firstSeed);
    QTimer::singleShot(0, qApp, [&] {
        program.show();
        addEmployers(program.connection());
        player.beginRound();
    });
    QApplication::exec();
    program.stop();
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(tellFaults);
    Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QCoreApplication::arguments();
    play(arguments.value(1, "40").toInt(), arguments.value(2, "1").toUInt());
    return 0;
}
