#include "returns/itr8cells.h"

#include "calc/modfbtcalc.h"
#include "calc/returnform.h"
#include "platform/dates.h"
#include "platform/sqltext.h"
#include "platform/text.h"
#include "returns/formrows.h"

#include <array>
#include <span>

namespace {

using Form = const ReturnForm &;
using Value = QString (*)(Form);

/// One field of a document.
struct CellRule
{
    int table;
    int row;
    int column;
    Value value;
    int lastYear = 9999; ///< the form has it up to that year
};

QString bracketed(const QString &code)
{
    return Joined("[", code.trimmed().isEmpty() ? QStringLiteral("  ") : code, "]");
}

/// A box with a tick in it, or an empty one.
QString mark(bool on)
{
    return bracketed(on ? QStringLiteral("_/") : QString());
}

QString rupees(double amount)
{
    return NumberText(Round(amount));
}

QString yesNo(bool yes)
{
    return yes ? QStringLiteral("Yes") : QStringLiteral("No");
}

QString misc(Form form, const char *column)
{
    return form.miscInf.value(QLatin1String(column));
}

bool isOne(const QString &flag)
{
    return Val(flag) == 1;
}

bool revised(Form form)
{
    return form.flag("revret");
}

bool represented(Form form)
{
    return isOne(misc(form, "repass"));
}

QString ofRepresentative(Form form, const QString &text)
{
    return represented(form) ? text : QString();
}

/// The status of part A: other codes from A.Y. 2008-09 on.
QString statusCode(Form form)
{
    const QString &status = form.status.StatusCd;
    const bool publicOrForeign = status == u"17PUB" || status == u"18FC";
    if (form.TYear <= 2007)
        return publicOrForeign || status == u"17PVT" ? QStringLiteral("1") : status == u"13PF" ? "2" : "3";
    if (status == u"13PF")
        return QStringLiteral("1");
    return publicOrForeign ? QStringLiteral("6") : status == u"17PVT" ? "7" : "8";
}

QString domesticCompany(Form form)
{
    const QString &status = form.status.StatusCd;
    const bool domestic = status == u"17PVT" || status == u"17PUB";
    if (form.TYear > 2007)
        return domestic ? QStringLiteral("[_/]") : QStringLiteral("[ ]");
    return domestic ? QStringLiteral("[1]") : status == u"18FC" ? "[2]" : "[ ]";
}

QString telephone(Form form)
{
    const QString std = form.client[ClientRecord::Std].trimmed();
    return Joined("(", std.isEmpty() ? QStringLiteral("    ") : std, ")-",
                  form.client[ClientRecord::Telephone].trimmed());
}

/// The kind of the default account, one of two boxes; without an account neither is ticked.
QString accountMark(Form form, bool current)
{
    const bool account = !form.BankInf[6].isEmpty();
    return mark(account && ISCURRENTAC(form.BankInf[4]) == current);
}

QString permanentEstablishment(Form form)
{
    constexpr int nonResident = 2;
    return form.residence() == nonResident ? yesNo(form.flag("peindia")) : QString();
}

// --- acknowledgement ---

const CellRule acknowledgement[] = {
    {1, 2, 1, [](Form f) { return f.ClName; }},
    {1, 2, 2, [](Form f) { return f.ClPAN; }},
    {1, 4, 1, [](Form f) { return f.ClAddr[1]; }},
    {1, 4, 2, [](Form f) { return f.ClAddr[2]; }},
    {1, 6, 1, [](Form f) { return f.ClAddr[3]; }},
    {1, 6, 2, [](Form f) { return f.ClAddr[4]; }},
    {2, 2, 1, [](Form f) { return f.ClAddr[5]; }},
    {2, 2, 2, [](Form f) { return f.ClAddr[6]; }},
    {2, 2, 3, [](Form f) { return f.ClAddr[7]; }},
    {2, 3, 2, [](Form f) { return f.info("ward"); }},
    {2, 3, 4, [](Form f) { return revised(f) ? QStringLiteral("REVISED") : QStringLiteral("ORIGINAL"); }},
    {4, 1, 5, [](Form) { return rupees(FBTTaxableValue); }},
    {4, 2, 5, [](Form f) { return rupees(f.figures.sums.totalTax); }},
    {4, 3, 5, [](Form f) { return rupees(f.figures.sums.totalInterest); }},
    {4, 4, 5, [](Form f) { return rupees(f.figures.sums.aggregate); }},
    {4, 5, 5, [](Form f) { return rupees(f.figures.sums.advance); }},
    {4, 6, 5, [](Form f) { return rupees(f.figures.sums.selfAssessment); }},
    {4, 7, 5, [](Form f) { return rupees(f.figures.sums.totalPaid); }},
    {4, 8, 5, [](Form f) { return rupees(f.figures.sums.payable()); }},
    {4, 9, 5, [](Form f) { return rupees(f.figures.sums.refund()); }},
};

/// The lines on income, which a return of fringe benefits does not have, and the status where the form asks for it.
void addAcknowledgement(Form form, FormCells &cells)
{
    constexpr int firstYearOfStatus = 2009;
    const int incomeLines = form.TYear >= 2008 ? 14 : 13; // with the loss of the current year
    for (int row = 1; row <= incomeLines; ++row)
        cells.push_back({3, row, 5, QStringLiteral("N.A.")});
    if (form.TYear >= firstYearOfStatus)
        cells.push_back({2, 2, 4, bracketed(form.status.StatusNo)});
}

// --- part A ---

const CellRule partA[] = {
    {1, 1, 4, [](Form f) { return yesNo(isOne(misc(f, "var2_0"))); }},
    {1, 2, 1, [](Form f) { return f.ClName; }},
    {1, 2, 2, [](Form f) { return f.ClPAN; }},
    {1, 2, 3, [](Form f) { return isOne(misc(f, "var2_0")) ? misc(f, "var2_1") : QString(); }},
    {2, 2, 1, [](Form f) { return f.ClAddr[1]; }},
    {2, 2, 2, [](Form f) { return f.ClAddr[2]; }},
    {2, 2, 3, [](Form f) { return f.client[ClientRecord::Born].trimmed(); }},
    {3, 1, 4, [](Form f) { return bracketed(statusCode(f)); }},
    {3, 2, 1, [](Form f) { return f.ClAddr[3]; }},
    {3, 2, 2, [](Form f) { return f.ClAddr[4]; }},
    {4, 1, 5, domesticCompany},
    {4, 2, 1, [](Form f) { return f.ClAddr[5]; }},
    {4, 2, 2, [](Form f) { return f.ClAddr[6]; }},
    {4, 2, 3, [](Form f) { return f.ClAddr[7]; }},
    {5, 2, 1, [](Form f) { return f.client[ClientRecord::Email].trimmed(); }},
    {5, 2, 2, telephone},
    {6, 1, 7, [](Form f) { return bracketed(f.RetCode); }},
    {6, 2, 1, [](Form f) { return f.info("ward"); }},
    {6, 2, 2, [](Form f) { return f.info("areacd"); }},
    {6, 2, 3, [](Form f) { return f.info("aotyp"); }},
    {6, 2, 4, [](Form f) { return f.info("aorng"); }},
    {6, 2, 5, [](Form f) { return f.info("aono"); }},
    {7, 1, 2, [](Form f) { return mark(!revised(f)); }},
    {7, 1, 4, [](Form f) { return mark(revised(f)); }},
    {8, 1, 2, [](Form f) { return revised(f) ? f.info("revrecno") : QString(); }},
    {8, 1, 3, [](Form f) { return revised(f) ? f.info("revrecdt") : QString(); }},
    {9, 1, 2, [](Form f) { return mark(f.residence() == 1); }},
    {9, 1, 4, [](Form f) { return mark(f.residence() == 2); }},
    {9, 1, 6, [](Form f) { return mark(f.residence() == 3); }},
    {10, 1, 2, permanentEstablishment},
    {11, 1, 2, [](Form f) { return mark(represented(f)); }},
    {11, 1, 4, [](Form f) { return mark(!represented(f)); }},
    {12, 1, 3, [](Form f) { return ofRepresentative(f, misc(f, "var0_0")); }},
    {12, 2, 3, [](Form f) { return ofRepresentative(f, RepresentativeAddress(f.miscInf)); }},
    {12, 3, 3, [](Form f) { return ofRepresentative(f, misc(f, "var0_1")); }},
    {13, 1, 2, [](Form f) { return mark(isOne(misc(f, "opt44aa"))); }},
    {13, 1, 4, [](Form f) { return mark(!isOne(misc(f, "opt44aa"))); }},
    {13, 2, 2, [](Form f) { return mark(isOne(misc(f, "opt44ab"))); }},
    {13, 2, 4, [](Form f) { return mark(!isOne(misc(f, "opt44ab"))); }},
    {14, 1, 3, [](Form f) { return misc(f, "var1_0"); }},
    {14, 2, 3, [](Form f) { return misc(f, "var1_1"); }},
    {14, 3, 3, [](Form f) { return misc(f, "var1_2"); }},
    {14, 4, 3, [](Form f) { return misc(f, "var1_3"); }},
    {14, 5, 3, [](Form f) { return misc(f, "var1_11"); }},
};

// --- part B ---

constexpr int lastYearOfElectronicBox = 2007;

const CellRule partB[] = {
    {1, 1, 5, [](Form) { return rupees(FBTQtrValue[1]); }},
    {1, 2, 5, [](Form) { return rupees(FBTQtrValue[2]); }},
    {1, 3, 5, [](Form) { return rupees(FBTQtrValue[3]); }},
    {1, 4, 5, [](Form) { return rupees(FBTQtrValue[4]); }},
    {2, 1, 5, [](Form) { return rupees(FBTTaxableValue); }},
    {3, 1, 4, [](Form f) { return rupees(f.figures.sums.tax); }},
    {3, 2, 4, [](Form f) { return rupees(f.figures.sums.surcharge); }},
    {3, 3, 4, [](Form f) { return rupees(f.figures.sums.cess); }},
    {3, 4, 4, [](Form f) { return rupees(f.figures.sums.totalTax); }},
    {4, 1, 5, [](Form f) { return rupees(f.figures.sums.interest115WJ); }},
    {4, 2, 5, [](Form f) { return rupees(f.figures.sums.interest115WK); }},
    {4, 3, 7, [](Form f) { return rupees(f.figures.sums.totalInterest); }},
    {5, 1, 4, [](Form f) { return rupees(f.figures.sums.aggregate); }},
    {6, 1, 5, [](Form f) { return rupees(f.figures.sums.advance); }},
    {6, 2, 5, [](Form f) { return rupees(f.figures.sums.selfAssessment); }},
    {6, 3, 7, [](Form f) { return rupees(f.figures.sums.totalPaid); }},
    {7, 1, 4, [](Form f) { return rupees(f.figures.sums.payable()); }},
    {7, 2, 4, [](Form f) { return rupees(f.figures.sums.refund()); }},
    {8, 1, 3, [](Form f) { return f.BankInf[5]; }},
    {9, 1, 3, [](Form f) { return mark(f.fields.details.refundMode == 1); }},
    {9, 1, 5, [](Form f) { return mark(f.fields.details.refundMode == 2); }},
    {10, 1, 2, [](Form f) { return f.BankInf[2]; }},
    {10, 1, 4, [](Form f) { return accountMark(f, false); }},
    {10, 1, 6, [](Form f) { return accountMark(f, true); }},
    {11, 1, 3, [](Form f) { return f.fields.details.number; }, lastYearOfElectronicBox},
    {11, 1, 5, [](Form f) { return f.fields.details.date; }, lastYearOfElectronicBox},
};

/// Place and date stand in the table after the one that only the first years have.
void addPlaceAndDate(Form form, FormCells &cells)
{
    const int table = form.TYear <= lastYearOfElectronicBox ? 12 : 11;
    cells.push_back({table, 1, 2, form.fields.place});
    cells.push_back({table, 1, 4, form.fields.date});
}

// --- schedules ---

const CellRule scheduleFBI[] = {
    {1, 1, 3, [](Form) { return OneOrTwo(EmpBoth); }},
    {1, 2, 3, [](Form) { return EmpBoth ? OneOrTwo(SepBooks) : QStringLiteral(" "); }},
    {2, 1, 4, [](Form) { return NumberText(IndiaEmp); }},
    {2, 2, 4, [](Form) { return NumberText(TotalEmp - IndiaEmp); }},
    {2, 3, 4, [](Form) { return NumberText(TotalEmp); }},
};

const CellRule scheduleFBTotals[] = {
    {7, 1, 4, [](Form) { return rupees(FBTTotalValue); }},
    {7, 2, 4, [](Form) { return rupees(EmpBoth ? 0 : FBTTotalValue); }},
    {7, 3, 4, [](Form) { return rupees(EmpBoth && SepBooks ? FBTTotalValue : 0); }},
    {7, 4, 4, [](Form) { return rupees(EmpBoth && !SepBooks ? FBTTaxableValue : 0); }},
    {7, 5, 4, [](Form) { return rupees(FBTTaxableValue); }},
};

/// Lines of the computation by the rows of a table of schedule FB; the table of captions is the first.
struct LineTable
{
    int table;
    int amountColumn;
    int valueColumn;
    std::vector<std::size_t> lines;
};

const std::array<LineTable, 5> scheduleFB{{
    {2, 4, 8, {1, 2, 3}},
    {3, 5, 9, {4, 5, 24, 25}},
    {4, 4, 8, {6, 7, 8}},
    {5, 5, 9, {9, 26, 10, 27, 11, 12, 28, 29, 30, 13, 14}},
    {6, 4, 8, {15, 16, 17, 18, 19, 20, 21, 22, 23}},
}};

/// A line as the form has it: the second one holds the securities and sweat equity too, which came later.
template<typename Lines>
double lineOfForm(const Lines &lines, std::size_t line)
{
    constexpr std::size_t superannuation = 2;
    constexpr std::size_t sharesOfEmployees = 31;
    return lines.at(line) + (line == superannuation ? lines.at(sharesOfEmployees) : 0);
}

void addLines(FormCells &cells)
{
    for (const LineTable &table : scheduleFB) {
        int row = 0;
        for (const std::size_t line : table.lines) {
            ++row;
            cells.push_back({table.table, row, table.amountColumn, rupees(lineOfForm(FBTExpAmt, line))});
            cells.push_back({table.table, row, table.valueColumn, rupees(lineOfForm(FBTValue, line))});
        }
    }
}

FormCells cellsBy(std::span<const CellRule> rules, Form form)
{
    FormCells cells;
    for (const CellRule &rule : rules) {
        if (form.TYear <= rule.lastYear)
            cells.push_back({rule.table, rule.row, rule.column, rule.value(form)});
    }
    return cells;
}

/// Room to write on by hand.
QString writingLine()
{
    constexpr int length = 30;
    return QString(length, u'_');
}

} // namespace

