#include "frame/selection.h"

#include "calc/modfbtcalc.h"
#include "calc/rates.h"
#include "frame/context/modbase.h"
#include "platform/clock.h"
#include "platform/recordset.h"
#include "platform/text.h"

namespace {

constexpr int firstYear = 2006;
constexpr int lastYear = 2010;

/// Reads status and surcharge applicability of the client in hand; without a row the status is 0.
QString readStatus()
{
    Recordset info;
    info.Open(Sql("Select clstatus,surapp from FBT_Info where codE_no='", Base->code, "'"), Cnn);
    if (info.Eof())
        return {};
    const Field status = info.Fields(u"ClStatus");
    Base->status = status.isNull() ? -1 : status.whole();
    return info.Fields(u"SurApp").text();
}

} // namespace

int FirstYearPosition(int tYear)
{
    if (tYear >= firstYear && tYear <= lastYear)
        return tYear - firstYear;
    const bool taxStillDue = Today() <= QDate(2010, 3, 31);
    return lastYear - firstYear - (taxStillDue ? 1 : 0);
}

bool TakeClientAndYear(const QString &code, const QString &name, const QString &yearText)
{
    Base->code = code;
    ClientName = name;
    Base->TYear = static_cast<int>(Val(yearText));
    Base->status = 0;
    EmpBoth = SepBooks = false;
    IndiaEmp = TotalEmp = 0;
    const QString surApp = readStatus();
    FBTRate = RatesFor(Base->TYear, Base->status, surApp);
    Base->Cap = QStringLiteral(" of ") + name + QStringLiteral(" for the Assessment Year ") + yearText;
    return Base->TYear <= lastTaxedYear;
}
