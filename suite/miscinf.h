#pragma once

#include "host/siblings.h"
#include "host/suitecontext.h"
#include "suite/wexabase.h"

/// Miscellaneous information of a client and year. It has a base object of its own, since it is made and used apart
/// from the module's.
class MiscInf : public MiscInfObject
{
public:
    MiscInf(const SuiteContext &context, std::shared_ptr<ReportShelf> shelf);

    void InitMe(const QString &appPath, Connection *connection, const QString &logName, double ratioX, double ratioY,
                double ratioFontSize) override;
    /// Shows the screen and waits until it is closed.
    void ObjMain() override;

private:
    WexaBase m_base;
};
