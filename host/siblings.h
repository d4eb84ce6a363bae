#pragma once

#include "host/objecttable.h"
#include "platform/offer.h"

#include <QString>

class Connection;

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
