#include "calc/clientyear.h"

#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "records/clientstatus.h"

bool TakeClientYear(const QString &code, int year)
{
    const Reading<ClientStatus> client = StatusOfClient(Cnn, code);
    if (client.failed())
        return false;
    Base->code = code;
    Base->TYear = year;
    TakeEmployees({});
    Base->status = client->status;
    FBTRate = RatesFor(year, client->status, client->surApp);
    return true;
}

bool TakeEmployeesOfYear()
{
    const Reading<Employees> employees = EmployeesOfYear(Cnn, {Base->code, Base->TYear});
    if (employees.found())
        TakeEmployees(*employees);
    return !employees.failed();
}

InHand InHand::now()
{
    return {{Base->code, Base->TYear}, Base->status, FBTRate, EmployeesInHand(), Base->Cap};
}

void InHand::putBack() const
{
    Base->code = client.code;
    Base->TYear = client.year;
    Base->status = status;
    Base->Cap = caption;
    FBTRate = rates;
    TakeEmployees(employees);
}
