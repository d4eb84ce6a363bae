#include "db/updater.h"
#include "records/updatemark.h"
#include "tests/db/dump.h"
#include "tests/support/caserow.h"

#include <map>

namespace {

QList<int> items(const QString &ranges)
{
    QList<int> found;
    for (const QString &range : ranges.split(u',')) {
        for (int item = range.section(u'-', 0, 0).toInt(); item <= range.section(u'-', -1).toInt(); ++item)
            found << item;
    }
    return found;
}

} // namespace

/// The update of empty and of older databases: what it sends, and what comes out.
class TestUpdater : public QObject
{
    Q_OBJECT

private slots:
    void sendsTheseStatementsToAnEmptyDatabase()
    {
        TestModule module(m_server);
        QStringList sent;
        module.connection.setObserver([&](const QString &statement) { sent << statement; });
        QVERIFY(UpdateDatabase(&module.connection));
        QCOMPARE(Difference(sent, LinesOf("updater_empty.golden")), QString());
        QCOMPARE(module.logLines(), QStringList());
    }

    void percentagesOfTheLaw()
    {
        TestModule module(m_server);
        UpdateDatabase(&module.connection);
        const QStringList years{QString(), "2006", "2007", "2008", "2009", "2010"};
        for (qsizetype at = 0; at < years.size(); ++at) {
            std::map<int, QString> wanted; // by item: head, rates, and the sum of the natures' numbers
            for (const QString &line : LinesOf("law.txt")) {
                QStringList rates = line.split(u' ');
                for (const int item : items(line.startsWith(u"head") ? rates[2] : rates[1])) {
                    if (line.startsWith(u"head"))
                        wanted[item] = rates[1] == "20" && at < 2 ? "9" : rates[1];
                    for (qsizetype i = 3; i < rates.size(); ++i)
                        rates[i] = rates[i] == "=" ? rates[i - 1] : rates[i];
                    if (line.startsWith(u"rate"))
                        wanted[item] += Joined('|', rates[at + 2], rates[at + 2].contains(u'/') ? "|28" : "|0");
                }
            }
            QStringList lines;
            for (const auto &[item, line] : wanted) {
                if (!line.contains(u'-'))
                    lines << Joined(item, '|', line);
            }
            const QString query =
                Sql("Select Concat_ws('|',i.SrNo,HeadId,Group_concat(IntRt Order by NatId Separator '/'),"
                    "Sum(NatId)) from FBT_ExpHead",
                    years[at], " i Join FBT_ExpRate", years[at],
                    " r On i.SrNo=r.SrNo Group by i.SrNo,HeadId Order by i.SrNo");
            QCOMPARE(Difference(module.rows(query), lines), QString());
        }
    }

    void olderShapeGrows_data()
    {
        // The table, what later versions added, and what it holds in an old row; null: nobody knows what was done to it.
        Columns<QString, QString, QString>({"table", "late", "added"});
        const QString interest = "Calc115WJ Amt115WJ Calc115WK Amt115WK ";
        const QString deferred = "Calc115WJ5 Amt115WJ5 IntDt";
        Case("clients before dates", "FBT_Info", "Doi Email ResSt SexM FName SurApp", "||0|0||00000");
        Case("clients before surcharge", "FBT_Info", "SurApp", "00000");
        Case("payments before numbers", "FBT_Challan", "ChallanNo BSRCode ECAmt1", "|0|0");
        Case("payments before second cess", "FBT_Challan", "ECAmt1", "0");
        Case("payments of a shape of their own", "FBT_Challan", "BSRCode ECAmt1", QString());
        Case("additional before officer", "FBT_AddInfo", "areacd aotyp aorng aono " + interest + deferred,
             "||||1|0|1|0|1|0|");
        Case("additional before interest", "FBT_AddInfo", interest + deferred, "1|0|1|0|1|0|");
        Case("additional before deferment", "FBT_AddInfo", deferred, "1|0|");
        Case("additional before interest date", "FBT_AddInfo", "IntDt", "");
        Case("rates before second cess", "SRate", "ECess1", "0");
    }
    void olderShapeGrows()
    {
        const auto [table, late, added] = Row<QString, QString, QString>();
        TestModule module(m_server);
        UpdateDatabase(&module.connection);
        const QStringList fresh = StructureOf(module);
        Carry(module,
              {"Alter Table " + table + " Drop " + QString(late).replace(" ", ", Drop "), "Delete from " + table});
        if (late.startsWith("areacd"))
            Carry(module, {"Alter Table FBT_AddInfo Change NOB NOB Char(1)"});
        Carry(module,
              {table == "SRate" ? "Insert into SRate (Frm,Rate,yr,mon,dt,ECess) Values ('11/05/2007',12,2007,5,11,2)"
                                : "Insert into " + table + " (Code_No) Values ('A')"});
        const QStringList older = StructureOf(module);
        QVERIFY(UpdateDatabase(&module.connection));
        QCOMPARE(Difference(StructureOf(module), added.isNull() ? older : fresh), QString());
        if (!added.isNull())
            QCOMPARE(module.rows("Select Concat_ws('|'," + QString(late).replace(u' ', u',') + ") from " + table),
                     QStringList{added});
        QCOMPARE(module.logLines(), QStringList());
    }

