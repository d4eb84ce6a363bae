#include "platform/dates.h"

#include "platform/fault.h"

#include <QRegularExpression>

namespace {

int wholeYear(int year, qsizetype digits)
{
    constexpr int lastOfThisCentury = 29;
    if (digits > 2)
        return year;
    return year <= lastOfThisCentury ? 2000 + year : 1900 + year;
}

QString dateOfParts(const QString &day, const QString &month, const QString &year)
{
    return DateText(QDate(wholeYear(year.toInt(), year.size()), month.toInt(), day.toInt()));
}

} // namespace

QDate DateFromText(QStringView text)
{
    constexpr qsizetype wholeLength = 10;
    if (text.size() < wholeLength)
        return {};
    return QDate(text.right(4).toInt(), text.mid(3, 2).toInt(), text.left(2).toInt());
}

QDate DateOrFault(QStringView text)
{
    const QDate date = DateFromText(text);
    if (!date.isValid())
        throw FaultError(FaultNumber::TypeMismatch, QStringLiteral("No date: '%1'").arg(text));
    return date;
}

QString DateText(const QDate &date)
{
    return date.isValid() ? date.toString(u"dd/MM/yyyy") : QString();
}

QString ConvertTypedDate(QStringView text)
{
    static const QRegularExpression parts(
        QStringLiteral(R"(^\s*(\d{1,2})\s*[-/. ]\s*(\d{1,2})\s*[-/. ]\s*(\d{4}|\d{2})\s*$)"));
    static const QRegularExpression run(QStringLiteral(R"(^\s*(\d{2})(\d{2})(\d{4}|\d{2})\s*$)"));
    for (const QRegularExpression *form : {&parts, &run}) {
        const QRegularExpressionMatch match = form->match(text.toString());
        if (match.hasMatch())
            return dateOfParts(match.captured(1), match.captured(2), match.captured(3));
    }
    return {};
}

QString YearLabel(int year)
{
    return QStringLiteral("%1-%2").arg(year).arg((year + 1) % 100, 2, 10, QLatin1Char('0'));
}

QString LongYearLabel(int year)
{
    return QStringLiteral("%1-%2").arg(year).arg(year + 1);
}
