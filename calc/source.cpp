#include "calc/source.h"

#include <utility>

TableSource::TableSource(Connection *cnn, ClientYear client)
    : m_cnn(cnn)
    , m_client(std::move(client))
{
}

Reading<int> TableSource::shipNature()
{
    return ShipNature(m_cnn);
}

RowsRead<Expense> TableSource::expensesOfNatures()
{
    return ExpensesOfNatures(m_cnn, m_client);
}

RowsRead<int> TableSource::natures()
{
    return ClientNatureNumbers(m_cnn, m_client.code);
}

RowsRead<Salary> TableSource::salaries()
{
    return SalariesOfYear(m_cnn, m_client);
}

RowsRead<Expense> TableSource::consolidatedExpenses(int rateOf)
{
    return ConsolidatedExpenses(m_cnn, m_client, rateOf);
}
