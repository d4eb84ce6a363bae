#include "db/updater.h"
#include "tests/db/dump.h"
#include "tests/support/testmodule.h"

#include <QTest>

/// The law as the masters hold it, and how the updater carries a user's own rows through its changes.
class TestLaw : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void percentages_data();
    void percentages();
    void percentagesAreComplete();
    void textsAsDelivered_data();
    void textsAsDelivered();
    void headsByYear_data();
    void headsByYear();
    void dueDates();
    void instalmentDates();
    void userHeadMovesUp();
    void copyInheritsAndLawIsAppliedAgain();
    void sharesTakeTheNextFreeNumbers();
    void filledYearIsNotFilledAgain();

private:
    QStringList ask(const QString &query) { return m_fresh->rows(query); }

    TestServer m_server;
    std::unique_ptr<TestModule> m_fresh;
};

namespace {

QStringList ratesOf(TestModule &module, const QString &year, int item)
{
    return module.rows(Sql("Select NatId,IntRt from FBT_ExpRate", year, " Where SrNo=", item, " Order by NatId"));
}

QStringList expectedRates(const QString &pattern)
{
    if (!pattern.contains(u'/'))
        return {Sql("0\t", pattern)};
    QStringList rows;
    int nature = 0;
    for (const QString &rate : pattern.split(u'/'))
        rows << Sql(++nature, "\t", rate);
    return rows;
}

} // namespace

void TestLaw::initTestCase()
{
    m_fresh = std::make_unique<TestModule>(m_server);
    UpdateDatabase(&m_fresh->connection);
}

// One line for each kind of rate: head, items, the base and the years 2006 to 2010; "=" is "as before".
void TestLaw::percentages_data()
{
    QTest::addColumn<QString>("line");
    const char *lines[] = {
        "1|1-4|0 = = = = =",
        "2|5,6|100 = = = = =",
        "3|7|100 = = = = =",
        "4|8-14|20 = = = = =",
        "5|15-17|0 = = = = =",
        "5|18-24|5/20/20/20/20/20/20 = 5/20/20/20/20/5/20 = = =",
        "6|25,26,31|0 = = = = =",
        "6|27-30,32|20 = = = = =",
        "7|33-37,39-42|0 = = = = =",
        "7|38,43,44|20 = = = = =",
        "8|45-48|0 = = = = =",
        "8|49-56|20 = = = = =",
        "9|57,61,62|20/5/5/5/20/20/20 = = = = =",
        "20|58-60,63,64|20/5/5/5/20/20/20 = 5 = = =",
        "10|65-68|20/20/5/5/20/20/20 = 20/20/5/5/20/5/20 = = =",
        "11|69-77|20/20/20/20/5/20/20 = = = = =",
        "12|78-86|20/20/20/20/20/5/20 20/20/20/20/20/0/20 = = = =",
        "13|87,88,91,92|20 = = = = =",
        "13|89,90,93|0 = = = = =",
        "14|94,99|0 = = = = =",
        "14|95-98,100,101|20 = = = 0 =",
        "15|102-108|50 = = = 20 =",
        "16|109-119|50 = = = = =",
        "17|120-124|50 = = = = =",
        "18|125-131|50 = = = = =",
        "19|132-134|50 = = = = =",
    };
    for (const char *line : lines)
        QTest::newRow(line) << line;
}

void TestLaw::percentages()
{
    QFETCH(QString, line);
    const QStringList parts = line.split(u'|');
    const QStringList patterns = parts[2].split(u' ');
    const QStringList years{QString(), "2006", "2007", "2008", "2009", "2010"};
    for (const QString &range : parts[1].split(u',')) {
        for (int item = range.section(u'-', 0, 0).toInt(); item <= range.section(u'-', -1).toInt(); ++item) {
            QString pattern;
            for (qsizetype i = 0; i < years.size(); ++i) {
                pattern = patterns[i] == u"=" ? pattern : patterns[i];
                const QString when = Sql("item ", item, " in '", years[i], "'");
                QVERIFY2(ratesOf(*m_fresh, years[i], item) == expectedRates(pattern), qPrintable(when));
                const bool tourYet = years[i] >= u"2007";
                const QString head = parts[0] == u"20" && !tourYet ? QStringLiteral("9") : parts[0];
                QVERIFY2(ask(Sql("Select HeadId from FBT_ExpHead", years[i], " Where SrNo=", item)) ==
                             QStringList{head},
                         qPrintable(when));
            }
        }
    }
}

