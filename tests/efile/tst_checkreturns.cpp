#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "calc/returnform.h"
#include "db/updater.h"
#include "efile/checkreturns.h"
#include "efile/filedreturn.h"
#include "efile/itr8.h"
#include "records/banks.h"
#include "records/challans.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

/// The returns of clients as their rows in the database make them.
class TestCheckReturns : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_server = std::make_unique<TestServer>(); }
    void init()
    {
        m_module = std::make_unique<TestModule>(*m_server);
        QVERIFY(UpdateDatabase(Cnn));
        QVERIFY(QFile::link(QStringLiteral(FBT_SOURCE "/Data"), Base->AppPath + u"/Data"_s));
        employer(*Cnn, u"A1"_s).name(u"ALPHA"_s).status(16).natures({7}).expense(2008, 1, 7, 57, 100000);
        employer(*Cnn, u"B1"_s).name(u"BETA"_s).status(16).natures({7}).expense(2007, 1, 7, 57, 300000);
    }
    void cleanup() { m_module.reset(); }

    /// The check takes the payments as they are; the return screen takes them from the schedule that it made. Both give one
    /// file.
    void bothSourcesOfPaymentsGiveOneFile()
    {
        const auto bank = SaveBank(Cnn, {0, u" STATE BANK "_s, u"FORT"_s, u"0001234"_s}, true);
        QVERIFY(bank);
        const struct
        {
            int quarter;
            const char *type;
            const char *date;
            int bank;
        } challans[] = {{4, advanceTax, "15/03/2008", *bank},
                        {1, advanceTax, "15/06/2007", 0},
                        {0, "Self Assessment Tax (300)", "", *bank},
                        {2, advanceTax, "15/06/2007", *bank},
                        {0, "Tax on Regular Assessment (400)", "01/09/2008", 77},
                        {1, advanceTax, "15/06/2007", *bank}};
        int number = 0;
        for (const auto &row : challans) {
            ChallanRecord challan;
            challan.quarter = row.quarter;
            challan.payType = QString::fromLatin1(row.type);
            challan.date = QString::fromLatin1(row.date);
            challan.bank = row.bank;
            challan.challanNo = QString::number(++number);
            challan.TotAmt = 100.5 * number;
            QVERIFY(AddChallan(Cnn, m_alpha, challan));
        }
        QVERIFY(TakeClientYear(m_alpha.code, m_alpha.year) && TakeEmployeesOfYear());
        QVERIFY(RebuildPaymentSchedule(Cnn, m_alpha));
        const ReturnForm form = ReturnFormOfToday();
        const QByteArray bySchedule = Itr8File(FileOf(form, PaymentSource::Schedule));
        QCOMPARE(Itr8File(FileOf(form, PaymentSource::Challans)), bySchedule);
        // By date and quarter, advance tax first; the one without a date before the other.
        QStringList numbers;
        for (const QByteArray &line : bySchedule.split('\n')) {
            if (line.contains("SrlNoOfChaln"))
                numbers << QString::fromLatin1(line.trimmed().mid(22, 1));
        }
        QCOMPARE(numbers.join(u' '), u"2 6 4 1 3 5"_s);
        // An error names the payment that the file has there.
        const auto named = [](const FiledReturn &file, bool advance, bool all, int item) {
            ReturnPlace place;
            place.at.screen = ReturnScreen::Challans;
            place.item = item;
            place.advance = advance;
            place.allPayments = all;
            NameEntry(place, file);
            return place.payment ? place.payment->challanNo : QString();
        };
        const FiledReturn file = FileOf(form, PaymentSource::Challans);
        QCOMPARE(named(file, false, true, 5), u"3"_s);
        QCOMPARE(named(file, true, false, 3), u"4"_s);
        QCOMPARE(named(file, false, false, 3), QString());
        // A bank that the list has twice doubles its payments, and a date that is none is none: in both.
        QVERIFY(Cnn->Execute("Insert into bank_master Select * from bank_master") &&
                Cnn->Execute("Update FBT_Challan Set challan_dt='10/06/08' Where ChallanNo='4'") &&
                RebuildPaymentSchedule(Cnn, m_alpha));
        const FiledReturn doubled = FileOf(form, PaymentSource::Schedule);
        QCOMPARE(doubled.advance.size(), 7U);
        QVERIFY(!doubled.advance[0].date.isValid());
        QCOMPARE(Itr8File(FileOf(form, PaymentSource::Challans)), Itr8File(doubled));
    }

    void theClientsOfAYearAreCheckedAndNothingIsWritten()
    {
        const QStringList before = m_module->rows(u"Show Tables"_s);
        // A screen may stand half way through printing the return of another client.
        QVERIFY(TakeClientYear(u"B1"_s, 2007) && CALCFBT());
        const auto printed = FBTExpAmt;
        std::vector<CheckedReturn> checked;
        const RowsRead<NamedClient> clients = ClientsOfYear(Cnn, 2008);
        QCOMPARE(clients->size(), 1U);
        CheckReturns(*clients, 2008, [&](const CheckedReturn &one) {
            checked.push_back(one);
            return true;
        });
        QCOMPARE(checked.size(), 1U);
        QCOMPARE(checked[0].name, u"ALPHA"_s);
        QVERIFY(checked[0].refused.isEmpty());
        QVERIFY(!checked[0].isRight());
        QStringList errors;
        for (const CheckedError &error : checked[0].errors)
            errors << error.screen + u'/' + error.element + u'/' + error.description.right(20);
        QVERIFY2(errors.contains(u"Bank Accounts/BankAccountNumber/ the default account"),
                 qPrintable(errors.join(u'\n')));
        QVERIFY(checked[0].tax > 0);
        QCOMPARE(Base->code, u"B1"_s);
        QCOMPARE(FBTExpAmt, printed);
        QCOMPARE(m_module->rows(u"Show Tables"_s), before);
    }

    /// What could not be read is no return without payments, and a client who is gone is none without a name.
    void whatCannotBeReadIsNotFiled()
    {
        const QString path = Base->AppPath + u"/return.xml"_s;
        const auto cells = [&] { return CheckCells(CheckReturn({u"A1"_s, u"ALPHA"_s}, 2008, path)).join(u'|'); };
        for (const char *table : {"FBT_Info", "FBT_Detail", "FBT_SalDet", "FBT_Challan", "FBT_AddInfo", "FBT_BankDet",
                                  "FBT_MiscInf", "FBT_SignDet", "FBT_RetDet", "bank_master", "FBT_ExpRate2008"}) {
            const WithoutTable without(QString::fromLatin1(table));
            QVERIFY2(cells().startsWith(u"A1|ALPHA|could not be read: ") && cells().endsWith(u"||"), table);
        }
        // A full disk.
        QCOMPARE(CheckReturn({u"A1"_s, u"ALPHA"_s}, 2008, u"/dev/full"_s).refused, u"the file could not be written"_s);
        QVERIFY(Cnn->Execute("Delete from FBT_Info Where Code_No='A1'"));
        QCOMPARE(cells(), u"A1|ALPHA|no longer there||"_s);
        QVERIFY(!QFile::exists(path));
    }

    void statesHaveTheirNumbers()
    {
        QCOMPARE(GETSTATECODE(u" Maharashtra "_s), u"19"_s);
        QCOMPARE(GETSTATECODE(u"MAHARASTRA"_s), QString());
    }

private:
    std::unique_ptr<TestServer> m_server;
    std::unique_ptr<TestModule> m_module;
    const ClientYear m_alpha{u"A1"_s, 2008};
};

QTEST_MAIN(TestCheckReturns)
#include "tst_checkreturns.moc"
