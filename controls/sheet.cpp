#include "controls/sheet.h"

#include "platform/dates.h"

#include <QLocale>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStringList>

#include <utility>

namespace {

SheetPdfWriter pdfWriter;

constexpr int mostDigits = 15;

QString dateFormat(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral(R"(^\d\d/\d\d/(\d\d|\d{4})$)"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return {};
    return match.capturedLength(1) == 2 ? QStringLiteral("dd/mm/yy") : QStringLiteral("dd/mm/yyyy");
}

/// A number as it stands in a text.
struct Written
{
    double number = 0;
    qsizetype places = 0; // after the point
    bool grouped = false;
    bool bracketed = false;
};

/// Groups parted by commas, a point before the decimals.
std::optional<Written> readNumber(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"(^(\()?([-+]?)(\d{1,3}(?:,\d{2,3})+|\d+)(?:\.(\d+))?(\))?$)"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch() || match.captured(1).isEmpty() != match.captured(5).isEmpty())
        return std::nullopt;
    const QString whole = match.captured(3).remove(u',');
    const QString decimals = match.captured(4);
    if ((whole.size() > 1 && whole[0] == u'0') || whole.size() + decimals.size() > mostDigits)
        return std::nullopt;
    const bool bracketed = match.capturedLength(1) > 0;
    const double size = (whole + u'.' + decimals).toDouble();
    const double number = match.captured(2) == u"-" || bracketed ? -size : size;
    return Written{number, decimals.size(), match.captured(3).contains(u','), bracketed};
}

/// Amounts of statements come as the locale writes them, with two decimals; all other numbers with a point.
std::optional<Written> writtenNumber(QString text)
{
    const QLocale locale;
    const bool other = locale.decimalPoint() != u"." && text.contains(locale.decimalPoint());
    if (other)
        text.replace(locale.decimalPoint(), QStringLiteral("\n"));
    if (other || locale.decimalPoint() == u".")
        text.replace(locale.groupSeparator(), QStringLiteral(","));
    const std::optional<Written> written = readNumber(text.replace(u'\n', u'.'));
    constexpr qsizetype placesOfAmount = 2;
    return other && written && written->places != placesOfAmount ? std::nullopt : written;
}

QString numberFormat(const Written &written)
{
    if (!written.grouped && written.places == 0)
        return {};
    QString format = written.grouped ? QStringLiteral("#,##0") : QStringLiteral("0");
    if (written.places > 0)
        format += u'.' + QString(written.places, u'0');
    return written.bracketed ? format + QStringLiteral(";(") + format + u')' : format;
}

bool looksLikeFormula(const QString &text)
{
    return text.size() > 1 && QStringView(u"=+-@\t\r").contains(text[0]) && !ShownNumber(text);
}

QString csvCell(const QString &text)
{
    QString cell = looksLikeFormula(text) ? u'\'' + text : text;
    if (!cell.contains(u',') && !cell.contains(u'"') && !cell.contains(u'\n') && !cell.contains(u'\r'))
        return cell;
    cell.replace(u'"', QLatin1String("\"\""));
    return u'"' + cell + u'"';
}

} // namespace

std::optional<double> ShownNumber(const QString &text)
{
    const std::optional<Written> written = writtenNumber(text.trimmed());
    return written ? std::optional(written->number) : std::nullopt;
}

SheetValue ValueOf(const SheetCell &cell)
{
    const QString text = cell.text.trimmed();
    if (const QString format = dateFormat(text); !format.isEmpty()) {
        const QDate date = DateFromText(ConvertTypedDate(text));
        if (date.isValid())
            return {SheetValue::Kind::Date, static_cast<double>(QDate(1899, 12, 30).daysTo(date)), format};
    }
    const std::optional<Written> number = cell.right ? writtenNumber(text) : std::nullopt;
    if (number)
        return {SheetValue::Kind::Number, number->number, numberFormat(*number)};
    return {};
}

QString SheetText(const Sheet &sheet)
{
    QString text;
    for (SheetRow row; sheet.next(row); row = {}) {
        QStringList cells;
        for (const SheetCell &cell : row.cells)
            cells << QString(cell.text).replace(u'\t', u' ').remove(u'\r').replace(u'\n', u' ');
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

bool WriteCsv(const Sheet &sheet, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("\xef\xbb\xbf");
    for (SheetRow row; sheet.next(row); row = {}) {
        QStringList cells;
        for (const SheetCell &cell : row.cells)
            cells << csvCell(cell.text);
        file.write((cells.join(u',') + QLatin1String("\r\n")).toUtf8());
    }
    return file.commit();
}

void SetSheetPdfWriter(SheetPdfWriter writer)
{
    pdfWriter = std::move(writer);
}

const SheetPdfWriter &SheetPdf()
{
    return pdfWriter;
}
