#pragma once

#include "host/mainobject.h"
#include "platform/fault.h"

/// A main object that notes what it is asked, in a list that it can share with the base object.
class NotingMain : public MainObject
{
public:
    explicit NotingMain(QStringList &calls)
        : m_calls(calls)
    {
    }
    bool damaged = false;
    bool created = false;
    bool older = false;
    bool unreadable = false; // the version of the database

    [[nodiscard]] bool ChkRepDbFlag() const override
    {
        if (damaged)
            m_calls << "ChkRepDbFlag";
        return damaged;
    }
    [[nodiscard]] bool CreateDbFlag() const override
    {
        if (unreadable)
            throw FaultError(FaultNumber::General, "The version could not be read.");
        return created;
    }
    [[nodiscard]] bool UpdateDbFlag() const override { return older; }
    void ShowWexaNews() override { m_calls << "ShowWexaNews"; }
    void CheckForUpdates() override { m_calls << "CheckForUpdates"; }
    void ShowAbout() override { m_calls << "ShowAbout"; }
    void TerminateObj() override { m_calls << "TerminateObj"; }

private:
    QStringList &m_calls;
};