void TestLaw::percentagesAreComplete()
{
    const auto counts = [this](const QString &year) {
        return ask(Sql("Select (Select count(*) from FBT_Head", year, "),(Select count(*) from FBT_ExpHead", year,
                       "),(Select count(*) from FBT_ExpRate", year, ")"))
            .constFirst();
    };
    QCOMPARE(counts(QString()), QStringLiteral("19\t134\t356"));
    QCOMPARE(counts(QStringLiteral("2006")), QStringLiteral("19\t134\t356"));
    QCOMPARE(counts(QStringLiteral("2007")), QStringLiteral("20\t134\t326")); // five items lose six rates each
    for (const char *year : {"2008", "2009", "2010"}) {
        QCOMPARE(counts(year), QStringLiteral("21\t135\t327"));
        QCOMPARE(ratesOf(*m_fresh, year, 135), QStringList{"0\t100"});
    }
    // In the order of writing: an item's rates stand behind those of the item before.
    QCOMPARE(ask("Select SrNo,NatId from FBT_ExpRate").mid(14, 12).join(u' '),
             QStringLiteral("15\t0 16\t0 17\t0 18\t1 18\t2 18\t3 18\t4 18\t5 18\t6 18\t7 19\t1 19\t2"));
}

// Texts whose slips users and exchanged files know.
void TestLaw::textsAsDelivered_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("text");
    const auto item = [](int srNo, const char *text) {
        QTest::addRow("item %d", srNo) << Sql("Select ExpDesc from FBT_ExpHead Where SrNo=", srNo) << text;
    };
    item(12, "Entertainment of Foreign delgates");
    item(15, "Food to employees(inside business premises)");
    item(16, "Beverages to employess(inside business premises)");
    item(30, "Hotel, Boarding & Lodging for conference");
    item(32, "Any other Conferefence Expenses");
    item(37, "Sponsorship of sports (Govt. /Trade Assoc. Organised)");
    item(39, "Statutory noticed in print / electronic media");
    item(51, "Crech for Employees Children");
    item(68, "Any Other expense  by employees");
    item(92, "Rented Mobile Instruments to emloyees");
    item(108, "Diwali / Christmas /New Year Parties for employees");
    item(127, "Gift at the time of Retiremnet");
    item(134, "Any other Scholarship expense  to employees family");
    QTest::newRow("head 3") << "Select HeadDesc from FBT_Head Where HeadId=3"
                            << "Contribution to an approved super annutation fund";
    QTest::newRow("head 16") << "Select HeadDesc from FBT_Head Where HeadId=16"
                             << "Health Club, Gym, Yoga Centre etc.";
    QTest::newRow("natures") << "Select Group_concat(NatDesc Order by Srno Separator ';') from FBT_Nature"
                             << "Hotel Business;Construction Business;Pharamceuticals (Manufacturer / Producer);"
                                "Computer Software (Manufacturer / Production);Carry of Passengers/ Goods by Motor Car;"
                                "Carry of Passengers/ Goods by Aircraft;Any Other Business";
    QTest::newRow("bill types") << "Select Group_concat(Description,STaxApp Separator ';') from Bill_Type"
                                << "COMPANY1;SERVICE TAX1;INCOME TAX1;EXCISE1;TAX AUDIT FEES1;COMPANY AUDIT FEES1;"
                                   "INCOME TAX RETURN FILING FEES0;CONSULTANCY SERVICES1;MANAGEMENT SERVICES1;"
                                   "SYSTEM AUDIT FEES1;EXPENSES0;OTHERS0";
    QTest::newRow("service tax") << "Select Group_concat(Concat_ws(' ',Frm,Rate,yr,mon,dt,ECess,ECess1) Separator ';') "
                                    "from SRate"
                                 << "01/07/1994 5 1994 7 1 0 0;14/05/2003 8 2003 5 14 0 0;10/09/2004 10 2004 9 10 2 0;"
                                    "18/04/2006 12 2006 4 18 2 0;11/05/2007 12 2007 5 11 2 1";
}

