#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "platform/clock.h"
#include "reports/annualstatement.h"
#include "reports/frmfbtrep.h"
#include "suite/report/repview.h"
#include "tests/support/employer.h"
#include "tests/support/lawdatabase.h"
#include "tests/support/screenuser.h"

#include <algorithm>
#include <random>

namespace {

/// Client A1 at the beginning of a year of it.
class Year
{
public:
    explicit Year(int year, int status = 16)
        : client{QStringLiteral("A1"), year}
    {
        for (const char *table : {"FBT_Detail", "FBT_SalDet", "FBT_AddInfo", "FBT_Challan"})
            Cnn->Execute(Sql("Delete from ", table));
        rows = std::make_unique<Employer>(*Cnn, client.code);
        rows->status(status);
    }
    /// The natures, in the order of the list that the client has.
    void natures(const std::vector<int> &numbers)
    {
        rows->busnat(BusnatOf(numbers));
        TakeClientYear(client.code, client.year);
    }
    [[nodiscard]] AnnualStatement statement(int natId = aggregateNature) const
    {
        const AnnualExpenses read = ReadAnnualExpenses(client, *ClientNatures(Cnn, client.code), natId);
        return StatementOf(read.lines, {client.year, FBTRate, EmployeesInHand(), ReadAnnualPayments(client), {}});
    }

    const ClientYear client;
    std::unique_ptr<Employer> rows;
};

/// What is printed, kept instead of shown.
class Printed
{
public:
    Printed()
    {
        m_viewer.setObserver([] {});
        Reporter = &m_viewer;
    }
    ~Printed() { Reporter = nullptr; }
    Printed(const Printed &) = delete;
    Printed &operator=(const Printed &) = delete;

    [[nodiscard]] QString text() const { return m_viewer.asText(); }
    /// The last column of the statement, "?" where it is empty; nothing without a statement.
    [[nodiscard]] QString statement() const
    {
        QStringList figures;
        for (const QString &line : text().section("Summary of FBT Details\n", 1).split('\n', Qt::SkipEmptyParts).mid(1))
            figures << (line.endsWith('\t') ? "?" : line.section('\t', -1));
        return figures.join(' ');
    }

private:
    RepView m_viewer{SuiteContext(), std::make_shared<ReportShelf>()};
};

/// The year's column from the value of the benefits to the second cess.
std::vector<double> taxed(const AnnualStatement &statement)
{
    std::vector<double> column;
    for (int row = ValueRow; row <= SHECessRow; ++row)
        column.push_back(statement.figures[row][statementTotal].value_or(-1));
    return column;
}

std::vector<double> computed()
{
    CALCFBT();
    return {FBTTotalValue, FBTTaxableValue, FBTTax, FBTSurcharge, FBTEduCess, FBTSHECess};
}

/// Numbers thrown from a seed.
struct Dice
{
    explicit Dice(unsigned seed)
        : engine(seed)
    {
    }
    int operator()(int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine); }
    bool oneIn(int n) { return (*this)(1, n) == 1; }
    std::mt19937 engine;
};

void throwRows(Employer &rows, int year, Dice &dice)
{
    for (int i = dice(1, 25); i > 0; --i)
        rows.expense(year, dice(0, 4), dice.oneIn(2) ? -1 : dice(1, 7), dice(1, 134), dice(-50, 40000) * 0.25);
    for (int i = dice(0, 20); i > 0; --i)
        rows.salary(year, dice(1, 4), dice.oneIn(3) ? -1 : dice(1, 7), dice(0, 9) * 1000.5);
}

} // namespace

/// The annual report against the computation, and what it shows when something is missing.
class TestAnnual : public QObject
{
    Q_OBJECT

    LawDatabase m_law;

private slots:
    void cleanup() { TakeEmployees({}); }

