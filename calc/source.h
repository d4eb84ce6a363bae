#pragma once

#include "records/expenses.h"
#include "records/salaries.h"

/// Where the computation takes the rows of one client and year from. A reading that failed counts as no rows there: the
/// fault was logged and costs its statement.
class ComputationSource
{
public:
    ComputationSource() = default;
    virtual ~ComputationSource() = default;
    ComputationSource(const ComputationSource &) = delete;
    ComputationSource &operator=(const ComputationSource &) = delete;

    /// The number of the nature that carries by ship.
    virtual Reading<int> shipNature() = 0;
    /// The expenses that belong to a nature each, with the rates of that nature.
    virtual RowsRead<Expense> expensesOfNatures() = 0;
    /// The numbers of the client's natures, in the client's order.
    virtual RowsRead<int> natures() = 0;
    virtual RowsRead<Salary> salaries() = 0;
    /// The consolidated expenses with the rates of one nature.
    virtual RowsRead<Expense> consolidatedExpenses(int rateOf) = 0;
};

/// The rows as the tables have them, each asked for by a query of its own.
class TableSource : public ComputationSource
{
public:
    TableSource(Connection *cnn, ClientYear client);

    Reading<int> shipNature() override;
    RowsRead<Expense> expensesOfNatures() override;
    RowsRead<int> natures() override;
    RowsRead<Salary> salaries() override;
    RowsRead<Expense> consolidatedExpenses(int rateOf) override;

private:
    Connection *m_cnn;
    ClientYear m_client;
};
