#include "context/modbase.h"
#include "launcher/samplereader.h"
#include "launcher/samplereport.h"
#include "launcher/samplerun.h"
#include "tests/support/testmodule.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

/// A small employer that is right; rows of the tables below change one line of it.
const QString head = u"employer A1\nname A ONE\nstatus 3\nnatures 7 2\n"_s;
const QString whole = head + u"year 2008\n"_s;

std::optional<SampleEmployer> read(const QString &text, QString *why)
{
    QByteArray bytes = text.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return ReadSample(buffer, u"a.txt"_s, why);
}

} // namespace

class TestSamples : public QObject
{
    Q_OBJECT

private slots:
    void mistakes()
    {
        const QPair<QString, QString> rows[] = {
            {u""_s, u"0: the record \"employer\" is missing"_s},
            {u"# x\nname A\n"_s, u"2: the first record must be \"employer\""_s},
            {head, u"4: the record \"year\" is missing"_s},
            {u"employer A1\nname O'NEIL\n"_s, u"2: a text must hold neither an apostrophe nor a backslash"_s},
            {head + u"expense 1 7 57 1\n"_s, u"5: \"expense\" needs a \"year\" before it"_s},
            {whole + u"salary 1 7 57 1\n"_s, u"6: \"salary\" takes QUARTER NATURE|total AMOUNT"_s},
            {whole + u"salary 5 7 1\n"_s, u"6: \"5\" is not a quarter from 1 to 4"_s},
            {whole + u"expense 1 3 57 1\n"_s, u"6: \"3\" is neither \"shared\" nor one of the employer's natures"_s},
            {whole + u"expense 1 7 57 inf\n"_s, u"6: \"inf\" is not an amount in rupees"_s},
            {head + u"year 2011\n"_s, u"5: \"2011\" is not an assessment year from 2006 to 2010"_s},
            {whole + u"challan 1 30/02/2008 1 0 0 0\n"_s, u"6: \"30/02/2008\" is not a date dd/mm/yyyy"_s},
            {u"employer A1\nsurcharge 11112\n"_s, u"2: \"11112\" is not five digits 0 or 1"_s},
        };
        for (const auto &[text, why] : rows) {
            QVERIFY(!read(text, &m_why));
            QCOMPARE(m_why, u"a.txt:"_s + why);
        }
    }

    void oneCodeInTwoFilesIsRefused()
    {
        const QTemporaryDir scratch;
        for (const QString &name : {u"a.txt"_s, u"b.txt"_s}) {
            QFile file(scratch.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("# one\nemployer A1\nname A\nstatus 1\nnatures 1\nyear 2008\n");
        }
        QVERIFY(ReadSamples(scratch.path(), &m_why).empty());
        QCOMPARE(m_why, u"%1/b.txt:2: the code A1 is in %1/a.txt already"_s.arg(scratch.path()));
    }

    void theReportHasTheFiguresWorkedOutByHand()
    {
        // A firm, A.Y. 2008-09: tax 30 %, surcharge 10 %, cesses 2 % and 1 %, each rounded for each quarter.
        //  Q1: local conveyance, nature 7: 20 % of 12,345.50 = 2469.1 -> 2469
        //      mobile telephones, shared: salaries 300 of 1000 -> 300 of 1001 in nature 7, the rest 701 in nature 2,
        //      20 % each: 60 and 140.2 -> 140                                                 sum 2669
        //      tax 800.7 -> 801, surcharge 80.1 -> 80, on 881: 17.62 -> 18 and 8.81 -> 9
        //  Q4: local conveyance, nature 2: 5 % of 8000 = 400; tax 120, surcharge 12, on 132: 2.64 -> 3, 1.32 -> 1
        //  Interest to the return of 20 June 2008: 908 of 1044 are paid, 136 short on 15 March: 100 for 1 month 1, and, below 90 %, for
        //  April to June 3; the return is not due yet. 1044 + 4 - 908 = 140.
        const auto employer =
            read(whole + u"salary 1 7 300\nsalary 1 2 700\nsalary 1 total 1000\n"
                         "expense 1 7 57 12345.50\nexpense 1 shared 88 1001\n"
                         "expense 4 2 57 8000\nfiled 20/06/2008\nchallan 1 13/07/2007 801 80 18 9\n"_s,
                 &m_why);
        QVERIFY2(employer, qPrintable(m_why));
        const QString expected = u"A ONE (A1), Assessment Year 2008-2009\n"
                                 "Line Amount Value\n"
                                 "9 Conveyance 12345.50 2469\n"
                                 "16 Telephone and mobile 1001.00 200\n"
                                 "26 Conveyance, construction 8000.00 400\n"
                                 "Value of April-June 2669\n"
                                 "Value of July-September 0\n"
                                 "Value of October-December 0\n"
                                 "Value of January-March 400\n"
                                 "Total value 3069\n"
                                 "Taxable value 3069\n"
                                 "Fringe benefit tax (30 %) 921\n"
                                 "Surcharge (10 %) 92\n"
                                 "Education cess (2 %) 21\n"
                                 "Secondary and higher education cess (1 %) 10\n"
                                 "Tax in all 1044\n"
                                 "Paid 13/07/2007 Advance Tax (100) April-June 908\n"
                                 "Interest u/s 115WJ(4) 1\n"
                                 "Interest u/s 115WJ(5) 3\n"
                                 "Interest u/s 115WK 0\n"
                                 "Balance payable/(refundable) 140\n"_s;
        QCOMPARE(run(*employer), expected);
    }

    void interestIsNotKnownWithoutThePayments()
    {
        const TestModule module(m_server); // its database has no tables
        Base->TYear = 2008;
        const QString report = SampleReport({}, {});
        QCOMPARE(report.count(u"not known"), 4); // three kinds of interest, and the balance
    }

    void whatTheMastersDoNotHaveIsRefused()
    {
        const QPair<QString, QString> rows[] = {
            {whole + u"expense 1 7 57 1\nexpense 1 7 9057 1\n"_s, u"a.txt:7: there is no expense item 9057 in 2008"_s},
            {u"employer A1\nname A\nstatus 1\nnatures 7 77\nyear 2008\n"_s, u"a.txt:4: there is no nature 77"_s}};
        for (const auto &[text, why] : rows) {
            const auto employer = read(text, &m_why);
            QVERIFY(employer);
            QCOMPARE(run(*employer), u"\n"_s);
            QCOMPARE(m_why, why);
        }
    }

    void aFaultIsNotPassedOver()
    {
        auto employer = read(whole, &m_why);
        QVERIFY(employer);
        employer->name = u"O'NEIL"_s; // the reader lets no such name through
        run(*employer);
        QVERIFY2(m_why.startsWith(u"The sample employers were not computed in full; FBTLogger.log in "_s),
                 qPrintable(m_why));
    }

private:
    /// The printed report with runs of blanks made one.
    QString run(const SampleEmployer &employer)
    {
        TestModule module(m_server);
        QString printed;
        QTextStream out(&printed);
        m_why.clear();
        RunSamples(module.connection, &module.base, {employer}, out, &m_why);
        QStringList lines = printed.split(u'\n', Qt::SkipEmptyParts);
        for (QString &line : lines)
            line = line.simplified();
        return lines.join(u'\n') + u'\n';
    }

    TestServer m_server;
    QString m_why;
};

QTEST_GUILESS_MAIN(TestSamples)
#include "tst_samples.moc"
