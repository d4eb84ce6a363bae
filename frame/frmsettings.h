#pragma once

#include "controls/screen.h"
#include "platform/offer.h"

#include <memory>

namespace Ui {
class frmsettings;
}

/// Keeps the printers, the page length of text printing and the administrator's password.
class FBT_OFFERED frmsettings : public Screen
{
    Q_OBJECT

public:
    explicit frmsettings(QWidget *parent = nullptr);
    ~frmsettings() override;

    void FORM_LOAD() override;

private:
    void TXTLINES_LOSTFOCUS();
    void XPCMDBUTTON2_CLICK();
    [[nodiscard]] bool passwordTyped() const;
    bool savePassword();
    bool refusePassword(class QLineEdit *field, const QString &why);
    bool saveSettings();

    std::unique_ptr<Ui::frmsettings> ui;
};
