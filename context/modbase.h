#pragma once

#include "host/baseobject.h"
#include "host/mainobject.h"
#include "host/reportobject.h"
#include "platform/offer.h"

#include <QString>

#include <memory>

class Connection;
class QMainWindow;
class QObject;

/// The module's shared state, one instance a module. One thread, driven by the events of the screens; not locked.

FBT_OFFERED extern MainObject *MainObj;    ///< the suite's main object, handed in or made by `LoadFBT`
FBT_OFFERED extern QObject *DBObj;         ///< database object of the host; kept only
FBT_OFFERED extern QMainWindow *MdiForm;   ///< the host's main window
FBT_OFFERED extern QString VerText;        ///< version text for captions
FBT_OFFERED extern bool SuiteMode;         ///< true: started from inside the suite; false: under its own launcher
FBT_OFFERED extern Connection *Cnn;        ///< the one shared connection
FBT_OFFERED extern BaseObject *Base;       ///< the base object, owned by the module
FBT_OFFERED extern ReportObject *Reporter; ///< the report viewer, owned by the module
FBT_OFFERED extern QString ErrText;        ///< the place of the last fault: object name, a tab, procedure name
FBT_OFFERED extern bool DbUpdated;         ///< the updater came to its end
FBT_OFFERED extern bool PasswordPassed;    ///< the administrator's password was given
FBT_OFFERED extern QString AdminPassword;  ///< the plain password
FBT_OFFERED extern QString ClientName;     ///< name of the client chosen last
FBT_OFFERED extern const ObjectTable *SuiteObjects; ///< where CreateObject looks class names up

/// A new object of the suite by class name, or null when that class is not registered.
FBT_OFFERED std::unique_ptr<SuiteObject> CreateObject(const QString &className);

/// Empties the module's state, as before the first `LoadFBT`.
FBT_OFFERED void ResetModule();
