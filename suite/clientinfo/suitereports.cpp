#include "suite/clientinfo/suitereports.h"

#include "host/reportobject.h"
#include "platform/dates.h"
#include "platform/text.h"
#include "records/registers.h"

namespace {

QString bold(const QString &text)
{
    return QStringLiteral("\x1b"
                          "E%1\x1b"
                          "F")
        .arg(text);
}

/// A table with ruled cells, its captions and its rows.
class RuledTable
{
public:
    RuledTable(ReportObject &report, const QStringList &captions, std::vector<int> widths, std::vector<int> aligns)
        : m_report(report)
        , m_aligns(std::move(aligns))
    {
        const int columns = static_cast<int>(captions.size());
        m_row.widths = std::move(widths);
        m_row.left = m_row.right = m_row.top = m_row.bottom = QString(columns, u'1');
        report.CreateTable(1, columns);
        QStringList heads;
        for (const QString &caption : captions)
            heads << bold(caption);
        m_row.aligns = std::vector<int>(static_cast<size_t>(columns), ReportRow::CentredHeader);
        write(heads);
        m_row.aligns = m_aligns;
    }

    void add(QStringList cells)
    {
        cells.prepend(QString::number(++m_count));
        write(cells);
    }

private:
    void write(const QStringList &cells)
    {
        m_row.cells = cells;
        m_report.WriteToReport(m_row);
    }

    ReportObject &m_report;
    std::vector<int> m_aligns;
    ReportRow m_row;
    int m_count = 0;
};

void begin(ReportObject &report, const QString &title)
{
    report.WinModeReport = true;
    report.NewReport();
    report.printtext(bold(title));
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
    RuledTable table(report,
                     {QStringLiteral("S. No."), QStringLiteral("Code"), QStringLiteral("Name"), QStringLiteral("PAN"),
                      QStringLiteral("Status"), QStringLiteral("Town/City/District"), QStringLiteral("Telephone")},
                     {6, 12, 34, 12, 16, 14, 14}, {right, left, left, left, left, left, left});
    const RowsRead<ClientLine> clients = ClientLines(cnn);
    for (const ClientLine &client : *clients) {
        const QString status = context.statusName && client.status ? context.statusName(*client.status) : QString();
        table.add({client.code, client.name, client.pan, status, client.city, client.telephone});
    }
    if (clients.failed())
        tellUnread(report);
    report.ShowReport();
}

void ReportReturns(Connection *cnn, int year, const SuiteContext &context, ReportObject &report)
{
    begin(report, QStringLiteral("Returns of Fringe Benefits for the Assessment Year ") + YearLabel(year));
    RuledTable table(report,
                     {QStringLiteral("S. No."), QStringLiteral("Client"), QStringLiteral("Form"),
                      QStringLiteral("Date of Return"), QStringLiteral("Acknowledgement No."), QStringLiteral("Tax"),
                      QStringLiteral("Interest"), QStringLiteral("Balance")},
                     {6, 30, 8, 12, 22, 12, 12, 12}, {right, left, left, left, left, right, right, right});
    const RowsRead<ReturnLine> filed = ReturnLines(cnn, year);
    constexpr int firstFormYear = 2006;
    const QString form = year <= firstFormYear ? QStringLiteral("3B") : QStringLiteral("ITR-8");
    for (const ReturnLine &row : *filed) {
        QStringList cells{row.name, form, row.date, row.acknowledgement};
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
