#include "calc/interest.h"
#include "calc/interestlaw.h"
#include "calc/modfbtcalc.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "tests/support/caserow.h"
#include "tests/support/employer.h"
#include "tests/support/lawdatabase.h"

namespace {

constexpr int company = 15;
constexpr int firm = 3;
constexpr int association = 9;

QString rows(std::initializer_list<const char *> texts)
{
    return QStringList(texts.begin(), texts.end()).join("\r\n");
}

} // namespace

/// The interest worked out by hand, section by section. Payments are told as "A 15/06/2007 15000" (advance tax) or
/// "S ..." (self assessment), separated by commas; a date "-" is none.
class TestInterest : public QObject
{
    Q_OBJECT

    LawDatabase m_law;
    TestModule &m_module = m_law.module;

    void execute(const QString &statement) { QVERIFY2(Cnn->Execute(statement), qPrintable(statement)); }

    void client(int year, int status, double tax, const QString &payments)
    {
        for (const char *table : {"FBT_Info", "FBT_Challan", "FBT_AddInfo"})
            execute(Sql("Delete from ", table));
        employer(m_module.connection, "A1").status(status).natures({7});
        Base->code = "A1";
        Base->TYear = year;
        Base->status = status;
        ResetCalculation();
        FBTTax = tax;
        for (const QString &payment : payments.split(u',', Qt::SkipEmptyParts)) {
            const QStringList parts = payment.trimmed().split(u' ');
            const bool advance = parts[0] == u"A";
            ChallanRecord challan;
            challan.quarter = advance ? 1 : 0;
            challan.payType = PaymentTypes().at(advance ? 0 : 1);
            challan.date = parts[1] == u"-" ? QString() : parts[1];
            challan.TotAmt = parts[2].toDouble();
            QVERIFY(AddChallan(Cnn, {Base->code, year}, challan));
        }
    }

private slots:
    void cleanup()
    {
        QFile::remove(Base->AppPath + "/FBTLogger.log");
        SetToday({});
    }

    void shortfallByInstalments_data()
    {
        Columns<int, QString, QString, QString, QString>({"status", "payments", "doi", "upTo", "detail"});
        const QString all = "20/07/2008";
        // Tax 100,000 in each. A company: 15,000, 45,000, 75,000, 100,000.
        Case("one of four is 10,000 short: 3 months", company,
             "A 15/06/2007 15000, A 15/09/2007 20000, A 15/12/2007 40000, A 15/03/2008 25000", "", all,
             rows({"2|15/09/07|45000|35000|10000|10000|1%|3|300"}));
        Case("a firm that pays nothing: 3, 3 and 1 months", firm, "", "", all,
             rows({"1|15/09/07|30000|0|30000|30000|1%|3|900", "2|15/12/07|60000|0|60000|60000|1%|3|1800",
                   "3|15/03/08|100000|0|100000|100000|1%|1|1000"}));
        Case("1,299 short falls to 1,200; 99 short is nothing; a day late counts for the next", company,
             "A 14/06/2007 13701, A 16/09/2007 31200, A 15/12/2007 30000, A 15/03/2008 25099", "", all,
             rows({"1|15/06/07|15000|13701|1299|1200|1%|3|36", "2|15/09/07|45000|13701|31299|31200|1%|3|936"}));
        Case("none before the firm was, and none due on the last day or later", association, "", "16/09/2007",
             "15/03/2008", rows({"2|15/12/07|60000|0|60000|60000|1%|3|1800"}));
        Case("a challan without date counts whatever the day; other taxes do not", company,
             "A - 100000, S 01/06/2007 500", "", all, "");
    }
    void shortfallByInstalments()
    {
        QFETCH(const int, status);
        QFETCH(const QString, payments);
        QFETCH(const QString, doi);
        QFETCH(const QString, upTo);
        QFETCH(const QString, detail);
        client(2008, status, 100000, payments);
        execute(QString("Update FBT_Info Set DOI='%1'").arg(doi));
        const InterestPart found = INT_115WJ_34(DateFromText(upTo));
        QCOMPARE(found.detail, detail);
        double sum = 0;
        for (const QString &row : detail.split("\r\n", Qt::SkipEmptyParts))
            sum += row.section(u'|', -1).toDouble();
        QCOMPARE(found.amount, sum);
        QVERIFY(m_module.logLines().isEmpty());
    }