QString DocumentOf(Itr8Page page)
{
    constexpr const char *names[] = {"Ack", "Main", "PartB", "Sch-FBI", "Sch-FB", "Sch-FBT"};
    return QLatin1String(names[static_cast<std::size_t>(page)]);
}

FormCells CellsOf(Itr8Page page, const ReturnForm &form)
{
    FormCells cells;
    switch (page) {
    case Itr8Page::Acknowledgement:
        cells = cellsBy(acknowledgement, form);
        addAcknowledgement(form, cells);
        break;
    case Itr8Page::PartA:
        cells = cellsBy(partA, form);
        break;
    case Itr8Page::PartB:
        cells = cellsBy(partB, form);
        addPlaceAndDate(form, cells);
        break;
    case Itr8Page::ScheduleFBI:
        cells = cellsBy(scheduleFBI, form);
        break;
    case Itr8Page::ScheduleFB:
        addLines(cells);
        for (const FormCell &total : cellsBy(scheduleFBTotals, form))
            cells.push_back(total);
        break;
    case Itr8Page::ScheduleFBT:
        break;
    }
    return cells;
}

FormMarks MarksOf(Itr8Page page, const ReturnForm &form, const QString &relation, bool blank)
{
    FormMarks marks{{QStringLiteral("##ASYR##"), YearLabel(form.TYear)}};
    if (page == Itr8Page::Acknowledgement) {
        marks.push_back({QStringLiteral("##FULLNM##"), blank ? QStringLiteral("_") : form.ClName});
        marks.push_back({QStringLiteral("##FRM##"), form.FormNm});
    }
    if (page != Itr8Page::PartB)
        return marks;
    const Signatory &signatory = form.fields.signatory;
    const std::pair<const char *, QString> personal[] = {{"##SIGNNM##", signatory.name},
                                                         {"##SIGNFNM##", signatory.father},
                                                         {"##SIGNPAN##", signatory.pan},
                                                         {"##SIGNDESIG##", signatory.post}};
    for (const auto &[key, value] : personal)
        marks.push_back({QLatin1String(key), blank ? writingLine() : value});
    if (!blank && !relation.isEmpty())
        marks.push_back({QStringLiteral("son/daughter of"), relation});
    return marks;
}
