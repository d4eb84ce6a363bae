#include "efile/form3b.h"

#include "efile/element.h"
#include "platform/dates.h"
#include "platform/text.h"

namespace {

using R = FiledReturn;
using Form = FormTable<R>;

QString yes(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("2");
}

QString rupees(double amount)
{
    return NumberText(Round(amount));
}

QString addInfo(const R &r, const char *column)
{
    return r.form.addInfo.value(QLatin1String(column));
}

/// Whether the business is of a nature, by its digit.
bool nature(const R &r, QChar digit)
{
    return addInfo(r, "nob").contains(digit);
}

bool hasPin(const R &r)
{
    return !r.form.ClAddr[7].isEmpty();
}

bool hasAccounts(const R &r)
{
    return !r.accounts.empty();
}

bool revised(const R &r)
{
    return r.form.flag("revret");
}

QString text(const QString &value, int width)
{
    return CONVERT(value, u"Text", width);
}

// --- bank accounts ---

using Account = FormTable<BankAccount>;

constexpr Account::Line accountLines[] = {
    Account::open(12, "bankaccount"),
    Account::value(16, "accountnumber", [](const BankAccount &b) { return b.account; }),
    Account::value(16, "accounttype",
                   [](const BankAccount &b) { return QString::fromLatin1(ISCURRENTAC(b.type) ? "11" : "10"); }),
    Account::value(16, "ecsflag", [](const BankAccount &b) { return QString::fromLatin1(b.ecs ? "Y" : "N"); }),
    Account::value(
        16, "micrcode", [](const BankAccount &b) { return b.micr; },
        [](const BankAccount &b) { return !b.micr.isEmpty(); }),
    Account::value(16, "branchaddress", [](const BankAccount &b) { return text(b.address, 120); }),
    Account::value(16, "bankname", [](const BankAccount &b) { return b.bank; }),
    Account::close(12, "bankaccount"),
};

void bankAccounts(FileText &file, const R &r)
{
    for (const BankAccount &account : r.accounts)
        WriteElements(file, accountLines, account);
}

// --- fringe benefits ---

struct Benefit
{
    int line = 0;
    double amount = 0;
    double value = 0;
};

/// The last line that the form lists; those after it reach its totals only.
constexpr int lastListedLine = 22;

/// The percentage of the form's line, whatever the user's own table of rates says.
QString rateOf(const Benefit &benefit)
{
    constexpr const char *rates[lastListedLine + 1] = {"",   "100", "100", "20", "20", "5",  "20", "20",
                                                       "20", "20",  "5",   "20", "5",  "20", "5",  "20",
                                                       "20", "20",  "50",  "50", "50", "50", "50"};
    return QString::fromLatin1(rates[benefit.line]);
}

using Line = FormTable<Benefit>;

constexpr Line::Line benefitLines[] = {
    Line::open(12, "FBT_detail"),
    Line::value(16, "FBT_code", [](const Benefit &b) { return QString::number(8550 + b.line); }),
    Line::value(16, "Expenditure_value", [](const Benefit &b) { return NumberText(b.amount); }),
    Line::value(16, "FBT_rate", rateOf),
    Line::value(16, "FBTValue", [](const Benefit &b) { return NumberText(b.value); }),
    Line::close(12, "FBT_detail"),
};

void benefits(FileText &file, const R &r)
{
    for (int line = 1; line <= lastListedLine; ++line) {
        const auto at = static_cast<std::size_t>(line);
        const Benefit benefit{line, r.FBTExpAmt.at(at), r.FBTValue.at(at)};
        if (benefit.amount != 0 || benefit.value != 0)
            WriteElements(file, benefitLines, benefit);
    }
}

// --- payments ---

using Payment = FormTable<ScheduledPayment>;
using P = ScheduledPayment;

QString depositDate(const P &p)
{
    return CONVERT(DateText(p.date), u"Date");
}

constexpr Payment::Line advanceLines[] = {
    Payment::open(12, "advance_FBT_detail"),
    Payment::fixed(16, "transaction_type", "G"),
    Payment::value(16, "bsrcode", [](const P &p) { return p.bsrCode; }),
    Payment::value(16, "depositdate", depositDate),
    Payment::value(16, "challanseqno", [](const P &p) { return p.challanNo; }),
    Payment::value(16, "adv_FBT", [](const P &p) { return NumberText(p.amount); }),
    Payment::close(12, "advance_FBT_detail"),
};

constexpr Payment::Line selfAssessmentLines[] = {
    Payment::open(12, "FBT_SATax_detail"),
    Payment::fixed(16, "transaction_type", "H"),
    Payment::value(16, "bsrcode", [](const P &p) { return p.bsrCode; }),
    Payment::value(16, "depositdate", depositDate),
    Payment::value(16, "challanseqno", [](const P &p) { return p.challanNo; }),
    Payment::value(16, "FBTSATax", [](const P &p) { return NumberText(p.amount); }),
    Payment::close(12, "FBT_SATax_detail"),
};

void advancePayments(FileText &file, const R &r)
{
    for (const P &payment : r.advance)
        WriteElements(file, advanceLines, payment);
}

void otherPayments(FileText &file, const R &r)
{
    for (const P &payment : r.other)
        WriteElements(file, selfAssessmentLines, payment);
}

// --- the form ---

constexpr Form::Line lines[] = {
    Form::open(0, "formpatterns"),
    Form::open(4, "formno3b"),
    Form::fixed(8, "formname", "3b"),
    Form::value(8, "pan", [](const R &r) { return r.form.ClPAN; }),
    Form::value(8, "name", [](const R &r) { return text(r.form.ClName, 75); }),
    Form::value(8, "doi", [](const R &r) { return CONVERT(r.form.client[ClientRecord::Born].trimmed(), u"Date"); }),
    Form::value(8, "status", [](const R &r) { return r.form.status.StatusNo; }),
    // The first element stays empty and the flat stands in the second: the department reads them so.
    Form::value(8, "Address1", [](const R &r) { return text(r.form.ClAddr[0], 75); }),
    Form::value(8, "Address2", [](const R &r) { return text(r.form.ClAddr[1], 50); }),
    Form::value(8, "Address3", [](const R &r) { return text(r.form.ClAddr[2], 50); }),
    Form::value(8, "Address4", [](const R &r) { return text(r.form.ClAddr[3], 50); }),
    Form::value(8, "Address5", [](const R &r) { return text(r.form.ClAddr[4], 50); }),
    Form::value(8, "City", [](const R &r) { return text(r.form.ClAddr[5], 60); }),
    Form::value(8, "State", [](const R &r) { return r.stateCode; }),
    Form::value(
        8, "Pin", [](const R &r) { return r.form.ClAddr[7]; }, hasPin),
    Form::value(8, "AddrChanged", [](const R &r) { return yes(r.form.flag("chadd")); }),
    Form::value(8, "Telno", [](const R &r) { return r.form.client[ClientRecord::Telephone].trimmed(); }),
    Form::value(8, "emailid", [](const R &r) { return r.form.client[ClientRecord::Email].trimmed(); }),
    Form::value(8, "area_cd", [](const R &r) { return addInfo(r, "areacd"); }),
    Form::value(8, "ao_typ", [](const R &r) { return addInfo(r, "aotyp"); }),
    Form::value(8, "range_cd", [](const R &r) { return addInfo(r, "aorng"); }),
    Form::value(8, "ao_no", [](const R &r) { return addInfo(r, "aono"); }),
    Form::value(
        8, "oldpplrname", [](const R &r) { return addInfo(r, "oldward"); },
        [](const R &r) { return !addInfo(r, "oldward").isEmpty(); }),
    Form::value(
        8, "curpplrname", [](const R &r) { return addInfo(r, "ward"); },
        [](const R &r) { return !addInfo(r, "ward").isEmpty(); }),
    Form::value(8, "assessmentyear", [](const R &r) { return QString::number(r.form.TYear); }),
    Form::value(8, "returnofFBTcode", [](const R &r) { return r.form.RetCode; }),
    Form::value(8, "returntype", [](const R &r) { return QString::fromLatin1(revised(r) ? "2" : "1"); }),
    Form::value(
        8, "receiptno", [](const R &r) { return addInfo(r, "revrecno"); }, revised),
    Form::value(
        8, "receiptdate", [](const R &r) { return CONVERT(addInfo(r, "revrecdt"), u"Date"); }, revised),
    Form::fixed(8, "manufacturing_flag", "1", [](const R &r) { return nature(r, u'1'); }),
    Form::fixed(8, "trading_flag", "1", [](const R &r) { return nature(r, u'2'); }),
    Form::fixed(8, "manufacture_trading_flag", "1", [](const R &r) { return nature(r, u'3'); }),
    Form::fixed(8, "services", "1", [](const R &r) { return nature(r, u'4'); }),
    Form::fixed(8, "profession", "1", [](const R &r) { return nature(r, u'5'); }),
    Form::fixed(8, "other", "1", [](const R &r) { return nature(r, u'6'); }),
    Form::value(8, "apply_44aa", [](const R &r) { return yes(r.form.flag("ac44aa")); }),
    Form::value(8, "apply_44AB_a_b", [](const R &r) { return yes(r.form.flag("ac44ab")); }),
    Form::value(
        8, "dateofauditreport44AB_a_b", [](const R &r) { return CONVERT(addInfo(r, "dt44ab"), u"Date"); },
        [](const R &r) { return r.form.flag("ac44ab"); }),
    Form::value(8, "apply_44AB_c", [](const R &r) { return yes(r.form.flag("ac44abc")); }),
    Form::value(
        8, "dateofauditreport44AB_c", [](const R &r) { return CONVERT(addInfo(r, "dt44abc"), u"Date"); },
        [](const R &r) { return r.form.flag("ac44abc"); }),
    Form::value(8, "resistatus",
                [](const R &r) { return r.form.residence() == 0 ? QString() : QString::number(r.form.residence()); }),
    Form::value(8, "non_res_PE_flg", [](const R &r) { return yes(r.form.flag("peindia")); }),
    Form::value(8, "tax_relief_under_agree", [](const R &r) { return yes(r.form.flag("dtrel1")); }),
    Form::value(8, "tax_relief_under_no_agree", [](const R &r) { return yes(r.form.flag("dtrel2")); }),
    Form::value(8, "res_PE_flg", [](const R &r) { return yes(r.form.flag("peout")); }),
    Form::value(8, "FBTQ1", [](const R &r) { return rupees(r.FBTQtrValue[1]); }),
    Form::value(8, "FBTQ2", [](const R &r) { return rupees(r.FBTQtrValue[2]); }),
    Form::value(8, "FBTQ3", [](const R &r) { return rupees(r.FBTQtrValue[3]); }),
    Form::value(8, "FBTQ4", [](const R &r) { return rupees(r.FBTQtrValue[4]); }),
    Form::value(8, "valueoftotalFBT", [](const R &r) { return rupees(r.FBTTaxableValue); }),
    Form::value(8, "FBTPayable", [](const R &r) { return NumberText(r.form.figures.sums.tax); }),
    Form::value(8, "FBT_Surcharge", [](const R &r) { return NumberText(r.form.figures.sums.surcharge); }),
    Form::value(8, "FBT_EduCess", [](const R &r) { return NumberText(r.form.figures.sums.cess); }),
    Form::value(8, "totalFBTPayable", [](const R &r) { return NumberText(r.form.figures.sums.totalTax); }),
    Form::value(8, "advance_FBT_paid", [](const R &r) { return NumberText(r.form.figures.sums.advance); }),
    Form::value(8, "balanceFBT", [](const R &r) { return NumberText(r.form.figures.sums.balanceBeforeInterest()); }),
    Form::value(8, "interest_115WJ", [](const R &r) { return NumberText(r.form.figures.sums.interest115WJ); }),
    Form::value(8, "interest_115WK", [](const R &r) { return NumberText(r.form.figures.sums.interest115WK); }),
    Form::value(8, "FBT_SATax_Paid", [](const R &r) { return NumberText(r.form.figures.sums.selfAssessment); }),
    Form::value(8, "FBT_Payable_Refundable", [](const R &r) { return NumberText(r.form.figures.sums.balance); }),
    Form::open(8, "bankaccounts", hasAccounts),
    Form::rows(bankAccounts),
    Form::close(8, "bankaccounts", hasAccounts),
    Form::open(8, "FBT_details"),
    Form::rows(benefits),
    Form::value(12, "totalvalueofFBT", [](const R &r) { return NumberText(r.FBTTotalValue); }),
    Form::value(12, "employee_in_out_india", [](const R &r) { return yes(r.employees.EmpBoth); }),
    Form::value(12, "Sep_acc_book_flg", [](const R &r) { return yes(r.employees.EmpBoth && r.employees.SepBooks); }),
    Form::value(12, "No_of_indian_emp", [](const R &r) { return QString::number(r.employees.IndiaEmp); }),
    Form::value(12, "Total_emp_cnt", [](const R &r) { return QString::number(r.employees.TotalEmp); }),
    Form::value(12, "Taxable_FBT_VAL_SCHD", [](const R &r) { return NumberText(r.FBTTaxableValue); }),
    Form::close(8, "FBT_details"),
    Form::open(8, "advance_FBT_details"),
    Form::rows(advancePayments),
    Form::value(12, "FBT_ADV_TAX_Q1", [](const R &r) { return NumberText(r.quarterPaid[1]); }),
    Form::value(12, "FBT_ADV_TAX_Q2", [](const R &r) { return NumberText(r.quarterPaid[2]); }),
    Form::value(12, "FBT_ADV_TAX_Q3", [](const R &r) { return NumberText(r.quarterPaid[3]); }),
    Form::value(12, "FBT_ADV_TAX_Q4", [](const R &r) { return NumberText(r.quarterPaid[4]); }),
    Form::value(12, "ADV_TAX_SCHD_22", [](const R &r) { return NumberText(r.form.figures.sums.advance); }),
    Form::close(8, "advance_FBT_details"),
    Form::open(8, "FBT_SATax_details"),
    Form::rows(otherPayments),
    Form::value(12, "SLF_TAX_SCHD_23", [](const R &r) { return NumberText(r.form.figures.sums.selfAssessment); }),
    Form::close(8, "FBT_SATax_details"),
    Form::close(4, "formno3b"),
    Form::close(0, "formpatterns"),
};

} // namespace

QByteArray Form3BFile(const FiledReturn &file)
{
    FileText text;
    WriteElements(text, lines, file);
    return text.bytes();
}
