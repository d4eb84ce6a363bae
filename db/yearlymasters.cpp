#include "db/yearlymasters.h"

#include "db/schema.h"
#include "db/updaterun.h"
#include "platform/recordset.h"

#include <optional>

namespace {

/// The masters of one year and what is done to them.
class YearlyMasters
{
public:
    YearlyMasters(UpdateRun &run, int year)
        : m_run(run)
        , m_year(year)
        , m_head(Sql("FBT_Head", year))
        , m_item(Sql("FBT_ExpHead", year))
        , m_rate(Sql("FBT_ExpRate", year))
    {
    }

    /// @param sourceFilled whether the generation before can be copied
    /// Returns false when this year was left open.
    bool update(bool sourceFilled);

private:
    void createTables();
    bool copyFromYearBefore(bool sourceFilled);
    bool separateTour();
    void changeRates();
    void changeRate(int headId, const QString &condition, int from, int to);
    void addSecurities();
    [[nodiscard]] std::optional<int> securitiesHead();
    void addSecuritiesItem(int headId);

    UpdateRun &m_run;
    int m_year;
    QString m_head;
    QString m_item;
    QString m_rate;
};

bool YearlyMasters::update(bool sourceFilled)
{
    createTables();
    if (m_run.columnCount(m_head) < 0)
        return true;
    if (!copyFromYearBefore(sourceFilled) || (m_year >= 2007 && !separateTour()))
        return false;
    changeRates();
    if (m_year >= 2008)
        addSecurities();
    return true;
}

void YearlyMasters::createTables()
{
    for (const TableShape &table : YearlyTables())
        m_run.write(CreateStatement(table, QString::number(m_year)));
}

bool YearlyMasters::copyFromYearBefore(bool sourceFilled)
{
    if (!m_run.isEmpty(m_head))
        return true;
    if (!sourceFilled)
        return false;
    const QString before = m_year == firstMasterYear ? QString() : QString::number(m_year - 1);
    QStringList copies;
    for (const TableShape &table : YearlyTables())
        copies << Sql("Insert Into ", table.name, m_year, " Select * From ", table.name, before);
    return m_run.replace(copies);
}

// The Finance Act, 2006 made tour and travel a clause of its own, (Q), at 5 percent for every business, and lowered the
// rate of hospitality for airlines. Heads of the user's own that stand at the new number move up first.
bool YearlyMasters::separateTour()
{
    if (!m_run.findsNone(Sql("Select * From ", m_head, " Where Section='115WB(2)(Q)'")))
        return true;
    const QString tourItems = QStringLiteral("((SrNo>=58 and SrNo<=60) or SrNo=63 or SrNo=64)");
    QStringList changes{Sql("Update ", m_head, " Set HeadId=HeadId+1 Where HeadId>=20"),
                        Sql("Update ", m_item, " Set HeadId=HeadId+1 Where HeadId>=20"),
                        Sql("Update ", m_rate, " Set IntRt=5 Where SrNo>=18 and SrNo<=24 and NatId=6 and IntRt=20"),
                        Sql("Update ", m_head, " Set HeadDesc='Conveyance' Where HeadId=9"),
                        Sql("Insert into ", m_head, " Values (20,'115WB(2)(Q)','Tour, Travel and Foreign Travel')"),
                        Sql("Update ", m_item, " Set HeadId=20 Where ", tourItems, " and HeadId=9"),
                        Sql("Delete from ", m_rate, " Where ", tourItems)};
    for (const int item : {58, 59, 60, 63, 64})
        changes << Sql("Insert into ", m_rate, " Values (", item, ",0,5)");
    return m_run.replace(changes);
}

void YearlyMasters::changeRate(int headId, const QString &condition, int from, int to)
{
    m_run.write(Sql("Update ", m_rate, ",", m_item, " Set ", m_rate, ".IntRt=", to, " Where ", m_rate, ".SrNo=", m_item,
                    ".SrNo and ", m_item, ".HeadId=", headId, condition, " and ", m_rate, ".IntRt=", from));
}

void YearlyMasters::changeRates()
{
    const QString byAircraft = Sql(" and ", m_rate, ".NatId=6");
    changeRate(12, byAircraft, 5, 0); // an airline's own aircraft count nothing, section 115WC(2)
    if (m_year >= 2007)
        changeRate(10, byAircraft, 20, 5); // hotels of airline crews, Finance Act, 2006
    if (m_year < 2009)
        return;
    changeRate(14, QString(), 20, 0);  // guest houses left section 115WB(2), Finance Act, 2008
    changeRate(15, QString(), 50, 20); // festivals fell from 50 to 20 percent, Finance Act, 2008
}

// Shares allotted to employees, section 115WB(1)(d), Finance Act, 2007.
void YearlyMasters::addSecurities()
{
    // A head without a number gets its item under head 0.
    if (const std::optional<int> headId = securitiesHead())
        addSecuritiesItem(*headId);
}

std::optional<int> YearlyMasters::securitiesHead()
{
    Recordset heads;
    if (!m_run.probe(heads, Sql("Select * from ", m_head, " Where Section='115WB(1)(d)'")))
        return std::nullopt;
    if (!heads.Eof())
        return heads.Fields(u"HeadId").whole();
    const std::optional<int> headId = m_run.nextNumber(m_head, QStringLiteral("HeadId"));
    if (headId)
        m_run.write(Sql("Insert into ", m_head, " Values (", *headId,
                        ",'115WB(1)(d)','Any specified security or sweat equity shares allotted or transferred')"));
    return headId;
}

void YearlyMasters::addSecuritiesItem(int headId)
{
    if (!m_run.findsNone(Sql("Select * from ", m_item, " Where HeadId=", headId)))
        return;
    const std::optional<int> srNo = m_run.nextNumber(m_item, QStringLiteral("SrNo"));
    if (!srNo)
        return;
    m_run.replace(
        {Sql("Insert into ", m_item, " Values (", *srNo, ",", headId,
             ",'Any specified security or sweat equity shares allotted or transferred, directly or indirectly, by the "
             "employer free of cost or at concessional rate to his employees (including former employee or "
             "employees)')"),
         Sql("Delete From ", m_rate, " Where SrNo=", *srNo),
         Sql("Insert into ", m_rate, " Values (", *srNo, ",0,100)")});
}

} // namespace

QStringList UpdatedTables()
{
    QStringList names;
    for (const TableShape &table : ModuleTables())
        names << QString::fromLatin1(table.name);
    for (const TableShape &table : YearlyTables()) {
        for (int year = firstMasterYear; year <= lastMasterYear; ++year)
            names << Sql(table.name, year);
    }
    return names;
}

void UpdateYearlyMasters(UpdateRun &run, bool baseFilled)
{
    bool filled = baseFilled;
    for (int year = firstMasterYear; year <= lastMasterYear; ++year)
        filled = YearlyMasters(run, year).update(filled);
}