    void shortfallByQuarters_data()
    {
        Columns<QString, QString, QString, QString>({"extended", "payments", "upTo", "detail"});
        // Tax 10,000 for the first quarter and 5,000 for the second.
        const QString july = "15/07/2006|10000|0|10000|10000|100";
        const QString august = july + "\r\n15/08/2006|10000|0|10000|10000|100";
        const QString september = august + "\r\n15/09/2006|10000|0|10000|10000|100";
        Case("paid two months late: due 15 July, 15 August and 15 September pass", "",
             "A 20/09/2006 10000, A 15/10/2006 5000", "31/03/2007", september);
        Case("interest ends: the month begun counts, the day itself not", "", "", "16/08/2006", august);
        Case("up to the due date nothing", "", "", "15/07/2006", "");
        // The month from 15 October counts for the first 10,000; from the 20th on only 5,000 more bear interest for it.
        Case("the second quarter was extended to a day within a month", "20/10/2006", "A 01/10/2006 4000", "01/11/2006",
             september + "\r\n15/10/2006|10000|4000|6000|6000|60\r\n20/10/2006|15000|4000|11000|11000|50");
        Case("the second quarter has no due date: its tax is due with the third's, on 15 January", "none",
             "A 01/10/2006 10000", "16/01/2007", september + "\r\n15/01/2007|15000|10000|5000|5000|50");
        // All is paid by the 18th: what was held is more than what is short, so the new quarter bears nothing.
        Case("paid before the extended day", "20/10/2006", "A 18/10/2006 14950", "01/11/2006",
             september + "\r\n15/10/2006|10000|0|10000|10000|100");
    }
    void shortfallByQuarters()
    {
        QFETCH(const QString, extended);
        QFETCH(const QString, payments);
        QFETCH(const QString, upTo);
        QFETCH(const QString, detail);
        client(2007, company, 0, payments);
        FBTRate = {0, 100, 0, 0, 0};
        FBTQtrValue = {0, 10000, 5000, 0, 0};
        const QString second = "Update ChallanDt_Master Set ChDt='%1',RevChDt='%2' Where AssYear=2007 and Quarter=2";
        const bool missing = extended == "none";
        execute(second.arg(missing ? "" : "15/10/2006", missing ? "" : extended));
        QCOMPARE(INT_115WJ_3(DateFromText(upTo)).detail, detail);
        QCOMPARE(m_module.logLines().size(), missing ? 1 : 0);
        QVERIFY(!missing || m_module.logLines().constFirst().contains("quarter 2"));
        execute(second.arg("15/10/2006", ""));
    }

    void defaultInAdvanceTax_data()
    {
        Columns<QString, QString, double, QString>({"payments", "upTo", "settled", "detail"});
        // Tax 100,000 in each.
        Case("90 % is enough", "A 15/03/2008 90000", "30/09/2008", 0.0, "");
        Case("a rupee below: 10,001 from April to September, 6 months", "A 15/03/2008 89999", "30/09/2008", 0.0,
             "30/09/2008|10000|1%|6|600");
        Case("nothing before the year has ended", "", "31/03/2008", 0.0, "");
        // 50,000 for 3 months 1,500; of 20,000 paid in June 18,500 go to the tax; 31,500 for 3 months 945.
        Case("paid in June, in two parts", "A 15/03/2008 50000, S 20/06/2008 5000, S 05/06/2008 15000", "30/09/2008",
             0.0, rows({"20/06/2008|50000|1%|3|1500", "30/09/2008|31500|1%|3|945"}));
        // The first 2,000 settle the interest for shortfall; 3,000 less 1,500 go to the tax: 48,500 for 3 months 1,455.
        Case("interest for shortfall is settled first", "A 15/03/2008 50000, S 10/04/2008 1500, S 05/06/2008 3500",
             "30/09/2008", 2000.0, rows({"05/06/2008|50000|1%|3|1500", "30/09/2008|48500|1%|3|1455"}));
        // In April 300 do not cover the month's interest of 500: the tax stays 50,000.
        Case("a payment below the interest leaves the tax alone", "A 15/03/2008 50000, S 10/04/2008 300", "31/05/2008",
             0.0, rows({"10/04/2008|50000|1%|1|500", "31/05/2008|50000|1%|1|500"}));
        Case("payments of the year itself and after the last day do not count",
             "A 15/03/2008 50000, S 31/03/2008 9000, S 01/06/2008 9000", "31/05/2008", 0.0,
             "31/05/2008|50000|1%|2|1000");
    }
    void defaultInAdvanceTax()
    {
        QFETCH(const QString, payments);
        QFETCH(const QString, upTo);
        QFETCH(const double, settled);
        QFETCH(const QString, detail);
        client(2008, company, 100000, payments);
        QCOMPARE(INT_115WJ_5(DateFromText(upTo), settled).detail, detail);
    }

