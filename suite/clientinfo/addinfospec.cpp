#include "suite/clientinfo/addinfospec.h"

namespace {

constexpr int wardLength = 100;
constexpr int officerLength = 50;
constexpr int receiptLength = 50;
constexpr int textLength = 100;

const char *const sections = "115WD(1), on or before the due date|115WD(3), after the due date|"
                             "115WD(2), in response to a notice|115WH, escaped assessment";

FieldGroup officeGroup(ReturnForm form)
{
    FieldGroup group{"Assessing Officer", {{"Ward", "&Ward/Circle/Range", FieldKind::Text, wardLength}}};
    if (form == ReturnForm::Form3B) {
        group.fields.push_back({"OldWard", "&Former Ward", FieldKind::Text, wardLength});
        group.fields.push_back({"ChAdd", "Address has c&hanged", FieldKind::Flag});
    }
    group.fields.push_back({"areacd", "&Area Code", FieldKind::Text, officerLength});
    group.fields.push_back({"aotyp", "AO &Type", FieldKind::Text, officerLength});
    group.fields.push_back({"aorng", "&Range Code", FieldKind::Text, officerLength});
    group.fields.push_back({"aono", "AO N&o.", FieldKind::Text, officerLength});
    return group;
}

FieldGroup returnGroup()
{
    return {"Return",
            {{"Section", "Filed under &Section", FieldKind::Choice, 0, nullptr, true, sections},
             {"RevRet", "Revised ret&urn", FieldKind::Flag},
             {"RevRecNo", "Receipt No. of the original", FieldKind::Text, receiptLength, "RevRet"},
             {"RevRecDt", "Date of the original", FieldKind::Date, 0, "RevRet"},
             {"RetDt", "&Date of this return", FieldKind::Date},
             {"RetAckNo", "Acknow&ledgement No.", FieldKind::Text, textLength}}};
}

FieldGroup businessGroup()
{
    return {"Nature of Business and Audit",
            {{"NOB", "Nature of business", FieldKind::Digits, 0, nullptr, true,
              "Manufacturing|Trading|Manufacturing-cum-trading|Services|Profession|Others"},
             {"Ac44AA", "Liable to maintain accounts under section 44AA", FieldKind::Flag},
             {"Ac44AB", "Liable to audit under section 44AB(a/b)", FieldKind::Flag},
             {"Dt44AB", "Date of that audit report", FieldKind::Date, 0, "Ac44AB"},
             {"Ac44ABC", "Liable to audit under section 44AB(c)", FieldKind::Flag},
             {"Dt44ABC", "Date of that audit report", FieldKind::Date, 0, "Ac44ABC"}}};
}

FieldGroup residenceGroup(ReturnForm form)
{
    FieldGroup group{"Residence", {{"PEIndia", "Non-resident with a &PE in India", FieldKind::Flag}}};
    if (form == ReturnForm::Form3B) {
        group.fields.push_back({"PEOut", "Resident with a PE outside India", FieldKind::Flag});
        group.fields.push_back({"DTRel1", "Tax relief claimed under an agreement", FieldKind::Flag});
        group.fields.push_back({"DTRel2", "Tax relief claimed without an agreement", FieldKind::Flag});
    }
    return group;
}

FieldGroup employeeGroup()
{
    return {"Employees",
            {{"EmpBoth", "&Employees both in and outside India", FieldKind::Flag},
             {"SepBooks", "Separate books of account are kept", FieldKind::Flag, 0, "EmpBoth"},
             {"IndiaEmp", "Based in India", FieldKind::Whole, 0, "EmpBoth"},
             {"TotalEmp", "Total employees", FieldKind::Whole, 0, "EmpBoth"}}};
}

FieldGroup interestGroup()
{
    return {"Interest",
            {{"Calc115WJ", "Compute interest u/s 115WJ(3)/(4)", FieldKind::Flag},
             {"Amt115WJ", "Amount, where typed", FieldKind::Amount, 0, "Calc115WJ", false},
             {"Calc115WJ5", "Compute interest u/s 115WJ(5)", FieldKind::Flag},
             {"Amt115WJ5", "Amount, where typed", FieldKind::Amount, 0, "Calc115WJ5", false},
             {"Calc115WK", "Compute interest u/s 115WK", FieldKind::Flag},
             {"Amt115WK", "Amount, where typed", FieldKind::Amount, 0, "Calc115WK", false},
             {"IntDt", "&Interest up to", FieldKind::DateOrToday}}};
}

} // namespace

std::vector<FieldGroup> AddInfoGroups(ReturnForm form)
{
    std::vector<FieldGroup> groups{officeGroup(form), returnGroup(), residenceGroup(form)};
    if (form == ReturnForm::Form3B)
        groups.push_back(businessGroup());
    groups.push_back(employeeGroup());
    groups.push_back(interestGroup());
    return groups;
}

std::vector<FieldGroup> MiscInfGroups()
{
    const int longest = textLength;
    const int membership = 50;
    const int pin = 10;
    return {{"Representative Assessee",
             {{"RepAss", "A &representative assessee acts", FieldKind::Flag},
              {"Var0_0", "&Name", FieldKind::Text, longest, "RepAss"},
              {"Var0_1", "P&AN", FieldKind::Pan, 0, "RepAss"},
              {"Var0_2", "Flat/Door/Block No.", FieldKind::Text, longest, "RepAss"},
              {"Var0_3", "Premises/Building Name", FieldKind::Text, longest, "RepAss"},
              {"Var0_4", "Road/Street", FieldKind::Text, longest, "RepAss"},
              {"Var0_5", "Area/Locality", FieldKind::Text, longest, "RepAss"},
              {"Var0_6", "Town/City/District", FieldKind::Text, longest, "RepAss"},
              {"Var0_7", "State", FieldKind::Text, longest, "RepAss"},
              {"Var0_8", "Pin Code", FieldKind::Text, pin, "RepAss"}}},
            {"Old Name",
             {{"Var2_0", "The name has &changed", FieldKind::Flag},
              {"Var2_1", "&Old name", FieldKind::Text, longest, "Var2_0"}}},
            {"Accounts and Audit",
             {{"Opt44AA", "Liable to maintain accounts under section &44AA", FieldKind::Flag},
              {"Opt44AB", "Liable to a&udit under section 44AB", FieldKind::Flag},
              {"Var1_0", "Name of the auditor", FieldKind::Text, longest},
              {"Var1_1", "Membership No.", FieldKind::Text, membership},
              {"Var1_2", "Name of the firm", FieldKind::Text, longest},
              {"Var1_3", "PAN of the firm", FieldKind::Pan},
              {"Var1_4", "Flat/Door/Block No.", FieldKind::Text, longest},
              {"Var1_5", "Premises/Building Name", FieldKind::Text, longest},
              {"Var1_6", "Road/Street", FieldKind::Text, longest},
              {"Var1_7", "Area/Locality", FieldKind::Text, longest},
              {"Var1_8", "Town/City/District", FieldKind::Text, longest},
              {"Var1_9", "State", FieldKind::Text, longest},
              {"Var1_10", "Pin Code", FieldKind::Text, pin},
              {"Var1_11", "&Date of the audit report", FieldKind::Date}}}};
}
