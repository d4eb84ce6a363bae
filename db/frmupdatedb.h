#pragma once

#include "controls/screen.h"
#include "db/updatelock.h"
#include "platform/offer.h"

#include <memory>

namespace Ui {
class frmupdatedb;
}

/// Asks the user to wait while the database is brought up to date. Shown modally; it starts by itself and goes away when
/// the work is over. `DbUpdated` is true from then on when the work came to its end, whatever single statements failed.
///
/// One program at a time updates a database. The others show that and wait, and can be left meanwhile; then they ask the
/// main object again and mostly find nothing to do. The lock is held until the screen is gone, so that the caller can
/// write the version before another program looks for it.
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
    bool waitForTurn();
    void showOther();
    [[nodiscard]] static bool isWanted();

    std::unique_ptr<Ui::frmupdatedb> ui;
    UpdateLock m_lock;
    bool m_started = false;
    bool m_working = false;
};
