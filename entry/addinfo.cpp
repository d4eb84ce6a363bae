#include "entry/addinfo.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"

bool LOADADDINFO(const ClientYear &client)
{
    ErrorTail tail(QStringLiteral("frmfbtdet"));
    const Reading<Employees> employees = OpenAddInfoYear(Cnn, client);
    TakeEmployees(employees.valueOr({}));
    LOADBANKDATA(client);
    return !employees.failed();
}

void LOADBANKDATA(const ClientYear &client)
{
    ErrorTail tail(QStringLiteral("frmfbtdet"));
    CarryBanksForward(Cnn, client);
}
