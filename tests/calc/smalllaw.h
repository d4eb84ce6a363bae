#pragma once

#include "platform/connection.h"

/// Heads, items and percentages of one year that a test writes down itself, in place of the delivered law.
class SmallLaw
{
public:
    SmallLaw(Connection &connection, int year)
        : m_connection(connection)
        , m_year(year)
    {
    }
    SmallLaw &clear()
    {
        m_connection.Execute(Sql("Delete from FBT_ExpHead", m_year));
        m_connection.Execute(Sql("Delete from FBT_ExpRate", m_year));
        return *this;
    }
    SmallLaw &item(int expId, int headId)
    {
        m_connection.Execute(Sql("Insert into FBT_ExpHead", m_year, " Values (", expId, ",", headId, ",'')"));
        return *this;
    }
    SmallLaw &rate(int expId, int natId, double percent)
    {
        m_connection.Execute(Sql("Insert into FBT_ExpRate", m_year, " Values (", expId, ",", natId, ",", percent, ")"));
        return *this;
    }

private:
    Connection &m_connection;
    int m_year;
};
