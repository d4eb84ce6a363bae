#include "efile/errorplace.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace {

const QString prefix = QStringLiteral("ITRForm:");

/// Whether a line holds one tag alone, which opens or closes an element with something in it.
bool isTagAlone(const QString &line)
{
    return line.startsWith(u'<') && line.indexOf(u'>') == line.size() - 1 && line.indexOf(u'/') != line.size() - 2;
}

QString tagOf(const QString &line)
{
    const qsizetype end = line.indexOf(u'>');
    return line.startsWith(u'<') && end > 0 ? line.mid(1, end - 1) : QString();
}

struct Head
{
    const char *element;
    const char *head;
    const char *correct = "";
};

constexpr const char *clientMaster = "Client Master Information";

constexpr Head headsOfForm3B[] = {
    {"", "Part-A or B"},
    {"bankaccounts", "Schedule 1.- Bank Accounts"},
    {"FBT_details", "Schedule 2.- Value of fringe benefits"},
    {"advance_FBT_details", "Schedule 3.- Advance Fringe Benefit Tax"},
    {"FBT_SATax_details", "Schedule 4.- Fringe Benefit Tax paid on Self-Assessment"},
};

constexpr Head headsOfItr8[] = {
    {"CreationInfo", "File Creation Info", "CreationInfo"},
    {"Form_ITR8", "Form Description", "Form_ITR8"},
    {"PersonalInfo", "Personal Information", clientMaster},
    {"OrgFirmInfo", "Organisation Information", clientMaster},
    {"AssesseeRep", "Representative Details", "Additional Information -> Representative Details"},
    {"FilingStatus", "Filing Details", clientMaster},
    {"AuditInfo", "Auditor Details", "Additional Information -> Auditor Information"},
    {"PartCAnd8B", "FBT Computation", "FBT Details"},
    {"ScheduleBA", "Bank Details", "Additional Information -> Bank Details"},
    {"ScheduleFBI", "FBT Information", "FBT Details"},
    {"ScheduleFB", "FBT Details", "FBT Details"},
    {"ScheduleFBT", "Payment of FBT", "Challan Details -> Advance/Self-Assessment Tax"},
};

template<std::size_t count>
ErrorSource headOf(const Head (&heads)[count], const QString &element)
{
    const auto *found = std::find_if(std::begin(heads), std::end(heads),
                                     [&element](const Head &head) { return element == QLatin1String(head.element); });
    if (found == std::end(heads))
        return {};
    return {QString::fromLatin1(found->head), QString::fromLatin1(found->correct)};
}

/// The element of the later form by which its parts are told apart.
QString decisiveElement(const QStringList &parts)
{
    if (!parts.value(1).startsWith(prefix))
        return {};
    const auto own = [&parts](int at) {
        return parts.value(at).startsWith(prefix) ? parts.value(at).mid(prefix.size()) : QString();
    };
    if (own(1) != u"PartA_GEN1")
        return own(1);
    return own(2) == u"FilingStatus" && own(3) == u"AssesseeRep" ? own(3) : own(2);
}

// --- where values are typed ---

constexpr const char *pan = "five letters, four digits, one letter";
constexpr const char *amount = "whole rupees without a sign, at most 14 digits";
constexpr const char *balance = "whole rupees, at most 14 digits";
constexpr const char *day = "a date";

struct Row
{
    const char *element;
    ReturnScreen screen;
    const char *field;
    const char *caption;  ///< as the screen has it
    const char *expected; ///< by the department
};

using enum ReturnScreen;

