#include "returns/itr8.h"

#include "calc/modfbtcalc.h"
#include "calc/returnform.h"
#include "context/modbase.h"
#include "platform/rtfdocument.h"
#include "returns/itr8cells.h"
#include "suite/report/repview.h"
#include "tests/support/caserow.h"
#include "tests/support/testmodule.h"

#include <QTest>

namespace {

/// A return whose every value is another one.
ReturnForm distinctForm(int year)
{
    ReturnForm form;
    form.TYear = year;
    form.FormNm = "ITR-8";
    form.RetCode = "22";
    form.ClName = "NAME";
    form.ClPAN = "PAN";
    form.ClAddr = {"", "FLAT", "BUILDING", "STREET", "AREA", "CITY", "STATE", "PIN"};
    form.BankInf = {"", "BANK", "MICR", "BANKADD", "SAVINGS", "ACCOUNT", "Y"};
    form.status = {"17PVT", "13"};
    form.client[ClientRecord::Code] = "A1";
    form.client[ClientRecord::Born] = "BORN";
    form.client[ClientRecord::Email] = "EMAIL";
    form.client[ClientRecord::Std] = "STD";
    form.client[ClientRecord::Telephone] = "TEL";
    form.client[ClientRecord::Resident] = "1";
    for (const char *column : {"ward", "areacd", "aotyp", "aorng", "aono", "revrecno", "revrecdt"})
        form.addInfo[column] = QString(column).toUpper();
    form.addInfo["revret"] = form.addInfo["peindia"] = "1";
    for (const char *column : {"var0_0", "var0_1", "var0_2", "var0_5", "var0_8", "var1_0", "var1_1", "var1_2", "var1_3",
                               "var1_11", "var2_1"})
        form.miscInf[column] = QString(column).toUpper();
    form.miscInf["repass"] = form.miscInf["opt44aa"] = form.miscInf["var2_0"] = "1";
    form.miscInf["opt44ab"] = "0";
    ReturnSums &sums = form.figures.sums;
    double figure = 2000;
    for (double *line :
         {&sums.tax, &sums.surcharge, &sums.cess, &sums.totalTax, &sums.interest115WJ, &sums.interest115WK,
          &sums.totalInterest, &sums.aggregate, &sums.advance, &sums.selfAssessment, &sums.totalPaid, &sums.balance})
        *line = ++figure;
    form.fields.signatory = {"SIGNATORY", 0, "FATHER", "SIGNPAN", "POST"};
    form.fields.place = "PLACE";
    form.fields.date = "DATE";
    form.fields.details = {"ACKNO", "ACKDATE", 2};
    return form;
}

void takeDistinctFigures()
{
    for (std::size_t line = 1; line < FBTExpAmt.size(); ++line) {
        FBTExpAmt[line] = 100.5 + 2 * static_cast<double>(line); // to the even rupee
        FBTValue[line] = 500 + static_cast<double>(line);
    }
    FBTQtrValue = {0, 1001, 1002, 1003, 1004};
    FBTTaxableValue = 1005;
    FBTTotalValue = 1006;
    TakeEmployees({true, false, 31, 44});
}

/// Document, table, row, column, value: the fields of a company in all years.
const char *const always = R"(
Ack 1 2 1 NAME|Ack 1 2 2 PAN|Ack 1 4 1 FLAT|Ack 1 4 2 BUILDING|Ack 1 6 1 STREET|Ack 1 6 2 AREA
Ack 2 2 1 CITY|Ack 2 2 2 STATE|Ack 2 2 3 PIN|Ack 2 3 2 WARD|Ack 2 3 4 REVISED
Ack 3 1 5 N.A.|Ack 3 2 5 N.A.|Ack 3 3 5 N.A.|Ack 3 4 5 N.A.|Ack 3 5 5 N.A.|Ack 3 6 5 N.A.|Ack 3 7 5 N.A.
Ack 3 8 5 N.A.|Ack 3 9 5 N.A.|Ack 3 10 5 N.A.|Ack 3 11 5 N.A.|Ack 3 12 5 N.A.|Ack 3 13 5 N.A.
Ack 4 1 5 1005|Ack 4 2 5 2004|Ack 4 3 5 2007|Ack 4 4 5 2008|Ack 4 5 5 2009|Ack 4 6 5 2010|Ack 4 7 5 2011
Ack 4 8 5 2012|Ack 4 9 5 0
Main 1 1 4 Yes|Main 1 2 1 NAME|Main 1 2 2 PAN|Main 1 2 3 VAR2_1
Main 2 2 1 FLAT|Main 2 2 2 BUILDING|Main 2 2 3 BORN|Main 3 2 1 STREET|Main 3 2 2 AREA
Main 4 2 1 CITY|Main 4 2 2 STATE|Main 4 2 3 PIN|Main 5 2 1 EMAIL|Main 5 2 2 (STD)-TEL
Main 6 1 7 [22]|Main 6 2 1 WARD|Main 6 2 2 AREACD|Main 6 2 3 AOTYP|Main 6 2 4 AORNG|Main 6 2 5 AONO
Main 7 1 2 [  ]|Main 7 1 4 [_/]|Main 8 1 2 REVRECNO|Main 8 1 3 REVRECDT
Main 9 1 2 [  ]|Main 9 1 4 [_/]|Main 9 1 6 [  ]|Main 10 1 2 Yes|Main 11 1 2 [_/]|Main 11 1 4 [  ]
Main 12 1 3 VAR0_0|Main 12 2 3 VAR0_2, VAR0_5-VAR0_8|Main 12 3 3 VAR0_1
Main 13 1 2 [_/]|Main 13 1 4 [  ]|Main 13 2 2 [  ]|Main 13 2 4 [_/]
Main 14 1 3 VAR1_0|Main 14 2 3 VAR1_1|Main 14 3 3 VAR1_2|Main 14 4 3 VAR1_3|Main 14 5 3 VAR1_11
PartB 1 1 5 1001|PartB 1 2 5 1002|PartB 1 3 5 1003|PartB 1 4 5 1004|PartB 2 1 5 1005
PartB 3 1 4 2001|PartB 3 2 4 2002|PartB 3 3 4 2003|PartB 3 4 4 2004|PartB 4 1 5 2005|PartB 4 2 5 2006
PartB 4 3 7 2007|PartB 5 1 4 2008|PartB 6 1 5 2009|PartB 6 2 5 2010|PartB 6 3 7 2011
PartB 7 1 4 2012|PartB 7 2 4 0|PartB 8 1 3 ACCOUNT|PartB 9 1 3 [  ]|PartB 9 1 5 [_/]
PartB 10 1 2 MICR|PartB 10 1 4 [_/]|PartB 10 1 6 [  ]
Sch-FBI 1 1 3 1|Sch-FBI 1 2 3 2|Sch-FBI 2 1 4 31|Sch-FBI 2 2 4 13|Sch-FBI 2 3 4 44
Sch-FB 7 1 4 1006|Sch-FB 7 2 4 0|Sch-FB 7 3 4 0|Sch-FB 7 4 4 1005|Sch-FB 7 5 4 1005)";

