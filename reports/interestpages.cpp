#include "reports/interestpages.h"

#include "calc/interestlaw.h"
#include "context/modbase.h"
#include "host/reporttable.h"
#include "platform/dates.h"
#include "platform/text.h"
#include "records/payer.h"

namespace {

constexpr int left = ReportRow::Left;
constexpr int centre = ReportRow::Centre;
constexpr int right = ReportRow::Right;

struct Column
{
    const char *caption;
    int width;
    int align;
};

/// A table whose last column adds up.
void writeTable(ReportObject &report, const std::vector<Column> &columns, const std::vector<QStringList> &rows,
                double total)
{
    QStringList captions;
    std::vector<int> widths;
    std::vector<int> aligns;
    for (const Column &column : columns) {
        captions << QString::fromLatin1(column.caption);
        widths.push_back(column.width);
        aligns.push_back(column.align);
    }
    ReportTable table(report, captions, widths, aligns);
    for (const QStringList &row : rows)
        table.add(row);
    QStringList last(captions.size(), QString());
    last.first() = QStringLiteral("Total");
    last.last() = Format(total, u"###0");
    table.addBold(last);
}

void writeTitle(ReportObject &report, const QString &title)
{
    report.printtext();
    report.printtext(InBold(title));
}

/// The rows of a detail; the date in each of its first `dates` fields as dd/mm/yyyy.
std::vector<QStringList> rowsOf(const QString &detail, int dates)
{
    std::vector<QStringList> rows;
    for (const QString &line : detail.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        QStringList &fields = rows.emplace_back(line.split(u'|'));
        for (int field = 0; field < dates; ++field)
            fields[field] = Base->ConvertDate(fields.value(field));
    }
    return rows;
}

QString ordinal(const QString &number)
{
    static const QStringList words{QStringLiteral("Ist"), QStringLiteral("IInd"), QStringLiteral("IIIrd")};
    return words.value(number.toInt() - 1, QStringLiteral("IVth"));
}

void writeQuarters(ReportObject &report, const InterestOfYear &interest)
{
    writeTitle(report, QStringLiteral("Interest u/s 115WJ(3)"));
    writeTable(report,
               {{"", 12, left},
                {"FBT Payable", 13, right},
                {"FBT Deposited", 13, right},
                {"Short Fall", 13, right},
                {"Short Fall (Rounded)", 13, right},
                {"Interest Amount", 13, right}},
               rowsOf(interest.Det115WJ, 1), interest.Int115WJ);
}

void writeDefault(ReportObject &report, const InterestOfYear &interest)
{
    writeTitle(report, QStringLiteral("Interest u/s 115WJ(5)"));
    writeTable(report,
               {{"Date", 16, left},
                {"Amount", 18, right},
                {"Rate", 10, centre},
                {"Months", 14, right},
                {"Interest Amount", 18, right}},
               rowsOf(interest.Det115WJ5, 0), interest.Int115WJ5);
}

void writeLateReturn(ReportObject &report, const InterestOfYear &interest)
{
    writeTitle(report, QStringLiteral("Interest u/s 115WK"));
    writeTable(report,
               {{"Due Date", 12, centre},
                {"Upto Date", 12, centre},
                {"FBT Payable", 11, right},
                {"Advance Tax Deposited", 12, right},
                {"Short Fall", 10, right},
                {"Short Fall (Rounded)", 11, right},
                {"Rate", 6, centre},
                {"Months", 8, right},
                {"Interest Amount", 10, right}},
               rowsOf(interest.Det115WK, 2), interest.Int115WK);
}

} // namespace

void WriteHeading(ReportObject &report, const PayerDetails &client, const QString &title)
{
    report.printtext(InBold(Underlined(client.name)));
    if (!client.address().isEmpty())
        report.printtext(client.address());
    report.printtext(InBold(title));
}

QString InterestTitle(int year)
{
    return QStringLiteral("Interest Calculation for the Assessment Year (%1)").arg(YearLabel(year));
}

void WriteInstalments(ReportObject &report, const std::vector<QStringList> &rows, double total)
{
    std::vector<QStringList> named = rows;
    for (QStringList &row : named)
        row.first() = ordinal(row.first());
    writeTable(report,
               {{"Installment", 10, centre},
                {"Upto Date", 10, centre},
                {"FBT Payable", 12, right},
                {"FBT Deposited", 12, right},
                {"Short Fall", 10, right},
                {"Short Fall (Rounded)", 10, right},
                {"Rate", 6, centre},
                {"Months", 8, right},
                {"Interest Amount", 10, right}},
               named, total);
}

void CREATEREPORT_INTEREST(ReportObject &report, const PayerDetails &client, int year, int status,
                           const InterestOfYear &interest)
{
    WriteHeading(report, client, InterestTitle(year));
    if (!interest.Det115WJ.isEmpty() && year < firstYearByInstalments)
        writeQuarters(report, interest);
    else if (!interest.Det115WJ.isEmpty()) {
        writeTitle(report, PaysFourInstalments(status) ? QStringLiteral("Interest u/s 115WJ(3)")
                                                       : QStringLiteral("Interest u/s 115WJ(4)"));
        WriteInstalments(report, rowsOf(interest.Det115WJ, 0), interest.Int115WJ);
    }
    if (!interest.Det115WJ5.isEmpty())
        writeDefault(report, interest);
    if (!interest.Det115WK.isEmpty())
        writeLateReturn(report, interest);
}
