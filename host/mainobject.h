#pragma once

#include "host/objecttable.h"
#include "platform/offer.h"

#include <QString>

class Connection;

/// The suite's main object (`PrjWexaMainO.ClsMain`): the database and the state of its structure.
class FBT_OFFERED MainObject : public SuiteObject
{
public:
    Connection *Cnn = nullptr;      ///< the module's database
    Connection *SuiteCnn = nullptr; ///< the suite's own database, only read; null when there is none
    QString AppPath;                ///< application folder, without a slash at the end
    QString TmpPath;                ///< temporary folder

    [[nodiscard]] virtual bool ChkRepDbFlag() const = 0; ///< the last run did not end in order
    /// The database is new: no `VerInfo` or no row in it. This and the next throw when the database could not be asked:
    /// then it is neither updated nor marked as up to date.
    [[nodiscard]] virtual bool CreateDbFlag() const = 0;
    /// The database is of a lower version than the program, or its last update was cut off.
    [[nodiscard]] virtual bool UpdateDbFlag() const = 0;
    virtual void ShowWexaNews() = 0;
    virtual void CheckForUpdates() = 0;
    virtual void ShowAbout() = 0;
    /// Ends the main object: the run ended in order, and the connections close.
    virtual void TerminateObj() = 0;
};
