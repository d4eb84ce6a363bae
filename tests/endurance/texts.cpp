#include "bench.h"

#include "controls/grid.h"
#include "controls/msgbox.h"
#include "controls/screen.h"
#include "launcher/program.h"
#include "platform/clock.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <iterator>
#include <optional>

// Texts that would end the quotes they stand in, put into every text field of every screen.

namespace {

const QStringList hostile{"1' #2", "x';delete from FBT_Detail; -- ", "a\\", "X' or 'a'='a"};

/// Something that a user does on a screen: a click or Enter on a row, after a choice from a list or without one.
struct Act
{
    QString name;
    std::function<void()> carryOut;
    QString choice = {};
};

/// Where a text can be put: a field, or a column of a list.
struct Place
{
    QString name;
    QWidget *widget;
    int col = -1;
};

bool isOpen(const Screen *screen)
{
    return screen != nullptr && screen->isLoaded();
}

/// The name of a control; of what is part of another one, the name of that.
QString nameOf(const QWidget *control)
{
    while (control->objectName().isEmpty() || control->objectName().startsWith(u"qt_"))
        control = control->parentWidget();
    return control->objectName();
}

/// The controls of a kind that the user can reach on a screen.
template<class W>
QList<W *> usable(const Screen *screen)
{
    QList<W *> all = screen->findChildren<W *>();
    all.removeIf([&](const W *one) { return !one->isVisible() || !one->isEnabled() || Screen::of(one) != screen; });
    return all;
}

/// The fields that are open, and the columns of the lists that can be worked in.
QList<Place> places(const Screen *screen)
{
    QList<Place> all;
    for (QLineEdit *field : usable<QLineEdit>(screen)) {
        if (!field->isReadOnly())
            all << Place{nameOf(field), field};
    }
    for (Grid *grid : usable<Grid>(screen)) {
        for (int col = 0; col < grid->Cols() && grid->hasDataRow(); ++col)
            all << Place{Joined(nameOf(grid), '(', col, ')'), grid, col};
    }
    return all;
}

QSet<QString> namesOf(const QList<Place> &places)
{
    QSet<QString> names;
    for (const Place &place : places)
        names << place.name;
    return names;
}

/// Lets what was closed go, as it does between two acts of a user.
void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Whether a text stands in a statement as it was typed, so that the server takes a part of it for words. The text may have
/// been cut to the length of its field.
bool isUnsafe(const QString &statement)
{
    static const QRegularExpression typed(R"(1' #|x';d|x' or 'a|a\\')", QRegularExpression::CaseInsensitiveOption);
    return statement.contains(typed);
}

QAbstractButton *saving(const Screen *screen)
{
    for (QAbstractButton *button : usable<QAbstractButton>(screen)) {
        if (QStringList{"Save", "Update"}.contains(button->text().remove(u'&')))
            return button;
    }
    return nullptr;
}

void paste(QLineEdit *field, const QString &text)
{
    QApplication::clipboard()->setText(text);
    field->selectAll();
    text.isEmpty() ? QTest::keyClick(field, Qt::Key_Delete) : QTest::keySequence(field, QKeySequence::Paste);
}

/// Opens a cell for typing; null when the column takes no text.
QLineEdit *editorOf(Grid *grid, int col)
{
    constexpr int rowsTried = 3;
    for (int row = grid->FixedRows(); row < std::min(grid->Rows(), grid->FixedRows() + rowsTried); ++row) {
        grid->setCell(row, col);
        if (!grid->EditCell())
            continue;
        if (auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget()))
            return editor;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    }
    return nullptr;
}

/// The clicks and keys that a screen takes now.
QList<Act> acts(const Screen *screen)
{
    QList<Act> all;
    for (QAction *entry : screen->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly))
        all << Act{entry->objectName(), [entry] { entry->trigger(); }};
    for (const QPointer<QAbstractButton> button : usable<QAbstractButton>(screen))
        all << Act{nameOf(button), [button] {
                       if (button)
                           button->setFocus(Qt::MouseFocusReason);
                       if (button)
                           button->click();
                   }};
    for (const QPointer<Grid> grid : usable<Grid>(screen)) {
        if (grid->hasDataRow())
            all << Act{nameOf(grid), [grid] { grid ? QTest::keyClick(grid, Qt::Key_Return) : void(); }};
    }
    return all;
}

