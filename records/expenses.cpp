#include "records/expenses.h"

#include "platform/recordset.h"
#include "records/change.h"

#include <algorithm>

namespace {

using Text = decltype(Sql());

/// The tables of one year.
struct YearTables
{
    explicit YearTables(int year)
        : head(Sql("FBT_ExpHead", year))
        , rate(Sql("FBT_ExpRate", year))
    {
    }
    Text head;
    Text rate;
};

/// @param rateOf the nature of the rates, a number or a column; null leaves the rates out
Text joined(const YearTables &tables, const Text &columns, const Text *rateOf)
{
    const Text rates = rateOf == nullptr
                           ? Text()
                           : Sql(" LEFT JOIN ", tables.rate, " ON ", tables.head, ".SrNo=", tables.rate, ".SrNo And (",
                                 tables.rate, ".Natid=0 Or ", tables.rate, ".Natid=", *rateOf, ")");
    return Sql("select ", columns, " from FBT_Detail LEFT JOIN ", tables.head, " ON FBT_Detail.ExpId=", tables.head,
               ".SrNo", rates);
}

Text ofClient(const ClientYear &client)
{
    return Sql(" Where FBT_Detail.Code_No=", Quoted(client.code), " and FBT_Detail.Tyear=", client.year);
}

Text ofQuarter(const ClientYear &client, int quarter)
{
    return Sql("Code_No=", Quoted(client.code), " and tyear=", client.year, " and quarter=", quarter);
}

/// The rows of a query. A column that it has not stays 0.
class ExpenseRows
{
public:
    RowsRead<Expense> read(Connection *cnn, const Text &query)
    {
        if (!m_rows.Open(query, cnn))
            return RowsRead<Expense>::failure();
        findColumns();
        std::vector<Expense> expenses;
        for (; !m_rows.Eof(); m_rows.MoveNext())
            expenses.push_back(current());
        return expenses;
    }

private:
    void findColumns()
    {
        m_quarter = m_rows.FieldIndex(u"Quarter");
        m_natId = m_rows.FieldIndex(u"NatId");
        m_headId = m_rows.FieldIndex(u"HeadId");
        m_rate = m_rows.FieldIndex(u"IntRt");
        m_amount = m_rows.FieldIndex(u"Amt");
        m_expId = m_rows.FieldIndex(u"ExpId");
        m_srNo = m_rows.FieldIndex(u"Srno");
    }
    [[nodiscard]] int whole(int column) const { return column < 0 ? 0 : m_rows.Fields(column).whole(); }
    [[nodiscard]] double num(int column) const { return column < 0 ? 0 : m_rows.Fields(column).num(); }
    [[nodiscard]] Expense current() const
    {
        return {whole(m_quarter), whole(m_natId), whole(m_headId), whole(m_expId),
                num(m_rate),      num(m_amount),  whole(m_srNo)};
    }

    Recordset m_rows;
    int m_quarter = -1;
    int m_natId = -1;
    int m_headId = -1;
    int m_rate = -1;
    int m_amount = -1;
    int m_expId = -1;
    int m_srNo = -1;
};

Text figureColumns(const YearTables &tables, const char *natId)
{
    return Sql(tables.head, ".HeadId, ", tables.rate, ".IntRt, FBT_Detail.Quarter, FBT_Detail.Srno, FBT_Detail.ExpId, ",
               natId, "FBT_Detail.Amt");
}

/// The query of a list of expenses: their number, item and amount with the head of the item.
Text listQuery(const ClientYear &client, const char *quarterColumn, int rateOf, const Text &which)
{
    const YearTables tables(client.year);
    const bool rated = rateOf != consolidatedNature;
    const Text nature = Sql(rateOf);
    const Text columns = Sql(quarterColumn, tables.head, ".HeadId, ", rated ? Sql(tables.rate, ".IntRt, ") : Text(),
                             "FBT_Detail.Srno, FBT_Detail.ExpId, FBT_Detail.Amt");
    return Sql(joined(tables, columns, rated ? &nature : nullptr), ofClient(client), which);
}

RowsRead<Expense> withNature(RowsRead<Expense> read, int natId, int quarter)
{
    if (read.failed())
        return read;
    std::vector<Expense> expenses = *read;
    for (Expense &expense : expenses) {
        expense.natId = natId;
        expense.quarter = quarter == 0 ? expense.quarter : quarter;
    }
    return expenses;
}

Text deleteNumber(const ClientYear &client, const Expense &row)
{
    return Sql("Delete from FBT_Detail Where ", ofQuarter(client, row.quarter), " and SrNo=", row.srNo);
}

/// Removes one of the rows that hold what was read; which of several makes no difference. Amounts are read to 15 digits.
Text deleteAlike(const ClientYear &client, const Expense &row)
{
    return Sql("Delete from FBT_Detail Where ", ofQuarter(client, row.quarter), " and NatId=", row.natId,
               " and Coalesce(SrNo,0)=", row.srNo, " and Coalesce(ExpId,0)=", row.expId, " and Abs(Coalesce(Amt,0)-(",
               row.amount, "))<0.001 Limit 1");
}

/// Removes the row of an expense and no other: by its number where that is its own. Rows that came from elsewhere may
/// have no number, or share one.
/// @return whether there was such a row; none after a fault
std::optional<bool> removeRow(Change &change, const ClientYear &client, const Expense &row)
{
    const Connection *cnn = change.connection();
    if (row.srNo != 0) {
        if (!change.write("Savepoint Numbered") || !change.write(deleteNumber(client, row)))
            return std::nullopt;
        if (cnn->affectedRows() <= 1)
            return cnn->affectedRows() == 1;
        if (!change.write("Rollback to Savepoint Numbered"))
            return std::nullopt;
    }
    return change.write(deleteAlike(client, row)) ? std::optional(cnn->affectedRows() == 1) : std::nullopt;
}

} // namespace