void TestLaw::textsAsDelivered()
{
    QFETCH(QString, query);
    QFETCH(QString, text);
    QCOMPARE(ask(query), QStringList{text});
}

void TestLaw::headsByYear_data()
{
    QTest::addColumn<QString>("year");
    QTest::addColumn<QString>("changed");
    const QString tour = QStringLiteral("9 115WB(2)(F) Conveyance;20 115WB(2)(Q) Tour, Travel and Foreign Travel");
    const QString shares = tour + QStringLiteral(";21 115WB(1)(d) Any specified security or sweat equity shares "
                                                 "allotted or transferred");
    QTest::newRow("base") << QString() << "9 115WB(2)(F) Conveyance, tour and travel";
    QTest::newRow("2006") << "2006"
                          << "9 115WB(2)(F) Conveyance, tour and travel";
    QTest::newRow("2007") << "2007" << tour;
    QTest::newRow("2008") << "2008" << shares;
    QTest::newRow("2009") << "2009" << shares;
    QTest::newRow("2010") << "2010" << shares;
}

void TestLaw::headsByYear()
{
    QFETCH(QString, year);
    QFETCH(QString, changed);
    QCOMPARE(ask(Sql("Select Concat_ws(' ',HeadId,Section,HeadDesc) from FBT_Head", year,
                     " Where HeadId=9 or HeadId>19 Order by HeadId"))
                 .join(u';'),
             changed);
}

void TestLaw::dueDates()
{
    QStringList expected;
    for (int year = 2006; year <= 2010; ++year) {
        const QString audited = Sql(year <= 2007 ? "31/10/" : "30/09/", year);
        for (int assesseeClass = 1; assesseeClass <= 4; ++assesseeClass)
            expected << Sql(year, "\t", assesseeClass, "\t", assesseeClass == 3 ? Sql("31/07/", year) : audited);
    }
    QCOMPARE(ask("Select AssYear,StatC,DueDt from DueDt_Master"), expected);
    const QString order = QStringLiteral("\tOrder F.No. 225/147/2007-ITA-II(Pt.) dated 31/10/2007");
    QCOMPARE(
        ask("Select AssYear,StatC,RevDueDt,Notification from DueDt_Master Where RevDueDt<>'' or Notification<>''"),
        (QStringList{"2006\t1\t30/11/2006\tOrder F. No. 133/38/2006-TPL(Pt) dated 24/10/2006",
                     "2006\t3\t31/10/2006\tOrder F. No. 142/41/2005-TPL(Pt) dated 24/07/2006",
                     "2007\t1\t15/11/2007" + order, "2007\t2\t15/11/2007" + order, "2007\t4\t02/11/2007" + order}));
}

void TestLaw::instalmentDates()
{
    const QStringList rows = ask("Select * from ChallanDt_Master");
    QCOMPARE(rows.size(), 20);
    QCOMPARE(rows[0], QStringLiteral("2006\t1\t15/07/2005\t31/08/2005\t"));
    QCOMPARE(rows.mid(1, 4), (QStringList{"2006\t2\t15/10/2005\t\t", "2006\t3\t15/01/2006\t\t",
                                          "2006\t4\t15/03/2006\t\t", "2007\t1\t15/07/2006\t\t"}));
    QCOMPARE(rows[19], QStringLiteral("2010\t4\t15/03/2010\t\t"));
}

// A user had added heads before tour and travel became one.
void TestLaw::userHeadMovesUp()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    Carry(module, {"Delete from FBT_Head2007 Where HeadId=20",
                   "Insert into FBT_Head2007 Values (20,'X','Own'),(25,'Y','Other')",
                   "Update FBT_ExpHead2007 Set HeadId=9 Where HeadId=20",
                   "Insert into FBT_ExpHead2007 Values (200,20,'Own item')"});
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows("Select HeadId,HeadDesc from FBT_Head2007 Where HeadId>=20 Order by HeadId"),
             (QStringList{"20\tTour, Travel and Foreign Travel", "21\tOwn", "26\tOther"}));
    QCOMPARE(module.rows("Select SrNo from FBT_ExpHead2007 Where HeadId>=20 Order by HeadId,SrNo"),
             (QStringList{"58", "59", "60", "63", "64", "200"}));
    QCOMPARE(module.rows("Select HeadId from FBT_ExpHead2007 Where SrNo=200"), QStringList{"21"});
}

