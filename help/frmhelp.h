#pragma once

#include "controls/screen.h"
#include "help/helptopics.h"
#include "platform/offer.h"

#include <memory>

namespace Ui {
class frmhelp;
}

/// The help: a tree of topics, a pane with the page of the chosen one, and a search over all pages. It stands in a window
/// of its own, so that it can be read beside the screen that it explains.
class FBT_OFFERED frmhelp : public Screen
{
    Q_OBJECT

public:
    explicit frmhelp(QWidget *parent = nullptr);
    ~frmhelp() override;

    /// Opens the help at the topic of a screen, or at its first one when the screen has none. While a modal screen
    /// waits for the user the help is modal too, and this comes back when it was closed.
    static void OpenFor(Screen &asked);
    static void Open(); ///< at its first topic, or where it is already open

    void FORM_LOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;
    bool FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers) override;

    void SHOWPLACE(const QStringList &places); ///< the topic of the first key or screen that has one

private:
    void buildToolBar();
    void addButton(const QString &key, const QString &caption, const QKeySequence &shortcut,
                   void (frmhelp::*handler)());
    void wirePanes();
    void LOADTREE();
    void showRows();
    void SHOWTOPIC();
    void select(qsizetype row);
    void SYNCTREE();
    void BACK();
    void FORWARD();
    void DOWN();
    void UP();
    void PRINT();
    void SAVEPAGE();
    void CLOSE();
    void FIND();
    void SHOWHIT();
    [[nodiscard]] QString fullTitle(qsizetype row) const;
    bool treeKey(int key);

    std::unique_ptr<Ui::frmhelp> ui;
    HelpTopics m_topics;
    HelpOutline m_outline;
    QStringList m_texts;  // of the topics, read at the first search
    QStringList m_places; // whose topic is shown when the help is opened
};