    void lateReturn_data()
    {
        Columns<QString, QString, QString>({"due", "filed", "detail"});
        // Tax 100,000, advance tax 40,050 and, after the year, 10,000, which does not count: 59,950, 59,900 at 1 %.
        Case("on the day", "31/10/2008", "31/10/2008", "");
        Case("a day late, the month's last day: 1 month", "31/10/2008", "01/11/2008",
             "31/10/2008|01/11/2008|100000|40050|59950|59900|1%|1|599");
        Case("two days late over the month's end: 2 months", "30/10/2008", "01/11/2008",
             "30/10/2008|01/11/2008|100000|40050|59950|59900|1%|2|1198");
        Case("the year has no due date", "", "01/11/2008", "");
    }
    void lateReturn()
    {
        QFETCH(const QString, due);
        QFETCH(const QString, filed);
        QFETCH(const QString, detail);
        client(2008, company, 100000, "A 15/03/2008 40050, A 01/04/2008 10000");
        execute(QString("Update DueDt_Master Set DueDt='%1' Where StatC=1 and AssYear=2008").arg(due));
        QCOMPARE(INT_115WK(DateFromText(filed)).detail, detail);
        QVERIFY(m_module.logLines().isEmpty());
    }

    /// Companies, audited firms, others audited, and all that are not have a class of due dates each.
    void dueDates()
    {
        for (int statC = 1; statC <= 4; ++statC)
            execute(Sql("Update DueDt_Master Set DueDt='0", statC, "/10/2009' Where AssYear=2009 and StatC=", statC));
        const auto dayFor = [this](int status, const char *audited) {
            client(2009, status, 0, {});
            execute(QString("Update FBT_Info Set AuditC=%1").arg(QLatin1String(audited)));
            return (*GETDUEDT()).day();
        };
        QCOMPARE(dayFor(5, "'1'"), 1);
        QCOMPARE(dayFor(16, "'0'"), 1);
        QCOMPARE(dayFor(firm, "'1'"), 2);
        QCOMPARE(dayFor(firm, "Null"), 3);
        QCOMPARE(dayFor(association, "'1'"), 4);
        QCOMPARE(dayFor(association, "'0'"), 3);
        execute("Update DueDt_Master Set RevDueDt='09/11/2009' Where StatC=3 and AssYear=2009");
        QCOMPARE(*GETDUEDT(2009), QDate(2009, 11, 9));
    }

