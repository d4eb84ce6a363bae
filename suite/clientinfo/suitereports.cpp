#include "suite/clientinfo/suitereports.h"

#include "host/reportobject.h"
#include "platform/dates.h"
#include "platform/recordset.h"

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

QString returnsQuery(int year)
{
    return Sql("Select FBT_Info.Code_no, FBT_Info.Name, FBT_AddInfo.RetDt, FBT_AddInfo.RetAckNo, FBT_RetDet.EflDt, "
               "FBT_RetDet.EflNo from FBT_Info LEFT JOIN FBT_AddInfo ON FBT_AddInfo.Code_No=FBT_Info.Code_no And "
               "FBT_AddInfo.Tyear=",
               year, " LEFT JOIN FBT_RetDet ON FBT_RetDet.Code_No=FBT_Info.Code_no And FBT_RetDet.Tyear=", year,
               " Order by FBT_Info.Name, FBT_Info.Code_no");
}

struct ReturnRow
{
    QString code;
    QString name;
    QString date;
    QString acknowledgement;

    [[nodiscard]] bool filed() const { return !date.isEmpty() || !acknowledgement.isEmpty(); }
};

/// The date and number typed on the additional information, else those of the return screen.
ReturnRow readReturn(const Recordset &row)
{
    const auto either = [&row](QStringView first, QStringView second) {
        const QString text = row.Fields(first).text().trimmed();
        return text.isEmpty() ? row.Fields(second).text().trimmed() : text;
    };
    const QString date = either(u"RetDt", u"EflDt");
    return {row.Fields(u"Code_no").text(), row.Fields(u"Name").text(), DateText(DateFromText(date)),
            either(u"RetAckNo", u"EflNo")};
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
    Recordset clients;
    clients.Open(
        QStringLiteral("Select Code_no, Name, PAN, ClStatus, City, STD, TelNo from FBT_Info Order by Name, Code_no"),
        cnn);
    for (; !clients.Eof(); clients.MoveNext()) {
        const Field status = clients.Fields(u"ClStatus");
        const QString statusName =
            context.statusName && !status.isNull() ? context.statusName(status.whole()) : QString();
        const QString telephone = clients.Fields(u"STD").text() + u' ' + clients.Fields(u"TelNo").text();
        table.add({clients.Fields(u"Code_no").text(), clients.Fields(u"Name").text(), clients.Fields(u"PAN").text(),
                   statusName, clients.Fields(u"City").text(), telephone.trimmed()});
    }
    report.ShowReport();
}

void ReportReturns(Connection *cnn, int year, const SuiteContext &context, ReportObject &report)
{
    begin(report, QStringLiteral("Returns of Fringe Benefits for the Assessment Year ") + YearLabel(year));
    RuledTable table(report,
                     {QStringLiteral("S. No."), QStringLiteral("Client"), QStringLiteral("Form"),
                      QStringLiteral("Date of Return"), QStringLiteral("Acknowledgement No."), QStringLiteral("Tax"),
                      QStringLiteral("Balance")},
                     {6, 36, 8, 12, 22, 12, 12}, {right, left, left, left, left, right, right});
    std::vector<ReturnRow> filed; // the figures are computed over the same connection
    Recordset rows;
    for (rows.Open(returnsQuery(year), cnn); !rows.Eof(); rows.MoveNext()) {
        ReturnRow row = readReturn(rows);
        if (row.filed())
            filed.push_back(std::move(row));
    }
    rows.Close();
    constexpr int firstFormYear = 2006;
    const QString form = year <= firstFormYear ? QStringLiteral("3B") : QStringLiteral("ITR-8");
    for (const ReturnRow &row : filed) {
        QStringList cells{row.name, form, row.date, row.acknowledgement};
        if (context.returnFigures) {
            const ReturnFigures figures = context.returnFigures(row.code, year);
            cells << rupees(figures.tax) << rupees(figures.balance);
        } else {
            cells << QString() << QString();
        }
        table.add(cells);
    }
    report.ShowReport();
}
