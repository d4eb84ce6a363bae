#include "calc/instalments.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "platform/dates.h"
#include "platform/text.h"

namespace {

using Weights = std::array<double, 4>; // of tax, surcharge and the cesses, in percent of the value

Weights weightsOf(const FBTRates &rates)
{
    Weights weights{};
    weights[TaxHead] = rates[1];
    weights[SurchargeHead] = rates[2] / 100 * weights[TaxHead];
    const double base = weights[TaxHead] + weights[SurchargeHead];
    weights[EduCessHead] = base * rates[3] / 100;
    weights[SHECessHead] = base * rates[4] / 100;
    return weights;
}

double divided(double part, double whole)
{
    if (whole == 0)
        throw FaultError(FaultNumber::DivisionByZero, QStringLiteral("Division by zero"));
    return part / whole;
}

/// The tax on a quarter's value as a challan states it.
double taxOfQuarter(int quarter)
{
    const double value = FBTQtrValue.at(static_cast<std::size_t>(quarter));
    const Employees employees = EmployeesInHand();
    if (ProportionApplies(employees))
        return Round(TaxableValue(employees, value) * FBTRate[1] / 100);
    return Round(FBTRate[1] / 100 * value);
}

} // namespace

/// The cesses here are `base * rate / 100`, those of the computation `rate / 100 * base` (calc/taxchain.h). A rate such as
/// 2 / 100 is no exact number, so where the product ends in exactly half a rupee the two round to different sides: a
/// challan states the exact product, the return the other. Neither may be put in the other's place.
HeadAmounts TaxByHead(int quarter)
{
    if (quarter == 0)
        return {FBTTax, FBTSurcharge, FBTEduCess, FBTSHECess, 0};
    const double tax = taxOfQuarter(quarter);
    const double surcharge = Round(FBTRate[2] / 100 * tax);
    const double base = tax + surcharge;
    return {tax, surcharge, Round(base * FBTRate[3] / 100), Round(base * FBTRate[4] / 100), 0};
}

InstalmentFigures FiguresOfInstalment(double annual, double share, const FBTRates &rates, const HeadAmounts &paid,
                                      ErrorTail &tail)
{
    InstalmentFigures figures;
    const double due = Round(annual * share);
    const double paidInAll = Round(paid[TaxHead] + paid[SurchargeHead] + paid[EduCessHead] + paid[SHECessHead]);
    figures.total = {due, paidInAll, Round(due - paidInAll)};
    const Weights weights = weightsOf(rates);
    const double whole = weights[TaxHead] + weights[SurchargeHead] + weights[EduCessHead] + weights[SHECessHead];
    double rest = due;
    for (const std::size_t head : {SHECessHead, EduCessHead, SurchargeHead}) {
        InstalmentHead &cells = figures.heads.at(head);
        tail([&] { cells.due = Round(divided(weights.at(head), whole) * due); });
        rest -= cells.due.value_or(0);
    }
    figures.heads[TaxHead].due = Round(rest);
    for (std::size_t head = 0; head < figures.heads.size(); ++head) {
        InstalmentHead &cells = figures.heads.at(head);
        cells.paid = Round(paid.at(head));
        cells.balance = Round(cells.due.value_or(0) - cells.paid);
    }
    return figures;
}

Reading<HeadAmounts> GETDEPAMT(const QString &DueDate)
{
    ErrorTail tail(QStringLiteral("Challan"));
    HeadAmounts paid{};
    QDate due;
    if (DueDate.isEmpty() || !tail([&] { due = DateOrFault(DueDate); }))
        return paid;
    const RowsRead<ChallanRecord> rows = Challans(Cnn, {Base->code, Base->TYear}, PaymentKind::Advance);
    if (rows.failed())
        return Reading<HeadAmounts>::failure();
    for (const ChallanRecord &row : *rows) {
        QDate date;
        if (row.date.isEmpty() || !tail([&] { date = DateOrFault(row.date); }) || due < date)
            continue;
        const HeadAmounts heads = HeadsOf(row);
        for (std::size_t head = TaxHead; head <= SHECessHead; ++head)
            paid.at(head) += heads.at(head);
    }
    return paid;
}