/// What a year has otherwise.
const std::pair<int, const char *> ofYear[] = {
    {2007,
     "Main 3 1 4 [1]|Main 4 1 5 [1]|PartB 11 1 3 ACKNO|PartB 11 1 5 ACKDATE|PartB 12 1 2 PLACE|PartB 12 1 4 DATE"},
    {2008, "Ack 3 14 5 N.A.|Main 3 1 4 [7]|Main 4 1 5 [_/]|PartB 11 1 2 PLACE|PartB 11 1 4 DATE"},
    {2009, "Ack 3 14 5 N.A.|Ack 2 2 4 [13]|Main 3 1 4 [7]|Main 4 1 5 [_/]|PartB 11 1 2 PLACE|PartB 11 1 4 DATE"}};

/// Line of the computation by the number of its row on schedule FB; the second one holds two lines.
const char *const linesOnForm =
    "1=1 2=2 3=3 4a=4 4b=5 4c=24 4d=25 5=6 6=7 7=8 8a=9 8b=26 8c=10 8d=27 9a=11 9b=12 9c=28 "
    "9d=29 9e=30 10a=13 10b=14 11=15 12=16 13=17 14=18 15=19 16=20 17=21 18=22 19=23";

QString valueOnForm(int line, bool amount)
{
    const double value = amount ? 100 + 2 * line : 500 + line;
    if (line != 2)
        return QString::number(value);
    return amount ? "267" : "1033"; // with line 31: 104.5 + 162.5, 502 + 531
}

} // namespace

/// The documents of form ITR-8 as they are saved when they were filled.
class TestItr8 : public QObject
{
    Q_OBJECT

    NotingBase m_base;
    QTemporaryDir m_folder;
    std::unique_ptr<RepView> m_viewer;

    using Print = void (*)(const Itr8Job &);