    /// With natures in the order of their numbers both are the same, but that the report taxes the India share of each
    /// quarter also in its total. A single nature has no consolidated expenses here; and the last nature, which takes what
    /// the others leave, is the last in the client's list there, the last by number here.
    void agreesWithTheComputation()
    {
        int apart = 0;
        for (unsigned seed = 1; seed <= 60; ++seed) {
            Dice dice(seed);
            Year year(dice(2006, 2009));
            throwRows(*year.rows, year.client.year, dice);
            std::vector<int> natures{1, 2, 3, 4, 5, 6, 7};
            std::shuffle(natures.begin(), natures.end(), dice.engine);
            natures.resize(static_cast<std::size_t>(dice(2, 4)));
            std::sort(natures.begin(), natures.end());
            year.natures(natures);
            TakeEmployees({dice.oneIn(3), dice.oneIn(3), dice(1, 50), 70});
            std::vector<double> expected = computed();
            if (year.client.year < firstYearTaxedWhole) {
                expected[1] = 0;
                for (int quarter = 1; quarter <= 4; ++quarter)
                    expected[1] += TaxableValue(EmployeesInHand(), FBTQtrValue[quarter]);
            }
            const AnnualStatement statement = year.statement();
            QVERIFY2(taxed(statement) == expected, qPrintable(QString::number(seed)));
            double parts = 0;
            for (const int nature : natures)
                parts += *year.statement(nature).figures[ExpensesRow][statementTotal];
            // Expenses of natures that the client has no more are in the whole only.
            Cnn->Execute(Sql("Delete from FBT_Detail Where NatId<>-1 and NatId not in (", BusnatOf(natures), ")"));
            QCOMPARE(*year.statement().figures[ExpensesRow][statementTotal], parts);

            std::reverse(natures.begin(), natures.end());
            year.natures(natures);
            computed();
            apart += *year.statement().figures[ValueRow][statementTotal] != FBTTotalValue ? 1 : 0;
        }
        QVERIFY(apart > 0);
    }

    void aSingleNatureLeavesConsolidatedOut()
    {
        Year year(2008);
        year.natures({7});
        year.rows->expense(2008, 1, 7, 57, 1000).expense(2008, 1, -1, 57, 500);
        QCOMPARE(year.statement().figures[ValueRow][statementTotal], 200);
        QCOMPARE(computed().front(), 300);
    }

    /// The computation taxes the whole where a number of employees is missing.
    void employeesMissing()
    {
        const struct
        {
            Employees employees;
            int year;
            QStringList shown; // value, taxable value and tax of the first quarter and of the year
        } rows[] = {
            {{true, false, 0, 50}, 2008, {"200.00 0.00 0.00", "200.00 0.00 0.00"}},
            {{true, false, 20, 0}, 2008, {"200.00  0.00", "200.00 0.00 0.00"}},
            {{true, false, 20, 0}, 2009, {"200.00 - -", "200.00  0.00"}},
            {{true, true, 20, 0}, 2009, {"200.00 - -", "200.00 200.00 60.00"}},
        };
        for (const auto &row : rows) {
            Year year(row.year);
            year.natures({7});
            year.rows->expense(row.year, 1, 7, 57, 1000);
            TakeEmployees(row.employees);
            const AnnualStatement statement = year.statement();
            QStringList shown;
            for (const int column : {1, statementTotal})
                shown << QStringList({statement.text(ValueRow, column), statement.text(TaxableValueRow, column),
                                      statement.text(TaxRow, column)})
                             .join(' ');
            QCOMPARE(shown, row.shown);
        }
    }

    /// What rounds to nothing has no sign.
    void figuresAsShown()
    {
        for (const auto &[figure, shown] : {std::pair(0.3 - 0.1 - 0.2, "0.00"), std::pair(-0.004, "0.00"),
                                            std::pair(-0.005, "(0.01)"), std::pair(2.675, "2.68")}) {
            AnnualStatement statement;
            statement.figures[BalanceRow][statementTotal] = figure;
            QCOMPARE(statement.text(BalanceRow, statementTotal), shown);
        }
    }

    /// Rows of one item at several rates, in several quarters, and of a quarter that is none.
    void lines()
    {
        std::vector<AnnualLine> lines;
        // 20 % of 12.5 is 2.5, to the even 2, twice; 5 % of 30 is 1.5, to the even 2.
        for (const Expense &expense : {Expense{2, 1, 9, 57, 20, 12.5, 1}, Expense{2, 1, 9, 57, 20, 12.5, 2},
                                       Expense{4, 2, 9, 57, 5, 30, 1}, Expense{0, 1, 3, 60, 20, 70, 1}})
            AddToLines(lines, expense, expense.amount);
        QCOMPARE(lines.size(), 2U);
        QCOMPARE(lines[0].rate, 20);
        QVERIFY(!lines[0].quarters[0]);
        QCOMPARE(lines[0].quarters[1]->value, 4);
        QCOMPARE(lines[0].total().amount, 55);
        QCOMPARE(lines[0].total().value, 6);
        QCOMPARE(lines[1].expId, 60);
        QCOMPARE(lines[1].total().amount, 0);
    }

