#include "frame/selection.h"

#include "calc/clientyear.h"
#include "context/modbase.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "platform/text.h"

QStringList ChoosableYears()
{
    QStringList years;
    for (int year = firstAssessmentYear; year <= lastAssessmentYear; ++year)
        years << LongYearLabel(year);
    return years;
}

int FirstYearPosition(int tYear)
{
    if (tYear >= firstAssessmentYear && tYear <= lastAssessmentYear)
        return tYear - firstAssessmentYear;
    const bool taxStillDue = Today() <= QDate(2010, 3, 31);
    return lastAssessmentYear - firstAssessmentYear - (taxStillDue ? 1 : 0);
}

bool TakeClientAndYear(const QString &code, const QString &name, const QString &yearText)
{
    if (!TakeClientYear(code, static_cast<int>(Val(yearText))))
        return false;
    ClientName = name;
    Base->Cap = QStringLiteral(" of ") + name + QStringLiteral(" for the Assessment Year ") + yearText;
    return true;
}
