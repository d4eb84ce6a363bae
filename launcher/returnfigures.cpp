#include "launcher/returnfigures.h"

#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
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
    figures.balance = figures.tax - TaxPaid(Cnn, {code, year}).valueOr(0);
    return figures;
}
