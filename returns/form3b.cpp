#include "returns/form3b.h"

#include "calc/modfbtcalc.h"
#include "calc/returnform.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "host/reporttable.h"
#include "platform/dates.h"
#include "platform/sqltext.h"
#include "platform/text.h"
#include "returns/formrows.h"
#include "returns/returnitems.h"

namespace {

constexpr int left = ReportRow::Left;
constexpr int centre = ReportRow::Centre;
constexpr int right = ReportRow::Right;
constexpr int justified = ReportRow::Justified;

// --- acknowledgement ---

void writeReceipt()
{
    WriteLine(QStringLiteral("Acknowledgement No. _____________, Date of Receipt _________, Ward/Circle/Range "
                             "_______________"),
              left);
    for (int line = 0; line < 4; ++line)
        Reporter->printtext();
    FormRows seal;
    seal.begin({39, 39}, {left, right});
    seal.row({QStringLiteral("Seal"), QStringLiteral("Name and signature of the Official receiving the return")});
}

void writeParticulars(const ReturnForm &form)
{
    const TaxesPaid &paid = form.figures.paid;
    FormRows rows;
    rows.begin({64, 14}, {left, right});
    const auto boxed = [&rows](const char *label, const QString &value) {
        rows.row({QString::fromLatin1(label), InBold(value)}, BoxedLast(2));
        rows.empty();
    };
    boxed("(a) PAN", form.ClPAN);
    boxed("(b) Value of fringe benefits", NilOrRupees(FBTTaxableValue));
    rows.row({QStringLiteral("(c) Tax Paid"), QString()});
    boxed("     (i) Advance Fringe Benefit Tax", NilOrRupees(paid.advance));
    boxed("     (ii) Fringe Benefit Tax on Self-assessment", NilOrRupees(paid.selfAssessment));
    boxed("     Total of [(i) + (ii)]", NilOrRupees(paid.advance + paid.selfAssessment));
}

// --- head of the return ---

void writeHead(int year)
{
    Reporter->printtext(reporttoken::smallPitch);
    FormRows rows;
    rows.begin({22, 34, 22}, {left, centre, right});
    rows.row({QString(), InBold(QStringLiteral("FORM NO. 3B")), QStringLiteral("ITS-3B")}, OuterEdges(3, true));
    rows.row({QString(), QStringLiteral("[See rule 12 of Income-tax Rules, 1962]"), QString()}, OuterEdges(3));
    rows.row({QString(), InBold(QStringLiteral("RETURN OF FRINGE BENEFITS")),
              InBold(Joined("ASSESSMENT YEAR - ", YearLabel(year)))},
             OuterEdges(3));
    rows.begin({60, 40}, {justified, centre});
    RowEdges edges = OuterEdges(2, true);
    edges.left = QStringLiteral("11");
    rows.row({QStringLiteral("For the assessees-\r\n"
                             "(i) who have furnished return of income in Form 1, 2, 2D or 3A before Form 3B was "
                             "notified, or opt to furnish it in Form 2D;\r\n"
                             "(ii) who are required to furnish a return of fringe benefits only."),
              QStringLiteral("\x1b"
                             "4For office use only\x1b"
                             "5")},
             edges);
    rows.begin({100}, {left});
    rows.row({QStringLiteral("* All documents and other evidences in support of the computation of fringe benefits and "
                             "the payments of tax should be retained and furnished when called for.")},
             OuterEdges(1, true, true));
    Reporter->printtext(reporttoken::normalPitch);
}

// --- part A ---

/// Rows of part A: number, label and value.
class PartA
{
public:
    PartA()
    {
        m_rows.begin({78}, {centre});
        m_rows.row({QStringLiteral("PART-A\r\nGENERAL")}, AllEdges(1));
    }

    /// A value that is a text.
    void text(const char *number, const QString &label, const QString &value, bool last = false)
    {
        write({5, 37, 36}, number, label, value, last);
    }
    /// A value that is a code of one or two characters.
    void code(const char *number, const QString &label, const QString &value)
    {
        write({5, 65, 8}, number, label, value);
    }

