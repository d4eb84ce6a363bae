#include "records/salaries.h"

#include "platform/recordset.h"
#include "records/change.h"

#include <algorithm>

namespace {

using Text = decltype(Sql());

Text ofYear(const ClientYear &client)
{
    return Sql("FBT_SalDet Where Code_No=", Quoted(client.code), " and Tyear=", client.year);
}

Text ofQuarter(const ClientYear &client, int quarter)
{
    return Sql(ofYear(client), " and Quarter=", quarter);
}

RowsRead<Salary> read(Connection *cnn, const Text &which)
{
    Recordset rows;
    if (!rows.Open(Sql("Select * from ", which), cnn))
        return RowsRead<Salary>::failure();
    std::vector<Salary> salaries;
    for (; !rows.Eof(); rows.MoveNext())
        salaries.push_back({rows.Fields(u"Quarter").whole(), rows.Fields(u"NatId").whole(), rows.Fields(u"Amt").num()});
    return salaries;
}

} // namespace

RowsRead<Salary> SalariesOfYear(Connection *cnn, const ClientYear &client)
{
    return read(cnn, ofYear(client));
}

RowsRead<Salary> SalariesOfQuarter(Connection *cnn, const ClientYear &client, int quarter)
{
    return read(cnn, ofQuarter(client, quarter));
}

bool InsertSalary(Change &change, const ClientYear &client, const Salary &salary)
{
    return change.write(Sql("Insert into FBT_SalDet Values (", Quoted(client.code), ",", client.year, ",",
                            salary.quarter, ",", salary.natId, ",", salary.amount, ")"));
}

bool SaveSalaries(Connection *cnn, const ClientYear &client, int quarter, const std::vector<Salary> &salaries)
{
    return ChangeTogether(cnn, [&](Change &change) {
        return change.holdClient(client.code) && change.write(Sql("Delete from ", ofQuarter(client, quarter))) &&
               std::all_of(salaries.begin(), salaries.end(),
                           [&](const Salary &salary) { return InsertSalary(change, client, salary); });
    });
}
