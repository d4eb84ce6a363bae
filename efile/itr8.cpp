#include "efile/itr8.h"

#include "efile/element.h"
#include "platform/dates.h"
#include "platform/text.h"

namespace {

using R = FiledReturn;
using Form = FormTable<R>;

QString rupees(double amount)
{
    return NumberText(Round(amount));
}

QString flag(bool on)
{
    return on ? QStringLiteral("Y") : QStringLiteral("N");
}

QString oneOrTwo(bool on)
{
    return on ? QStringLiteral("1") : QStringLiteral("2");
}

QString text(const QString &value, int width)
{
    return CONVERT(value, u"Text", width);
}

QString addInfo(const R &r, const char *column)
{
    return r.form.addInfo.value(QLatin1String(column));
}

QString miscInf(const R &r, const char *column)
{
    return r.form.miscInf.value(QLatin1String(column));
}

QString ofClient(const R &r, ClientRecord::Position position)
{
    return r.form.client[position].trimmed();
}

const ReturnSums &sums(const R &r)
{
    return r.form.figures.sums;
}

// --- what decides on a line ---

bool isNewForm(const R &r)
{
    constexpr int firstYear = 2009;
    return r.form.TYear >= firstYear;
}

bool hasOldName(const R &r)
{
    return miscInf(r, "var2_0") == u"1";
}

bool hasPhone(const R &r)
{
    return !ofClient(r, ClientRecord::Std).isEmpty() || !ofClient(r, ClientRecord::Telephone).isEmpty();
}

/// From A.Y. 2008-09 on the element is there without an address, too.
bool hasEmail(const R &r)
{
    constexpr int firstYearAlways = 2008;
    return r.form.TYear >= firstYearAlways || !ofClient(r, ClientRecord::Email).isEmpty();
}

bool isCompany(const R &r)
{
    const QString &status = r.form.status.StatusCd;
    return status == u"17PVT" || status == u"17PUB" || status == u"18FC";
}

bool isRevised(const R &r)
{
    return r.form.flag("revret");
}

bool isRepresented(const R &r)
{
    return miscInf(r, "repass") == u"1";
}

bool hasAudit(const R &r)
{
    return miscInf(r, "opt44ab") == u"1" || !miscInf(r, "var1_0").isEmpty();
}

bool isDeposited(const R &r)
{
    constexpr int directly = 2;
    return r.form.fields.details.refundMode == directly;
}

bool hasPayments(const R &r)
{
    return !r.advance.empty() || !r.other.empty();
}

template<int part>
bool hasAddress(const R &r)
{
    return !r.form.ClAddr.at(part).isEmpty();
}

// --- values ---

QString statusNumber(const R &r)
{
    static const QHash<QString, QString> numbers{
        {QStringLiteral("13PF"), QStringLiteral("1")}, {QStringLiteral("15LA"), QStringLiteral("2")},
        {QStringLiteral("14CS"), QStringLiteral("4")}, {QStringLiteral("16A"), QStringLiteral("5")},
        {QStringLiteral("16AT"), QStringLiteral("5")}, {QStringLiteral("17PUB"), QStringLiteral("6")},
        {QStringLiteral("18FC"), QStringLiteral("6")}, {QStringLiteral("17PVT"), QStringLiteral("7")},
    };
    return numbers.value(r.form.status.StatusCd, QStringLiteral("8"));
}

QString residentialStatus(const R &r)
{
    switch (r.form.residence()) {
    case 1:
        return QStringLiteral("RES");
    case 2:
        return QStringLiteral("NRI");
    default:
        return QStringLiteral("NOR");
    }
}

/// A code of the department's as a number of so many digits; one that is no number stays as it was typed.
QString digits(const QString &code, QStringView pattern)
{
    return IsNumeric(code) ? Format(Val(code), pattern) : code;
}

/// The value of fringe benefits under one of the three answers of schedule FBI, 0 under the two others.
QString totalWhere(bool answered, double amount)
{
    return NumberText(answered ? amount : 0);
}

QString returnDate(const R &r)
{
    return CONVERT(r.form.fields.date, u"Date");
}

// --- schedule FB ---

struct Benefit
{
    double amount = 0;
    double value = 0;
};

using Line = FormTable<Benefit>;

constexpr Line::Line benefitLines[] = {
    Line::open(10, "SchedFBAmtFBVal"),
    Line::value(12, "AmtOrValueOfExpenditure", [](const Benefit &b) { return NumberText(b.amount); }),
    Line::value(12, "ValueOfFB", [](const Benefit &b) { return NumberText(b.value); }),
    Line::close(10, "SchedFBAmtFBVal"),
};

constexpr std::size_t superannuation = 2;
constexpr std::size_t securities = 31; // no line of its own: it goes with superannuation

struct ScheduleLine
{
    std::size_t line; ///< computation line
    const char *element;
    int indent;
    const char *opens = nullptr;  ///< the group that opens before it
    const char *closes = nullptr; ///< the group that closes after it
};

/// In the order of the form.
constexpr ScheduleLine scheduleFB[] = {
    {1, "FreeOrConcTktForEmpl", 6},
    {2, "EmplSuperAnnFund", 6},
    {3, "Entertainment", 6},
    {4, "BusOthThan4bcd", 8, "Hospitality"},
    {5, "BusOfHotel", 8},
    {24, "BusOfAircraft", 8},
    {25, "BusOfShip", 8, nullptr, "Hospitality"},
    {6, "Conference", 6},
    {7, "SalesPromotion", 6},
    {8, "EmployeeWelfare", 6},
    {9, "BusOthThan8bcd", 8, "Conveyance"},
    {26, "ConstructBus", 8},
    {10, "ManufactOrPharmaBus", 8},
    {27, "ManufactOrProdCompSoftware", 8, nullptr, "Conveyance"},
    {11, "BusOthThan9bcde", 8, "HotelBoardLodge"},
    {12, "ManufactOrPharmaBus", 8},
    {28, "ManufactOrProdCompSoftware", 8},
    {29, "AircraftBus", 8},
    {30, "ShipBus", 8, nullptr, "HotelBoardLodge"},
    {13, "DeprNoCarryPassGoodBus", 8, "Repair"},
    {14, "DeprCarryPassGoodBus", 8, nullptr, "Repair"},
    {15, "MaintenAircraftDeprNoCaryPassGoodBus", 6},
    {16, "TelephoneNoLeasedLines", 6},
    {17, "MaintenAccomdateGuestHouseNoTrainPurpose", 6},
    {18, "FestivalCelebrations", 6},
    {19, "HealthClubSimilarFacility", 6},
    {20, "OthrClubFacility", 6},
    {21, "Gifts", 6},
    {22, "Scholarships", 6},
    {23, "TourTravelIncludForeign", 6},
};

Benefit benefitOn(const R &r, std::size_t line)
{
    Benefit benefit{r.FBTExpAmt.at(line), r.FBTValue.at(line)};
    if (line == superannuation) {
        benefit.amount += r.FBTExpAmt[securities];
        benefit.value += r.FBTValue[securities];
    }
    return benefit;
}

void benefits(FileText &file, const R &r)
{
    constexpr int groupIndent = 6;
    for (const ScheduleLine &row : scheduleFB) {
        if (row.opens != nullptr)
            file.open(row.opens, groupIndent);
        file.open(row.element, row.indent);
        WriteElements(file, benefitLines, benefitOn(r, row.line));
        file.close(row.element, row.indent);
        if (row.closes != nullptr)
            file.close(row.closes, groupIndent);
    }
}

// --- schedule FBT ---

using P = ScheduledPayment;
using Payment = FormTable<P>;

bool hasBank(const P &p)
{
    return !p.bank.isEmpty() || !p.branch.isEmpty();
}

constexpr Payment::Line paymentLines[] = {
    Payment::open(6, "TaxPayment"),
    Payment::open(8, "NameOfBankAndBranch", hasBank),
    Payment::value(
        10, "NameOfBank", [](const P &p) { return text(p.bank, 25); }, [](const P &p) { return !p.bank.isEmpty(); }),
    Payment::value(
        10, "NameOfBranch", [](const P &p) { return text(p.branch, 25); },
        [](const P &p) { return !p.branch.isEmpty(); }),
    Payment::close(8, "NameOfBankAndBranch", hasBank),
    Payment::value(8, "BSRCode", [](const P &p) { return p.bsrCode; }),
    Payment::value(8, "DateDep", [](const P &p) { return CONVERT(DateText(p.date), u"Date"); }),
    Payment::value(8, "SrlNoOfChaln", [](const P &p) { return p.challanNo; }),
    Payment::value(8, "Amt", [](const P &p) { return NumberText(p.amount); }),
    Payment::close(6, "TaxPayment"),
};

void payments(FileText &file, const R &r)
{
    for (const auto *kind : {&r.advance, &r.other}) {
        for (const P &payment : *kind)
            WriteElements(file, paymentLines, payment);
    }
}

// --- the form. The misspelled names are the department's ---

constexpr Form::Line lines[] = {
    Form::open(2, "ITR8FORM:ITR8"),
    Form::open(4, "CreationInfo"),
    Form::fixed(6, "SWVersionNo", FBT_VERSION),
    Form::fixed(6, "SWCreatedBy", "WEXA TARNIK"),
    Form::fixed(6, "XMLCreatedBy", "PELKFBT"),
    Form::value(6, "XMLCreationDate", returnDate),
    Form::fixed(6, "IntermediaryCity", "VARDOS"),
    Form::close(4, "CreationInfo"),
    Form::open(4, "Form_ITR8"),
    Form::value(6, "FormName", [](const R &r) { return r.form.FormNm; }),
    Form::fixed(6, "Description", "Return of Fringe Benefits"),
    Form::value(6, "AssessmentYear", [](const R &r) { return QString::number(r.form.TYear); }),
    Form::fixed(6, "SchemaVer", "Ver1.0"),
    Form::fixed(6, "FormVer", "Ver1.0"),
    Form::close(4, "Form_ITR8"),
    Form::open(4, "PartA_GEN1"),
    Form::open(6, "OrgFirmInfo"),
    Form::open(8, "AssesseeName"),
    Form::value(10, "SurNameOrOrgName", [](const R &r) { return text(r.form.ClName, 75); }),
    Form::value(
        10, "OrgOldName", [](const R &r) { return text(miscInf(r, "var2_1"), 75); }, hasOldName),
    Form::close(8, "AssesseeName"),
    Form::value(8, "PAN", [](const R &r) { return r.form.ClPAN; }),
    Form::open(8, "Address"),
    Form::value(10, "ResidenceNo", [](const R &r) { return text(r.form.ClAddr[1], 75); }),
    Form::value(
        10, "ResidenceName", [](const R &r) { return text(r.form.ClAddr[2], 75); }, hasAddress<2>),
    Form::value(
        10, "RoadOrStreet", [](const R &r) { return text(r.form.ClAddr[3], 75); }, hasAddress<3>),
    Form::value(10, "LocalityOrArea", [](const R &r) { return text(r.form.ClAddr[4], 75); }),
    Form::value(10, "CityOrTownOrDistrict", [](const R &r) { return text(r.form.ClAddr[5], 75); }),
    Form::value(10, "StateCode", [](const R &r) { return r.stateCode; }),
    Form::value(10, "PinCode", [](const R &r) { return r.form.ClAddr[7]; }),
    Form::open(10, "Phone", hasPhone),
    Form::value(
        12, "STDcode", [](const R &r) { return ofClient(r, ClientRecord::Std); }, hasPhone),
    Form::value(
        12, "PhoneNo", [](const R &r) { return ofClient(r, ClientRecord::Telephone); }, hasPhone),
    Form::close(10, "Phone", hasPhone),
    Form::value(
        10, "EmailAddress", [](const R &r) { return text(ofClient(r, ClientRecord::Email), 125); }, hasEmail),
    Form::close(8, "Address"),
    Form::value(8, "DateOFFormOrIncorp", [](const R &r) { return CONVERT(ofClient(r, ClientRecord::Born), u"Date"); }),
    Form::value(8, "StatusOrCompanyType", statusNumber),
    Form::value(
        8, "DomesticCompFlg", [](const R &r) { return flag(r.form.status.StatusCd != u"18FC"); }, isCompany),
    Form::close(6, "OrgFirmInfo"),
    Form::open(6, "FilingStatus"),
    Form::open(8, "ReturnFileSec"),
    Form::value(10, "FBTSec", [](const R &r) { return r.form.RetCode; }),
    Form::close(8, "ReturnFileSec"),
    Form::open(8, "DesigTaxOfficeInfo"),
    Form::value(10, "DesigOfficerWardorCircle", [](const R &r) { return text(addInfo(r, "ward"), 40); }),
    Form::value(
        10, "AreaCode", [](const R &r) { return addInfo(r, "areacd"); },
        [](const R &r) { return !addInfo(r, "areacd").isEmpty(); }),
    Form::value(
        10, "AOType", [](const R &r) { return addInfo(r, "aotyp"); },
        [](const R &r) { return !addInfo(r, "aotyp").isEmpty(); }),
    Form::value(
        10, "RangeCode", [](const R &r) { return digits(addInfo(r, "aorng"), u"000"); },
        [](const R &r) { return !addInfo(r, "aorng").isEmpty(); }),
    Form::value(
        10, "AONo", [](const R &r) { return digits(addInfo(r, "aono"), u"00"); },
        [](const R &r) { return !addInfo(r, "aono").isEmpty(); }),
    Form::close(8, "DesigTaxOfficeInfo"),
    Form::value(8, "ReturnType", [](const R &r) { return QString::fromLatin1(isRevised(r) ? "R" : "O"); }),
    Form::value(
        8, "ReceiptNo", [](const R &r) { return addInfo(r, "revrecno"); }, isRevised),
    Form::value(
        8, "OrigRetFiledDate", [](const R &r) { return CONVERT(addInfo(r, "revrecdt"), u"Date"); }, isRevised),
    Form::value(8, "ResidentialStatus", residentialStatus),
    Form::value(8, "NRI_PE", [](const R &r) { return flag(r.form.residence() == 2 && r.form.flag("peindia")); }),
    Form::value(8, "AsseseeRepFlg", [](const R &r) { return flag(isRepresented(r)); }),
    Form::open(8, "AssesseeRep", isRepresented),
    Form::value(
        10, "RepName", [](const R &r) { return text(miscInf(r, "var0_0"), 50); }, isRepresented),
    Form::value(
        10, "RepAddress", [](const R &r) { return text(RepresentativeAddress(r.form.miscInf), 75); }, isRepresented),
    Form::value(
        10, "RepPAN", [](const R &r) { return miscInf(r, "var0_1"); },
        [](const R &r) { return isRepresented(r) && !miscInf(r, "var0_1").isEmpty(); }),
    Form::close(8, "AssesseeRep", isRepresented),
    Form::close(6, "FilingStatus"),
    Form::close(4, "PartA_GEN1"),
    Form::value(4, "ITR8FORM:LiableSec44AAflg", [](const R &r) { return flag(miscInf(r, "opt44aa") == u"1"); }),
    Form::value(4, "ITR8FORM:LiableSec44ABflg", [](const R &r) { return flag(miscInf(r, "opt44ab") == u"1"); }),
    Form::open(4, "AuditInfo", hasAudit),
    Form::value(
        6, "AuditorName", [](const R &r) { return text(miscInf(r, "var1_0"), 50); }, hasAudit),
    Form::value(
        6, "AuditorMemNo", [](const R &r) { return miscInf(r, "var1_1"); }, hasAudit),
    Form::value(
        6, "AudFrmName", [](const R &r) { return text(miscInf(r, "var1_2"), 75); },
        [](const R &r) { return hasAudit(r) && !miscInf(r, "var1_2").isEmpty(); }),
    Form::value(
        6, "AudFrmPAN", [](const R &r) { return miscInf(r, "var1_3"); }, hasAudit),
    Form::value(
        6, "AuditDate", [](const R &r) { return CONVERT(miscInf(r, "var1_11"), u"Date"); }, hasAudit),
    Form::close(4, "AuditInfo", hasAudit),
    Form::open(4, "PartCAnd8B"),
    Form::open(6, "ValueOfFBT"),
    Form::value(8, "FirstQuarter", [](const R &r) { return rupees(r.FBTQtrValue[1]); }),
    Form::value(8, "SecondQuarter", [](const R &r) { return rupees(r.FBTQtrValue[2]); }),
    Form::value(8, "ThirdQuarter", [](const R &r) { return rupees(r.FBTQtrValue[3]); }),
    Form::value(8, "FourthQuarter", [](const R &r) { return rupees(r.FBTQtrValue[4]); }),
    Form::value(8, "TotValueOfFBT", [](const R &r) { return rupees(r.FBTTaxableValue); }),
    Form::close(6, "ValueOfFBT"),
    Form::value(6, "FBTPayable", [](const R &r) { return NumberText(sums(r).tax); }),
    Form::value(6, "SurchargeOnFBT", [](const R &r) { return NumberText(sums(r).surcharge); }),
    Form::value(6, "EducationCess", [](const R &r) { return NumberText(sums(r).cess); }),
    Form::value(6, "TotFBTLiability", [](const R &r) { return NumberText(sums(r).totalTax); }),
    Form::open(6, "FBTInterestPayable"),
    Form::value(8, "DefaultPayUs115WJ3", [](const R &r) { return NumberText(sums(r).interest115WJ); }),
    Form::value(8, "DefaultFileUs115WK", [](const R &r) { return NumberText(sums(r).interest115WK); }),
    Form::value(8, "TotFBTInterestPayable", [](const R &r) { return NumberText(sums(r).totalInterest); }),
    Form::close(6, "FBTInterestPayable"),
    Form::value(6, "AggreFBTLiability", [](const R &r) { return NumberText(sums(r).aggregate); }),
    Form::open(6, "FBTTaxesPaid"),
    Form::value(8, "AdvanceFBT", [](const R &r) { return NumberText(sums(r).advance); }),
    Form::value(8, "SelfAssessmentFBT", [](const R &r) { return NumberText(sums(r).selfAssessment); }),
    Form::value(8, "TotalTaxesPaid", [](const R &r) { return NumberText(sums(r).totalPaid); }),
    Form::close(6, "FBTTaxesPaid"),
    Form::value(6, "BalFBTLiability", [](const R &r) { return NumberText(sums(r).payable()); }),
    Form::value(6, "RefundFBT", [](const R &r) { return NumberText(sums(r).refund()); }),
    Form::close(4, "PartCAnd8B"),
    Form::open(4, "ScheduleBA"),
    Form::value(6, "BankAccountNumber", [](const R &r) { return r.form.BankInf[5]; }),
    Form::value(6, "EcsRequired", [](const R &r) { return flag(r.form.BankInf[6] == u"Y"); }),
    Form::open(6, "DepositToBankAccount", isDeposited),
    Form::value(
        8, "MICRCode", [](const R &r) { return r.form.BankInf[2]; }, isDeposited),
    Form::value(
        8, "BankAccountType",
        [](const R &r) { return QString::fromLatin1(ISCURRENTAC(r.form.BankInf[4]) ? "CUR" : "SAV"); }, isDeposited),
    Form::close(6, "DepositToBankAccount", isDeposited),
    Form::close(4, "ScheduleBA"),
    Form::open(4, "Verification"),
    Form::open(6, "Declaration"),
    Form::value(8, "AssesseeVerName", [](const R &r) { return text(r.form.fields.signatory.name, 75); }),
    Form::value(8, "FatherName", [](const R &r) { return text(r.form.fields.signatory.father, 25); }),
    Form::value(
        8, "AssesseeVerPAN", [](const R &r) { return r.form.fields.signatory.pan; },
        [](const R &r) { return isNewForm(r) && !r.form.fields.signatory.pan.isEmpty(); }),
    Form::value(8, "Capacity", [](const R &r) { return text(r.form.fields.signatory.post, 25); }),
    Form::close(6, "Declaration"),
    Form::value(6, "Place", [](const R &r) { return text(r.form.fields.place, 50); }),
    Form::value(6, "Date", returnDate),
    Form::close(4, "Verification"),
    Form::open(4, "ScheduleFBI"),
    Form::value(6, "EmployeesInOutIndiaFlg", [](const R &r) { return oneOrTwo(r.employees.EmpBoth); }),
    Form::value(6, "SeparateAcntMaintainForIndiaForeignFlg",
                [](const R &r) { return oneOrTwo(r.employees.EmpBoth && r.employees.SepBooks); }),
    Form::open(6, "TotEmpDetails"),
    Form::value(8, "NoOfIndianEmps", [](const R &r) { return QString::number(r.employees.IndiaEmp); }),
    Form::value(8, "NoOfOutsideIndiaEmps",
                [](const R &r) { return NumberText(double(r.employees.TotalEmp) - r.employees.IndiaEmp); }),
    Form::value(8, "TotNoOfEmps", [](const R &r) { return QString::number(r.employees.TotalEmp); }),
    Form::close(6, "TotEmpDetails"),
    Form::close(4, "ScheduleFBI"),
    Form::open(4, "ScheduleFB"),
    Form::rows(benefits),
    Form::value(6, "ValueOfFringeBenefit", [](const R &r) { return NumberText(r.FBTTotalValue); }),
    Form::value(6, "ValueOfFBIf1OfSchFBIisNo",
                [](const R &r) { return totalWhere(!r.employees.EmpBoth, r.FBTTotalValue); }),
    Form::value(6, "ValueOfFBIf2OfSchFBIisYes",
                [](const R &r) { return totalWhere(r.employees.EmpBoth && r.employees.SepBooks, r.FBTTotalValue); }),
    Form::value(6, "ValueOfFBIf2OfSchFBIisNo",
                [](const R &r) { return totalWhere(r.employees.EmpBoth && !r.employees.SepBooks, r.FBTTaxableValue); }),
    Form::value(6, "TotValueOfFB", [](const R &r) { return NumberText(r.FBTTaxableValue); }),
    Form::close(4, "ScheduleFB"),
    Form::open(4, "ScheduleFBT", hasPayments),
    Form::rows(payments),
    Form::close(4, "ScheduleFBT", hasPayments),
    Form::close(2, "ITR8FORM:ITR8"),
};

// --- the root ---

/// An attribute, its value below the department's name unless it is whole (`own`).
QString attribute(const char *name, const char *path, bool own = false)
{
    return u' ' + QString::fromLatin1(name) + QStringLiteral("=\"") + QString::fromLatin1(own ? "" : efilingNamespace) +
           QString::fromLatin1(path) + u'"';
}

const QString instance = attribute("xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance", true);

QString otherForms()
{
    return attribute("xmlns:ITR5FORM", "/ITR5") + attribute("xmlns:ITR6FORM", "/ITR6") +
           attribute("xmlns:ITR8FORM", "/ITR8");
}

/// The order of the attributes, the line break and the fixed path are what the department's own files have.
QString rootOf(int year)
{
    constexpr int second = 2008;
    if (year < second)
        return QStringLiteral("<ITRETURN:ITR") + attribute("xmlns", "/main") + attribute("xmlns:ITR8FORM", "/ITR8") +
               attribute("xmlns:ITRETURN", "/main") + attribute("xmlns:ITRForm", "/Corpmaster") + instance +
               attribute("xsi:schemaLocation", "/main CorpITRMain.xsd") + u'>';
    if (year == second)
        return QStringLiteral("<ITRETURN:ITR") + attribute("xsi:schemaLocation", "/main CorpITRMain08.xsd") +
               attribute("xmlns:ITRForm", "/Corpmaster") + otherForms() + attribute("xmlns:ITRETURN", "/main") +
               instance + u'>';
    return QStringLiteral("<ITR") + attribute("xmlns", "/main") + attribute("xmlns:n1", "/") +
           attribute("xmlns:ITRForm", "/Corpmaster") + otherForms() + instance +
           attribute("xsi:schemaLocation", "/main\r\nC:\\u01\\itportal\\itr\\schema\\AY09-10\\CorpITRMain09.xsd") +
           u'>';
}

} // namespace

QByteArray Itr8File(const FiledReturn &file)
{
    FileText text("ITRForm:");
    text.line(QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    text.line(rootOf(file.form.TYear));
    WriteElements(text, lines, file);
    text.line(QString::fromLatin1(isNewForm(file) ? "</ITR>" : "</ITRETURN:ITR>"));
    return text.bytes();
}
