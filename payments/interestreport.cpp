#include "payments/interestreport.h"

#include "host/reporttable.h"
#include "platform/dates.h"
#include "records/payer.h"
#include "reports/interestpages.h"

void ShowInterestStatement(ReportObject &report, const PayerDetails &payer, int year, bool fourInstalments,
                           const std::vector<InstalmentInterest> &instalments)
{
    const QString title = QStringLiteral("Interest Calculation for the Assessment Year (%1) u/s 115WJ(%2)")
                              .arg(YearLabel(year))
                              .arg(fourInstalments ? 3 : 4);
    BeginReport(report, title);
    WriteHeading(report, payer, title);
    std::vector<QStringList> rows;
    double total = 0;
    for (const InstalmentInterest &instalment : instalments) {
        rows.push_back(instalment.fields());
        total += instalment.interest;
    }
    WriteInstalments(report, rows, total);
    report.ShowReport();
}
