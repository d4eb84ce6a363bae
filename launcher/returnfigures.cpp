#include "launcher/returnfigures.h"

#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "records/challans.h"

std::optional<ReturnFigures> FiguresOfReturn(const QString &code, int year)
{
    const ClientYearKeeper inHand;
    if (!TakeClientYear(code, year) || !TakeEmployeesOfYear())
        return std::nullopt;
    // A client without natures ends the computation before the tax, which must not be that of the client before.
    FBTTax = FBTSurcharge = FBTEduCess = FBTSHECess = 0;
    if (!CALCFBT())
        return std::nullopt;
    const Reading<double> paid = TaxPaid(Cnn, {code, year});
    if (paid.failed())
        return std::nullopt;
    const double tax = FBTTax + FBTSurcharge + FBTEduCess + FBTSHECess;
    return ReturnFigures{tax, tax - paid.valueOr(0)};
}