/// The first and the last entry of each list.
QList<Act> choices(const Screen *screen)
{
    QList<Act> all;
    for (const QPointer<QComboBox> combo : usable<QComboBox>(screen)) {
        for (const int index : {0, combo->count() - 1})
            all << Act{Joined(nameOf(combo), ' ', index),
                       [combo, index] { combo ? combo->setCurrentIndex(index) : void(); }};
    }
    return all;
}

/// Walks over all screens that buttons, menus, lists and rows open, from the main one on, begins what can be begun on
/// them and puts each text into each field that is open then. Screens are found on the way, so that a new one takes part
/// without being named. Questions are answered with the first reply, but nothing is deleted.
class TextWalk : public QObject, private Answerer
{
public:
    /// @param brief puts one of the texts into a field instead of all
    TextWalk(Outcome &outcome, Bench &bench, Connection &connection, bool brief)
        : m_outcome(outcome)
        , m_bench(bench)
        , m_answers(this)
        , m_brief(brief)
    {
        connection.setObserver([this](const QString &statement) {
            static const QRegularExpression reading("^\\s*(select|show|flush|start|commit|rollback)",
                                                    QRegularExpression::CaseInsensitiveOption);
            m_outcome.expect(!isUnsafe(statement), "sent: " + statement);
            m_changed = m_changed || !reading.match(statement).hasMatch();
        });
    }

    void visit(Screen *screen); ///< does all that there is to do on it
    void tell();                ///< how far it got, screen by screen

private:
    struct Count
    {
        QSet<QString> fields;
        QSet<QString> reached;
        int sent = 0; ///< texts that came as far as a statement, whether it was refused or not
    };

    Reply message(const MessageBox &box) override
    {
        static const QRegularExpression kept("delete|really want to exit", QRegularExpression::CaseInsensitiveOption);
        return m_unwilling || kept.match(box.text).hasMatch() ? box.escapeReply() : box.replies().first();
    }
    QString file(const FileRequest & /*request*/) override { return {}; }

    [[nodiscard]] std::optional<Act> next(const Screen *screen) const;
    void use(Screen *screen, const std::function<void()> &act);
    void leave(const QPointer<Screen> &screen);
    void fill(const QPointer<Screen> &screen, const Act &begin, const QSet<QString> &except);
    void complete(const Screen *screen);
    bool fillNext(const QPointer<Screen> &screen, const QString &begin, const QSet<QString> &except);
    void put(const QPointer<Screen> &screen, const Place &place, const QString &text);
    void save(const QPointer<Screen> &screen);
    void compare(const QString &what);

    Outcome &m_outcome;
    Bench &m_bench;
    AnswererScope m_answers;
    bool m_brief;
    QList<Screen *> m_visiting;
    QSet<QString> m_done;             // acts, and texts by the field and how it was opened
    QString m_choice;                 // the one in force, of a screen that is open
    QMap<QString, QString> m_samples; // what stood in a field
    QMap<QString, Count> m_counts;    // by screen
    QStringList m_content = m_bench.content();
    bool m_changed = false;
    bool m_unwilling = false; // says no
};

void TextWalk::visit(Screen *screen)
{
    const QPointer<Screen> alive(screen);
    m_visiting << screen;
    fill(alive, {}, {});
    while (const std::optional<Act> act = isOpen(alive) ? next(alive) : std::nullopt) {
        const QString outer = m_choice;
        m_choice = act->choice.isEmpty() ? outer : act->choice;
        // As long as it leads to something new: a save may have closed the screen that it opened.
        qsizetype before = -1;
        while (isOpen(alive) && before < m_done.size()) {
            before = m_done.size();
            const QSet<QString> open = namesOf(places(alive));
            use(alive, act->carryOut);
            fill(alive, *act, open);
        }
        if (isOpen(alive) || before == m_done.size())
            m_done << act->name;
        m_choice = outer;
    }
    m_visiting.removeLast();
}

