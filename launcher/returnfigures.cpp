#include "launcher/returnfigures.h"

#include "calc/clientyear.h"
#include "calc/returnsums.h"

std::optional<ReturnFigures> FiguresOfReturn(const QString &code, int year)
{
    const ClientYearKeeper inHand;
    if (!TakeClientYear(code, year) || !TakeEmployeesOfYear())
        return std::nullopt;
    const ReturnFiguresOfYear figures = FiguresOfYear();
    if (!figures.known())
        return std::nullopt;
    return ReturnFigures{figures.sums.totalTax, figures.sums.interest115WJ + figures.sums.interest115WK,
                         figures.sums.balance};
}