    void datesAndTypedAmounts_data()
    {
        Columns<QString, double, double, double>({"addInfo", "wj", "wj5", "wk"}); // what is set of the row; the parts
        // A company that pays nothing of 100,000, today 02/12/2008, due 31/10/2008: 450 + 1,350 + 2,250 + 1,000 = 5,050;
        // 115WJ(5) from April: 1,000 a month; 115WK from November.
        Case("no row: today", "", 5050.0, 9000.0, 2000.0);
        Case("the word for today goes before the return", "IntDt='todate',RetDt='30/04/2008'", 5050.0, 9000.0, 2000.0);
        Case("the return's date", "RetDt='30/04/2008'", 5050.0, 1000.0, 0.0);
        Case("a chosen date goes before it", "IntDt='31/05/2008',RetDt='30/04/2008'", 5050.0, 2000.0, 0.0);
        Case("a revised return was filed when the original was", "IntDt='31/05/2008',RevRet='1',RevRecDt='01/11/2008'",
             5050.0, 2000.0, 1000.0);
        Case("not revised: the original's date does not count", "IntDt='31/05/2008',RevRet='0',RevRecDt='01/11/2008'",
             5050.0, 2000.0, 0.0);
        Case("typed amounts, unrounded; Null is not 1",
             "Calc115WJ='0',Amt115WJ=10.5,Calc115WJ5=Null,Amt115WJ5=7,Calc115WK='0',Amt115WK=500", 10.5, 7.0, 500.0);
        Case("what is no date counts as not given", "IntDt='some day'", 5050.0, 9000.0, 2000.0);
    }
    void datesAndTypedAmounts()
    {
        QFETCH(const QString, addInfo);
        SetToday({2008, 12, 2});
        client(2008, company, 100000, {});
        execute("Update DueDt_Master Set DueDt='31/10/2008' Where StatC=1 and AssYear=2008");
        if (!addInfo.isEmpty()) {
            execute("Insert into FBT_AddInfo (Code_No,Tyear,RevRet,RetDt) Values ('A1',2008,'0','')");
            execute("Update FBT_AddInfo Set " + addInfo);
        }
        const InterestOfYear found = CALCINTEREST();
        QTEST(found.Int115WJ, "wj");
        QTEST(found.Int115WJ5, "wj5");
        QTEST(found.Int115WK, "wk");
        QCOMPARE(m_module.logLines().size(), addInfo.contains("some day") ? 1 : 0);
    }

    void upTo2007ThereIsNoDefaultInterest()
    {
        client(2007, company, 100000, {});
        execute("Insert into FBT_AddInfo (Code_No,Tyear,Calc115WJ5,Amt115WJ5) Values ('A1',2007,'0',50)");
        QCOMPARE(CALCINTEREST().Int115WJ5, 0.0);
    }

    void aPaymentOnADateThatIsNoneIsLeftOut()
    {
        client(2008, company, 100000, "A 31/02/2008 99999, A 15/06/2007 15000");
        QCOMPARE(*GETCHAMT({2008, 3, 31}, PaymentKind::Advance), 15000.0);
        QCOMPARE(m_module.logLines().size(), 1);
        QVERIFY(m_module.logLines().constFirst().endsWith("MODFBTCALC\tGETCHAMT"));
    }

    void unreadableTables_data()
    {
        Columns<int, QString, QString, QString>({"year", "table", "unread", "logged"});
        Case("without its payments a year would seem to be unpaid", 2008, "FBT_Challan", "payments", "GETCHAMT");
        Case("instalment dates", 2008, "AdvTaxDueDt", "due dates", "INT_115WJ_34");
        Case("quarter dates", 2007, "ChallanDt_Master", "due dates", "INT_115WJ_3");
        Case("employer", 2008, "FBT_Info", "client data", "INT_115WJ_34");
        Case("chosen dates", 2008, "FBT_AddInfo", "interest dates", "CALCINTEREST");
    }
    /// What cannot be read is told by its name, and what would have come from it is no further fault.
    void unreadableTables()
    {
        QFETCH(const int, year);
        QFETCH(const QString, table);
        QFETCH(const QString, logged);
        client(year, company, 100000, "");
        SetToday({2008, 12, 2});
        execute("Rename Table " + table + " to Away");
        const InterestOfYear found = CALCINTEREST();
        execute("Rename Table Away to " + table);
        QTEST(found.unread.join(','), "unread");
        const QStringList lines = m_module.logLines();
        QVERIFY(!lines.isEmpty() && lines.constFirst().endsWith("MODFBTCALC\t" + logged));
        QVERIFY(lines.filter("No d").isEmpty()); // date, due date
        QVERIFY(CALCINTEREST().known());
    }
};

QTEST_GUILESS_MAIN(TestInterest)
#include "tst_interest.moc"
