#pragma once

#include "host/baseobject.h"
#include "host/mainobject.h"
#include "host/reportobject.h"

#include <QString>

#include <memory>

class Connection;
class QMainWindow;
class QObject;

/// The module's shared state, one instance a module. One thread, driven by the events of the screens; not locked.

extern MainObject *MainObj;             ///< the suite's main object, handed in or made by `LoadFBT`
extern QObject *DBObj;                  ///< database object of the host; kept only
extern QMainWindow *MdiForm;            ///< the host's main window
extern QString VerText;                 ///< version text for captions
extern bool SuiteMode;                  ///< true: started from inside the suite; false: under its own launcher
extern Connection *Cnn;                 ///< the one shared connection
extern BaseObject *Base;                ///< the base object, owned by the module
extern ReportObject *Reporter;          ///< the report viewer, owned by the module
extern QString ErrText;                 ///< the place of the last fault: object name, a tab, procedure name
extern bool DbUpdated;                  ///< the updater came to its end
extern bool PasswordPassed;             ///< the administrator's password was given
extern QString AdminPassword;           ///< the plain password
extern QString ClientName;              ///< name of the client chosen last
extern const ObjectTable *SuiteObjects; ///< where CreateObject looks class names up

/// A new object of the suite by class name, or null when that class is not registered.
std::unique_ptr<SuiteObject> CreateObject(const QString &className);

/// One table row to the report: hands its arguments unchanged to the reporter.
void MULTISPCJS1(const ReportRow &row);

/// Empties the module's state, as before the first `LoadFBT`.
void ResetModule();
