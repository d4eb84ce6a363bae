#include "launcher/sampleloader.h"

#include "records/addinfo.h"
#include "records/change.h"
#include "records/clients.h"

#include <QHash>

#include <algorithm>

namespace {

template<typename Rows, typename Write>
bool all(const Rows &rows, Write write)
{
    return std::all_of(rows.begin(), rows.end(), write);
}

ClientRecord infoOf(const SampleEmployer &employer)
{
    constexpr int building = 4;
    constexpr int city = 7;
    ClientRecord info;
    info[ClientRecord::Code] = employer.code;
    info[ClientRecord::Name] = employer.name;
    info[ClientRecord::Pan] = employer.pan;
    info[building] = employer.building;
    info[city] = employer.city;
    info[ClientRecord::State] = employer.state;
    info[ClientRecord::Pin] = employer.pin;
    info[ClientRecord::Status] = QString::number(employer.status);
    info[ClientRecord::Audit] = QStringLiteral("1");
    info[ClientRecord::Natures] = BusnatOf(employer.natures);
    info[ClientRecord::Born] = employer.incorporated;
    info[ClientRecord::Resident] = QStringLiteral("0");
    info.surApp = employer.surchargeYears;
    return info;
}

bool writeAddInfo(Change &change, const ClientYear &client, const SampleYear &year)
{
    Employees employees;
    if (year.staff)
        employees = {true, year.staff->separateBooks, year.staff->india, year.staff->total};
    return InsertDefaultAddInfo(change, client, employees, year.filed);
}

bool writeYear(Change &change, const ClientYear &client, const SampleYear &year)
{
    QHash<int, int> lastExpense; // by quarter
    QHash<int, int> lastChallan;
    return ((!year.staff && year.filed.isEmpty()) || writeAddInfo(change, client, year)) &&
           all(year.salaries, [&](const Salary &salary) { return InsertSalary(change, client, salary); }) &&
           all(year.expenses,
               [&](Expense expense) {
                   expense.srNo = ++lastExpense[expense.quarter];
                   return InsertExpense(change, client, expense);
               }) &&
           all(year.challans, [&](ChallanRecord challan) {
               challan.srNo = ++lastChallan[challan.quarter];
               return InsertChallan(change, client, challan);
           });
}

} // namespace

bool StoreSample(Connection &connection, const SampleEmployer &employer)
{
    return AddClient(&connection, infoOf(employer)) == ClientSave::Done &&
           ChangeTogether(&connection, [&employer](Change &change) {
               return all(employer.years, [&](const SampleYear &year) {
                   return writeYear(change, {employer.code, year.year}, year);
               });
           });
}
