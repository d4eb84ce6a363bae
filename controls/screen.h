#pragma once

#include "controls/msgbox.h"
#include "controls/screenframe.h"
#include "controls/screenstack.h"
#include "platform/offer.h"

#include <QEvent>
#include <QEventLoop>
#include <QHash>
#include <QPointer>
#include <QWidget>

#include <array>
#include <functional>

class QFocusEvent;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QSettings;
class ScreenFrame;
class ScreenStack;

/// What all screens share.
///
/// Life: a screen is made, loaded (`FORM_LOAD`, once), shown by `openChild` or `showModal`, and lives until `Unload`,
/// which asks `FORM_UNLOAD` first. A child screen deletes itself after it was unloaded; a modal one belongs to who made
/// it. The close button of its window takes the same way as `Unload`.
///
/// Keys: Enter moves on from single-line fields, combo boxes, check boxes and options, and clicks a button. Small
/// letters a to z become capitals on their way into a field (controls/typedtext.h). Escape goes to `FORM_KEYPRESS`, whatever has the focus;
/// only an open list of matches, an open popup and a cell being edited close first. A field that gets the focus
/// otherwise than by the mouse selects its text.
///
/// Properties of a child widget that change this: "keepCase" = true leaves small letters alone, "ownEnter" = true
/// leaves Enter to the widget, "causesCheck" = false lets the user go to the widget (a cancel button) without the
/// check of the field that is left.
class FBT_OFFERED Screen : public QWidget
{
    Q_OBJECT

public:
    /// `name` becomes the object name. The screen is shown by `openChild` or `showModal`, not by `show`.
    explicit Screen(const QString &name, QWidget *parent = nullptr);
    ~Screen() override;

    virtual void FORM_LOAD() {}
    virtual void FORM_ACTIVATE() {}             ///< at each showing, and when the screen in front of it goes away
    virtual bool FORM_UNLOAD() { return true; } ///< false keeps the screen open
    /// The session ends, and nobody can be asked: saves what leaving the screen saves. As it stands, the screen is left as
    /// by a user who gives each question its default reply and tries once more when he is kept.
    virtual void FORM_SESSIONEND();

    static constexpr int enterKey = 13;  ///< Enter, as `FORM_KEYPRESS` and the grids tell it
    static constexpr int escapeKey = 27; ///< Escape, in the same way

    /// Escape or Enter before the control sees it; true when it is dealt with. As it stands, Escape unloads.
    virtual bool FORM_KEYPRESS(int asciiKey);

