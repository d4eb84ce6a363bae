#include "entry/quartersalary.h"

#include "context/modbase.h"
#include "platform/recordset.h"
#include "platform/write.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

QString salaryCondition(const ClientYear &client, int quarter)
{
    return Sql("Code_No='", client.code, "' and Tyear=", client.year, " and Quarter=", quarter);
}

void setSalary(QuarterSalary &salary, const std::vector<Nature> &natures, int natId, double amount)
{
    if (natId == consolidatedNature)
        salary.total = amount;
    const auto nature =
        std::find_if(natures.begin(), natures.end(), [natId](const Nature &one) { return one.srNo == natId; });
    if (nature != natures.end())
        salary.ofNatures[nature - natures.begin()] = amount;
}

void insertSalary(const ClientYear &client, int quarter, int natId, double amount)
{
    Write(Cnn, Sql("Insert into FBT_SalDet Values ('", client.code, "',", client.year, ",", quarter, ",", natId, ",",
                   amount, ")"));
}

} // namespace

double QuarterSalary::sum() const
{
    return std::accumulate(ofNatures.begin(), ofNatures.end(), 0.0);
}

bool QuarterSalary::totalTooSmall() const
{
    constexpr double paise = 100;
    return std::round(total * paise) < std::round(sum() * paise);
}

QuarterSalary ReadSalary(const ClientYear &client, int quarter, const std::vector<Nature> &natures)
{
    QuarterSalary salary;
    salary.ofNatures.assign(natures.size(), 0.0);
    Recordset rs;
    rs.Open(Sql("Select * from FBT_SalDet Where ", salaryCondition(client, quarter)), Cnn);
    for (; !rs.Eof(); rs.MoveNext())
        setSalary(salary, natures, rs.Fields(u"NatId").whole(), rs.Fields(u"Amt").num());
    return salary;
}

void SaveSalary(const ClientYear &client, int quarter, const std::vector<Nature> &natures, const QuarterSalary &salary)
{
    Write(Cnn, Sql("Delete from FBT_SalDet Where ", salaryCondition(client, quarter)));
    for (std::size_t i = 0; i < natures.size(); ++i)
        insertSalary(client, quarter, natures[i].srNo, salary.ofNatures[i]);
    insertSalary(client, quarter, consolidatedNature, salary.total);
}