    /// A tick for each kind of business.
    void natures(const QString &kinds)
    {
        struct Kind
        {
            const char *label;
            const char *code;
        };
        static constexpr Kind all[] = {
            {"Manufacturing", "[1100]"}, {"Trading", "[1200]"},    {"Manufacturing-cum-trading", "[1300]"},
            {"Services", "[1400]"},      {"Profession", "[1500]"}, {"Others", "[1600]"}};
        constexpr int inRow = 3;
        m_rows.shape({5, 13, 7, 4, 13, 7, 4, 14, 7, 4},
                     {left, left, left, centre, left, left, centre, left, left, centre});
        for (int first = 0; first < 2 * inRow; first += inRow) {
            QStringList cells{QString()};
            for (int kind = first; kind < first + inRow; ++kind)
                cells << QString::fromLatin1(all[kind].label) << QString::fromLatin1(all[kind].code)
                      << (kinds.contains(QString::number(kind + 1)) ? QStringLiteral("_/") : QString());
            RowEdges edges = OuterEdges(static_cast<int>(cells.size()));
            edges.left = QStringLiteral("1001001001");
            edges.right = edges.top = edges.bottom = QStringLiteral("0001001001");
            m_rows.row(cells, edges);
        }
    }

private:
    void write(const std::vector<int> &widths, const char *number, const QString &label, const QString &value,
               bool last = false)
    {
        m_rows.shape(widths, {left, left, left});
        m_rows.row({QString::fromLatin1(number), label, value.isEmpty() ? value : InBold(value)},
                   OuterEdges(3, false, last));
    }

