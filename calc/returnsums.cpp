#include "calc/returnsums.h"

#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/text.h"

ReturnSums SumsOfReturn(const TaxParts &tax, const InterestOfYear &interest, const TaxesPaid &paid)
{
    ReturnSums sums;
    sums.tax = Round(tax.Tax);
    sums.surcharge = Round(tax.Surcharge);
    sums.cess = Round(tax.EduCess + tax.SHECess);
    sums.totalTax = sums.tax + sums.surcharge + sums.cess;
    sums.interest115WJ = Round(interest.Int115WJ + interest.Int115WJ5);
    sums.interest115WK = Round(interest.Int115WK);
    sums.totalInterest = Round(interest.total());
    sums.aggregate = sums.totalTax + sums.interest115WJ + sums.interest115WK;
    sums.advance = Round(paid.advance);
    sums.selfAssessment = Round(paid.selfAssessment);
    sums.totalPaid = Round(paid.advance + paid.selfAssessment);
    sums.balance = sums.aggregate - sums.advance - sums.selfAssessment;
    return sums;
}

ReturnFiguresOfYear FiguresOfYear()
{
    const ClientYear client{Base->code, Base->TYear};
    ReturnFiguresOfYear year;
    ClearTax(); // a client without natures ends the computation before the tax, which must not be another client's
    year.computed = CALCFBT();
    year.tax = {FBTTax, FBTSurcharge, FBTEduCess, FBTSHECess};
    year.interest = CALCINTEREST();
    const Reading<double> advance = TaxPaid(Cnn, client, PaymentKind::Advance);
    const Reading<double> other = TaxPaid(Cnn, client, PaymentKind::Other);
    year.paidKnown = !advance.failed() && !other.failed();
    year.paid = {*advance, *other};
    year.sums = SumsOfReturn(year.tax, year.interest, year.paid);
    return year;
}
