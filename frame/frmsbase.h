#pragma once

#include "controls/screen.h"
#include "platform/offer.h"

#include <memory>

namespace Ui {
class frmsbase;
}

/// Chooses the client and the assessment year that all later screens work on.
class FBT_OFFERED frmsbase : public Screen
{
    Q_OBJECT

public:
    explicit frmsbase(QWidget *parent = nullptr);
    ~frmsbase() override;

    /// Reads the clients anew, for what was changed elsewhere; the current one stays current.
    void reload();

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override;

private:
    void PROCEED();
    bool closeOther();
    bool takeChosen();

    std::unique_ptr<Ui::frmsbase> ui;
};
