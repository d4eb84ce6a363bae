#include "entry/addinfo.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"

bool LOADADDINFO(const ClientYear &client)
{
    ErrorTail tail(QStringLiteral("frmfbtdet"));
    const Reading<Employees> employees = OpenAddInfoYear(Cnn, client);
    TakeEmployees(employees.valueOr({}));
    return LOADBANKDATA(client) && !employees.failed();
}

bool LOADBANKDATA(const ClientYear &client)
{
    ErrorTail tail(QStringLiteral("frmfbtdet"));
    return CarryBanksForward(Cnn, client);
}
