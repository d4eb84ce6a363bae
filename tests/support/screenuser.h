#pragma once

#include "controls/grid.h"
#include "controls/msgbox.h"
#include "controls/screen.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include <functional>
#include <initializer_list>
#include <memory>

/// A user at a screen: types, clicks, and answers what is asked with the replies queued beforehand.
///
/// The test fails when a question (a box of two buttons, or a file choice) comes that no reply waits for, and at the end
/// when a message was shown that the test did not look at (`said`) or a reply was never asked for. The screen goes with
/// its user, without a question.
class ScreenUser
{
public:
    ScreenUser();
    ~ScreenUser();
    ScreenUser(const ScreenUser &) = delete;
    ScreenUser &operator=(const ScreenUser &) = delete;

    /// Opens a screen in front of the user and waits until it takes keys.
    /// @param host window with a stack; nullptr: the screen gets a window of its own
    template<class S>
    S *open(QWidget *host = nullptr)
    {
        auto *made = new S(host);
        sitAt(made, host);
        return made;
    }
    /// As `open`, for a screen made by the test. It belongs to the user from here on; one before it goes.
    void sitAt(Screen *screen, QWidget *host = nullptr);
    /// Runs `act` with the user at the next modal screen, once it is up, and comes back to this one.
    void atNextModal(std::function<void()> act);
    [[nodiscard]] Screen *screen() const;

    template<class W>
    [[nodiscard]] W *find(const QString &name) const
    {
        const Screen *at = m_screen;
        W *found = at == nullptr ? nullptr : at->findChild<W *>(name);
        if (found == nullptr)
            qFatal("There is no control %s.", qPrintable(name));
        return found;
    }
    [[nodiscard]] Grid *grid(const QString &name) const { return find<Grid>(name); }
    [[nodiscard]] QString text(const QString &field) const { return find<QLineEdit>(field)->text(); }
    [[nodiscard]] bool enabled(const QString &name) const { return find<QWidget>(name)->isEnabled(); }
    [[nodiscard]] bool visible(const QString &name) const { return find<QWidget>(name)->isVisible(); }
    [[nodiscard]] QString focus() const; ///< the name of the field in hand, empty without one
    /// The data rows of a grid as shown, the visible columns separated by blanks.
    [[nodiscard]] QStringList shown(const QString &gridName) const;

    void click(const QString &button);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}); ///< in the field that has the focus
    void keys(const QString &text);                              ///< keystrokes where the focus is
    void type(const QString &field, const QString &text);        ///< replaces the text of a field by keystrokes
    void paste(const QString &field, const QString &text);       ///< at the caret, by the keyboard
    /// Replaces the text of a cell by keystrokes and Enter; the editor is still open when the text was refused.
    void typeCell(const QString &gridName, int row, int col, const QString &text);
    void choose(const QString &combo, const QString &text) { find<QComboBox>(combo)->setCurrentText(text); }
    void choose(const QString &combo, int index) { find<QComboBox>(combo)->setCurrentIndex(index); }

    void answers(std::initializer_list<Reply> replies); ///< to the next questions, in order
    void answersFile(const QString &path);              ///< to the next file choice; empty: cancelled
    QStringList said();                                 ///< the texts of the questions and messages since the last call

private:
    class Answers;

    std::unique_ptr<Answers> m_answers;
    AnswererScope m_scope;
    QPointer<Screen> m_screen;
    QPointer<Screen> m_owned;
};
