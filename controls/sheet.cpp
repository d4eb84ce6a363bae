#include "controls/sheet.h"

#include "platform/dates.h"

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

QString numberFormat(const QString &text)
{
    const qsizetype point = text.indexOf(u'.');
    qsizetype places = 0;
    while (point >= 0 && point + 1 + places < text.size() && text[point + 1 + places].isDigit())
        ++places;
    const bool grouped = text.contains(u',');
    if (!grouped && places == 0)
        return {};
    QString format = grouped ? QStringLiteral("#,##0") : QStringLiteral("0");
    if (places > 0)
        format += u'.' + QString(places, u'0');
    return text.startsWith(u'(') ? format + QStringLiteral(";(") + format + u')' : format;
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
    static const QRegularExpression pattern(QStringLiteral(R"(^(\()?([-+]?)(\d{1,3}(?:,\d{2,3})+|\d+)(\.\d+)?(\))?$)"));
    const QRegularExpressionMatch match = pattern.match(text.trimmed());
    if (!match.hasMatch() || match.captured(1).isEmpty() != match.captured(5).isEmpty())
        return std::nullopt;
    const QString whole = match.captured(3).remove(u',');
    if ((whole.size() > 1 && whole[0] == u'0') || whole.size() + match.capturedLength(4) > mostDigits)
        return std::nullopt;
    const double size = (whole + match.captured(4)).toDouble();
    return match.captured(2) == u"-" || match.capturedLength(1) > 0 ? -size : size;
}

SheetValue ValueOf(const SheetCell &cell)
{
    const QString text = cell.text.trimmed();
    if (const QString format = dateFormat(text); !format.isEmpty()) {
        const QDate date = DateFromText(ConvertTypedDate(text));
        if (date.isValid())
            return {SheetValue::Kind::Date, static_cast<double>(QDate(1899, 12, 30).daysTo(date)), format};
    }
    const std::optional<double> number = cell.right ? ShownNumber(text) : std::nullopt;
    if (number)
        return {SheetValue::Kind::Number, *number, numberFormat(text)};
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
