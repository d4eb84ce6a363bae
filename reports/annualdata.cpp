#include "reports/annualdata.h"

#include "calc/consolidated.h"
#include "calc/rates.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "records/challans.h"

#include <algorithm>
#include <numeric>

namespace {

const QString form = QStringLiteral("frmfbtrep");

/// Reads into the lines of a report.
class AnnualReader
{
public:
    AnnualReader(const ClientYear &client, const std::vector<Nature> &natures)
        : m_client(client)
    {
        for (const Nature &nature : natures)
            m_natures.push_back(nature.srNo);
    }

    void readOwn(int natId)
    {
        const RowsRead<Expense> expenses =
            natId == aggregateNature ? ExpensesOfNatures(Cnn, m_client) : ExpensesOfYear(Cnn, m_client, natId);
        m_read.expensesRead = !expenses.failed();
        for (const Expense &expense : *expenses)
            AddToLines(m_read.lines, expense, expense.amount);
    }

    void GETCONSITEMS(int natId)
    {
        ErrorTail tail(form);
        const auto nature = std::find(m_natures.begin(), m_natures.end(), natId);
        if (nature != m_natures.end())
            addShares(static_cast<std::size_t>(nature - m_natures.begin()), readSalaries(tail), tail);
    }

    void GETCONSITEMSALL()
    {
        ErrorTail tail(form);
        const Salaries salaries = readSalaries(tail);
        for (std::size_t nature = 0; nature < m_natures.size(); ++nature)
            addShares(nature, salaries, tail);
    }

    AnnualExpenses take() { return std::move(m_read); }

private:
    Salaries readSalaries(ErrorTail &tail)
    {
        const RowsRead<Salary> rows = SalariesOfYear(Cnn, m_client);
        m_read.salariesRead = !rows.failed();
        return SalariesOf(rows, m_natures, tail);
    }

    /// What one nature takes, at the rates that hold for it.
    void addShares(std::size_t nature, const Salaries &salaries, ErrorTail &tail)
    {
        const RowsRead<Expense> expenses = ConsolidatedExpenses(Cnn, m_client, m_natures[nature]);
        m_read.expensesRead = m_read.expensesRead && !expenses.failed();
        for (const Expense &expense : *expenses) {
            const double share = SharesOfExpense(expense, salaries, tail)[nature];
            if (share != 0)
                AddToLines(m_read.lines, expense, share);
        }
    }

    const ClientYear m_client;
    std::vector<int> m_natures;
    AnnualExpenses m_read;
};

AnnualPayments byQuarter(const ClientYear &client)
{
    const Reading<std::array<double, 5>> paid = PaidByQuarter(Cnn, client);
    AnnualPayments payments{*paid, (*paid)[0], !paid.failed()};
    payments.advance[0] = std::accumulate(payments.advance.begin() + 1, payments.advance.end(), 0.0);
    return payments;
}

} // namespace

AnnualExpenses ReadAnnualExpenses(const ClientYear &client, const std::vector<Nature> &natures, int natId)
{
    AnnualReader reader(client, natures);
    reader.readOwn(natId);
    if (natures.size() > 1 && natId == aggregateNature)
        reader.GETCONSITEMSALL();
    else if (natures.size() > 1)
        reader.GETCONSITEMS(natId);
    return reader.take();
}

AnnualPayments ReadAnnualPayments(const ClientYear &client)
{
    if (client.year < firstYearTaxedWhole)
        return byQuarter(client);
    const Reading<double> advance = TaxPaid(Cnn, client, PaymentKind::Advance);
    const Reading<double> other = TaxPaid(Cnn, client, PaymentKind::Other);
    return {{*advance}, *other, !advance.failed() && !other.failed()};
}