    FormRows m_rows;
};

QString yesNoLabel(const char *question)
{
    return Joined(question, " (If Yes write 1, and if No write 2)");
}

/// Company 1, firm 2, others 3.
QString kindOfEmployer(const QString &statusCd)
{
    if (statusCd == u"13PF")
        return QStringLiteral("2");
    return statusCd.startsWith(u"17") || statusCd == u"18FC" ? QStringLiteral("1") : QStringLiteral("3");
}

QString addressOf(const ReturnForm &form)
{
    constexpr std::size_t pin = 7;
    const QStringList parts(form.ClAddr.begin() + 1, form.ClAddr.begin() + pin);
    return JoinFilled({JoinFilled(parts, QStringLiteral(", ")), form.ClAddr[pin]}, QStringLiteral("-"));
}

void writeIdentity(PartA &part, const ReturnForm &form)
{
    part.text("1.", QStringLiteral("Permanent Account No.(PAN)"), form.ClPAN);
    part.text("2.", QStringLiteral("Name"), form.ClName);
    part.text("3.", QStringLiteral("Date of Incorporation/formation (DD-MM-YYYY)"),
              form.client[ClientRecord::Born].trimmed());
    part.code("4.", QStringLiteral("Status (If company write 1, if firm write 2, if others write 3)"),
              kindOfEmployer(form.status.StatusCd));
    part.text("5.",
              QStringLiteral("Address:\r\n(Flat No./Door/House No., Premises, Road, Locality/Village, Town/District, "
                             "State/Union Territory, in that order)"),
              addressOf(form));
    part.code("6.", yesNoLabel("Is there any change in Address?"), OneOrTwo(form.flag("chadd")));
    part.text("7.", Joined("Telephone number:    STD Code: ", form.client[ClientRecord::Std].trimmed()),
              Joined("Number ", form.client[ClientRecord::Telephone].trimmed()));
    part.text("8.", QStringLiteral("e-mail ID:"), form.client[ClientRecord::Email].trimmed());
    part.text("9.", QStringLiteral("Ward/Circle/Range"), form.info("ward"));
    part.text("10.", QStringLiteral("Ward/Circle/Range where return of income, if filed"), form.info("oldward"));
}

void writeFiling(PartA &part, const ReturnForm &form)
{
    const bool revised = form.flag("revret");
    const QString blank(10, u'_');
    part.code("11.", QStringLiteral("Section under which this return is being filed"), form.RetCode.trimmed());
    part.code("12.",
              QStringLiteral("Whether Original or Revised Return? (If original write 1, and if revised write 2)"),
              OneOrTwo(!revised));
    part.text("", QStringLiteral("If revised, Receipt No. and date of filing original return"),
              Joined(revised ? form.info("revrecno") : blank, " and ", revised ? form.info("revrecdt") : blank));
    part.text("13.", QStringLiteral("Nature of business or profession"), QString());
    part.natures(form.info("nob"));
}

void writeAudit(PartA &part, const ReturnForm &form)
{
    const QString dateOfReport = QStringLiteral("If yes, date of audit report.");
    part.code("14.", yesNoLabel("Are you liable to maintain accounts as per section 44AA? "),
              OneOrTwo(form.flag("ac44aa")));
    part.code("15.", yesNoLabel("Are you liable to audit under section 44AB(a/b)? "), OneOrTwo(form.flag("ac44ab")));
    part.text("", dateOfReport, form.flag("ac44ab") ? form.info("dt44ab") : QString());
    part.code("16.",
              yesNoLabel("Are you liable to audit under section 44AB(c) read with section 44AD/44AE/44AF/44BB/44BBB? "),
              OneOrTwo(form.flag("ac44abc")));
    part.text("", dateOfReport, form.flag("ac44abc") ? form.info("dt44abc") : QString());
}

void writeResidence(PartA &part, const ReturnForm &form)
{
    const int residence = form.residence();
    const auto only = [residence](int status, bool yes) { return residence == status ? OneOrTwo(yes) : QString(); };
    part.code("17.",
              QStringLiteral("Residential Status (if resident write 1, if non-resident write 2, and if resident but "
                             "not ordinarily resident write 3)"),
              residence == 0 ? QString() : QString::number(residence));
    part.code("18.", yesNoLabel("In the case of non-resident, is there a permanent establishment (PE) in India"),
              only(2, form.flag("peindia")));
    part.text("19.", QStringLiteral("Have you claimed any double taxation relief?"), QString());
    part.code("", yesNoLabel("(i) under agreement with any country "), OneOrTwo(form.flag("dtrel1")));
    part.code("", yesNoLabel("(ii) in respect of a country with which no agreement exists "),
              OneOrTwo(form.flag("dtrel2")));
    part.code("20.", yesNoLabel("In the case of resident, is there a permanent establishment (PE) outside India? "),
              only(1, form.flag("peout")));
    part.text("21.", QStringLiteral("Particulars of Bank Account (Mandatory in Refund cases) (Schedule-1)"), QString(),
              true);
}

// --- part B ---

/// The closing balance: a refund in brackets.
QString balanceText(double balance)
{
    const QString rupees = Format(balance < 0 ? -balance : balance, u"###0");
    return balance < 0 ? Joined("(", rupees, ")") : rupees;
}

void writePartB(const ReturnForm &form)
{
    const ReturnFiguresOfYear &year = form.figures;
    const ReturnSums &sums = year.sums;
    const std::pair<const char *, QString> lines[] = {
        {"Value of fringe benefits for first quarter", NilOrRupees(FBTQtrValue[1])},
        {"Value of fringe benefits for second quarter", NilOrRupees(FBTQtrValue[2])},
        {"Value of fringe benefits for third quarter", NilOrRupees(FBTQtrValue[3])},
        {"Value of fringe benefits for fourth quarter", NilOrRupees(FBTQtrValue[4])},
        {"Value of total fringe benefits (Schedule-2)", NilOrRupees(FBTTaxableValue)},
        {"Fringe benefit tax payable [30% of (5)]", NilOrRupees(year.tax.Tax)},
        {"Surcharge on (6)", NilOrRupees(year.tax.Surcharge)},
        {"Education Cess on [(6) + (7)]", NilOrRupees(year.tax.EduCess + year.tax.SHECess)},
        {"Total fringe benefit tax payable [(6) + (7) + (8)]", NilOrRupees(sums.totalTax)},
        {"Advance fringe benefit tax paid (Schedule-3)", NilOrRupees(year.paid.advance)},
        {"Balance Tax Payable [(9) - (10)]", NilOrRupees(sums.balanceBeforeInterest())},
        {"Interest under section 115WJ(3)", NilOrRupees(year.interest.Int115WJ + year.interest.Int115WJ5)},
        {"Interest under section 115WK", NilOrRupees(year.interest.Int115WK)},
        {"Self-assessment tax paid (Schedule-4)", NilOrRupees(year.paid.selfAssessment)},
        {"Balance tax payable/refundable [(11) + (12) + (13) - (14)]", balanceText(sums.balance)}};
    constexpr int firstCode = 8500;
    constexpr int lastCode = 8550; // of the balance
    FormRows rows;
    rows.begin({100}, {centre});
    rows.row({QStringLiteral("PART-B\r\nCOMPUTATION OF FRINGE BENEFITS")}, AllEdges(1));
    rows.shape({4, 74, 8, 14}, {left, left, centre, right});
    int number = 0;
    for (const auto &[label, value] : lines) {
        ++number;
        const int code = number == static_cast<int>(std::size(lines)) ? lastCode : firstCode + number - 1;
        rows.row({Joined(number, "."), QString::fromLatin1(label), Joined("[", code, "]"), InBold(value)}, AllEdges(4));
    }
}

// --- verification ---

QString relationWord(int relation)
{
    switch (relation) {
    case 0:
        return QStringLiteral("son");
    case 1:
        return QStringLiteral("daughter");
    default:
        return QStringLiteral("son/daughter");
    }
}

QString declaration(const ReturnForm &form)
{
    const Signatory &signatory = form.fields.signatory;
    return Joined("I, ", InBold(signatory.name), " (full name in block letters), ", relationWord(signatory.relation),
                  " of ", InBold(signatory.father),
                  " solemnly declare that to the best of my knowledge and belief, the information given in the return "
                  "and the schedules thereto is correct and complete, and that the amount of total fringe benefits and "
                  "other particulars shown therein are truly stated and are in accordance with the provisions of the "
                  "Income-tax Act, 1961, in respect of fringe benefits chargeable to tax for the previous year "
                  "relevant to the assessment year ",
                  YearLabel(form.TYear), ". I further declare that I am making this return in my capacity as ",
                  InBold(signatory.post), " and I am also competent to make this return and verify it.");
}

void writeVerification(const ReturnForm &form)
{
    const ReturnFields &fields = form.fields;
    const QString signature = QStringLiteral("Name and Signature");
    FormRows rows;
    rows.begin({78}, {centre});
    rows.row({InBold(QStringLiteral("VERIFICATION"))}, OuterEdges(1, true));
    rows.shape({78}, {justified});
    rows.row({declaration(form)}, OuterEdges(1));
    rows.shape({39, 39}, {left, right}); // halves of the line
    rows.row({Joined("Date : ", InBold(fields.date)), QString()}, OuterEdges(2));
    rows.row({Joined("Place : ", InBold(fields.place)), InBold(fields.signatory.name)}, OuterEdges(2));
    rows.row({QString(), signature}, OuterEdges(2));
    rows.shape({78}, {justified});
    rows.row({InBold(QStringLiteral("Certificate of electronically furnishing the details of the Return (optional) "
                                    "(See Instruction No. 7)"))},
             OuterEdges(1, true));
    rows.row({QStringLiteral("Certified that I have also furnished the details contained in this return and its "
                             "schedules electronically to the designated website vide acknowledgement number "
                             "________________________ dated ______________.")},
             OuterEdges(1));
    rows.shape({39, 39}, {left, right}); // halves of the line
    rows.row({QString(), signature}, OuterEdges(2, false, true));
}

} // namespace

void FORM3B_ANX(const ReturnForm &form)
{
    ErrorTail tail(QStringLiteral("frmretfrm"));
    FormRows head;
    head.begin({78}, {centre});
    head.row({InBold(QStringLiteral("Government of India"))});
    head.row({QString::fromLatin1(sealToken)});
    head.row({InBold(QStringLiteral("INCOME-TAX DEPARTMENT"))});
    head.row({InBold(QStringLiteral("ACKNOWLEDGEMENT"))});
    Reporter->printtext();
    WriteLine(Joined("Received with thanks from ", InBold(form.ClName),
                     " a return of fringe benefit tax in Form No. 3B for Assessment year ",
                     InBold(YearLabel(form.TYear)), ", having the following particulars."),
              justified);
    Reporter->printtext();
    writeParticulars(form);
    Reporter->printtext();
    writeReceipt();
}

void FORM3B_MAIN(const ReturnForm &form)
{
    ErrorTail tail(QStringLiteral("frmretfrm"));
    writeHead(form.TYear);
    PartA part;
    writeIdentity(part, form);
    writeFiling(part, form);
    writeAudit(part, form);
    writeResidence(part, form);
    Reporter->printtext(reporttoken::newPage);
    writePartB(form);
    writeVerification(form);
}
