#include "launcher/returnfigures.h"

#include "calc/clientyear.h"
#include "calc/interest.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/text.h"
#include "records/challans.h"

std::optional<ReturnFigures> FiguresOfReturn(const QString &code, int year)
{
    const ClientYearKeeper inHand;
    if (!TakeClientYear(code, year) || !TakeEmployeesOfYear())
        return std::nullopt;
    // A client without natures ends the computation before the tax, which must not be that of the client before.
    ClearTax();
    if (!CALCFBT())
        return std::nullopt;
    const InterestOfYear interest = CALCINTEREST();
    const Reading<double> paid = TaxPaid(Cnn, {code, year});
    if (paid.failed() || !interest.known)
        return std::nullopt;
    ReturnFigures figures;
    figures.tax = FBTTax + FBTSurcharge + FBTEduCess + FBTSHECess;
    figures.interest = Round(interest.Int115WJ) + Round(interest.Int115WJ5) + Round(interest.Int115WK);
    figures.balance = figures.tax + figures.interest - Round(*paid);
    return figures;
}