void TestLaw::copyInheritsAndLawIsAppliedAgain()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    Carry(module,
          {"Update FBT_ExpRate2009 Set IntRt=20 Where SrNo=95", "Update FBT_ExpRate2009 Set IntRt=50 Where SrNo=102",
           "Update FBT_ExpRate2009 Set IntRt=35 Where SrNo=103", "Update FBT_ExpRate2008 Set IntRt=33 Where SrNo=95",
           "Update FBT_ExpRate2006 Set IntRt=20 Where SrNo=65 and NatId=6", // not yet the law of that year
           "Update FBT_ExpRate2007 Set IntRt=20 Where SrNo=65 and NatId=6",
           "Delete from FBT_ExpHead2009 Where HeadId=12", "Delete from FBT_Head2009 Where HeadId=12",
           "Insert into FBT_Head2009 Values (40,'Z','Own')", "Delete from FBT_Head2010", "Delete from FBT_ExpHead2010",
           "Delete from FBT_ExpRate2010"});
    UPDATEDB(&module.connection);
    const auto rate = [&](const char *year, int item, int nature) {
        return module.rows(Sql("Select IntRt from FBT_ExpRate", year, " Where SrNo=", item, " and NatId=", nature))
            .join(u',');
    };
    QCOMPARE(rate("2009", 95, 0), QStringLiteral("0"));
    QCOMPARE(rate("2009", 102, 0), QStringLiteral("20"));
    QCOMPARE(rate("2009", 103, 0), QStringLiteral("35"));
    QCOMPARE(rate("2010", 103, 0), QStringLiteral("35"));
    QCOMPARE(rate("2008", 95, 0), QStringLiteral("33"));
    QCOMPARE(rate("2006", 65, 6), QStringLiteral("20"));
    QCOMPARE(rate("2007", 65, 6), QStringLiteral("5"));
    QCOMPARE(module.rows("Select HeadId from FBT_Head2010 Where HeadId in (12,40)"), QStringList{"40"});
    QCOMPARE(module.rows("Select * from FBT_ExpHead2010 Where HeadId=12"), QStringList());
}

void TestLaw::sharesTakeTheNextFreeNumbers()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    Carry(module,
          {"Delete from FBT_Head2008 Where HeadId=21", "Delete from FBT_ExpHead2008 Where SrNo=135",
           "Insert into FBT_Head2008 Values (30,'Z','Own')", "Insert into FBT_ExpHead2008 Values (150,30,'Own')",
           "Insert into FBT_ExpRate2008 Values (151,3,77)"}); // a rate left behind by a deleted item
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows("Select HeadId from FBT_Head2008 Where Section='115WB(1)(d)'"), QStringList{"31"});
    QCOMPARE(module.rows("Select SrNo,HeadId from FBT_ExpHead2008 Where HeadId=31"), QStringList{"151\t31"});
    QCOMPARE(ratesOf(module, "2008", 151), QStringList{"0\t100"});
    QVERIFY(module.rows("Select ExpDesc from FBT_ExpHead2008 Where SrNo=151")
                .constFirst()
                .endsWith(u"directly or indirectly, by the employer free of cost or at concessional rate to his "
                          u"employees (including former employee or employees)"));
}

// The heads alone tell whether a year was filled.
void TestLaw::filledYearIsNotFilledAgain()
{
    TestModule module(m_server);
    UpdateDatabase(&module.connection);
    Carry(module, {"Delete from FBT_ExpHead2006", "Delete from FBT_ExpRate2006"});
    UPDATEDB(&module.connection);
    QCOMPARE(module.rows("Select * from FBT_ExpHead2006"), QStringList());
    QCOMPARE(module.rows("Select * from FBT_ExpRate2006"), QStringList());
}

QTEST_GUILESS_MAIN(TestLaw)
#include "tst_law.moc"
