#include "db/yearlymasters.h"

#include "db/dbsteps.h"
#include "db/schema.h"
#include "platform/recordset.h"

namespace {

/// The masters of one year and what is done to them.
class YearlyMasters
{
public:
    YearlyMasters(Connection *connection, int year)
        : m_connection(connection)
        , m_year(year)
        , m_head(Sql("FBT_Head", year))
        , m_item(Sql("FBT_ExpHead", year))
        , m_rate(Sql("FBT_ExpRate", year))
    {
    }

    void update();

private:
    void createTables();
    void copyFromYearBefore();
    void separateTour();
    void changeRates();
    void changeRate(int headId, const QString &condition, int from, int to);
    void addSecurities();
    [[nodiscard]] int securitiesHead();
    void addSecuritiesItem(int headId);

    Connection *m_connection;
    int m_year;
    QString m_head;
    QString m_item;
    QString m_rate;
};

void YearlyMasters::update()
{
    createTables();
    if (ColumnCount(m_connection, m_head) < 0)
        return;
    copyFromYearBefore();
    if (m_year >= 2007)
        separateTour();
    changeRates();
    if (m_year >= 2008)
        addSecurities();
}

void YearlyMasters::createTables()
{
    for (const TableShape &table : YearlyTables())
        Write(m_connection, CreateStatement(table, QString::number(m_year)));
}

void YearlyMasters::copyFromYearBefore()
{
    if (!IsEmpty(m_connection, m_head))
        return;
    const QString before = m_year == firstMasterYear ? QString() : QString::number(m_year - 1);
    QStringList copies;
    for (const TableShape &table : YearlyTables())
        copies << Sql("Insert Into ", table.name, m_year, " Select * From ", table.name, before);
    Fill(m_connection, copies);
}

// The Finance Act, 2006 made tour and travel a clause of its own, (Q), at 5 percent for every business, and lowered the
// rate of hospitality for airlines. Heads of the user's own that stand at the new number move up first.
void YearlyMasters::separateTour()
{
    if (!FindsNone(m_connection, Sql("Select * From ", m_head, " Where Section='115WB(2)(Q)'")))
        return;
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
    Fill(m_connection, changes);
}

void YearlyMasters::changeRate(int headId, const QString &condition, int from, int to)
{
    Write(m_connection,
          Sql("Update ", m_rate, ",", m_item, " Set ", m_rate, ".IntRt=", to, " Where ", m_rate, ".SrNo=", m_item,
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
    const int headId = securitiesHead();
    if (headId > 0)
        addSecuritiesItem(headId);
}

int YearlyMasters::securitiesHead()
{
    Recordset heads;
    if (!Probe(heads, Sql("Select * from ", m_head, " Where Section='115WB(1)(d)'"), m_connection))
        return 0;
    if (!heads.Eof())
        return heads.Fields(u"HeadId").whole();
    const int headId = NextNumber(m_connection, m_head, QStringLiteral("HeadId"));
    Write(m_connection, Sql("Insert into ", m_head, " Values (", headId,
                            ",'115WB(1)(d)','Any specified security or sweat equity shares allotted or transferred')"));
    return headId;
}

void YearlyMasters::addSecuritiesItem(int headId)
{
    if (!FindsNone(m_connection, Sql("Select * from ", m_item, " Where HeadId=", headId)))
        return;
    const int srNo = NextNumber(m_connection, m_item, QStringLiteral("SrNo"));
    Fill(m_connection,
         {Sql("Insert into ", m_item, " Values (", srNo, ",", headId,
              ",'Any specified security or sweat equity shares allotted or transferred, directly or indirectly, by the "
              "employer free of cost or at concessional rate to his employees (including former employee or "
              "employees)')"),
          Sql("Delete From ", m_rate, " Where SrNo=", srNo),
          Sql("Insert into ", m_rate, " Values (", srNo, ",0,100)")});
}

} // namespace

void UpdateYearlyMasters(Connection *connection)
{
    for (int year = firstMasterYear; year <= lastMasterYear; ++year)
        YearlyMasters(connection, year).update();
}
