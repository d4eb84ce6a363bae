#include "db/updater.h"
#include "tests/db/dump.h"
#include "tests/support/testmodule.h"

#include <QTest>

/// The percentages of section 115WC by year, as the masters of a new database hold them.
class TestLaw : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void percentages_data();
    void percentages();
    void percentagesAreComplete();

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
}

QTEST_GUILESS_MAIN(TestLaw)
#include "tst_law.moc"