/// The one table from an element of either form to its screen and field.
constexpr Row rows[] = {
    // the employer
    {"SurNameOrOrgName", Client, "txtfields_1", "Name", "1 to 75 characters"},
    {"name", Client, "txtfields_1", "Name", "1 to 75 characters"},
    {"PAN", Client, "txtfields_2", "PAN", pan},
    {"pan", Client, "txtfields_2", "PAN", pan},
    {"ResidenceNo", Client, "txtfields_3", "Flat/Door/Block No.", "1 to 50 characters"},
    {"Address2", Client, "txtfields_3", "Flat/Door/Block No.", "1 to 50 characters"},
    {"ResidenceName", Client, "txtfields_4", "Premises/Building Name", "at most 50 characters"},
    {"Address3", Client, "txtfields_4", "Premises/Building Name", "at most 50 characters"},
    {"RoadOrStreet", Client, "txtfields_5", "Road/Street", "at most 50 characters"},
    {"Address4", Client, "txtfields_5", "Road/Street", "at most 50 characters"},
    {"LocalityOrArea", Client, "txtfields_6", "Area/Locality", "1 to 50 characters"},
    {"Address5", Client, "txtfields_6", "Area/Locality", "1 to 50 characters"},
    {"CityOrTownOrDistrict", Client, "txtfields_7", "Town/City/District", "1 to 50 characters"},
    {"City", Client, "txtfields_7", "Town/City/District", "1 to 50 characters"},
    {"StateCode", Client, "Combo1", "State", "one of the list of states"},
    {"State", Client, "Combo1", "State", "one of the list of states"},
    {"PinCode", Client, "txtfields_9", "Pin Code", "six digits"},
    {"Pin", Client, "txtfields_9", "Pin Code", "six digits"},
    {"STDcode", Client, "txtfields_10", "STD Code", "at most five digits"},
    {"PhoneNo", Client, "txtfields_11", "Telephone Nos.", "one number, at most ten digits"},
    {"Telno", Client, "txtfields_11", "Telephone Nos.", "one number, at most ten digits"},
    {"EmailAddress", Client, "txtfields_18", "Email", "name@host.domain, at most 125 characters"},
    {"emailid", Client, "txtfields_18", "Email", "name@host.domain, at most 125 characters"},
    {"DateOFFormOrIncorp", Client, "txtfields_17", "Date of Incorporation/Formation/Birth", day},
    {"doi", Client, "txtfields_17", "Date of Incorporation/Formation/Birth", day},
    {"StatusOrCompanyType", Client, "cbostat", "Status", "one of the list"},
    {"status", Client, "cbostat", "Status", "one that the form knows"},
    {"DomesticCompFlg", Client, "cbostat", "Status", "one of the list"},
    {"ResidentialStatus", Client, "cboresst", "Residential Status", "one of the list"},
    {"resistatus", Client, "cboresst", "Residential Status", "one of the list"},
    // the year's additional information
    {"DesigOfficerWardorCircle", AddInfo, "txtWard", "Ward/Circle/Range", "1 to 75 characters"},
    {"curpplrname", AddInfo, "txtWard", "Ward/Circle/Range", "at most 75 characters"},
    {"oldpplrname", AddInfo, "txtOldWard", "Former Ward", "at most 75 characters"},
    {"AddrChanged", AddInfo, "chkChAdd", "Address has changed", "yes or no"},
    {"AreaCode", AddInfo, "txtareacd", "Area Code", "three letters"},
    {"area_cd", AddInfo, "txtareacd", "Area Code", "three letters"},
    {"AOType", AddInfo, "txtaotyp", "AO Type", "one or two letters"},
    {"ao_typ", AddInfo, "txtaotyp", "AO Type", "one or two letters"},
    {"RangeCode", AddInfo, "txtaorng", "Range Code", "at most three digits"},
    {"range_cd", AddInfo, "txtaorng", "Range Code", "three digits"},
    {"AONo", AddInfo, "txtaono", "AO No.", "at most two digits"},
    {"ao_no", AddInfo, "txtaono", "AO No.", "two digits"},
    {"FBTSec", AddInfo, "cboSection", "Filed under Section", "one of the list"},
    {"returnofFBTcode", AddInfo, "cboSection", "Filed under Section", "one of the list"},
    {"ReturnType", AddInfo, "chkRevRet", "Revised return", "yes or no"},
    {"returntype", AddInfo, "chkRevRet", "Revised return", "yes or no"},
    {"ReceiptNo", AddInfo, "txtRevRecNo", "Receipt No. of the original", "1 to 15 characters"},
    {"receiptno", AddInfo, "txtRevRecNo", "Receipt No. of the original", "1 to 15 characters"},
    {"OrigRetFiledDate", AddInfo, "txtRevRecDt", "Date of the original", day},
    {"receiptdate", AddInfo, "txtRevRecDt", "Date of the original", day},
    {"apply_44aa", AddInfo, "chkAc44AA", "Liable to maintain accounts under section 44AA", "yes or no"},
    {"apply_44AB_a_b", AddInfo, "chkAc44AB", "Liable to audit under section 44AB(a/b)", "yes or no"},
    {"dateofauditreport44AB_a_b", AddInfo, "txtDt44AB", "Date of that audit report", day},
    {"apply_44AB_c", AddInfo, "chkAc44ABC", "Liable to audit under section 44AB(c)", "yes or no"},
    {"dateofauditreport44AB_c", AddInfo, "txtDt44ABC", "Date of that audit report", day},
    {"NRI_PE", AddInfo, "chkPEIndia", "Non-resident with a PE in India", "yes or no"},
    {"non_res_PE_flg", AddInfo, "chkPEIndia", "Non-resident with a PE in India", "yes or no"},
    {"res_PE_flg", AddInfo, "chkPEOut", "Resident with a PE outside India", "yes or no"},
    {"EmployeesInOutIndiaFlg", AddInfo, "chkEmpBoth", "Employees both in and outside India", "yes or no"},
    {"employee_in_out_india", AddInfo, "chkEmpBoth", "Employees both in and outside India", "yes or no"},
    {"SeparateAcntMaintainForIndiaForeignFlg", AddInfo, "chkSepBooks", "Separate books of account are kept",
     "yes or no"},
    {"Sep_acc_book_flg", AddInfo, "chkSepBooks", "Separate books of account are kept", "yes or no"},
    {"NoOfIndianEmps", AddInfo, "txtIndiaEmp", "Employees based in India", "a whole number, not below 0"},
    {"No_of_indian_emp", AddInfo, "txtIndiaEmp", "Employees based in India", "a whole number, not below 0"},
    {"NoOfOutsideIndiaEmps", AddInfo, "txtTotalEmp", "Total employees", "not fewer than those based in India"},
    {"TotNoOfEmps", AddInfo, "txtTotalEmp", "Total employees", "a whole number, not below 0"},
    {"Total_emp_cnt", AddInfo, "txtTotalEmp", "Total employees", "a whole number, not below 0"},
    {"DefaultPayUs115WJ3", AddInfo, "txtAmt115WJ", "Interest under section 115WJ", amount},
    {"interest_115WJ", AddInfo, "txtAmt115WJ", "Interest under section 115WJ", amount},
    {"DefaultFileUs115WK", AddInfo, "txtAmt115WK", "Interest under section 115WK", amount},
    {"interest_115WK", AddInfo, "txtAmt115WK", "Interest under section 115WK", amount},
    // what the later form asks beside it
    {"OrgOldName", MiscInf, "txtVar2_1", "Old name", "1 to 75 characters"},
    {"AsseseeRepFlg", MiscInf, "chkRepAss", "A representative assessee acts", "yes or no"},
    {"RepName", MiscInf, "txtVar0_0", "Name of the representative", "1 to 50 characters"},
    {"RepAddress", MiscInf, "txtVar0_2", "Address of the representative", "1 to 75 characters in all"},
    {"RepPAN", MiscInf, "txtVar0_1", "PAN of the representative", pan},
    {"ITR8FORM:LiableSec44AAflg", MiscInf, "chkOpt44AA", "Liable to maintain accounts under section 44AA", "yes or no"},
    {"ITR8FORM:LiableSec44ABflg", MiscInf, "chkOpt44AB", "Liable to audit under section 44AB", "yes or no"},
    {"AuditorName", MiscInf, "txtVar1_0", "Name of the auditor", "1 to 50 characters"},
    {"AuditorMemNo", MiscInf, "txtVar1_1", "Membership No.", "six digits"},
    {"AudFrmName", MiscInf, "txtVar1_2", "Name of the firm", "1 to 75 characters"},
    {"AudFrmPAN", MiscInf, "txtVar1_3", "PAN of the firm", pan},
    {"AuditDate", MiscInf, "txtVar1_11", "Date of the audit report", day},
    // bank accounts
    {"BankAccountNumber", Banks, "txtaccount", "Account No.", "1 to 17 characters, of the default account"},
    {"accountnumber", Banks, "txtaccount", "Account No.", "1 to 17 characters"},
    {"EcsRequired", Banks, "chkecs", "Electronic clearing (ECS)", "yes or no"},
    {"ecsflag", Banks, "chkecs", "Electronic clearing (ECS)", "yes or no"},
    {"MICRCode", Banks, "txtmicr", "MICR Code", "nine digits"},
    {"micrcode", Banks, "txtmicr", "MICR Code", "nine digits"},
    {"BankAccountType", Banks, "cbotype", "Type of Account", "one of the list"},
    {"accounttype", Banks, "cbotype", "Type of Account", "one of the list"},
    {"branchaddress", Banks, "txtaddress", "Address of the Branch", "at most 120 characters"},
    {"bankname", Banks, "txtbank", "Name of the Bank", "1 to 75 characters"},
    // challans
    {"NameOfBank", Challans, "cbobsrcode", "Bank", "a name of 1 to 25 characters"},
    {"NameOfBranch", Challans, "cbobsrcode", "Bank", "a branch of 1 to 25 characters"},
    {"BSRCode", Challans, "cbobsrcode", "Bank", "with a BSR code of seven digits"},
    {"bsrcode", Challans, "cbobsrcode", "Bank", "with a BSR code of seven digits"},
    {"DateDep", Challans, "txtfields_3", "Date of the challan", day},
    {"depositdate", Challans, "txtfields_3", "Date of the challan", day},
    {"SrlNoOfChaln", Challans, "txtfields_2", "Challan No.", "one to five digits"},
    {"challanseqno", Challans, "txtfields_2", "Challan No.", "one to five digits"},
    {"Amt", Challans, "txtfields_4", "Amount of the challan", amount},
    {"adv_FBT", Challans, "txtfields_4", "Amount of the challan", amount},
    {"FBTSATax", Challans, "txtfields_4", "Amount of the challan", amount},
    {"AdvanceFBT", Challans, "", "Advance tax paid", amount},
    {"advance_FBT_paid", Challans, "", "Advance tax paid", amount},
    {"ADV_TAX_SCHD_22", Challans, "", "Advance tax paid", amount},
    {"SelfAssessmentFBT", Challans, "", "Self-assessment tax paid", amount},
    {"FBT_SATax_Paid", Challans, "", "Self-assessment tax paid", amount},
    {"SLF_TAX_SCHD_23", Challans, "", "Self-assessment tax paid", amount},
    {"TotalTaxesPaid", Challans, "", "Taxes paid", amount},
    {"balanceFBT", Challans, "", "Balance", balance},
    {"FBT_Payable_Refundable", Challans, "", "Balance", balance},
    {"FBT_ADV_TAX_Q1", Challans, "", "Advance tax of the first quarter", amount},
    {"FBT_ADV_TAX_Q2", Challans, "", "Advance tax of the second quarter", amount},
    {"FBT_ADV_TAX_Q3", Challans, "", "Advance tax of the third quarter", amount},
    {"FBT_ADV_TAX_Q4", Challans, "", "Advance tax of the fourth quarter", amount},
    // expenses
    {"AmtOrValueOfExpenditure", Expenses, "", "Expenses Amount", amount},
    {"Expenditure_value", Expenses, "", "Expenses Amount", amount},
    {"ValueOfFB", Expenses, "", "Value of Fringe Benefit", amount},
    {"FBTValue", Expenses, "", "Value of Fringe Benefit", amount},
    {"FBTQ1", Expenses, "", "Value of the first quarter", amount},
    {"FBTQ2", Expenses, "", "Value of the second quarter", amount},
    {"FBTQ3", Expenses, "", "Value of the third quarter", amount},
    {"FBTQ4", Expenses, "", "Value of the fourth quarter", amount},
    {"valueoftotalFBT", Expenses, "", "Value of fringe benefits", amount},
    {"FBTPayable", Expenses, "", "Fringe Benefit Tax", amount},
    {"FBT_Surcharge", Expenses, "", "Surcharge", amount},
    {"FBT_EduCess", Expenses, "", "Education cess", amount},
    {"totalFBTPayable", Expenses, "", "Tax with surcharge and cess", amount},
    // the return screen
    {"AssesseeVerName", Return, "txtfields_0", "Name of the signatory", "1 to 75 characters"},
    {"FatherName", Return, "txtfields_1", "Father's name", "1 to 25 characters"},
    {"AssesseeVerPAN", Return, "txtfields_2", "PAN of the signatory", pan},
    {"Capacity", Return, "txtfields_3", "Capacity", "1 to 25 characters"},
    {"Place", Return, "txtfields_4", "Place", "1 to 50 characters"},
    {"Date", Return, "txtdate", "Date Of Return", "a date not before the assessment year"},
    {"XMLCreationDate", Return, "txtdate", "Date Of Return", "a date not before the assessment year"},
};