    void print(const ReturnForm &form, bool blank)
    {
        const Itr8Job job{form, Joined(FBT_SOURCES "/ITR8Fls", form.TYear), m_folder.path(), "Daughter of", blank,
                          true};
        for (const Print page : {FORMITR_ACK, FORMITR8_MAIN, FORMITR_PARTC, FORMITR_SCHFBI, FORMITR_SCHFB})
            page(job);
    }
    std::unique_ptr<RtfDocument> saved(const QString &name)
    {
        QFile file(m_folder.filePath(name + ".rtf"));
        return file.open(QIODevice::ReadOnly) ? std::make_unique<RtfDocument>(file.readAll()) : nullptr;
    }
    QString cell(const QString &name, int table, int row, int column)
    {
        const auto document = saved(name);
        return document ? document->cellText(table, row, column) : QString();
    }
    QString allText(const QString &name)
    {
        m_viewer->NewReport();
        m_viewer->AppendFile(m_folder.filePath(name + ".rtf"));
        m_viewer->ShowReport();
        return m_viewer->asText();
    }

private slots:
    void init()
    {
        ResetModule();
        Base = &m_base;
        m_base.AppPath = m_folder.path();
        m_viewer = std::make_unique<RepView>(SuiteContext(), std::make_shared<ReportShelf>());
        m_viewer->setObserver([] {});
        Reporter = m_viewer.get();
        takeDistinctFigures();
        QFile::remove(m_folder.filePath("FBTLogger.log"));
    }
    void cleanup() { ResetModule(); }

    void everyFieldHoldsItsOwnValue_data()
    {
        Columns<int, QString>({"year", "own"});
        for (const auto &[year, own] : ofYear)
            Case(QString::number(year), year, QString(own));
    }
    void everyFieldHoldsItsOwnValue()
    {
        QFETCH(int, year);
        QFETCH(QString, own);
        const ReturnForm form = distinctForm(year);
        print(form, false);
        const QStringList fields = (QString(always).trimmed().replace(u'\n', u'|') + u'|' + own).split(u'|');
        for (const QString &field : fields) {
            const QString value = field.section(u' ', 4);
            const auto at = [&field](int part) { return field.section(u' ', part, part).toInt(); };
            QVERIFY2(cell(field.section(u' ', 0, 0), at(1), at(2), at(3)) == value, qPrintable(field));
        }
        std::size_t inMap = 0;
        for (const Itr8Page page : {Itr8Page::Acknowledgement, Itr8Page::PartA, Itr8Page::PartB, Itr8Page::ScheduleFBI})
            inMap += CellsOf(page, form).size();
        QCOMPARE(fields.size() - 5, static_cast<qsizetype>(inMap)); // without the totals of schedule FB
        QVERIFY(!QFile::exists(m_folder.filePath("FBTLogger.log")));
    }

    void linesStandBesideTheirNumbers()
    {
        print(distinctForm(2009), false);
        QHash<QString, QStringList> rows; // by number: amount and value
        const auto document = saved("Sch-FB");
        for (int table = 2; table <= 6; ++table) {
            const int first = table % 2 == 0 ? 3 : 4; // the number before the amount
            for (int row = 1; row <= document->rowCount(table); ++row)
                rows[document->cellText(table, row, first).remove("ii")] = {document->cellText(table, row, first + 1),
                                                                            document->cellText(table, row, first + 5)};
        }
        const QStringList lines = QString(linesOnForm).split(u' ');
        QCOMPARE(rows.size(), lines.size());
        for (const QString &one : lines) {
            const int line = one.section(u'=', 1).toInt();
            QCOMPARE(rows.value(one.section(u'=', 0, 0)),
                     QStringList({valueOnForm(line, true), valueOnForm(line, false)}));
        }
    }

    void statusOfPartA_data()
    {
        Columns<int, QString, QString, QString>({"year", "statusCd", "code", "domestic"});
        Case("foreign company at first", 2007, QString("18FC"), QString("[1]"), QString("[2]"));
        Case("firm at first", 2007, QString("13PF"), QString("[2]"), QString("[ ]"));
        Case("association at first", 2007, QString("16A"), QString("[3]"), QString("[ ]"));
        Case("public company", 2008, QString("17PUB"), QString("[6]"), QString("[_/]"));
        Case("foreign company", 2008, QString("18FC"), QString("[6]"), QString("[ ]"));
        Case("firm", 2009, QString("13PF"), QString("[1]"), QString("[ ]"));
        Case("local authority", 2009, QString("15LA"), QString("[8]"), QString("[ ]"));
    }
    void statusOfPartA()
    {
        QFETCH(int, year);
        QFETCH(QString, statusCd);
        ReturnForm form = distinctForm(year);
        form.status = {statusCd, ""};
        print(form, false);
        QTEST(cell("Main", 3, 1, 4), "code");
        QTEST(cell("Main", 4, 1, 5), "domestic");
    }

