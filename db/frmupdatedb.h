#pragma once

#include "controls/screen.h"
#include "platform/offer.h"

#include <memory>

namespace Ui {
class frmupdatedb;
}

/// Asks the user to wait while the database is brought up to date. Shown modally; it starts by itself and goes away when
/// the work is over. `DbUpdated` is true from then on when the work came to its end, whatever single statements failed.
class FBT_OFFERED frmupdatedb : public Screen
{
    Q_OBJECT

public:
    explicit frmupdatedb(QWidget *parent = nullptr);
    ~frmupdatedb() override;

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override;
    bool FORM_UNLOAD() override { return !m_working; } // not while tables are being changed

private:
    std::unique_ptr<Ui::frmupdatedb> ui;
    bool m_started = false;
    bool m_working = false;
};
