#include "suite/wexamain.h"

#include "controls/msgbox.h"
#include "platform/connection.h"
#include "platform/fault.h"
#include "records/clientcode.h"
#include "records/updatemark.h"

#include <QApplication>
#include <QFile>
#include <QVersionNumber>

namespace {

/// The stored version, or none. Throws when it could not be read: that is no new database.
Reading<QString> versionRead(Connection *cnn)
{
    Reading<QString> stored = StoredVersion(cnn);
    if (stored.failed())
        throw FaultError(FaultNumber::General, QStringLiteral("The version could not be read."));
    return stored;
}

} // namespace

WexaMain::WexaMain(const SuiteContext &context)
    : m_version(context.version)
    , m_running(context.appPath + QStringLiteral("/running.lock"))
{
    Cnn = context.cnn;
    SuiteCnn = context.suiteCnn;
    AppPath = context.appPath;
    TmpPath = context.tmpPath;
    if (!TableNames(Cnn)->contains(QStringLiteral("verinfo")))
        CreateVersionTable(Cnn);
    const bool leftOver = QFile::exists(m_running.fileName());
    m_running.setStaleLockTime(0); // only the death of its program makes a lock stale, not its age
    m_lastRunBroken = m_running.tryLock(0) && leftOver;
}

bool WexaMain::ChkRepDbFlag() const
{
    return m_lastRunBroken || StoredVersion(Cnn).failed();
}

bool WexaMain::CreateDbFlag() const
{
    return versionRead(Cnn).none();
}

bool WexaMain::UpdateDbFlag() const
{
    if (UpdateIsMarked(Cnn))
        return true;
    const Reading<QString> stored = versionRead(Cnn);
    const auto version = [](const QString &text) { return QVersionNumber::fromString(text.trimmed()).normalized(); };
    return stored.found() && version(*stored) < version(m_version);
}

void WexaMain::CheckForUpdates()
{
    MsgBox(QApplication::activeWindow(),
           QStringLiteral("No update service is configured. This is version %1.").arg(m_version), Buttons::Ok,
           Icon::Information);
}

void WexaMain::ShowAbout()
{
    MsgBox(QApplication::activeWindow(),
           QStringLiteral("Pelk FBT, version %1\n\n"
                          "Fringe Benefit Tax of employers in India, assessment years 2006-07 to 2010-11: expenses, "
                          "tax, interest, payments and returns under Chapter XII-H of the Income-tax Act, 1961.\n\n"
                          "This program is free software under the GNU General Public License, version 3 or later. "
                          "It comes without any warranty.")
               .arg(m_version),
           Buttons::Ok, Icon::Information, QStringLiteral("About"));
}

void WexaMain::TerminateObj()
{
    m_running.unlock();
    if (SuiteCnn != nullptr)
        SuiteCnn->close();
    Cnn->close();
}
