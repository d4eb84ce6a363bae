#include "payments/interestreport.h"

#include "context/modbase.h"
#include "payments/payer.h"
#include "platform/dates.h"
#include "platform/text.h"

namespace {

constexpr int columns = 9;
using Aligns = std::vector<int>;

QString bold(const QString &text)
{
    return QStringLiteral("\x1b"
                          "E%1\x1b"
                          "F")
        .arg(text);
}

QString underlined(const QString &text)
{
    return QStringLiteral("\x1b-1%1\x1b-0").arg(text);
}

QString ordinal(int number)
{
    switch (number) {
    case 1:
        return QStringLiteral("Ist");
    case 2:
        return QStringLiteral("IInd");
    case 3:
        return QStringLiteral("IIIrd");
    default:
        return QStringLiteral("IVth");
    }
}

void write(const QStringList &cells, const Aligns &aligns)
{
    ReportRow row;
    row.cells = cells;
    row.widths = {10, 10, 12, 12, 10, 10, 6, 8, 10};
    row.aligns = aligns;
    row.left = row.right = row.top = row.bottom = QString(columns, u'1');
    MULTISPCJS1(row);
}

void writeCaptions()
{
    QStringList captions;
    for (const char *caption : {"Installment", "Upto Date", "FBT Payable", "FBT Deposited", "Short Fall",
                                "Short Fall (Rounded)", "Rate", "Months", "Interest Amount"})
        captions << bold(QString::fromLatin1(caption));
    write(captions, Aligns(columns, ReportRow::Centre));
}

void writeHeading(ReportObject &report, const PayerDetails &payer, int year, bool fourInstalments)
{
    report.printtext(bold(underlined(payer.name)));
    if (!payer.address().isEmpty())
        report.printtext(payer.address());
    report.printtext(bold(QStringLiteral("Interest Calculation for the Assessment Year (%1) u/s 115WJ(%2)")
                              .arg(YearLabel(year))
                              .arg(fourInstalments ? 3 : 4)));
}

} // namespace

void ShowInterestStatement(ReportObject &report, const PayerDetails &payer, int year, bool fourInstalments,
                           const std::vector<InstalmentInterest> &instalments)
{
    constexpr int centre = ReportRow::Centre;
    constexpr int right = ReportRow::Right;
    const Aligns aligns{centre, centre, right, right, right, right, centre, right, right};
    report.WinModeReport = true;
    report.NewReport();
    writeHeading(report, payer, year, fourInstalments);
    report.CreateTable(1, columns);
    writeCaptions();
    double total = 0;
    for (const InstalmentInterest &instalment : instalments) {
        QStringList cells = instalment.fields();
        cells[0] = ordinal(instalment.number);
        write(cells, aligns);
        total += instalment.interest;
    }
    QStringList last(columns, QString());
    last.first() = bold(QStringLiteral("Total"));
    last.last() = bold(Format(total, u"###0"));
    write(last, aligns);
    report.ShowReport();
}
