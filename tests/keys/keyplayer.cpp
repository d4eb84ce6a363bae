#include "keyplayer.h"

#include "controls/screen.h"
#include "controls/screenstack.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int stepsOfARound = 60;

/// The letter after the "&" of a caption; a null character without one.
QChar mnemonicOf(const QString &caption)
{
    const qsizetype at = caption.indexOf(u'&');
    return at < 0 || at + 1 >= caption.size() ? QChar() : caption.at(at + 1).toLower();
}

void pressLetter(QWidget *target, QChar letter)
{
    if (letter.unicode() < 0x7f && letter.isLetterOrNumber() && target != nullptr)
        QTest::keyClick(target, letter.toLatin1(), Qt::AltModifier);
}

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

} // namespace

KeyPlayer::KeyPlayer(QWidget *mainWindow, int rounds, quint32 firstSeed)
    : m_main(mainWindow)
    , m_rounds(rounds)
    , m_seed(firstSeed)
    , m_before(SetAnswerer(this))
{
}

KeyPlayer::~KeyPlayer()
{
    SetAnswerer(m_before);
}

void KeyPlayer::begin()
{
    beginRound();
}

void KeyPlayer::beginRound()
{
    if (m_rounds-- == 0) {
        emit finished();
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
    if (box.text == u"Do you really want to exit ?")
        return Reply::No;
    const QList<Reply> replies = box.replies();
    return m_closing ? replies.first() : replies.at(upTo(static_cast<int>(replies.size())));
}

QString KeyPlayer::file(const FileRequest &request)
{
    Q_UNUSED(request)
    return {};
}

void KeyPlayer::step()
{
    if (m_stepsLeft-- == 0) {
        m_closing = true;
        m_closingTries = 0;
        closeAll();
        return;
    }
    const std::array<int, 4> pauses{0, 0, 5, 50};
    QTimer::singleShot(pauses.at(static_cast<std::size_t>(upTo(4))), this, &KeyPlayer::step);
    QWidget *window = windowInFront();
    if (window != nullptr)
        act(window);
}

void KeyPlayer::act(QWidget *window)
{
    using Action = void (KeyPlayer::*)(QWidget *);
    // What a user does most stands more than once.
    static constexpr std::array<Action, 18> actions{
        &KeyPlayer::click,     &KeyPlayer::click,           &KeyPlayer::click,         &KeyPlayer::click,
        &KeyPlayer::click,     &KeyPlayer::pressMnemonic,   &KeyPlayer::pressMnemonic, &KeyPlayer::twoAtOnce,
        &KeyPlayer::twoAtOnce, &KeyPlayer::clickSomewhere,  &KeyPlayer::chooseEntry,   &KeyPlayer::clickSomewhere,
        &KeyPlayer::pressKey,  &KeyPlayer::pressKey,        &KeyPlayer::pressKey,      &KeyPlayer::typeText,
        &KeyPlayer::pasteText, &KeyPlayer::triggerMenuEntry};
    (this->*actions.at(static_cast<std::size_t>(upTo(static_cast<int>(actions.size())))))(window);
}

/// Closes what a round has opened, from the front, so that the next one begins on the main screen alone.
void KeyPlayer::closeAll()
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

QWidget *KeyPlayer::windowInFront()
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
W *KeyPlayer::anyOf(QWidget *window)
{
    QList<W *> usable = window->findChildren<W *>();
    usable.removeIf([](const W *widget) { return !widget->isVisible() || !widget->isEnabled(); });
    return usable.isEmpty() ? nullptr : usable.at(upTo(static_cast<int>(usable.size())));
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
    if (const auto *button = anyOf<QAbstractButton>(window))
        pressLetter(keyTarget(window), mnemonicOf(button->text()));
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
    if (entries.isEmpty())
        click(window);
    else
        entries.at(upTo(static_cast<int>(entries.size())))->trigger();
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
    static constexpr std::array<Qt::Key, 20> keys{Qt::Key_Return, Qt::Key_Return,    Qt::Key_Return, Qt::Key_Tab,
                                                  Qt::Key_Tab,    Qt::Key_Backtab,   Qt::Key_Escape, Qt::Key_Escape,
                                                  Qt::Key_Up,     Qt::Key_Down,      Qt::Key_Down,   Qt::Key_Left,
                                                  Qt::Key_Right,  Qt::Key_PageDown,  Qt::Key_Home,   Qt::Key_Space,
                                                  Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F7,     Qt::Key_F8};
    QTest::keyClick(keyTarget(window), keys.at(static_cast<std::size_t>(upTo(static_cast<int>(keys.size())))));
}

void KeyPlayer::typeText(QWidget *window)
{
    static const QStringList texts{"a",   "abc",        "1",  "12.50", "-3", "01/04/2007", "1-4-07", "99999999999",
                                   "x'y", "Acme & Co.", "K1", "0",     "  ", "31022008",   "é",      "AAACA1234A"};
    const QString &text = texts.at(upTo(static_cast<int>(texts.size())));
    for (const QChar c : text) {
        if (c.unicode() < 0x7f)
            QTest::keyClick(keyTarget(window), c.toLatin1());
    }
}

void KeyPlayer::pasteText(QWidget *window)
{
    static const QStringList texts{" 01/04/2007", "acme ltd", "12,500.00", "x\ny", QString()};
    QApplication::clipboard()->setText(texts.at(upTo(static_cast<int>(texts.size()))));
    QTest::keySequence(keyTarget(window), upTo(3) == 0 ? QKeySequence::Undo : QKeySequence::Paste);
}
