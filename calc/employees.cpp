#include "calc/employees.h"

#include "calc/modfbtcalc.h"
#include "platform/recordset.h"

void TakeEmployees(const Recordset &addInfo)
{
    EmpBoth = addInfo.Fields(u"EmpBoth").num() != 0;
    SepBooks = addInfo.Fields(u"SepBooks").num() != 0;
    IndiaEmp = addInfo.Fields(u"IndiaEmp").whole();
    TotalEmp = addInfo.Fields(u"TotalEmp").whole();
}
