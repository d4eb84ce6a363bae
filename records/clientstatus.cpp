#include "records/clientstatus.h"

#include "platform/dates.h"
#include "platform/recordset.h"

Reading<ClientStatus> StatusOfClient(Connection *cnn, const QString &code)
{
    Recordset info;
    if (!info.Open(Sql("Select clstatus,surapp from FBT_Info where codE_no=", Quoted(code)), cnn))
        return Reading<ClientStatus>::failure();
    if (info.Eof())
        return Reading<ClientStatus>::nothing();
    const Field status = info.Fields(u"ClStatus");
    return ClientStatus{status.isNull() ? -1 : status.whole(), info.Fields(u"SurApp").text()};
}

Surcharge SurchargeOf(int clStatus)
{
    switch (clStatus) {
    case 3:  // firm
    case 5:  // foreign company
    case 15: // public limited company
    case 16: // private limited company
        return Surcharge::Always;
    case 4:  // artificial juridical person
    case 9:  // association of persons
    case 11: // trust
    case 13: // body of individuals
        return Surcharge::Chosen;
    default:
        return Surcharge::Never;
    }
}

bool SurchargeChosen(int year, const QString &surApp)
{
    const int position = year - firstAssessmentYear;
    return position >= 0 && position < surApp.size() && surApp[position] == u'1';
}
