#include "reports/annualpages.h"

#include "host/reporttable.h"
#include "platform/dates.h"
#include "platform/text.h"
#include "records/payer.h"
#include "reports/interestpages.h"

#include <algorithm>

namespace {

constexpr int left = ReportRow::Left;
constexpr int right = ReportRow::Right;
constexpr int firstAmountColumn = 4;

void writeSection(ReportObject &report, const QString &caption, const std::vector<QStringList> &expenses, int column)
{
    const bool spent = std::any_of(expenses.begin(), expenses.end(),
                                   [column](const QStringList &row) { return Val(row.value(column)) != 0; });
    if (!spent)
        return;
    report.printtext();
    report.printtext(InBold(caption));
    ReportTable table(report,
                      {QStringLiteral("S. No."), QStringLiteral("Head of Expenses"),
                       QStringLiteral("Nature of Expenses"), QStringLiteral("Rate"), QStringLiteral("Expenses Amount"),
                       QStringLiteral("Value of Fringe Benefit")},
                      {6, 40, 50, 10, 12, 12}, {left, left, left, right, right, right});
    for (const QStringList &row : expenses)
        table.add(row.mid(0, firstAmountColumn) + row.mid(column, 2));
}

void writeStatement(ReportObject &report, const std::vector<AnnualTexts::StatementLine> &statement)
{
    if (statement.empty())
        return;
    report.printtext();
    report.printtext(InBold(QStringLiteral("Summary of FBT Details")));
    ReportTable table(report,
                      {QStringLiteral("Particulars"), QStringLiteral("Quarter-I"), QStringLiteral("Quarter-II"),
                       QStringLiteral("Quarter-III"), QStringLiteral("Quarter-IV"), QStringLiteral("Total")},
                      {28, 10, 10, 10, 10, 10}, {left, right, right, right, right, right});
    for (const AnnualTexts::StatementLine &line : statement)
        line.bold ? table.addBold(line.texts) : table.add(line.texts);
}

} // namespace

QString AnnualTitle(int year, const std::optional<QString> &nature)
{
    const QString start = nature ? QStringLiteral("Annual FBT Details of ") + *nature
                                 : QStringLiteral("Computation of Fringe Benefit Tax");
    return start + QStringLiteral(" for the Assessment Year (") + YearLabel(year) + u')';
}

void CREATEREPORT(ReportObject &report, const PayerDetails &client, const AnnualTexts &texts)
{
    WriteHeading(report, client, texts.title);
    for (const QString &what : texts.unread)
        report.printtext(QStringLiteral("The %1 could not be read.").arg(what));
    const QStringList sections{QStringLiteral("Quarter-I"), QStringLiteral("Quarter-II"), QStringLiteral("Quarter-III"),
                               QStringLiteral("Quarter-IV"), QStringLiteral("Total")};
    for (int section = 0; section < sections.size(); ++section)
        writeSection(report, sections[section], texts.expenses, firstAmountColumn + 2 * section);
    writeStatement(report, texts.statement);
}