    /// Payments without a quarter are neither advance tax nor self-assessment up to 2008-09; without a type, later.
    void payments()
    {
        const auto pay = [](int year, const char *quarter, const char *type, double amount) {
            Cnn->Execute(Sql("Insert into FBT_Challan (Code_No,T_Year,Quarter,PayType,TotAmt) Values ('A1',", year, ",",
                             quarter, ",", type, ",", amount, ")"));
        };
        for (const int year : {2008, 2009}) {
            const Year client(year);
            pay(year, "2", "'Advance Tax (100)'", 100.5);
            pay(year, "0", "'Advance Tax (100)'", 20);
            pay(year, "0", "'Self Assessment Tax (300)'", 3);
            pay(year, "4", "'Tax on Regular Assessment (400)'", 7);
            pay(year, "Null", "Null", 1000);
            const AnnualPayments paid = ReadAnnualPayments(client.client);
            QCOMPARE(paid.advance[0], year == 2008 ? 107.5 : 120.5);
            QCOMPARE(paid.advance[2], year == 2008 ? 100.5 : 0);
            QCOMPARE(paid.selfAssessment, year == 2008 ? 23 : 10);
        }
    }

    /// Figures that hang on what cannot be read stay empty, on the screen and on paper, where it is named; once it can be
    /// read again they come back. 900 at 20 %, taxed with 30 %, 10 %, 2 % and 1 %.
    void unread()
    {
        Year year(2008);
        year.natures({1, 7});
        year.rows->expense(2008, 1, 1, 57, 900);
        Cnn->Execute(Sql("Insert into FBT_Challan (Code_No,T_Year,Quarter,PayType,challan_dt,TotAmt) Values "
                         "('A1',2008,1,'Advance Tax (100)','15/05/2007',50)"));
        SetToday({2008, 6, 1});
        const Printed printed;
        const QString whole = "900.00 180.00 180.00 54.00 5.00 1.00 1.00 61.00 50.00 11.00 0.00 0.00 0.00 0.00 11.00";
        const std::vector<std::tuple<QString, QString, QString>> rows{
            {"FBT_Challan", "payments", "900.00 180.00 180.00 54.00 5.00 1.00 1.00 61.00 ? ? ? ? ? ? ?"},
            {"FBT_AddInfo", "numbers of employees", "900.00 180.00 ? ? ? ? ? ? 50.00 ? ? ? ? 0.00 ?"},
            {"FBT_Detail", "expenses", "? ? ? ? ? ? ? ? 50.00 ? ? ? ? 0.00 ?"},
            {"FBT_SalDet", "salaries", "? ? ? ? ? ? ? ? 50.00 ? ? ? ? 0.00 ?"},
            {"FBT_Nature", "natures of business", ""},
            {"FBT_Head2008", "descriptions of heads and items", whole}};
        for (const auto &[table, what, shown] : rows) {
            ScreenUser user;
            {
                const WithoutTable without(table);
                user.open<frmfbtrep>();
                user.click("cmdprev");
                QCOMPARE(printed.statement(), shown);
                QVERIFY2(printed.text().contains("The " + what + " could not be read."), qPrintable(table));
                if (user.visible("cmdintcalc"))
                    user.click("cmdintcalc");
                QCOMPARE(user.said().contains("Nothing to Calculate."), table == "FBT_Head2008");
            }
            user.click("cmdprev");
            QVERIFY(user.screen()->couldRead());
            QCOMPARE(printed.statement(), whole);
            QVERIFY(!printed.text().contains("could not be read"));
        }
    }

    /// A client without natures has neither interest nor expenses; only the window's own close asks.
    void empty()
    {
        Year year(2008);
        Base->Cap = QStringLiteral(" of A1");
        year.natures({});
        FBTTax = 5000; // of the client before
        SetToday({2009, 6, 1});
        ScreenUser user;
        user.open<frmfbtrep>();
        QVERIFY(user.screen()->couldRead());
        QVERIFY(!user.visible("cmdintcalc"));
        QCOMPARE(user.grid("vsf")->Rows(), 2);
        QCOMPARE(user.grid("vsfd")->TextMatrix(Interest115WJRow, statementTotal), "0.00");
        user.answers({Reply::No});
        user.screen()->window()->close();
        QCOMPARE(user.said(), {"Do you want to exit ?"});
        QVERIFY(user.screen()->isLoaded());
        user.click("cmdback");
        QVERIFY(user.screen() == nullptr || !user.screen()->isLoaded());
    }
};

QTEST_MAIN(TestAnnual)
#include "tst_annual.moc"
