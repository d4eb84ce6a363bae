#pragma once

#include "records/change.h"
#include "records/natures.h"

#include <QHash>

#include <functional>
#include <initializer_list>

/// One employer with its rows, written by the program's own statements:
/// `employer(connection, "A1").status(16).natures({1, 3}).expense(2008, 1, 3, 69, 12000);`
class Employer
{
public:
    Employer(Connection &connection, const QString &code);

    Employer &name(const QString &name) { return with(m_name, name); }
    Employer &status(int clStatus) { return with(m_status, clStatus); }
    Employer &surApp(const QString &digits) { return with(m_surApp, digits); }
    Employer &natures(std::initializer_list<int> natures) { return busnat(BusnatOf(natures)); }
    /// The list of natures as it stands in the column.
    Employer &busnat(const QString &list) { return with(m_busnat, list); }

    /// An expense of one nature, or with nature -1 a consolidated one. Amounts are rupees.
    Employer &expense(int year, int quarter, int nature, int expId, double amount);
    /// The salary of one nature, or with nature -1 of all natures together.
    Employer &salary(int year, int quarter, int nature, double amount);

private:
    template<class T>
    Employer &with(T &field, const T &value)
    {
        field = value;
        writeInfo();
        return *this;
    }
    void writeInfo();
    void written(const std::function<bool(Change &)> &part);

    Connection &m_connection;
    QString m_code;
    QString m_name = QStringLiteral("Employer");
    QString m_busnat;
    QString m_surApp = QStringLiteral("00000");
    int m_status = 16;
    QHash<int, int> m_lastSrNo; // by year and quarter
};

inline Employer employer(Connection &connection, const QString &code)
{
    return Employer(connection, code);
}
