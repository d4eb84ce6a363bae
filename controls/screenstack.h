#pragma once

#include "platform/offer.h"

#include <QList>
#include <QWidget>

class QLabel;
class QScrollArea;
class QStackedWidget;
class QToolButton;
class Screen;

/// The pages of a host window: screens lie on top of each other, the newest in front, under a strip with the title
/// and a close button. When a screen is unloaded the one below comes back and is activated. A screen larger than the
/// window can be scrolled.
class FBT_OFFERED ScreenStack : public QWidget
{
    Q_OBJECT

public:
    explicit ScreenStack(QWidget *parent = nullptr);

    /// Shows a screen in front of the others. A screen that is here already comes to the front.
    void push(Screen *screen);

    /// Takes a screen out without unloading it; the one below comes back.
    void remove(Screen *screen);

    [[nodiscard]] Screen *top() const;             ///< nullptr when empty
    [[nodiscard]] QList<Screen *> screens() const; ///< from the bottom up

    /// Unloads all screens from the top down; false as soon as one keeps itself open.
    bool closeAll();

    /// The stack of a host window, nullptr if it has none.
    static ScreenStack *of(QWidget *host);

private:
    [[nodiscard]] QScrollArea *pageOf(const Screen *screen) const;
    void showTitle();
    void closeTop();

    QWidget *m_strip;
    QLabel *m_title;
    QToolButton *m_close;
    QStackedWidget *m_pages;
};