    /// What belongs to a revised return, a representative or an old name stays off a form without one.
    void nothingOfWhatIsNot()
    {
        ReturnForm form = distinctForm(2008);
        form.addInfo["revret"] = form.miscInf["repass"] = form.miscInf["var2_0"] = "0";
        form.client[ClientRecord::Resident] = "0";
        form.client[ClientRecord::Std].clear();
        form.RetCode = " ";
        form.figures.sums.balance = -700;
        form.BankInf = {};
        TakeEmployees({});
        print(form, false);
        const auto main = [this](int table, int row, int column) { return cell("Main", table, row, column); };
        QCOMPARE(QStringList({main(1, 1, 4), main(1, 2, 3), main(5, 2, 2), main(6, 1, 7), main(8, 1, 2), main(10, 1, 2),
                              main(12, 2, 3)}),
                 QStringList({"No", "", "(    )-TEL", "[  ]", "", "", ""}));
        QCOMPARE(cell("PartB", 7, 1, 4) + u' ' + cell("PartB", 7, 2, 4), "0 700");
        QCOMPARE(cell("PartB", 10, 1, 4) + cell("PartB", 10, 1, 6), "[  ][  ]");
        QCOMPARE(cell("Sch-FBI", 1, 1, 3) + cell("Sch-FBI", 1, 2, 3), "2 ");
    }

    /// The value counts as that of employees in India alone, of separate books, or by the share of the employees.
    void totalsByTheEmployees_data()
    {
        Columns<bool, bool, QString>({"abroad", "books", "totals"});
        Case("India alone", false, false, QString("1006 1006 0 0 1005"));
        Case("separate books", true, true, QString("1006 0 1006 0 1005"));
        Case("share", true, false, QString("1006 0 0 1005 1005"));
    }
    void totalsByTheEmployees()
    {
        QFETCH(bool, abroad);
        QFETCH(bool, books);
        TakeEmployees({abroad, books, 31, 44});
        print(distinctForm(2009), false);
        QStringList totals;
        for (int row = 1; row <= 5; ++row)
            totals << cell("Sch-FB", 7, row, 4);
        QTEST(totals.join(u' '), "totals");
    }

    void declarationNamesWhoSigns()
    {
        print(distinctForm(2009), false);
        const QString text = allText("PartB");
        QVERIFY(
            text.contains("I, SIGNATORY (full name in block letters), Daughter of FATHER, holding permanent account "
                          "number SIGNPAN, solemnly declare"));
        QVERIFY(text.contains("the assessment year 2009-10. I further declare that I am making this return in my "
                              "capacity as POST and"));
        QVERIFY(allText("Ack").contains("from NAME a return of income and/or fringe benefits in Form No. ITR-8 for"));
    }

    void blankFormHasTheYearAlone()
    {
        const ReturnForm form = distinctForm(2008);
        print(form, true);
        for (const Itr8Page page : {Itr8Page::Acknowledgement, Itr8Page::PartA, Itr8Page::PartB, Itr8Page::ScheduleFBI,
                                    Itr8Page::ScheduleFB}) {
            const auto document = saved(DocumentOf(page));
            for (const FormCell &field : CellsOf(page, form))
                QCOMPARE(document->cellText(field.table, field.row, field.column), QString());
            const QString text = allText(DocumentOf(page));
            QVERIFY(text.contains("2008-09") && !text.contains("##") && !text.contains("SIGNATORY"));
        }
        QVERIFY(allText("PartB").contains("I, ______"));
    }

    /// The other pages are printed, and nothing of an older preview stands in for the one that is lost.
    void lostDocumentCostsItsPageOnly_data()
    {
        Columns<QByteArray, QString>({"content", "text"});
        Case("missing", QByteArray(), QString());
        Case("no document", QByteArray("PK"), QString());
        Case("cut off", QByteArray("{\\rtf1 Part B of ##ASYR##\\par"), QString("Part B of 2008-09"));
    }
    void lostDocumentCostsItsPageOnly()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, text);
        const ReturnForm form = distinctForm(2008);
        print(form, false);
        QTemporaryDir templates;
        for (const char *name : {"Ack", "PartB"})
            QFile::copy(Joined(FBT_SOURCES "/ITR8Fls2008/", name, ".doc"), templates.filePath(QString(name) + ".doc"));
        QFile broken(templates.filePath("PartB.doc"));
        QVERIFY(broken.remove());
        if (!content.isEmpty())
            QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write(content) > 0);
        broken.close();
        m_viewer->NewReport();
        const Itr8Job job{form, templates.path(), m_folder.path(), {}, false, true};
        FORMITR_PARTC(job);
        FORMITR_ACK(job);
        m_viewer->ShowReport();
        QVERIFY(m_viewer->asText().contains("Received with thanks from NAME"));
        QVERIFY(!m_viewer->asText().contains("SIGNATORY"));
        QVERIFY(m_viewer->asText().contains(text));
        QFile log(m_folder.filePath("FBTLogger.log"));
        QVERIFY(log.open(QIODevice::ReadOnly) && log.readLine().endsWith("frmretfrm\tFORMITR_PARTC\n"));
    }
};

QTEST_MAIN(TestItr8)
#include "tst_itr8.moc"