/// What was not done yet on a screen. Each choice from a list makes all the rest new, on the screens behind it too, unless
/// it belongs to an entry that was begun; one choice at a time.
std::optional<Act> TextWalk::next(const Screen *screen) const
{
    QList<Act> all = acts(screen);
    const bool single = !m_choice.isEmpty() || saving(screen) != nullptr;
    for (const Act &choice : choices(screen)) {
        const QList<Act> plain = single ? QList<Act>() : acts(screen);
        all << choice;
        for (const Act &act : plain)
            all << Act{Joined(act.name, " with ", choice.name),
                       [choice, act] {
                           choice.carryOut();
                           act.carryOut();
                       },
                       choice.name};
    }
    for (Act &act : all) {
        act.name = Joined(screen->objectName(), '.', act.name, ' ', m_choice);
        if (!m_done.contains(act.name))
            return act;
    }
    return {};
}

/// Carries out what may open screens, visits those and closes them again.
void TextWalk::use(Screen *screen, const std::function<void()> &act)
{
    settle();
    QTimer watch; // a modal screen opens within the act
    const qsizetype modal = Screen::modalScreens().size();
    connect(&watch, &QTimer::timeout, this, [&] {
        watch.stop();
        if (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        if (Screen::modalScreens().size() > modal) {
            const QPointer<Screen> opened = Screen::modalScreens().last();
            visit(opened);
            leave(opened);
        }
        watch.start(0);
    });
    watch.start(0);
    act();
    QCoreApplication::processEvents();
    watch.stop();
    for (QPointer<Screen> front = Screen::inFront(); isOpen(front) && front != screen && !m_visiting.contains(front);
         front = Screen::inFront()) {
        visit(front);
        leave(front);
    }
}

void TextWalk::leave(const QPointer<Screen> &screen)
{
    constexpr int mostTries = 5;
    for (int tries = 0; isOpen(screen) && tries < mostTries; ++tries) {
        m_unwilling = tries % 2 == 1; // to save what cannot be saved, for example
        screen->Unload();
        QCoreApplication::processEvents();
    }
    m_unwilling = false;
    if (isOpen(screen))
        qFatal("%s cannot be closed.", qPrintable(screen->objectName()));
}

/// @param begin what was done last: it opened the fields, and does so again after each save
/// @param except what was open before
void TextWalk::fill(const QPointer<Screen> &screen, const Act &begin, const QSet<QString> &except)
{
    for (bool begun = true; isOpen(screen);) {
        if (begun)
            complete(screen);
        if (fillNext(screen, begin.name.section(u' ', 0, 0), except)) {
            begun = false;
            continue;
        }
        if (begun || !begin.carryOut)
            return;
        use(screen, begin.carryOut);
        begun = true;
    }
}

/// Gives the empty fields what stood in them before, as far as that is known, so that what is entered can be saved.
void TextWalk::complete(const Screen *screen)
{
    for (QLineEdit *field : screen->findChildren<QLineEdit *>()) {
        if (field->isReadOnly())
            continue;
        const QString name = Joined(screen->objectName(), '.', nameOf(field));
        m_counts[screen->objectName()].fields << name;
        if (!field->text().isEmpty())
            m_samples.insert(name, field->text());
        else if (field->isVisible() && field->isEnabled() && saving(screen) != nullptr)
            field->setText(m_samples.value(name));
    }
    for (QComboBox *combo : usable<QComboBox>(screen)) {
        if (combo->currentIndex() < 0 && saving(screen) != nullptr)
            combo->setCurrentIndex(0);
    }
}

/// False when each field that is open had each text.
bool TextWalk::fillNext(const QPointer<Screen> &screen, const QString &begin, const QSet<QString> &except)
{
    qsizetype turn = 0;
    for (const Place &place : places(screen)) {
        ++turn; // in a brief walk each field gets one text, and the next one another
        for (const QString &text : hostile) {
            const QString name = Joined(screen->objectName(), '.', place.name, " by ", begin, ": ", text);
            if ((m_brief && ++turn % hostile.size() != 0) || except.contains(place.name) || m_done.contains(name))
                continue;
            m_done << name;
            put(screen, place, text);
            return true;
        }
    }
    return false;
}

void TextWalk::put(const QPointer<Screen> &screen, const Place &place, const QString &text)
{
    auto *grid = qobject_cast<Grid *>(place.widget);
    place.widget->setFocus();
    const QPointer<QLineEdit> field =
        grid != nullptr ? editorOf(grid, place.col) : qobject_cast<QLineEdit *>(place.widget);
    if (field == nullptr)
        return;
    const QString name = screen->objectName();
    m_counts[name].reached << Joined(name, '.', place.name);
    const QString before = field->text();
    compare("what was done before");
    const qsizetype faults = m_bench.faults();
    paste(field, text);
    if (grid != nullptr && field)
        QTest::keyClick(field, Qt::Key_Return);
    save(screen);
    m_counts[name].sent += m_changed || m_bench.faults() > faults ? 1 : 0;
    compare(Joined(text, " in ", name, '.', place.name));
    if (isOpen(screen) && grid == nullptr && field && field->isVisible() && field->isEnabled())
        paste(field, before);
    ++m_outcome.rounds;
}

/// By its button, or, on a screen that saves when it is left, by leaving it.
void TextWalk::save(const QPointer<Screen> &screen)
{
    if (!isOpen(screen))
        return;
    if (QAbstractButton *button = saving(screen))
        use(screen, [button] { QTest::mouseClick(button, Qt::LeftButton); });
    else if (QWidget *focus = QApplication::focusWidget())
        use(screen, [focus] { QTest::keyClick(focus, Qt::Key_Escape); });
}

/// What goes from a table belongs to one client, head or year, and comes back.
void TextWalk::compare(const QString &what)
{
    if (!std::exchange(m_changed, false))
        return;
    const QStringList before = std::exchange(m_content, m_bench.content());
    QStringList went;
    std::set_difference(before.begin(), before.end(), m_content.begin(), m_content.end(), std::back_inserter(went));
    QMap<QString, QSet<QString>> owners;
    for (const QString &row : went)
        owners[row.section(u'\t', 0, 0)] << row.section(u'\t', 1, 1);
    for (auto table = owners.begin(); table != owners.end(); ++table)
        m_outcome.expect(table->size() == 1,
                         Joined(what, ": ", table.key(), " lost rows of ", table->values().join(u',')));
    m_outcome.expect(before.size() <= m_content.size(), Joined(what, ": rows are gone"));
}

void TextWalk::tell()
{
    for (auto screen = m_counts.begin(); screen != m_counts.end(); ++screen) {
        m_outcome.expect(screen->fields.isEmpty() || !screen->reached.isEmpty(),
                         Joined("no field was reached on ", screen.key()));
        const QStringList missed = (screen->fields - screen->reached).values();
        if (!screen->reached.isEmpty())
            m_outcome.happened += Joined(screen.key(), ' ', screen->reached.size(), " fields, ", screen->sent, " sent",
                                         missed.isEmpty() ? "" : ", not ", missed.join(u' '), "; ");
    }
}

} // namespace

void HostileTexts(Outcome &outcome, Dice &dice)
{
    Bench bench;
    SetToday(QDate(2008, 6, 15));
    Program program({bench.app(), bench.data(), bench.file("pelkfbt.ini")}, LauncherSettings());
    QString why;
    if (!bench.hold() || !program.start(&why))
        qFatal("The program does not start: %s", qPrintable(why));
    QTimer::singleShot(0, qApp, [&] {
        program.show();
        // Rows of several owners in each table, so that a statement that has lost its end shows.
        bench.onlyClient();
        bench.addClient("T2", true);
        bench.addClient("T3", true);
        TextWalk walk(outcome, bench, program.connection(), dice.rounds == 1);
        walk.visit(Screen::inFront());
        walk.tell();
        program.connection().setObserver({});
        QCoreApplication::exit(0);
    });
    QApplication::exec();
    program.stop();
}
