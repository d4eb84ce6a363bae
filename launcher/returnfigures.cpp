#include "launcher/returnfigures.h"

#include "calc/clientyear.h"
#include "calc/interest.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/text.h"
#include "records/challans.h"

ReturnFigures FiguresOfReturn(const QString &code, int year)
{
    const ClientYearKeeper inHand;
    TakeClientYear(code, year);
    TakeEmployeesOfYear();
    // A client without natures ends the computation before the tax, which must not be that of the client before.
    FBTTax = FBTSurcharge = FBTEduCess = FBTSHECess = 0;
    CALCFBT();
    ReturnFigures figures;
    figures.tax = FBTTax + FBTSurcharge + FBTEduCess + FBTSHECess;
    const InterestOfYear interest = CALCINTEREST();
    figures.interest = Round(interest.Int115WJ) + Round(interest.Int115WJ5) + Round(interest.Int115WK);
    figures.balance = figures.tax + figures.interest - Round(*TaxPaid(Cnn, {code, year}));
    return figures;
}