/// Where the values of a part of the form are typed that has no field of its own.
constexpr Row parts[] = {
    {"OrgFirmInfo", Client, "txtfields_1", "", ""},
    {"FilingStatus", AddInfo, "txtWard", "", ""},
    {"AuditInfo", MiscInf, "txtVar1_0", "", ""},
    {"ScheduleBA", Banks, "", "", ""},
    {"ScheduleFBI", AddInfo, "chkEmpBoth", "", ""},
    {"PartCAnd8B", Expenses, "", "", ""},
    {"ScheduleFB", Expenses, "", "", ""},
    {"ScheduleFBT", Challans, "", "", ""},
    {"Verification", Return, "txtfields_0", "", ""},
    {"bankaccounts", Banks, "", "", ""},
    {"FBT_details", Expenses, "", "", ""},
    {"advance_FBT_details", Challans, "", "", ""},
    {"FBT_SATax_details", Challans, "", "", ""},
};

FieldPlace placeOf(const Row &row)
{
    const QString caption = QString::fromLatin1(row.caption);
    return {row.screen, QString::fromLatin1(row.field),
            caption.isEmpty() ? QString() : caption + QStringLiteral(": ") + QString::fromLatin1(row.expected)};
}

} // namespace

void ElementPath::take(const QString &line, bool counts)
{
    const QString trimmed = line.trimmed();
    const QString tag = tagOf(trimmed);
    const bool closes = tag.startsWith(u'/');
    m_element = closes ? tag.mid(1) : tag;
    if (counts && isTagAlone(trimmed)) {
        if (closes)
            m_open.remove(m_element + u'\\');
        else
            m_open += m_element + u'\\';
    }
    m_path = closes ? m_open + m_element + u'\\' : m_open;
}

