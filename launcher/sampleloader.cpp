#include "launcher/sampleloader.h"

#include "platform/connection.h"

#include <QHash>
#include <QStringList>

namespace {

/// Sends the statements of one employer and remembers whether all went through.
class SampleWriter
{
public:
    SampleWriter(Connection &connection, const SampleEmployer &employer)
        : m_connection(connection)
        , m_employer(employer)
    {
    }

    bool write()
    {
        writeInfo();
        for (const SampleYear &year : m_employer.years) {
            writeStaff(year);
            writeSalaries(year);
            writeExpenses(year);
            writeChallans(year);
        }
        send(QStringLiteral("Flush Tables"));
        return m_stored;
    }

private:
    void send(const QString &statement) { m_stored = m_connection.Execute(statement) && m_stored; }

    void writeInfo()
    {
        const SampleEmployer &e = m_employer;
        QStringList natures;
        for (const int nature : e.natures)
            natures << QString::number(nature);
        const QStringList before{e.code, e.name, e.pan, {}, e.building, {}, {}, e.city, e.state, e.pin, {}, {}};
        const QStringList behind{
            QStringLiteral("1"), natures.join(u','), {}, {}, e.incorporated, {}, QStringLiteral("0"), {}, {},
            e.surchargeYears};
        send(Sql("Insert into FBT_Info Values ('", before.join(QStringLiteral("','")), "',", e.status, ",'",
                 behind.join(QStringLiteral("','")), "')"));
    }

    void writeStaff(const SampleYear &year)
    {
        if (!year.staff)
            return;
        send(Sql("Insert into FBT_AddInfo values('", m_employer.code, "',", year.year,
                 ",'0','','','1','0','','','0','0','0','','0','','0','0','0','0','1','",
                 year.staff->separateBooks ? 1 : 0, "',", year.staff->india, ",", year.staff->total,
                 ",'','','','','','','1',0,'1',0,'1',0,'')"));
    }

    void writeSalaries(const SampleYear &year)
    {
        for (const SampleSalary &salary : year.salaries)
            send(Sql("Insert into FBT_SalDet Values ('", m_employer.code, "',", year.year, ",", salary.quarter, ",",
                     salary.nature, ",", salary.amount, ")"));
    }

    void writeExpenses(const SampleYear &year)
    {
        QHash<int, int> lastNumber; // by quarter
        for (const SampleExpense &expense : year.expenses)
            send(Sql("Insert into FBT_Detail Values('", m_employer.code, "',", year.year, ",", expense.quarter, ",",
                     expense.nature, ",", ++lastNumber[expense.quarter], ",", expense.item, ",", expense.amount, ")"));
    }

    void writeChallans(const SampleYear &year)
    {
        QHash<int, int> lastNumber; // by quarter
        for (const SampleChallan &paid : year.challans)
            send(Sql("Insert into FBT_Challan Values ('", m_employer.code, "',", year.year, ",", paid.quarter, ",",
                     ++lastNumber[paid.quarter], ",'", paid.payType, "','", paid.date, "',", paid.tax, ",",
                     paid.surcharge, ",", paid.eduCess, ",", paid.interest, ",0,0,", paid.total(), ",'','','','','',0,",
                     paid.sheCess, ")"));
    }

    Connection &m_connection;
    const SampleEmployer &m_employer;
    bool m_stored = true;
};

} // namespace

bool StoreSample(Connection &connection, const SampleEmployer &employer)
{
    return SampleWriter(connection, employer).write();
}
