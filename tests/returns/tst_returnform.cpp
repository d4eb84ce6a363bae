#include "calc/returnform.h"

#include "calc/clientyear.h"
#include "context/modbase.h"
#include "platform/clock.h"
#include "records/paymentschedule.h"
#include "returns/workfolder.h"
#include "tests/support/caserow.h"
#include "tests/support/employer.h"
#include "tests/support/lawdatabase.h"

#include <QDir>
#include <QTest>

/// What a return is made from.
class TestReturnForm : public QObject
{
    Q_OBJECT

    LawDatabase m_law;
    TestModule &m_module = m_law.module;

    static void sql(const SqlText &statement) { QVERIFY2(Cnn->Execute(statement), qPrintable(statement)); }

private slots:
    void initTestCase() { employer(*Cnn, "A1").status(16).natures({7}); }
    void init()
    {
        for (const char *table :
             {"FBT_AddInfo", "FBT_SignDet", "FBT_BankDet", "FBT_RetDet", "FBT_Challan", "bank_master"})
            sql(Sql("Delete from ", table));
        SetToday({2008, 11, 1});
        TakeClientYear("A1", 2008);
    }

    /// Each line is rounded before it is added up; two totals are rounded as a whole.
    void linesAreRoundedOneByOne()
    {
        InterestOfYear interest;
        interest.Int115WJ = 1.5;
        interest.Int115WJ5 = 1;  // 2.5 to the even 2
        interest.Int115WK = 4.4; // in all 6.9
        const ReturnSums sums = SumsOfReturn({100.5, 10.5, 1.25, 1.5}, interest, {60.4, 80.4});
        QCOMPARE(sums.totalTax, 100.0 + 10 + 3);
        QCOMPARE(sums.totalInterest, 7.0);
        QCOMPARE(sums.aggregate, 113.0 + 2 + 4);
        QCOMPARE(sums.totalPaid, 141.0);
        QCOMPARE(sums.balance, 119.0 - 60 - 80);
        QCOMPARE(sums.refund(), 21.0);
        QCOMPARE(sums.payable(), 0.0);
    }

    void returnCodeFitsTheDate_data()
    {
        Columns<QString, QString, QString, QString, QString, QString>(
            {"section", "revised", "original", "interest", "filed", "fitting"});
        const QString none;
        const QString no("0"); // not revised
        Case("in time, filed late", QString("1"), no, none, none, QString("01/11/2008"), QString("22"));
        Case("late, filed in time", QString("2"), no, none, none, QString("30/09/2008"), QString("21"));
        Case("on the due date", QString("1"), no, none, none, QString("30/09/2008"), none);
        Case("interest goes before filing", QString("1"), no, none, QString("01/10/2008"), QString("01/09/2008"),
             QString("22"));
        Case("interest up to today", QString("1"), no, none, QString("todate"), QString("01/09/2008"), QString("22"));
        Case("no date is today", QString("1"), no, none, none, none, QString("22"));
        Case("original of a revised one", QString("2"), QString("1"), QString("01/09/2008"), QString("01/11/2008"),
             none, QString("21"));
        Case("original of one not revised", QString("1"), no, QString("01/11/2008"), none, QString("01/09/2008"), none);
        Case("another code", QString("3"), no, none, none, QString("01/11/2008"), none);
        Case("no section", none, no, none, none, QString("01/11/2008"), none);
    }
    void returnCodeFitsTheDate()
    {
        QFETCH(QString, section);
        QFETCH(QString, revised);
        QFETCH(QString, original);
        QFETCH(QString, interest);
        QFETCH(QString, filed);
        sql(Sql("Delete from DueDt_Master Where AssYear=2008"));
        for (int statC = 1; statC <= 4; ++statC)
            sql(Sql("Insert into DueDt_Master Values (2008,", statC, ",'30/09/2008','','')"));
        sql(Sql("Insert into FBT_AddInfo (Code_No,TYear,Section,RevRet,RevRecDt,IntDt,RetDt) Values ('A1',2008,'",
                section, "','", revised, "','", original, "','", interest, "','", filed, "')"));
        QTEST(FittingReturnCode(ReadReturnForm()).value_or(QString()), "fitting");
    }

    void savedReturnCodeKeepsTheRest()
    {
        QVERIFY(SaveReturnCode("22")); // there is no row yet
        QCOMPARE(ReadReturnForm().RetCode, "22");
        sql(Sql("Update FBT_AddInfo Set Ward='W',IndiaEmp=7"));
        QVERIFY(SaveReturnCode("21"));
        QCOMPARE(m_module.rows("Select Section,Ward,IndiaEmp,Calc115WK from FBT_AddInfo"), QStringList("1\tW\t7\t1"));
    }

    void signatoryIsCarriedOver()
    {
        const auto signatory = [](int year) { return *SignatoryOf(Cnn, {"A1", year}); };
        sql(Sql("Insert into FBT_SignDet Values ('A1',0,'OLD','','','',''),('A1',2007,'BEFORE','1','F','P','D')"));
        QCOMPARE(signatory(2008), Signatory({"BEFORE", 1, "F", "P", "D"}));
        QCOMPARE(signatory(2009), Signatory({"OLD", -1, "", "", ""}));
        QVERIFY(SaveSignatory(Cnn, {"A1", 2008}, {"NEW", 0, "", "", ""}));
        QCOMPARE(signatory(2008), Signatory({"NEW", 0, "", "", ""}));
        QVERIFY(!SaveSignatory(Cnn, {"A1", 2008}, {"O'NEW", 0, "", "", ""})); // no such text is taken
        QCOMPARE(signatory(2008).name, "NEW");
        QVERIFY(SaveSignatory(Cnn, {"A1", 2008}, {})); // nothing to keep
        QCOMPARE(signatory(2008).name, "BEFORE");
    }

