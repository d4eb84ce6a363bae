#include "employer.h"

#include "records/clients.h"
#include "records/expenses.h"
#include "records/salaries.h"

Employer::Employer(Connection &connection, const QString &code)
    : m_connection(connection)
    , m_code(code)
{
    writeInfo();
}

Employer &Employer::expense(int year, int quarter, int nature, int expId, double amount)
{
    Expense row;
    row.quarter = quarter;
    row.natId = nature;
    row.srNo = ++m_lastSrNo[year * 10 + quarter];
    row.expId = expId;
    row.amount = amount;
    written([&](Change &change) { return InsertExpense(change, {m_code, year}, row); });
    return *this;
}

Employer &Employer::salary(int year, int quarter, int nature, double amount)
{
    written([&](Change &change) { return InsertSalary(change, {m_code, year}, {quarter, nature, amount}); });
    return *this;
}

void Employer::writeInfo()
{
    ClientRecord info;
    info.values = {m_code,
                   m_name,
                   "AAACA1234A",
                   "1",
                   "Premises",
                   "Road",
                   "Area",
                   "Town",
                   "Delhi",
                   "110001",
                   "011",
                   "23456789",
                   QString::number(m_status),
                   "0",
                   m_busnat,
                   {},
                   {},
                   "01/04/1990",
                   {},
                   "0"};
    info.surApp = m_surApp;
    m_connection.Execute(Sql("Delete from FBT_Info Where Code_no=", Quoted(m_code)));
    if (AddClient(&m_connection, info) != ClientSave::Done)
        qFatal("A test's client could not be written: %s", qPrintable(m_code));
}

void Employer::written(const std::function<bool(Change &)> &part)
{
    if (!ChangeTogether(&m_connection, part))
        qFatal("The rows of a test's client could not be written: %s", qPrintable(m_code));
}
