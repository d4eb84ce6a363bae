#pragma once

#include "controls/screen.h"
#include "platform/offer.h"

#include <QTimer>

#include <memory>

class NoTail;
class QMenu;

namespace Ui {
class frmmain;
}

/// The first screen: buttons and menus that open everything else, a clock, and the start-up steps that bring the
/// database up to date and ask for the administrator's password.
class FBT_OFFERED frmmain : public Screen
{
    Q_OBJECT

public:
    explicit frmmain(QWidget *parent = nullptr);
    ~frmmain() override;

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void buildMenus();
    QMenu *addMenu(const QString &name, const QString &caption);
    void addEntry(QMenu *menu, const QString &name, const QString &caption, void (frmmain::*handler)());
    void wireButtons();
    void enableButtons(bool on);
    void firstActivation(NoTail &none);
    bool databaseReady(NoTail &none);
    bool updateDatabase();
    bool mayEnter();
    bool passwordGiven();
    void leave();
    bool confirmQuit();
    void openMenuBeside(QWidget *button, QMenu *menu);

    void MNUCLINFO_CLICK();
    void MNUNATBUS_CLICK();
    void MNUEXPHEAD_CLICK();
    void MNUDUEDT_CLICK();
    void MNUCLDET_CLICK();
    void MNURET_CLICK();
    void MNUCHKRET_CLICK();
    void MNUBKUP_CLICK();
    void MNURESTORE_CLICK();
    void MNUREPAIR_CLICK();
    void CMDFBTDET_CLICK();
    void CMDSETTINGS_CLICK();
    void CMDHELP_CLICK();
    void CMDBILL_CLICK();
    void CMDMISCINF_CLICK();
    void CMDPROD_CLICK();
    void CMDQUIT_CLICK();
    void LBLCHECKUP_CLICK();
    void TIMER4_TIMER();

    std::unique_ptr<Ui::frmmain> ui;
    QTimer Timer4;
    QMenu *mnumain = nullptr;
    QMenu *mnureps = nullptr;
    QMenu *mnutools = nullptr;
    QAction *mnubkup = nullptr;
    bool m_firstActivation = true;
    bool m_leaving = false; // the question of quitting is answered, or the program ends without one
};
