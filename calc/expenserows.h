#pragma once

#include "platform/recordset.h"

/// The query of the expenses that belong to one nature of business, each with the rate of its item. The rate for all
/// natures and the rate of the expense's own nature have no precedence: a table that holds both gives two rows.
QString ExpensesOfNatures(int year, const QString &code);

/// The query of the consolidated expenses, each with the rate that holds for one nature.
/// @param natId number of that nature as it stands among the client's natures
QString ConsolidatedExpenses(int year, const QString &code, double natId);

/// The rows of one of these queries, its columns found once.
class ExpenseRows : public Recordset
{
public:
    ExpenseRows(const QString &query, Connection *connection);

    /// Position of a column, -1 when there is none.
    [[nodiscard]] int column(QStringView name) const { return FieldIndex(name); }

    [[nodiscard]] int headId() const { return Fields(m_headId).whole(); }
    [[nodiscard]] double rate() const { return Fields(m_rate).num(); }     ///< percent
    [[nodiscard]] double amount() const { return Fields(m_amount).num(); } ///< rupees
    [[nodiscard]] int quarter() const { return Fields(m_quarter).whole(); }

private:
    int m_headId;
    int m_rate;
    int m_amount;
    int m_quarter;
};
