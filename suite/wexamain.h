#pragma once

#include "host/mainobject.h"
#include "host/suitecontext.h"
#include "platform/offer.h"

#include <QLockFile>

/// The suite's main object. While it lives a lock file lies in the application folder; one that a dead program left
/// there tells that the run before did not end in order. A second program beside a running one finds all in order.
class FBT_OFFERED WexaMain : public MainObject
{
public:
    /// Creates `VerInfo` when it is missing, and takes the lock file.
    explicit WexaMain(const SuiteContext &context);

    /// Also where the version cannot be read: the table that holds it may be the damaged one.
    [[nodiscard]] bool ChkRepDbFlag() const override;
    [[nodiscard]] bool CreateDbFlag() const override;
    [[nodiscard]] bool UpdateDbFlag() const override;
    /// Shows the suite's news. None are delivered with this program, so nothing is shown.
    void ShowWexaNews() override {}
    void CheckForUpdates() override;
    void ShowAbout() override;
    void TerminateObj() override;

private:
    QString m_version;
    QLockFile m_running;
    bool m_lastRunBroken = false;
};
