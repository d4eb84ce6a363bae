#pragma once

#include "calc/rates.h"
#include "calc/taxchain.h"

#include <QString>

/// Takes a client and assessment year for the computation: `Base->code`, `TYear`, `status` (0 without a client's row, -1
/// when it is `Null`) and `FBTRate`; the employee figures are cleared.
/// @param year first calendar year of the assessment year
void TakeClientYear(const QString &code, int year);

/// Takes the employee figures of the client and year in hand from its additional information, if there is any.
void TakeEmployeesOfYear();

/// Keeps the client and year in hand with their rates and employees, and puts them back when it goes.
class ClientYearKeeper
{
public:
    ClientYearKeeper();
    ~ClientYearKeeper();
    ClientYearKeeper(const ClientYearKeeper &) = delete;
    ClientYearKeeper &operator=(const ClientYearKeeper &) = delete;

private:
    QString m_code;
    int m_year;
    int m_status;
    FBTRates m_rates;
    bool m_empBoth;
    bool m_sepBooks;
    int m_indiaEmp;
    int m_totalEmp;
};
