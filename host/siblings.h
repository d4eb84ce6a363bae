#pragma once

#include "host/objecttable.h"
#include "platform/offer.h"

#include <QString>

class Connection;
class QJsonArray;
class QJsonValue;

/// The billing module of the suite (`PrjWexaBill.Forms`), where a host has it.
class FBT_OFFERED BillingObject : public SuiteObject
{
public:
    /// Says which module calls: "F" for this one.
    virtual void CallBilling(const QString &caller) = 0;
    virtual void OpenBilling() = 0;
};

/// Miscellaneous information of a client and year (`WexaMiscInf.ClsMain`).
class FBT_OFFERED MiscInfObject : public SuiteObject
{
public:
    /// @param logName file name of the log in the application folder
    virtual void InitMe(const QString &appPath, Connection *connection, const QString &logName, double ratioX,
                        double ratioY, double ratioFontSize) = 0;
    virtual void ObjMain() = 0;
};

/// A window of the user's own browser, outside this process (`InternetExplorer.Application`). It is driven while a form is
/// opened and filled, and then left to the user. The calls wait for the browser while events go on.
class FBT_OFFERED BrowserObject : public SuiteObject
{
public:
    enum class Opened { Yes, NoDriver, Failed };
    enum class Result { Done, NotYet, Gone }; ///< Gone: the user has closed the window

    /// Starts the browser, visible and empty.
    virtual Opened Open() = 0;
    [[nodiscard]] virtual QString Reason() const = 0; ///< why it did not start: text from outside
    [[nodiscard]] virtual bool Visible() = 0;         ///< the window is there
    virtual Result Navigate2(const QString &url) = 0;
    /// Runs a script of the module's own in the page; what it returns is text from outside.
    virtual Result Run(const QString &script, const QJsonArray &arguments, QJsonValue *value) = 0;
    virtual void Maximize() = 0;
    virtual void Close() = 0;
    virtual void Interrupt() = 0; ///< ends the wait of the call on its way
};
