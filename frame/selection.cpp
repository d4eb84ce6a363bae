#include "frame/selection.h"

#include "calc/clientyear.h"
#include "frame/context/modbase.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "platform/text.h"

namespace {

constexpr int firstYear = 2006;
constexpr int lastYear = 2010;

} // namespace

QStringList ChoosableYears()
{
    QStringList years;
    for (int year = firstYear; year <= lastYear; ++year)
        years << LongYearLabel(year);
    return years;
}

int FirstYearPosition(int tYear)
{
    if (tYear >= firstYear && tYear <= lastYear)
        return tYear - firstYear;
    const bool taxStillDue = Today() <= QDate(2010, 3, 31);
    return lastYear - firstYear - (taxStillDue ? 1 : 0);
}

bool TakeClientAndYear(const QString &code, const QString &name, const QString &yearText)
{
    ClientName = name;
    TakeClientYear(code, static_cast<int>(Val(yearText)));
    Base->Cap = QStringLiteral(" of ") + name + QStringLiteral(" for the Assessment Year ") + yearText;
    return Base->TYear <= lastTaxedYear;
}
