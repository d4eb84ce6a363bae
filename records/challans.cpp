#include "records/challans.h"

#include "platform/recordset.h"
#include "records/change.h"

bool InsertPayment(Change &change, const ClientYear &client, const Payment &payment)
{
    return change.write(Sql("Insert into FBT_Challan Values (", Quoted(client.code), ",", client.year, ",",
                            payment.quarter, ",", payment.srNo, ",'", payment.payType, "','", payment.date, "',",
                            payment.tax, ",", payment.surcharge, ",", payment.eduCess, ",", payment.interest, ",0,0,",
                            payment.total(), ",'','','','','',0,", payment.sheCess, ")"));
}

Reading<double> TaxPaid(Connection *cnn, const ClientYear &client)
{
    Recordset paid;
    if (!paid.Open(Sql("Select Sum(IfNull(ITAmt,0)+IfNull(SCAmt,0)+IfNull(ECAmt,0)+IfNull(ECAmt1,0)) from FBT_Challan "
                       "Where Code_No=",
                       Quoted(client.code), " and t_year=", client.year),
                   cnn))
        return Reading<double>::failure();
    return paid.Fields(0).num();
}