    /// Any key before the control sees it (function keys, for example); true when it is dealt with.
    virtual bool FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers);

    void Load(); ///< runs FORM_LOAD if the screen is not loaded
    /// False when FORM_UNLOAD keeps it open, or while a modal screen or a message opened after it waits for the user.
    bool Unload();
    [[nodiscard]] bool isLoaded() const { return m_loaded; }

    /// Loads and shows the screen in the `ScreenStack` of `host`, in front of the others there, and returns at once.
    /// Without a stack (or host) the screen gets a window of its own.
    void openChild(QWidget *host);

    /// Loads and shows the screen in a window of its own that blocks all others, and returns when it was unloaded.
    void showModal();

    /// Whether the screen is deleted after it was unloaded. `openChild` turns it on.
    void setDeleteOnUnload(bool on) { m_deleteOnUnload = on; }

    /// Notes that something the screen shows could not be read: its caption and a strip at its top say so until
    /// `readingWell`. A procedure that writes asks `couldRead` first and leaves alone what it does not know.
    /// @param what in the plural and small letters, such as "salaries"
    void readingFailed(const QString &what);
    /// `what` was read; the empty text stands for all that had failed.
    void readingWell(const QString &what = {});
    void noteReading(const QString &what, bool well) { well ? readingWell(what) : readingFailed(what); }
    [[nodiscard]] bool couldRead() const { return m_unread.isEmpty(); } ///< nothing that failed is outstanding
    [[nodiscard]] bool couldRead(const QString &what) const { return !m_unread.contains(what); }

    /// What a screen tells in the strip at its top, beside what could not be read.
    enum class Told { Figures, Notice };
    /// Tells a sentence there until another one, or the empty text, takes its place.
    void tell(Told about, const QString &sentence);

    /// Asks "Do you want to exit ?"; true for Yes. For use in FORM_UNLOAD.
    bool askExit(Icon icon = Icon::None);

    /// `check` runs when the user leaves `field`. When it returns false the focus stays and the text is selected. It
    /// does not run while Escape is handled, while the screen is being closed, or when the field is hidden or disabled.
    void setLeaveCheck(QLineEdit *field, const std::function<bool()> &check);

    /// The field that was entered last and not left since; a message box or a popup does not count as leaving.
    [[nodiscard]] QWidget *currentField() const { return m_current; }

    /// Activates the screen: gives the focus back to its field and runs FORM_ACTIVATE. Called by the stack and windows.
    void activate();

    /// The screen that a widget belongs to, nullptr if none. A window opened over a screen does not belong to it.
    static Screen *of(const QWidget *widget);

    /// The modal screens that wait for the user now, the outermost first; one that is still being opened does not.
    static QList<Screen *> modalScreens();

    /// The screen that the user has before him; nullptr when none is open.
    static Screen *inFront();

    /// Tells every open screen that the session ends, the one opened last first; it answers all that they ask.
    static void endSession();

    /// Where the sizes of windows are kept by screen name. Not owned; nullptr: they are not kept.
    static void setGeometryStore(QSettings *store);
    static QSettings *geometryStore();

    /// What F1 does on every screen: `help` gets the screen in front of the user. Without it F1 is a key like others.
    static void setHelp(const std::function<void(Screen &asked)> &help);

    /// The one screen of a class that is open as a child, nullptr when there is none.
    template<class S>
    static S *opened()
    {
        for (Screen *screen : openChildren()) {
            if (auto *found = dynamic_cast<S *>(screen))
                return found;
        }
        return nullptr;
    }

    /// Brings the one screen of a class to the front; it is made when it is not open.
    template<class S>
    static void openOnce(QWidget *host)
    {
        S *screen = opened<S>();
        (screen != nullptr ? screen : new S(host))->openChild(host);
    }

    /// Unloads the screens that are open (the others are null). The first that stays comes to the front; false then.
    static bool unloadEach(const QList<Screen *> &screens, QWidget *host);

    /// For a control that keeps the focus which a press of the mouse took away: the press works on nothing else either.
    void swallowPress();

signals:
    void unloaded();
    void entered(QWidget *field); ///< a control got the focus (a combo box or grid counts as one control)
    void left(QWidget *field);    ///< a control lost the focus for good
    void allRead();               ///< nothing that could not be read is outstanding any more

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] bool concerns(const QWidget *target, QEvent::Type type) const;
    bool mousePressed(QWidget *target, QEvent::Type type);
    bool keyPressed(QWidget *target, QKeyEvent *event);
    bool escapePressed(QWidget *target);
    bool enterPressed(QWidget *target);
    void focusGained(QWidget *target, const QFocusEvent *event);
    bool focusLost(QWidget *target, const QFocusEvent *event);
    bool mayLeave(QWidget *field);
    void keepFocus(QWidget *field, Qt::FocusReason reason);
    void openFrame(QWidget *owner, Qt::WindowModality modality);
    void leaveView();
    void showStrip();
    void captionUnread();
    [[nodiscard]] bool mayTakeFocus(const QWidget &field) const;
    [[nodiscard]] bool hasFocusInside() const;
    [[nodiscard]] bool reallyShown(const QWidget *widget) const;
    [[nodiscard]] QWidget *fieldOf(QWidget *widget) const;
    [[nodiscard]] Screen *screenBelow() const;
    [[nodiscard]] bool waitsForAnother() const;
    static QList<Screen *> openChildren();

    QHash<const QObject *, std::function<bool()>> m_checks;
    QPointer<QWidget> m_current;
    QPointer<QWidget> m_lastField;
    QPointer<QEventLoop> m_modalLoop;
    QPointer<ScreenStack> m_stack;
    QPointer<ScreenFrame> m_frame;
    QPointer<QLabel> m_strip;
    QStringList m_unread;            // what could not be read
    std::array<QString, 2> m_told{}; // by what it is about
    int m_openedAt = 0;              // screens are counted as they are opened
    bool m_loaded = false;
    bool m_unloading = false;
    bool m_escaping = false;
    bool m_checking = false;
    bool m_swallowPress = false;
    QPointer<QWidget> m_pressed; // by the mouse, last
    bool m_deleteOnUnload = false;
    bool m_child = false; // opened by openChild
};
