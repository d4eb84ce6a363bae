#pragma once

#include "controls/screen.h"
#include "platform/offer.h"
#include "suite/clientinfo/addinfospec.h"

class BaseObject;
class QComboBox;
class QPushButton;

/// Keeps what the later form of the return asks beside the additional information, for a client and year chosen at the
/// top: the representative, a former name, accounts and audit.
class FBT_OFFERED frmmiscinf : public Screen
{
    Q_OBJECT

public:
    explicit frmmiscinf(BaseObject &base, QWidget *parent = nullptr);

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;

private:
    void LOADCLIENTS();
    void LOADDATA(const ClientYear &client);
    void CHOICE_CLICK(); ///< another client or year was chosen
    bool CMDSAVE_CLICK();
    void drawScreen();
    [[nodiscard]] QString chosenClient() const;

    BaseObject &m_base;
    ClientYear m_client; // shown
    QComboBox *cboclient;
    QComboBox *cboyear;
    RowPanel *m_panel;
    QPushButton *cmdsave;
    QPushButton *cmdback;
};
