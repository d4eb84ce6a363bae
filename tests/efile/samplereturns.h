#pragma once

#include "efile/filedreturn.h"

/// Returns that differ in all that a file can have or leave out.

inline BankAccount account(int number, const QString &type, const QString &micr, bool ecs)
{
    BankAccount made;
    made.number = number;
    made.bank = QStringLiteral("STATE BANK");
    made.address = QStringLiteral("FORT, MUMBAI");
    made.micr = micr;
    made.type = type;
    made.account = QStringLiteral("0010%1").arg(number);
    made.ecs = ecs;
    return made;
}

inline ScheduledPayment payment(bool advance, int quarter, const QDate &date, double amount)
{
    ScheduledPayment made;
    made.advance = advance;
    made.quarter = quarter;
    made.bank = QStringLiteral("STATE BANK");
    made.branch = QStringLiteral("FORT");
    made.bsrCode = QStringLiteral("0001234");
    made.date = date;
    made.challanNo = QStringLiteral("00077");
    made.amount = amount;
    return made;
}

/// What all of them have: a resident employer with an address in full, expenses in the lines 3 and 4.
inline FiledReturn plainReturn(int year)
{
    FiledReturn file;
    ReturnForm &form = file.form;
    form.TYear = year;
    form.FormNm = ReturnFormOf(year);
    form.RetCode = QStringLiteral("21");
    form.ClName = QStringLiteral("ALPHA LTD");
    form.ClPAN = QStringLiteral("ABCDE1234F");
    form.ClAddr = {QString(), "12", "TOWER", "M G ROAD", "FORT", "MUMBAI", "MAHARASHTRA", "400001"};
    form.BankInf = {QString(), "STATE BANK", "400002001", "FORT", "SAVINGS", "00101", "Y"};
    form.status = {QStringLiteral("17PVT"), QStringLiteral("13")};
    form.client[ClientRecord::Code] = QStringLiteral("A1");
    form.client[ClientRecord::Std] = QStringLiteral("022");
    form.client[ClientRecord::Telephone] = QStringLiteral("22223333");
    form.client[ClientRecord::Born] = QStringLiteral("01/02/1990");
    form.client[ClientRecord::Email] = QStringLiteral("tax@alpha.in");
    form.client[ClientRecord::Resident] = QStringLiteral("0");
    form.addInfo = {{"ward", "5(1)"}, {"areacd", "MUM"}, {"aotyp", "W"}, {"aorng", "007"}, {"aono", "01"}};
    form.fields.signatory = {QStringLiteral("A SHAH"), 0, QStringLiteral("B SHAH"), QStringLiteral("PQRST6789Z"),
                             QStringLiteral("DIRECTOR")};
    form.fields.place = QStringLiteral("MUMBAI");
    form.fields.date = QStringLiteral("30/09/%1").arg(year);
    file.stateCode = QStringLiteral("19");
    file.FBTExpAmt[3] = 50000;
    file.FBTValue[3] = 10000;
    file.FBTExpAmt[4] = 20000;
    file.FBTValue[4] = 4000;
    file.FBTQtrValue = {0, 10000, 0, 4000, 0};
    file.FBTTotalValue = file.FBTTaxableValue = 14000;
    form.figures.tax = {4200, 420, 92, 46};
    form.figures.sums = SumsOfReturn(form.figures.tax, {}, {});
    return file;
}

inline void setPaid(FiledReturn &file, const TaxesPaid &paid, double Int115WJ = 0, double Int115WJ5 = 0,
                    double Int115WK = 0)
{
    InterestOfYear interest;
    interest.Int115WJ = Int115WJ;
    interest.Int115WJ5 = Int115WJ5;
    interest.Int115WK = Int115WK;
    file.form.figures.sums = SumsOfReturn(file.form.figures.tax, interest, paid);
}

/// A.Y. 2006-07, everything there: revised, audited twice, all natures of business, two accounts, payments of both kinds.
inline FiledReturn fullForm3B()
{
    FiledReturn file = plainReturn(2006);
    for (const char *flag : {"chadd", "revret", "ac44aa", "ac44ab", "ac44abc", "peindia", "dtrel1", "dtrel2", "peout"})
        file.form.addInfo[QLatin1String(flag)] = QStringLiteral("1");
    file.form.addInfo[QStringLiteral("oldward")] = QStringLiteral("4(2)");
    file.form.addInfo[QStringLiteral("revrecno")] = QStringLiteral("R/17");
    file.form.addInfo[QStringLiteral("revrecdt")] = QStringLiteral("31/07/06");
    file.form.addInfo[QStringLiteral("nob")] = QStringLiteral("123456");
    file.form.addInfo[QStringLiteral("dt44ab")] = QStringLiteral("15/08/2006");
    file.form.addInfo[QStringLiteral("dt44abc")] = QStringLiteral("16/08/2006");
    file.form.client[ClientRecord::Resident] = QStringLiteral("1");
    for (std::size_t line = 1; line < file.FBTExpAmt.size(); ++line) {
        file.FBTExpAmt.at(line) = 100.0 * static_cast<double>(line);
        file.FBTValue.at(line) = 10.0 * static_cast<double>(line);
    }
    file.employees = {true, true, 40, 50};
    file.accounts = {account(1, QStringLiteral("Savings"), QString(), false),
                     account(2, QStringLiteral("CASH CREDIT"), QStringLiteral("400002002"), true)};
    file.advance = {payment(true, 1, QDate(2005, 9, 14), 3000), payment(true, 4, QDate(2006, 3, 20), 500)};
    file.other = {payment(false, 0, QDate(2006, 7, 30), 700)};
    file.quarterPaid = {0, 3000, 0, 0, 500};
    setPaid(file, {3500, 700}, 10.5, 2, 30);
    return file;
}

