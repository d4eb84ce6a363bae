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

Employer &Employer::name(const QString &name)
{
    m_name = name;
    writeInfo();
    return *this;
}

Employer &Employer::status(int clStatus)
{
    m_status = clStatus;
    writeInfo();
    return *this;
}

Employer &Employer::surApp(const QString &digits)
{
    m_surApp = digits;
    writeInfo();
    return *this;
}

Employer &Employer::natures(std::initializer_list<int> natures)
{
    return busnat(BusnatOf(natures));
}

Employer &Employer::busnat(const QString &list)
{
    m_busnat = list;
    writeInfo();
    return *this;
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
    if (!AddClient(&m_connection, info))
        qFatal("A test's client could not be written: %s", qPrintable(m_code));
}

void Employer::written(const std::function<bool(Change &)> &part)
{
    if (!ChangeTogether(&m_connection, part))
        qFatal("The rows of a test's client could not be written: %s", qPrintable(m_code));
}
