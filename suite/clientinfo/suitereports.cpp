#include "suite/clientinfo/suitereports.h"

#include "host/reporttable.h"
#include "platform/dates.h"
#include "platform/text.h"
#include "records/registers.h"

namespace {

void begin(ReportObject &report, const QString &title)
{
    BeginReport(report, title);
    report.printtext(InBold(title));
    report.printtext({});
}

constexpr int left = ReportRow::Left;
constexpr int right = ReportRow::Right;

/// A register that lacks what could not be read says so.
void tellUnread(ReportObject &report)
{
    report.printtext(QStringLiteral("The clients could not be read."));
}

QString rupees(double amount)
{
    return NumberText(Round(amount));
}

} // namespace

void ReportClients(Connection *cnn, const SuiteContext &context, ReportObject &report)
{
    begin(report, QStringLiteral("List of Employers"));
    ReportTable table(report,
                      {QStringLiteral("S. No."), QStringLiteral("Code"), QStringLiteral("Name"), QStringLiteral("PAN"),
                       QStringLiteral("Status"), QStringLiteral("Town/City/District"), QStringLiteral("Telephone")},
                      {6, 12, 34, 12, 16, 14, 14}, {right, left, left, left, left, left, left});
    const RowsRead<ClientLine> clients = ClientLines(cnn);
    int count = 0;
    for (const ClientLine &client : *clients) {
        const QString status = context.statusName && client.status ? context.statusName(*client.status) : QString();
        table.add(
            {QString::number(++count), client.code, client.name, client.pan, status, client.city, client.telephone});
    }
    if (clients.failed())
        tellUnread(report);
    report.ShowReport();
}

void ReportReturns(Connection *cnn, int year, const SuiteContext &context, ReportObject &report)
{
    begin(report, QStringLiteral("Returns of Fringe Benefits for the Assessment Year ") + YearLabel(year));
    ReportTable table(report,
                      {QStringLiteral("S. No."), QStringLiteral("Client"), QStringLiteral("Form"),
                       QStringLiteral("Date of Return"), QStringLiteral("Acknowledgement No."), QStringLiteral("Tax"),
                       QStringLiteral("Interest"), QStringLiteral("Balance")},
                      {6, 30, 8, 12, 22, 12, 12, 12}, {right, left, left, left, left, right, right, right});
    const RowsRead<ReturnLine> filed = ReturnLines(cnn, year);
    constexpr int firstFormYear = 2006;
    const QString form = year <= firstFormYear ? QStringLiteral("3B") : QStringLiteral("ITR-8");
    int count = 0;
    for (const ReturnLine &row : *filed) {
        QStringList cells{QString::number(++count), row.name, form, row.date, row.acknowledgement};
        const auto figures = context.returnFigures ? context.returnFigures(row.code, year) : std::nullopt;
        if (figures)
            cells << rupees(figures->tax) << rupees(figures->interest) << rupees(figures->balance);
        else
            cells << QString() << QString() << QString();
        table.add(cells);
    }
    if (filed.failed())
        tellUnread(report);
    report.ShowReport();
}
