#include "db/seed.h"

#include "platform/sqltext.h"

namespace {

struct ReturnDateRow
{
    int year;
    int assesseeClass;
    const char *due;
    const char *extended;
    const char *order;
};

struct ServiceTaxRow
{
    const char *from;
    int percent;
    int year;
    int month;
    int day;
    int educationCess;
    int secondaryCess;
};

struct BillTypeRow
{
    int srNo;
    const char *description;
    char taxable;
};

// Explanation to section 115WD(1), with the orders under section 119 that extended a date.
constexpr ReturnDateRow returnDateRows[] = {
    {2006, 1, "31/10/2006", "30/11/2006", "Order F. No. 133/38/2006-TPL(Pt) dated 24/10/2006"},
    {2006, 2, "31/10/2006", "", ""},
    {2006, 3, "31/07/2006", "31/10/2006", "Order F. No. 142/41/2005-TPL(Pt) dated 24/07/2006"},
    {2006, 4, "31/10/2006", "", ""},
    {2007, 1, "31/10/2007", "15/11/2007", "Order F.No. 225/147/2007-ITA-II(Pt.) dated 31/10/2007"},
    {2007, 2, "31/10/2007", "15/11/2007", "Order F.No. 225/147/2007-ITA-II(Pt.) dated 31/10/2007"},
    {2007, 3, "31/07/2007", "", ""},
    {2007, 4, "31/10/2007", "02/11/2007", "Order F.No. 225/147/2007-ITA-II(Pt.) dated 31/10/2007"},
    {2008, 1, "30/09/2008", "", ""},
    {2008, 2, "30/09/2008", "", ""},
    {2008, 3, "31/07/2008", "", ""},
    {2008, 4, "30/09/2008", "", ""},
    {2009, 1, "30/09/2009", "", ""},
    {2009, 2, "30/09/2009", "", ""},
    {2009, 3, "31/07/2009", "", ""},
    {2009, 4, "30/09/2009", "", ""},
    {2010, 1, "30/09/2010", "", ""},
    {2010, 2, "30/09/2010", "", ""},
    {2010, 3, "31/07/2010", "", ""},
    {2010, 4, "30/09/2010", "", ""},
};

constexpr ServiceTaxRow serviceTaxRows[] = {
    {"01/07/1994", 5, 1994, 7, 1, 0, 0},   {"14/05/2003", 8, 2003, 5, 14, 0, 0},  {"10/09/2004", 10, 2004, 9, 10, 2, 0},
    {"18/04/2006", 12, 2006, 4, 18, 2, 0}, {"11/05/2007", 12, 2007, 5, 11, 2, 1},
};

constexpr BillTypeRow billTypeRows[] = {
    {1, "COMPANY", '1'},
    {2, "SERVICE TAX", '1'},
    {3, "INCOME TAX", '1'},
    {4, "EXCISE", '1'},
    {5, "TAX AUDIT FEES", '1'},
    {6, "COMPANY AUDIT FEES", '1'},
    {7, "INCOME TAX RETURN FILING FEES", '0'},
    {8, "CONSULTANCY SERVICES", '1'},
    {9, "MANAGEMENT SERVICES", '1'},
    {10, "SYSTEM AUDIT FEES", '1'},
    {11, "EXPENSES", '0'},
    {12, "OTHERS", '0'},
};

// The first instalment of the first year of the tax was extended; no order is on record for it.
const char *extendedInstalment(int year, int quarter)
{
    return year == 2006 && quarter == 1 ? "31/08/2005" : "";
}

} // namespace

QStringList ReturnDateInserts(int year)
{
    QStringList statements;
    for (const ReturnDateRow &row : returnDateRows) {
        if (row.year == year)
            statements << Sql("Insert into DueDt_Master values(", row.year, ",", row.assesseeClass, ",'", row.due,
                              "','", row.extended, "','", row.order, "')");
    }
    return statements;
}

QStringList InstalmentDateInserts(int year)
{
    // Section 115WJ(2): by the 15th of the month after each quarter, the last one by the 15th of March.
    const QString due[] = {Sql("15/07/", year - 1), Sql("15/10/", year - 1), Sql("15/01/", year), Sql("15/03/", year)};
    QStringList statements;
    int quarter = 0;
    for (const QString &date : due) {
        ++quarter;
        statements << Sql("Insert into ChallanDt_Master values(", year, ",", quarter, ",'", date, "','",
                          extendedInstalment(year, quarter), "','')");
    }
    return statements;
}

QStringList ServiceTaxInserts()
{
    QStringList statements;
    for (const ServiceTaxRow &row : serviceTaxRows)
        statements << Sql("Insert into SRate Values ('", row.from, "',", row.percent, ",", row.year, ",", row.month,
                          ",", row.day, ",", row.educationCess, ",", row.secondaryCess, ")");
    return statements;
}

QStringList BillTypeInserts()
{
    QStringList statements;
    for (const BillTypeRow &row : billTypeRows)
        statements << Sql("Insert into Bill_Type Values (", row.srNo, ",'", row.description, "','", QChar(row.taxable),
                          "')");
    return statements;
}
