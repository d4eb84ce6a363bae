#include "employer.h"

#include <QStringList>

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
    QStringList list;
    for (const int nature : natures)
        list << QString::number(nature);
    return busnat(list.join(u','));
}

Employer &Employer::busnat(const QString &list)
{
    m_busnat = list;
    writeInfo();
    return *this;
}

Employer &Employer::expense(int year, int quarter, int nature, int expId, double amount)
{
    const int srNo = ++m_lastSrNo[year * 10 + quarter];
    execute(Sql("Insert into FBT_Detail Values('", m_code, "',", year, ",", quarter, ",", nature, ",", srNo, ",", expId,
                ",", amount, ")"));
    return *this;
}

Employer &Employer::salary(int year, int quarter, int nature, double amount)
{
    execute(Sql("Insert into FBT_SalDet Values ('", m_code, "',", year, ",", quarter, ",", nature, ",", amount, ")"));
    return *this;
}

void Employer::writeInfo()
{
    execute(Sql("Delete from FBT_Info Where Code_no='", m_code, "'"));
    execute(Sql("Insert into FBT_Info Values ('", m_code, "','", m_name, "','AAACA1234A'",
                ",'1','Premises','Road','Area','Town','Delhi','110001','011','23456789',", m_status, ",'0','", m_busnat,
                "','','','01/04/1990','','0','','','", m_surApp, "')"));
}

void Employer::execute(const QString &statement)
{
    if (!m_connection.Execute(statement))
        qFatal("A row of the test could not be written: %s", qPrintable(statement));
}
