#pragma once

#include "controls/screen.h"
#include "platform/offer.h"
#include "suite/clientinfo/addinfospec.h"

class BaseObject;
class QPushButton;

/// Additional information of the client and year in hand, as the return of assessment year 2006-07 needs it.
class FBT_OFFERED frmaddinfo : public Screen
{
    Q_OBJECT

public:
    explicit frmaddinfo(BaseObject &base, QWidget *parent = nullptr);

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;

protected:
    frmaddinfo(const QString &name, ReturnForm form, BaseObject &base, QWidget *parent);

private:
    void CMDSAVE_CLICK();
    void CMDBANK_CLICK();
    [[nodiscard]] bool employeesRight();
    void drawButtons();

    BaseObject &m_base;
    ClientYear m_client; // that the screen was opened for
    RowPanel *m_panel;
    QPushButton *cmdbank;
    QPushButton *cmdsave;
    QPushButton *cmdback;
};

/// The same, as the later form of the return needs it.
class FBT_OFFERED frmaddinfo1 : public frmaddinfo
{
    Q_OBJECT

public:
    explicit frmaddinfo1(BaseObject &base, QWidget *parent = nullptr);
};
