#include "calc/expenserows.h"

#include "platform/sqltext.h"

namespace {

QString expenses(int year, const QString &code, const QString &natIdColumn, const QString &natureOfRate,
                 const QString &whichNatures)
{
    const QString head = Sql("FBT_ExpHead", year);
    const QString rate = Sql("FBT_ExpRate", year);
    return Sql("select ", head, ".HeadId, ", rate, ".IntRt, FBT_Detail.Quarter, FBT_Detail.Srno, FBT_Detail.ExpId, ",
               natIdColumn, "FBT_Detail.Amt from FBT_Detail LEFT JOIN ", head, " ON FBT_Detail.ExpId=", head,
               ".SrNo LEFT JOIN ", rate, " ON ", head, ".SrNo=", rate, ".SrNo And (", rate, ".Natid=0 Or ", rate,
               ".Natid=", natureOfRate, ") Where FBT_Detail.Code_No='", code, "' and FBT_Detail.Tyear=", year,
               " and FBT_Detail.NatId", whichNatures);
}

} // namespace

QString ExpensesOfNatures(int year, const QString &code)
{
    return expenses(year, code, QStringLiteral("FBT_Detail.NatId, "), QStringLiteral("FBT_Detail.Natid"),
                    QStringLiteral("<>-1"));
}

QString ConsolidatedExpenses(int year, const QString &code, double natId)
{
    return expenses(year, code, QString(), Sql(natId), QStringLiteral("=-1"));
}

ExpenseRows::ExpenseRows(const QString &query, Connection *connection)
{
    Open(query, connection);
    m_headId = FieldIndex(u"HeadId");
    m_rate = FieldIndex(u"IntRt");
    m_amount = FieldIndex(u"Amt");
    m_quarter = FieldIndex(u"Quarter");
}
