#pragma once

#include "calc/interest.h"
#include "calc/rates.h"
#include "platform/offer.h"
#include "records/addinfo.h"
#include "reports/annualdata.h"

/// The statement of a year from the expenses to the balance payable. Rows count from 1, columns 1 to 4 are the quarters
/// and 5 is the total. Amounts are rupees.

enum StatementRow {
    ExpensesRow = 1,
    ValueRow,
    TaxableValueRow,
    TaxRow,
    SurchargeRow,
    EduCessRow,
    SHECessRow,
    TaxPayableRow,
    AdvancePaidRow,
    BalanceRow,
    Interest115WJRow,
    Interest115WJ5Row,
    Interest115WKRow,
    SelfAssessmentRow,
    BalanceDueRow
};
constexpr int statementTotal = 5; ///< the column of the year

/// What a statement is made of.
struct StatementInput
{
    int year = 0; ///< first calendar year of the assessment year
    FBTRates rates{};
    Employees employees;
    AnnualPayments paid;
    InterestOfYear interest;
    // What could not be read: the figures that hang on it are not known.
    bool expensesRead = true;
    bool employeesRead = true;
    bool interestRead = true;
};

struct FBT_OFFERED AnnualStatement
{
    using Figures = std::array<std::array<std::optional<double>, statementTotal + 1>, BalanceDueRow + 1>;

    int year = 0;
    Figures figures;       ///< by row and column; none where there is no such figure or it is not known
    int unknownShares = 0; ///< taxable values that are not known: the employees in all are 0

    /// As it is shown: two decimals, digits in groups as the system has them, a negative amount in brackets; "-" for a
    /// quarter that has no such figure; empty when it is not known.
    [[nodiscard]] QString text(int row, int column) const;
};

/// Works the statement out. Up to A.Y. 2008-09 the tax is that of the quarters, each rounded, added up; later it is worked
/// out once for the year. Where the employees in and outside India share the benefits the taxed value is the India share;
/// it is not known, and bears no tax, when the employees in all are 0.
FBT_OFFERED AnnualStatement StatementOf(const std::vector<AnnualLine> &lines, const StatementInput &input);

/// The texts before the figures, those of row 1 first.
/// @param status of the employer: it tells which subsection the instalments fall under
FBT_OFFERED QStringList StatementTexts(int year, int status, const FBTRates &rates);

/// Whether a row is left out. A statement of one nature ends with the tax: payments and interest are the employer's.
FBT_OFFERED bool IsStatementRowHidden(int row, int year, bool aggregate);

/// Whether a row is a result: in bold and under a rule.
constexpr bool IsStatementResult(int row)
{
    return row == TaxPayableRow || row == BalanceRow || row == BalanceDueRow;
}