ErrorSource SourceOfError(FileForm form, const QString &path)
{
    const QStringList elements = path.split(u'\\');
    if (form == FileForm::Itr8)
        return headOf(headsOfItr8, decisiveElement(elements));
    return elements.value(1) == u"formno3b" ? headOf(headsOfForm3B, elements.value(2)) : ErrorSource();
}

std::optional<FieldPlace> PlaceOfElement(const QString &element, const QString &path)
{
    for (const Row &row : rows) {
        if (element == QLatin1String(row.element))
            return placeOf(row);
    }
    const QStringList around = QString(path).remove(prefix).split(u'\\');
    for (const Row &row : parts) {
        if (around.contains(QLatin1String(row.element)))
            return placeOf(row);
    }
    return std::nullopt;
}

QString ScreenName(ReturnScreen screen)
{
    switch (screen) {
    case Client:
        return QStringLiteral("Employer Details");
    case AddInfo:
        return QStringLiteral("Additional Information");
    case MiscInf:
        return QStringLiteral("Miscellaneous Information");
    case Banks:
        return QStringLiteral("Bank Accounts");
    case Challans:
        return QStringLiteral("Challan");
    case Expenses:
        return QStringLiteral("FBT Details");
    case Return:
        return QStringLiteral("Return Form");
    }
    return {};
}