/// A.Y. 2006-07, with as little as a file can have.
inline FiledReturn leanForm3B()
{
    FiledReturn file = plainReturn(2006);
    file.form.ClAddr[7].clear();
    file.form.addInfo = {};
    file.form.client[ClientRecord::Telephone].clear();
    file.form.client[ClientRecord::Email].clear();
    file.FBTExpAmt = {};
    file.FBTValue = {};
    return file;
}

/// A.Y. 2007-08, lean: an association without e-mail, telephone, building and street, nothing paid, money back.
inline FiledReturn lean2007()
{
    FiledReturn file = plainReturn(2007);
    file.form.status = {QStringLiteral("16A"), QStringLiteral("07")};
    file.form.ClAddr[2].clear();
    file.form.ClAddr[3].clear();
    file.form.client[ClientRecord::Std].clear();
    file.form.client[ClientRecord::Telephone].clear();
    file.form.client[ClientRecord::Email].clear();
    file.form.addInfo = {{"ward", "5(1)"}};
    file.form.fields.details.refundMode = 1;
    setPaid(file, {9758, 0});
    return file;
}

/// A.Y. 2008-09, everything there: a foreign company, revised, represented, audited, renamed, deposit of the refund.
inline FiledReturn full2008()
{
    FiledReturn file = plainReturn(2008);
    file.form.status = {QStringLiteral("18FC"), QStringLiteral("15")};
    file.form.client[ClientRecord::Resident] = QStringLiteral("1");
    file.form.addInfo = {{"ward", "5(1)"}, {"areacd", "DEL"}, {"aotyp", "CC"},    {"aorng", "7"},
                         {"aono", "1"},    {"revret", "1"},   {"revrecno", "55"}, {"revrecdt", "31/07/2008"},
                         {"peindia", "1"}};
    file.form.miscInf = {
        {"repass", "1"},          {"var0_0", "R MEHTA"},   {"var0_1", "AAAPM1111K"}, {"var0_2", "1"},
        {"var0_4", "LINK ROAD"},  {"var0_7", "DELHI"},     {"var0_8", "110001"},     {"opt44aa", "1"},
        {"opt44ab", "1"},         {"var1_0", "K RAO"},     {"var1_1", "012345"},     {"var1_2", "RAO AND CO"},
        {"var1_3", "AAAFR2222L"}, {"var1_11", "20/08/08"}, {"var2_0", "1"},          {"var2_1", "BETA LTD"}};
    file.form.BankInf[4] = QStringLiteral("Current Account");
    file.form.fields.details.refundMode = 2;
    for (std::size_t line = 1; line < file.FBTExpAmt.size(); ++line) {
        file.FBTExpAmt.at(line) = 1000.0 + static_cast<double>(line);
        file.FBTValue.at(line) = 100.0 + static_cast<double>(line);
    }
    file.employees = {true, false, 30, 40};
    file.FBTTaxableValue = 10500;
    file.advance = {payment(true, 2, QDate(2007, 9, 15), 9000)};
    file.other = {payment(false, 0, QDate(2008, 9, 29), 1)};
    file.other.front().bank.clear();
    file.other.front().branch.clear();
    // 10.5 and 0.5 of interest: 10 and 0 as lines, 11 as their total.
    setPaid(file, {9000, 1}, 10.5, 0, 0.5);
    return file;
}

/// A.Y. 2009-10: the third root, the signatory's PAN, an empty e-mail, separate books, tax to pay.
inline FiledReturn plain2009()
{
    FiledReturn file = plainReturn(2009);
    file.form.client[ClientRecord::Email].clear();
    file.form.client[ClientRecord::Resident] = QStringLiteral("2");
    file.form.miscInf = {{"repass", "0"}, {"opt44ab", "0"}};
    file.employees = {true, true, 3, 4};
    file.advance = {payment(true, 1, QDate(2008, 6, 15), 1000)};
    setPaid(file, {1000, 0});
    return file;
}
