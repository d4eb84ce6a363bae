#include "db/schema.h"

#include "platform/sqltext.h"

namespace {

constexpr const char *headColumns = "HeadId Int(11), Section Varchar(50), HeadDesc Varchar(255)";
constexpr const char *itemColumns = "SrNo Int(11), HeadId Int(11), ExpDesc Varchar(255)";
constexpr const char *rateColumns = "SrNo Int(11), NatId Int(11), IntRt Double";

constexpr TableShape yearlyTables[] = {
    {"FBT_Head", headColumns},
    {"FBT_ExpHead", itemColumns},
    {"FBT_ExpRate", rateColumns},
};

constexpr TableShape moduleTables[] = {
    {"FBT_SignDet", "Code_no Varchar(50), AsYr Int(11), Nm Varchar(100), Relat Char(1), FaNm Varchar(100), "
                    "PAN Varchar(10), Desig Varchar(100)"},
    {"FBT_Info", "Code_no Varchar(50), Name Varchar(100), PAN Varchar(10), Flat Varchar(100), Building Varchar(100), "
                 "Street Varchar(100), Area Varchar(100), City Varchar(50), State Varchar(50), Pin Varchar(10), "
                 "STD Varchar(10), TelNo Varchar(50), ClStatus Int(11), AuditC Char(1), Busnat LongText, "
                 "SignP Varchar(100), SignD Varchar(100), Doi Varchar(10) Default '', Email Varchar(255) Default '', "
                 "ResSt Char(1) Default '0', SexM Char(1) Default '0', FName Varchar(100) Default '', "
                 "SurApp Varchar(255) Default ''"},
    {"FBT_Head", headColumns},
    {"FBT_ExpHead", itemColumns},
    {"FBT_ExpRate", rateColumns},
    {"FBT_Nature", "Srno Int(11), NatDesc Varchar(255)"},
    {"FBT_Detail", "Code_No Varchar(50), Tyear Int(11), Quarter Int(11), NatId Int(11), SrNo Int(11), ExpId Int(11), "
                   "Amt Double"},
    {"FBT_Challan",
     "Code_No varchar(50), t_year int(11), quarter int(11), srno int(11), paytype varchar(100), "
     "challan_dt varchar(25), ITAmt double, SCAmt double, ECAmt Double, IntAmt Double, PenAmt double, OthAmt double, "
     "TotAmt double, paymode char(50), chq_no varchar(50), chq_dt varchar(25), bank_nm varchar(255), "
     "ChallanNo VarChar(50) Default '', BSRCode Int(11) Default 0, ECAmt1 Double Default 0"},
    {"DueDt_Master", "AssYear Int(11), StatC Int(11), DueDt Varchar(10), RevDueDt Varchar(10), "
                     "Notification Varchar(255)"},
    {"ChallanDt_Master", "AssYear Int(11), Quarter Int(11), ChDt Varchar(10), RevChDt Varchar(10), "
                         "Notification Varchar(255)"},
    {"AdvTaxDueDt", "TYear Int(11), Dt1 Char(10), Dt2 Char(10), Dt3 Char(10), Dt4 Char(10)"},
    {"FBT_MiscInf",
     "Code_No Varchar(50), TYear Int(11), RepAss Char(1), Var0_0 Varchar(100), Var0_1 Varchar(10), "
     "Var0_2 Varchar(100), Var0_3 Varchar(100), Var0_4 Varchar(100), Var0_5 Varchar(100), Var0_6 Varchar(100), "
     "Var0_7 Varchar(100), Var0_8 Varchar(10), Opt44AA Char(1), Opt44AB Char(1), Var1_0 Varchar(100), "
     "Var1_1 Varchar(50), Var1_2 Varchar(100), Var1_3 Varchar(10), Var1_4 Varchar(100), Var1_5 Varchar(100), "
     "Var1_6 Varchar(100), Var1_7 Varchar(100), Var1_8 Varchar(100), Var1_9 Varchar(100), Var1_10 Varchar(10), "
     "Var1_11 Varchar(10), Var2_0 Char(1), Var2_1 Varchar(100)"},
    {"FBT_RetDet", "Code_No Varchar(50), Tyear Int(11), EflNo Varchar(50), EflDt Varchar(10), TrpNm Varchar(255), "
                   "TrpId Varchar(50), TrpAmt Double, RefM Char(1)"},
    {"Temp_Disp", "code_no char(50), name char(50), status double"},
    {"FBT_SalDet", "Code_No Varchar(50), Tyear Int(11), Quarter Int(11), NatId Int(11), Amt Double"},
    {"bank_master", "bank_code_no int(11), bank_name varchar(255), branch varchar(255), branch_code varchar(255)"},
    {"FBT_AddInfo",
     "Code_No Varchar(50), Tyear Int(11), ChAdd Char(1), Ward Varchar(100), OldWard Varchar(100), Section Char(1), "
     "RevRet Char(1), RevRecNo Varchar(50), RevRecDt Varchar(10), NOB Char(10), Ac44AA Char(1), Ac44AB Char(1), "
     "Dt44AB Varchar(10), Ac44ABC Char(1), Dt44ABC Varchar(10), PEIndia Char(1), DTRel1 Char(1), DTRel2 Char(1), "
     "PEOut Char(1), EmpBoth Char(1), SepBooks Char(1), IndiaEmp Int(11), TotalEmp Int(11), RetDt Varchar(10), "
     "RetAckNo Varchar(100), areacd VarChar(50) Default '', aotyp VarChar(50) Default '', "
     "aorng VarChar(50) Default '', aono VarChar(50) Default '', Calc115WJ Char(1) Default '1', "
     "Amt115WJ Double Default 0, Calc115WK Char(1) Default '1', Amt115WK Double Default 0, "
     "Calc115WJ5 Char(1) Default '1', Amt115WJ5 Double Default 0, IntDt Varchar(10) Default ''"},
    {"FBT_BankDet", "Code_No Varchar(50), Yr Int(11), SrNo Int(11), BankNm Varchar(100), BankAdd Varchar(100), "
                    "MICR Varchar(20), AcTyp Varchar(50), AcNo Varchar(20), ECS TinyInt(4), DefBank Char(1)"},
    {"bill_se", "num int(11), series char(20), B_R tinyint(4), yr int(11), S_P tinyint(4)"},
    {"biller", "code_no varchar(50), nm varchar(50), h_no varchar(50), h_nm varchar(50), street varchar(50), "
               "city varchar(50), area varchar(50), state varchar(50), pin varchar(50), seri int(11), "
               "Ph1 VarChar(50), Ph2 VarChar(50), Fax VarChar(50), Mob VarChar(50), Email VarChar(100)"},
    {"table3", "NAME char(50), ADDRESS char(50), AREA char(50), CITY char(50), PINCODE char(50), "
               "DESIGNATION char(50), PNOO1 char(50), PNOO2 char(50), PNOR1 char(50), PNOR2 char(50), NO char(50), "
               "CNO tinyint(4), STR double, PASS char(50), AGBNO tinyint(4), AGRNO tinyint(4), PAOTP tinyint(4), "
               "A tinyint(4), StRegNo VarChar(255), MobNo Varchar(20)"},
    {"SRate",
     "Frm varchar(10), Rate double, yr int(11), mon int(11), dt int(11), ECess Double, ECess1 Double Default 0"},
    {"Bill_OpBal", "CompNm Varchar(50), Code_No Varchar(50), AsOnDt Varchar(10), Amount Double, Amount1 Double, "
                   "SVTAmt Double"},
    {"Bill_Type", "SrNo Int(11), Description VarChar(100), STaxApp Char(1)"},
    {"Bill_Main", "CompNm Varchar(50), FYr Int(11), Code_No VarChar(50), BillSrId Int(11), BillNo Int(11), "
                  "BillDt Date, Narr LongText, BillID Int(11)"},
    {"Bill_Det", "BillID Int(11), SrNo Int(11), Part VarChar(255), Yr Varchar(10), Typ Int(11), Amount Double, "
                 "STaxApp Char(1)"},
    {"Recp_Main", "CompNm Varchar(50), FYr Int(11), Code_No VarChar(50), RecpSrId Int(11), RecpNo Int(11), "
                  "RecpDt Date, Cash Double, PayMode Char(1), OthAmt Double, BankNm Varchar(100), "
                  "BankBr Varchar(100), ChqNo Varchar(20), ChqDt Varchar(10), Narr LongText, RecpID Int(11)"},
    {"Recp_Det", "RecpID Int(11), SrNo Int(11), BillID Int(11), Amount Double, Discount Double, TDS Double"},
};

} // namespace

std::span<const TableShape> ModuleTables()
{
    return moduleTables;
}

std::span<const TableShape> YearlyTables()
{
    return yearlyTables;
}

QString CreateStatement(const TableShape &table, const QString &suffix)
{
    return Sql("Create Table If Not Exists ", table.name, suffix, " (", table.columns, ")");
}
