#pragma once

#include "controls/screen.h"
#include "platform/offer.h"

#include <memory>

namespace Ui {
class frmLogin;
}

/// Asks for the administrator's password. `PasswordPassed` tells afterwards whether it was given.
class FBT_OFFERED frmLogin : public Screen
{
    Q_OBJECT

public:
    explicit frmLogin(QWidget *parent = nullptr);
    ~frmLogin() override;

private:
    void CMDOK_CLICK();

    std::unique_ptr<Ui::frmLogin> ui;
};
