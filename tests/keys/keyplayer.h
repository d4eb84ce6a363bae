#pragma once

#include "controls/msgbox.h"

#include <QObject>
#include <QPointer>
#include <QRandomGenerator>
#include <QTextStream>

class QAbstractButton;
class QWidget;

/// Plays rounds of random keys and clicks on whatever the program shows, as a user in a hurry would. Screens are found by
/// the buttons and menus that open them, so that a new one takes part without being named. The same seed plays the same.
///
/// Each step is due whether or not the one before has returned: it may have opened a modal screen.
class KeyPlayer : public QObject, protected Answerer
{
    Q_OBJECT

public:
    /// @param mainWindow the program's; it is never left for good
    KeyPlayer(QWidget *mainWindow, int rounds, quint32 firstSeed);
    ~KeyPlayer() override;

    void begin(); ///< `finished` follows

signals:
    void finished();

protected:
    /// One step of the user's in the window in front.
    virtual void act(QWidget *window);
    Reply message(const MessageBox &box) override;
    [[nodiscard]] int upTo(int count) { return m_random.bounded(count); }

private:
    QString file(const FileRequest &request) override;

    void beginRound();
    void step();
    void closeAll();

    void click(QWidget *window);
    void clickSomewhere(QWidget *window);
    void pressMnemonic(QWidget *window);
    void twoAtOnce(QWidget *window);
    void triggerMenuEntry(QWidget *window);
    void chooseEntry(QWidget *window);
    void pressKey(QWidget *window);
    void typeText(QWidget *window);
    void pasteText(QWidget *window);

    [[nodiscard]] QWidget *windowInFront();
    template<class W>
    W *anyOf(QWidget *window);

    QPointer<QWidget> m_main;
    int m_rounds;
    quint32 m_seed;
    int m_stepsLeft = 0;
    int m_closingTries = 0;
    bool m_closing = false;
    QRandomGenerator m_random;
    Answerer *m_before;
};