    void refundGoesWhereItWasWanted()
    {
        const auto mode = [] { return ReadReturnForm().fields.details.refundMode; };
        sql(Sql("Insert into FBT_RetDet Values ('A1',2008,'','','','',0,'2')"));
        QCOMPARE(mode(), 0); // nothing comes back
        sql(Sql("Insert into FBT_Challan (Code_No,T_Year,Quarter,SrNo,PayType,TotAmt) Values "
                "('A1',2008,1,1,'Advance Tax (100)',0.4)"));
        QCOMPARE(mode(), 2); // less than half a rupee does
        sql(Sql("Delete from FBT_RetDet"));
        QCOMPARE(mode(), 1);
        sql(Sql(
            "Insert into FBT_BankDet Values ('A1',2008,1,'B','','','','',0,'N'),('A1',2008,2,'B','','','','',1,'Y')"));
        QCOMPARE(mode(), 2);
    }

    /// Bank names come from elsewhere and may have any letter in them.
    void paymentsAreScheduledByDate()
    {
        sql(Sql("Insert into bank_master Values (1,", Quoted("BANK O'X \\"), ",'FORT','0001'),(2,'','TOWN','')"));
        const auto challan = [](int quarter, int number, const char *type, const char *date, int bank) {
            sql(Sql("Insert into FBT_Challan (Code_No,T_Year,Quarter,SrNo,PayType,challan_dt,TotAmt,ChallanNo,BSRCode) "
                    "Values ('A1',2008,",
                    quarter, ",", number, ",'", type, "','", date, "',", 10 * quarter + number, ",'N',", bank, ")"));
        };
        challan(0, 1, "Self Assessment Tax (300)", "01/01/2007", 2);
        challan(1, 1, "advance tax (100)", "15/09/2007", 1);
        challan(2, 1, "Advance Tax (100)", "14/06/2007", 9);
        challan(3, 1, "Advance Tax (100)", "", 0);
        for (int round = 0; round < 2; ++round)
            QVERIFY(RebuildPaymentSchedule(Cnn, {"A1", 2008}));
        QStringList lines;
        const auto schedule = PaymentSchedule(Cnn, {"A1", 2008});
        for (const ScheduledPayment &one : *schedule)
            lines << Joined(one.advance ? 1 : 2, " ", one.date.toString("yyyyMMdd"), " ", one.amount, " ",
                            one.bankAndBranch());
        QCOMPARE(lines,
                 QStringList({"1  31 ", "1 20070614 21 ", "1 20070915 11 BANK O'X \\, FORT", "2 20070101 1 TOWN"}));
        sql(Sql("Rename Table FBT_Challan to Away"));
        QVERIFY(!RebuildPaymentSchedule(Cnn, {"A1", 2008})); // an old schedule is not taken for the new one
        sql(Sql("Rename Table Away to FBT_Challan"));
        QVERIFY(PaymentSchedule(Cnn, {"A1", 2008})->empty());
    }

    void unreadableTablesAreNamed_data()
    {
        Columns<QString, QStringList>({"table", "unread"});
        Case("FBT_SignDet", QString("FBT_SignDet"), QStringList({"signatories"}));
        Case("FBT_Challan", QString("FBT_Challan"), QStringList({"terms of interest", "challans"}));
        Case("FBT_MiscInf", QString("FBT_MiscInf"), QStringList({"miscellaneous information"}));
        Case("FBT_BankDet", QString("FBT_BankDet"), QStringList({"bank accounts"}));
    }
    void unreadableTablesAreNamed()
    {
        QFETCH(QString, table);
        sql(SqlText("Rename Table " + table + " to Away"));
        QTEST(ReadReturnForm().unread, "unread");
        sql(SqlText("Rename Table Away to " + table));
    }

    void workFolderIsEmptyAndOwn_data()
    {
        Columns<QString, QString>({"code", "name"});
        Case("plain", QString("A1"), QString("A1"));
        Case("slashes", QString("A/1\\2"), QString("A-1-2"));
        Case("a way out", QString(".."), QString("-"));
    }
    void workFolderIsEmptyAndOwn()
    {
        QFETCH(QString, code);
        QFETCH(QString, name);
        QTemporaryDir temporary;
        Base->vTmpPath = temporary.path();
        for (int round = 0; round < 2; ++round) {
            const WorkFolder work = GETMYTEMPPATH(code, 2008);
            QVERIFY(work.made);
            QCOMPARE(work.TmpPath, temporary.filePath(name + "/2008"));
            QVERIFY(QDir(work.TmpPath).isEmpty());
            QFile left(work.TmpPath + "/Ack.rtf");
            QVERIFY(left.open(QIODevice::WriteOnly));
        }
    }

    void workFolderElsewhere()
    {
        QTemporaryDir temporary;
        QTemporaryDir other;
        Base->vTmpPath = temporary.path();
        QVERIFY(QFile::link(other.path(), temporary.filePath("A1"))); // someone leads it to another place
        QCOMPARE(GETMYTEMPPATH("A1", 2008).TmpPath, Base->AppPath + "/A1/2008");
        QVERIFY(QDir(other.path()).isEmpty());
        Base->vTmpPath = temporary.filePath("nowhere/below"); // made on the way
        QVERIFY(GETMYTEMPPATH("A1", 2008).made);
    }
};

QTEST_MAIN(TestReturnForm)
#include "tst_returnform.moc"
