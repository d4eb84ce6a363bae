#include "calc/clientyear.h"

#include "calc/employees.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/recordset.h"

void TakeClientYear(const QString &code, int year)
{
    Base->code = code;
    Base->TYear = year;
    Base->status = 0;
    EmpBoth = SepBooks = false;
    IndiaEmp = TotalEmp = 0;
    QString surApp;
    Recordset info;
    info.Open(Sql("Select clstatus,surapp from FBT_Info where codE_no='", code, "'"), Cnn);
    if (!info.Eof()) {
        const Field status = info.Fields(u"ClStatus");
        Base->status = status.isNull() ? -1 : status.whole();
        surApp = info.Fields(u"SurApp").text();
    }
    FBTRate = RatesFor(year, Base->status, surApp);
}

void TakeEmployeesOfYear()
{
    Recordset addInfo;
    addInfo.Open(Sql("Select * from FBT_AddInfo Where Code_No='", Base->code, "' and TYear=", Base->TYear), Cnn);
    if (!addInfo.Eof())
        TakeEmployees(addInfo);
}

ClientYearKeeper::ClientYearKeeper()
    : m_code(Base->code)
    , m_year(Base->TYear)
    , m_status(Base->status)
    , m_rates(FBTRate)
    , m_empBoth(EmpBoth)
    , m_sepBooks(SepBooks)
    , m_indiaEmp(IndiaEmp)
    , m_totalEmp(TotalEmp)
{
}

ClientYearKeeper::~ClientYearKeeper()
{
    Base->code = m_code;
    Base->TYear = m_year;
    Base->status = m_status;
    FBTRate = m_rates;
    EmpBoth = m_empBoth;
    SepBooks = m_sepBooks;
    IndiaEmp = m_indiaEmp;
    TotalEmp = m_totalEmp;
}
