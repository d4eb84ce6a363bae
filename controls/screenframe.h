#pragma once

#include "platform/offer.h"

#include <QPointer>
#include <QWidget>

class QScrollArea;
class Screen;

/// The window of a screen that does not lie in a stack. What does not fit the display can be scrolled. Its size is
/// kept by the screen's name. A host window that is closed unloads it first, the window opened last before the others, and
/// stays when the screen does. The screen goes back to its former parent when it is taken out.
class FBT_OFFERED ScreenFrame : public QWidget
{
    Q_OBJECT

public:
    ScreenFrame(Screen *screen, QWidget *owner, Qt::WindowModality modality);
    ~ScreenFrame() override;

    /// Keeps the size and gives the screen back to its parent, hidden.
    void release();
    [[nodiscard]] bool isReleased() const { return m_screen.isNull(); }

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void restoreSize(const Screen &page);
    void keepSize() const;

    QPointer<Screen> m_screen;
    QPointer<QWidget> m_home;
    QString m_key;
    QScrollArea *m_area;
};
