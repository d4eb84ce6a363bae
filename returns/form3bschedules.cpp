#include "calc/modfbtcalc.h"
#include "calc/returnform.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "host/reporttable.h"
#include "platform/dates.h"
#include "platform/sqltext.h"
#include "platform/text.h"
#include "records/paymentschedule.h"
#include "returns/form3b.h"
#include "returns/formrows.h"
#include "returns/returnitems.h"

namespace {

constexpr int left = ReportRow::Left;
constexpr int centre = ReportRow::Centre;
constexpr int right = ReportRow::Right;

struct Expenditure
{
    const char *number;
    const char *nature;
    const char *rate;
};

/// The lines of the computation in their order, with their numbers on the form (section 115WB(2), rates of 115WC).
constexpr Expenditure expenditures[] = {
    {"1.", "Free or concessional tickets provided for private journeys of employees or their family members.", "100"},
    {"2.", "Contribution to an approved superannuation fund for employees.", "100"},
    {"3.", "Entertainment", "20"},
    {"4(a).", "Hospitality in the business other than the business of hotel.", "20"},
    {"4(b).", "Hospitality in the business of hotel.", "5"},
    {"5.", "Conference (other than fee for participation by the employees in any conference)", "20"},
    {"6.", "Sale promotion including publicity", "20"},
    {"7.", "Employees welfare", "20"},
    {"8(a).",
     "Conveyance, tour and travel (including foreign travel) in the business other than the business of construction "
     "or manufacture or production of pharmaceuticals or computer software",
     "20"},
    {"8(b).",
     "Conveyance, tour and travel (including foreign travel) in the business of construction or manufacture or "
     "production of pharmaceuticals or computer software",
     "5"},
    {"9(a).",
     "Use of hotel, boarding and lodging facilities in the business other than the business of manufacture or "
     "production of pharmaceuticals or computer software",
     "20"},
    {"9(b).",
     "Use of hotel, boarding and lodging facilities in the business of manufacture or production of pharmaceuticals or "
     "computer software",
     "5"},
    {"10(a).",
     "Repair, running (including fuel), maintenance of motor cars and the amount of depreciation thereon in the "
     "business other than the business of carriage of passengers or goods by motor car",
     "20"},
    {"10(b).",
     "Repair, running (including fuel), maintenance of motor cars and the amount of depreciation thereon in the "
     "business of carriage of passengers or goods by motor car",
     "5"},
    {"11.",
     "Repair, running (including fuel) and maintenance of aircrafts and the amount of depreciation thereon in the "
     "business other than the business of carriage of passengers or goods by aircraft",
     "20"},
    {"12.", "Use of telephone (including mobile phone) other than expenditure on leased telephone lines.", "20"},
    {"13.",
     "Maintenance of any accommodation in the nature of guest house other than accommodation used for training "
     "purposes.",
     "20"},
    {"14.", "Festival celebrations.", "50"},
    {"15.", "Use of health club and similar facilities.", "50"},
    {"16.", "Use of any other club facilities", "50"},
    {"17.", "Gifts", "50"},
    {"18.", "Scholarships.", "50"},
};

constexpr int codeOfSchedule2 = 8550; // with the number of the line added

QString coded(int code)
{
    return Joined("[", code, "]");
}

void writeTitle(const char *title, const char *note = "")
{
    Reporter->printtext(Joined(InBold(QString::fromLatin1(title)), note));
}

// --- schedule 1 ---

void writeBank(const ReturnForm &form)
{
    writeTitle("SCHEDULE - 1: Particulars of Bank Account", " (Mandatory in Refund cases)");
    FormRows rows;
    rows.begin({24, 12, 34, 12, 12, 6}, std::vector<int>(6, centre));
    rows.row({QStringLiteral("Name of the Bank"), QStringLiteral("MICR Code (9 digit)"),
              QStringLiteral("Address of Bank Branch"), QStringLiteral("Type of Account (Savings/Current)"),
              QStringLiteral("Account Number"), QStringLiteral("ECS (Y/N)")},
             AllEdges(6));
    QStringList bank;
    for (std::size_t i = 1; i < form.BankInf.size(); ++i)
        bank << InBold(form.BankInf.at(i));
    rows.shape({24, 12, 34, 12, 12, 6}, {left, left, left, left, left, centre});
    rows.row(bank, AllEdges(6));
}

// --- schedule 2 ---

void writeExpenditures()
{
    const std::vector<int> widths{6, 42, 16, 12, 8, 16};
    FormRows rows;
    rows.begin(widths, std::vector<int>(6, ReportRow::CentredHeader));
    rows.row({QString(), QStringLiteral("Nature of expenditure"), QStringLiteral("Amount/Value of expenditure"),
              QStringLiteral("Percentage"), QString(), QStringLiteral("Value of fringe benefit")},
             AllEdges(6));
    rows.row({QString(), QStringLiteral("(i)"), QStringLiteral("(ii)"), QStringLiteral("(iii)"), QString(),
              QStringLiteral("(iv)=(ii)X(iii)÷100")},
             AllEdges(6));
    rows.shape(widths, {left, left, right, centre, centre, right});
    int line = 0;
    for (const Expenditure &one : expenditures) {
        ++line;
        const auto at = static_cast<std::size_t>(line);
        rows.row({QString::fromLatin1(one.number), QString::fromLatin1(one.nature), NilOrPlain(FBTExpAmt.at(at)),
                  QString::fromLatin1(one.rate), coded(codeOfSchedule2 + line), NilOrPlain(FBTValue.at(at))},
                 AllEdges(6));
    }
    rows.row({QStringLiteral("19."), QStringLiteral("Value of fringe benefits [Total of Column (iv)]"), QString(),
              QString(), coded(8573), NumberText(FBTTotalValue)},
             AllEdges(6));
}

void writeEmployees()
{
    FormRows rows;
    rows.begin({4, 4, 76, 8, 8}, {left, left, left, centre, right});
    const auto row = [&rows](const char *number, const char *letter, const char *label, int code,
                             const QString &value) {
        rows.row({QString::fromLatin1(number), QString::fromLatin1(letter), QString::fromUtf8(label),
                  code == 0 ? QString() : coded(code), value},
                 AllEdges(5));
    };
    row("20.", "(a)", "Are you having employees based both in and outside India?  (If Yes write 1, and if No write 2)",
        8574, OneOrTwo(EmpBoth));
    row("", "(b)",
        "If yes, are you maintaining separate books of account for Indian and Foreign operations?  (If Yes write 1, "
        "and if No write 2)",
        8575, EmpBoth ? OneOrTwo(SepBooks) : QStringLiteral("NA"));
    row("", "(c)", "If separate accounts are not maintained, -", 0, QString());
    row("", "", "(i) Number of employees based in India", 8576, NumberText(IndiaEmp));
    row("", "", "(ii) Total number of employees both in and outside India", 8577, NumberText(TotalEmp));
    row("", "(d)", "Value of taxable fringe benefit [column 19 X column 20(c)(i) ÷ column 20(c)(ii)]", 8580,
        NilOrRupees(FBTTaxableValue));
}

// --- schedules 3 and 4 ---

void writePayments(bool advance, bool known)
{
    const std::vector<int> widths{30, 12, 12, 14, 10};
    FormRows rows;
    rows.begin(widths, std::vector<int>(5, ReportRow::CentredHeader));
    rows.row({QStringLiteral("Name of the bank branch"), QStringLiteral("BSR Code of bank branch"),
              QStringLiteral("Date of deposit"), QStringLiteral("S.No. of Challan"), QStringLiteral("Amount (Rs.)")},
             AllEdges(5));
    rows.shape(widths, {left, centre, centre, centre, right});
    const RowsRead<ScheduledPayment> payments = PaymentSchedule(Cnn, {Base->code, Base->TYear}, advance);
    if (payments->empty() || !known)
        rows.row(QStringList(5, QString()), AllEdges(5));
    for (const ScheduledPayment &one : known ? *payments : std::vector<ScheduledPayment>())
        rows.row({one.bankAndBranch(), one.bsrCode, DateText(one.date), one.challanNo, NumberText(one.amount)},
                 AllEdges(5));
}

void writeTotal(const char *label, int code, double total)
{
    FormRows rows;
    rows.begin({58, 8, 12}, {left, centre, right});
    rows.row({QString::fromLatin1(label), coded(code), PlainOrEmpty(total)}, AllEdges(3));
}

void writeQuarters(const std::array<double, 5> &paid)
{
    constexpr const char *quarters[] = {"first", "second", "third", "fourth"};
    constexpr int firstCode = 8585;
    QStringList captions{QStringLiteral("Date of installment")};
    QStringList amounts{QStringLiteral("Amount")};
    for (int quarter = 0; quarter < 4; ++quarter) {
        captions << Joined("For ", quarters[quarter], " Quarter\r\n", coded(firstCode + quarter));
        amounts << NumberText(paid.at(static_cast<std::size_t>(quarter) + 1));
    }
    FormRows rows;
    rows.begin({22, 14, 14, 14, 14}, {left, centre, centre, centre, centre});
    rows.row(captions, AllEdges(5));
    rows.shape({22, 14, 14, 14, 14}, {left, right, right, right, right});
    rows.row(amounts, AllEdges(5));
}

} // namespace

void FORM3B_SCHS(const ReturnForm &form, bool paymentsKnown)
{
    ErrorTail tail(QStringLiteral("frmretfrm"));
    const std::array<double, 5> byQuarter = *AdvanceTaxByQuarter(Cnn, {Base->code, Base->TYear});
    writeBank(form);
    Reporter->printtext(reporttoken::newPage);
    writeTitle("SCHEDULE - 2: Value of Fringe Benefits");
    writeExpenditures();
    writeEmployees();
    Reporter->printtext(reporttoken::newPage);
    writeTitle("SCHEDULE - 3: Advance Fringe Benefit Tax");
    writePayments(true, paymentsKnown);
    writeQuarters(byQuarter);
    writeTotal("Total Advance Fringe Benefit Tax paid", 8590, form.figures.paid.advance);
    Reporter->printtext();
    writeTitle("SCHEDULE - 4: Fringe Benefit Tax paid on self-assessment");
    writePayments(false, paymentsKnown);
    writeTotal("Total Fringe Benefit Tax paid on self-assessment", 8591, form.figures.paid.selfAssessment);
}