    void convertsRows_data()
    {
        Columns<QStringList, QString, QString>({"before", "query", "after"});
        QString name;
        QString query;
        QStringList before;
        for (const QString &line : LinesOf("conversions.txt")) {
            if (line.startsWith(u':')) {
                name = line.mid(2);
                before.clear();
            } else if (line.startsWith(u'?')) {
                query = line.mid(2);
            } else if (line.startsWith(u'=')) {
                QTest::newRow(qPrintable(name)) << before << query << line.mid(2);
            } else {
                before << line;
            }
        }
    }
    void convertsRows()
    {
        const auto [before, query, after] = Row<QStringList, QString, QString>();
        TestModule module(m_server);
        UpdateDatabase(&module.connection);
        Carry(module, before);
        QVERIFY(UpdateDatabase(&module.connection));
        QCOMPARE(module.rows(query).join(u' '), after);
        const QStringList once = StructureOf(module) + ContentOf(module.connection);
        QVERIFY(UpdateDatabase(&module.connection));
        QCOMPARE(Difference(StructureOf(module) + ContentOf(module.connection), once), QString());
        QCOMPARE(module.logLines(), QStringList());
    }

    void refusedStatementCostsItself()
    {
        TestModule module(m_server);
        Carry(module, {"Create View DueDt_Master as Select 1 as AssYear", // takes no due dates
                       "Create Table FBT_Nature (Srno Int(11), NatDesc Varchar(255), Extra Int(11))"});
        QVERIFY(UpdateDatabase(&module.connection));
        QCOMPARE(module.rows("Select count(*) from FBT_ExpRate2010"), QStringList{"327"});
        // Seven natures; twenty due dates, two corrections of them, and the search for one.
        QCOMPARE(module.logLines().filter("UPDATEDB\tfrmupdatedb").size(), 7 + 20 + 2 + 1);
        QVERIFY(!UpdateIsMarked(&module.connection));
    }

    void whatBelongsTogetherStaysOut()
    {
        TestModule module(m_server);
        Carry(module,
              {"Create Table SRate (Yr Int(11), Mon Int(11), Dt Int(11), Rate Double, ECess Double, X Int(11), Y "
               "Int(11), Extra Int(11))",
               "Insert into SRate Values (2004,9,10,10,2,0,0,0)",
               "Create Table FBT_Head (HeadId Int(11), Section Varchar(50), HeadDesc Varchar(255), Extra Int(11))",
               "Insert into FBT_Head Values (1,'115WB(2)(A)','Entertainment',0)"});
        for (int start = 0; start < 2; ++start) {         // each finds it as the one before
            QVERIFY(!UpdateDatabase(&module.connection)); // no year has heads
            QVERIFY(UpdateIsMarked(&module.connection));
            QCOMPARE(module.rows("Select Yr,Mon from SRate"), QStringList{"2004\t9"});
            QCOMPARE(module.rows("Select count(*) from FBT_ExpHead2006"), QStringList{"0"});
        }
    }

    void missingTableIsNoSuccess()
    {
        TestModule module(m_server);
        module.connection.setObserver([&](const QString &statement) {
            if (statement == u"Select * from Bill_Type")
                module.rows("Drop Table FBT_SalDet");
        });
        QVERIFY(!UpdateDatabase(&module.connection));
        module.connection.setObserver({});
        QVERIFY(UpdateIsMarked(&module.connection));
        QVERIFY(UpdateDatabase(&module.connection) && !UpdateIsMarked(&module.connection));
    }

private:
    TestServer m_server;
};

QTEST_GUILESS_MAIN(TestUpdater)
#include "tst_updater.moc"
