#include "reports/annualstatement.h"

#include "calc/interestlaw.h"
#include "calc/taxchain.h"
#include "platform/text.h"

#include <QLocale>

#include <cmath>

namespace {

class StatementWork
{
public:
    StatementWork(const std::vector<AnnualLine> &lines, const StatementInput &input)
        : m_lines(lines)
        , m_input(input)
    {
        m_statement.year = input.year;
    }

    AnnualStatement work()
    {
        sumUp(ExpensesRow, &AnnualLine::Quarter::amount);
        sumUp(ValueRow, &AnnualLine::Quarter::value);
        if (m_input.year < firstYearTaxedWhole)
            taxQuarters();
        else
            taxOn(statementTotal);
        balance(statementTotal, m_input.paid.advance[0]);
        settle();
        forgetUnread();
        return m_statement;
    }

private:
    [[nodiscard]] double at(int row, int column) const { return m_statement.figures.at(row).at(column).value_or(0); }
    void set(int row, int column, double figure) { m_statement.figures.at(row).at(column) = figure; }

    void addUpQuarters(int row)
    {
        double sum = 0;
        for (int quarter = 1; quarter <= quartersOfYear; ++quarter)
            sum += at(row, quarter);
        set(row, statementTotal, sum);
    }

    void sumUp(int row, double AnnualLine::Quarter::*figure)
    {
        for (int quarter = 1; quarter <= quartersOfYear; ++quarter)
            set(row, quarter, SumOfQuarter(m_lines, quarter).*figure);
        addUpQuarters(row);
    }

    /// Employees in India may be none at all here: nothing is taxed then.
    void setTaxableValue(int column)
    {
        const Employees &employees = m_input.employees;
        if (!employees.EmpBoth || employees.SepBooks)
            set(TaxableValueRow, column, at(ValueRow, column));
        else if (employees.TotalEmp != 0)
            set(TaxableValueRow, column, IndiaShare(employees, at(ValueRow, column)));
        else
            ++m_statement.unknownShares;
    }

    void taxOn(int column)
    {
        setTaxableValue(column);
        const TaxParts tax = TaxOn(at(TaxableValueRow, column), m_input.rates);
        set(TaxRow, column, tax.Tax);
        set(SurchargeRow, column, tax.Surcharge);
        set(EduCessRow, column, tax.EduCess);
        set(SHECessRow, column, tax.SHECess);
        set(TaxPayableRow, column, tax.total());
    }

    void taxQuarters()
    {
        for (int quarter = 1; quarter <= quartersOfYear; ++quarter) {
            taxOn(quarter);
            balance(quarter, m_input.paid.advance.at(quarter));
        }
        for (int row = TaxableValueRow; row <= TaxPayableRow; ++row)
            addUpQuarters(row);
    }

    void balance(int column, double paid)
    {
        set(AdvancePaidRow, column, Round(paid));
        set(BalanceRow, column, at(TaxPayableRow, column) - Round(paid));
    }

    void settle()
    {
        set(Interest115WJRow, statementTotal, Round(m_input.interest.Int115WJ));
        set(Interest115WJ5Row, statementTotal, Round(m_input.interest.Int115WJ5));
        set(Interest115WKRow, statementTotal, Round(m_input.interest.Int115WK));
        set(SelfAssessmentRow, statementTotal, Round(m_input.paid.selfAssessment));
        double due = 0;
        for (int row = BalanceRow; row <= Interest115WKRow; ++row)
            due += at(row, statementTotal);
        set(BalanceDueRow, statementTotal, due - at(SelfAssessmentRow, statementTotal));
    }

    void forget(int first, int last)
    {
        for (int row = first; row <= last; ++row)
            m_statement.figures.at(row) = {};
    }

    /// A figure without all that it is made of would be a wrong one.
    void forgetUnread()
    {
        const bool taxKnown = m_input.expensesRead && m_input.employeesRead;
        if (!m_input.expensesRead)
            forget(ExpensesRow, ValueRow);
        if (!taxKnown)
            forget(TaxableValueRow, TaxPayableRow);
        if (!m_input.paid.read) {
            forget(AdvancePaidRow, AdvancePaidRow);
            forget(SelfAssessmentRow, SelfAssessmentRow);
        }
        if (!taxKnown || !m_input.paid.read)
            forget(BalanceRow, BalanceRow);
        if (!m_input.interestRead)
            forget(Interest115WJRow, Interest115WKRow);
        if (!taxKnown || !m_input.paid.read || !m_input.interestRead)
            forget(BalanceDueRow, BalanceDueRow);
    }

    const std::vector<AnnualLine> &m_lines;
    const StatementInput &m_input;
    AnnualStatement m_statement;
};

/// Whether the quarters have such a figure at all.
bool hasQuarters(int row, int year)
{
    return row <= ValueRow || (row <= BalanceRow && year < firstYearTaxedWhole);
}

QString rated(const char *text, double percent)
{
    return QStringLiteral("%1 (%2%)").arg(QString::fromLatin1(text), NumberText(percent));
}

} // namespace

AnnualStatement StatementOf(const std::vector<AnnualLine> &lines, const StatementInput &input)
{
    return StatementWork(lines, input).work();
}

QString AnnualStatement::text(int row, int column) const
{
    if (column < statementTotal && !hasQuarters(row, year))
        return QStringLiteral("-");
    const std::optional<double> figure = figures.at(row).at(column);
    if (!figure)
        return {};
    const double shown = Val(Format(*figure, u"0.00")); // what rounds to nothing has no sign
    const QString digits = QLocale().toString(std::fabs(shown), 'f', 2);
    return shown < 0 ? QStringLiteral("(%1)").arg(digits) : digits;
}

QStringList StatementTexts(int year, int status, const FBTRates &rates)
{
    const bool fourInstalments = year < firstYearByInstalments || PaysFourInstalments(status);
    return {QStringLiteral("Total Expenses"),
            QStringLiteral("Value of Fringe Benfit"),
            QStringLiteral("Taxable Value of Fringe Benfit"),
            rated("Fringe Benefit Tax", rates[1]),
            rated("Surcharge", rates[2]),
            rated("Education Cess", rates[3]),
            rated("Sec. & Higher E.C.", rates[4]),
            QStringLiteral("Total FBT Payable"),
            QStringLiteral("Advance FBT Paid"),
            QStringLiteral("Balance FBT Payable"),
            fourInstalments ? QStringLiteral("Interest u/s 115WJ(3)") : QStringLiteral("Interest u/s 115WJ(4)"),
            QStringLiteral("Interest u/s 115WJ(5)"),
            QStringLiteral("Interest u/s 115WK"),
            QStringLiteral("Self-Assessment Tax Paid"),
            QStringLiteral("Balance FBT Payable/(Refundable)")};
}

bool IsStatementRowHidden(int row, int year, bool aggregate)
{
    if (row == SHECessRow)
        return year < firstYearWithSecondCess;
    if (row == Interest115WJ5Row)
        return !aggregate || year < firstYearByInstalments;
    return row >= AdvancePaidRow && !aggregate;
}