RowsRead<Expense> ExpensesOfNatures(Connection *cnn, const ClientYear &client)
{
    const YearTables tables(client.year);
    const Text nature = Sql("FBT_Detail.Natid");
    return ExpenseRows().read(cnn, Sql(joined(tables, figureColumns(tables, "FBT_Detail.NatId, "), &nature),
                                       ofClient(client), " and FBT_Detail.NatId<>-1"));
}

RowsRead<Expense> ConsolidatedExpenses(Connection *cnn, const ClientYear &client, int rateOf)
{
    const YearTables tables(client.year);
    const Text nature = Sql(rateOf);
    return ExpenseRows().read(
        cnn, Sql(joined(tables, figureColumns(tables, ""), &nature), ofClient(client), " and FBT_Detail.NatId=-1"));
}

RowsRead<Expense> ExpensesOfQuarter(Connection *cnn, const ClientYear &client, int quarter, int natId, int rateOf)
{
    const Text which = Sql(" and FBT_Detail.Quarter=", quarter, " and FBT_Detail.NatId=", natId);
    return withNature(ExpenseRows().read(cnn, listQuery(client, "", rateOf, which)), natId, quarter);
}

RowsRead<Expense> ExpensesOfYear(Connection *cnn, const ClientYear &client, int natId)
{
    const Text which = Sql(" and FBT_Detail.NatId=", natId);
    return withNature(ExpenseRows().read(cnn, listQuery(client, "FBT_Detail.Quarter, ", natId, which)), natId, 0);
}

Reading<double> RateOfItem(Connection *cnn, int year, int expId, int natId)
{
    Recordset rows;
    if (!rows.Open(Sql("Select * from FBT_ExpRate", year, " Where (NatId=", natId, " or NatId=0) and SrNo=", expId),
                   cnn))
        return Reading<double>::failure();
    return rows.Eof() ? Reading<double>::nothing() : rows.Fields(u"IntRt").num();
}

std::optional<int> NextExpenseNo(Change &change, const ClientYear &client, int quarter)
{
    return change.nextNumber(QStringLiteral("FBT_Detail"), client.code,
                             Sql("Select Max(SrNo) as MaxSr from FBT_Detail Where ", ofQuarter(client, quarter)));
}

bool DeleteExpense(Change &change, const ClientYear &client, const Expense &row)
{
    return removeRow(change, client, row).has_value();
}

bool InsertExpense(Change &change, const ClientYear &client, const Expense &expense)
{
    return change.write(Sql("Insert into FBT_Detail Values(", Quoted(client.code), ",", client.year, ",",
                            expense.quarter, ",", expense.natId, ",", expense.srNo, ",", expense.expId, ",",
                            expense.amount, ")"));
}

bool AddExpense(Change &change, const ClientYear &client, const Expense &expense)
{
    return change.write(deleteNumber(client, expense)) && InsertExpense(change, client, expense);
}

bool ReplaceExpense(Change &change, const ClientYear &client, const Expense &before, const Expense &expense)
{
    const std::optional<bool> removed = removeRow(change, client, before);
    if (removed && !*removed)
        change.giveUp(RowGoneFault(Doing::Save));
    return removed.value_or(false) && InsertExpense(change, client, expense);
}

bool ImportLastQuarter(Connection *cnn, const ClientYear &client, int quarter)
{
    return ChangeTogether(cnn, [&](Change &change) {
        std::optional<int> next = NextExpenseNo(change, client, quarter);
        if (!next)
            return false;
        const Text query = Sql("Select * from FBT_Detail Where ", ofQuarter(client, quarter - 1), " order by srno");
        const RowsRead<Expense> before = ExpenseRows().read(cnn, query);
        return !before.failed() && std::all_of(before->begin(), before->end(), [&](Expense expense) {
            expense.quarter = quarter;
            expense.srNo = ++*next;
            expense.amount = 0;
            return InsertExpense(change, client, expense);
        });
    });
}
