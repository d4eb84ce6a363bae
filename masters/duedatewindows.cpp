#include "masters/duedatewindows.h"

#include "platform/dates.h"
#include "records/duedates.h"

namespace {

QString betweenMessage(const DateWindow &window)
{
    return QStringLiteral("Date should be between %1 and %2").arg(DateText(window.from), DateText(window.to));
}

QString checkWindow(const DateWindow &window, const QString &date)
{
    return window.holds(DateFromText(date)) ? QString() : betweenMessage(window);
}

QString missingMessage()
{
    return QStringLiteral("Please Specify Due Date.");
}

} // namespace

DateWindow ReturnWindow(int year)
{
    return {QDate(year, 4, 1), QDate(year + 1, 3, 31)};
}

DateWindow InstalmentWindow(int year, int instalment)
{
    const QDate due = DateFromText(LawInstalments(year).at(static_cast<std::size_t>(instalment - 1)));
    return {due, QDate(due.year(), due.month(), due.daysInMonth())};
}

QString CheckReturnDate(int year, int column, const QString &date)
{
    if (date.isEmpty())
        return column == 1 ? missingMessage() : QString();
    return checkWindow(ReturnWindow(year), date);
}

QString CheckQuarterDate(int column, const QString &original, const QString &extended)
{
    if (column == 1)
        return original.isEmpty() ? missingMessage() : QString();
    const bool earlier = !extended.isEmpty() && DateFromText(extended) < DateFromText(original);
    return earlier ? QStringLiteral("Date should be Greater than ") + original : QString();
}

QString CheckInstalment(int year, int instalment, const QString &date)
{
    return checkWindow(InstalmentWindow(year, instalment), date);
}
