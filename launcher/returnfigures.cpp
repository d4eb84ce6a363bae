#include "launcher/returnfigures.h"

#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/recordset.h"

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
    const double paid = FirstField(Cnn, Sql("Select Sum(ITAmt+SCAmt+ECAmt+ECAmt1) from FBT_Challan Where Code_No='",
                                            code, "' and t_year=", year))
                            .num();
    figures.balance = figures.tax - paid;
    return figures;
}
