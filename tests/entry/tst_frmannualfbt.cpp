#include "entry/annualrows.h"
#include "entry/frmannualfbt.h"
#include "tests/entry/entrydesk.h"

#include <QRegularExpression>

namespace {

class AnnualDesk : public EntryDesk
{
public:
    AnnualDesk(std::initializer_list<int> natures)
        : EntryDesk(2008, natures)
    {
    }
    void openOn(int nature)
    {
        auto *annual = new frmannualfbt({"A1", 2008});
        annual->Load();
        annual->INITDATA(nature);
        sitAt(annual);
    }
    void row(int quarter, int nature, int srNo, int expId, double amount)
    {
        Cnn->Execute(Sql("Insert into FBT_Detail Values('A1',2008,", quarter, ",", nature, ",", srNo, ",", expId, ",",
                         amount, ")"));
    }
};

} // namespace

/// All quarters of an expense in one line.
class TestFrmAnnualFbt : public QObject
{
    Q_OBJECT
private slots:
    void linesOfTheYear()
    {
        const auto row = [](int quarter, int srNo, int expId, double amount) {
            return Expense{quarter, 1, 9, expId, 20, amount, srNo};
        };
        QStringList texts;
        for (const AnnualRow &line : LineUp({row(2, 4, 57, 100), row(1, 1, 57, 12.5), row(2, 5, 57, 300),
                                             row(3, 2, 60, 7), row(0, 9, 57, 1), row(5, 9, 57, 1), row(1, 2, 60, 0)})) {
            QStringList cells{QString::number(line.expId)};
            for (const auto &cell : line.quarters)
                cells << (cell ? QStringLiteral("%1=%2/%3").arg(cell->srNo).arg(cell->amount).arg(cell->value) : "-");
            texts << QStringLiteral("%1 %2 %3").arg(cells.join(u' ')).arg(line.amount()).arg(line.value());
        }
        // 20% of 12.5 = 2.5, to the even 2; of 7 = 1.4
        QCOMPARE(texts, QStringList({"57 1=12.5/2 4=100/20 - - 112.5 22", "57 - 5=300/60 - - 300 60",
                                     "60 2=0/0 - 2=7/1 - 7 1"}));
    }

    /// Rows of other hands that have no number: one with an amount gets a number when it is changed, one without stays;
    /// and so do all others that have no number.
    void rowsWithoutNumber()
    {
        const QString other = "2\t2\t0\t58\t70";
        const QString empty = "2\t1\t0\t57\t0";
        const struct
        {
            const char *name;
            double second;     // amount of the line's row without number in the second quarter
            QString typed;     // into that quarter; empty: the line is deleted
            QStringList after; // of that quarter
        } rows[] = {
            {"amount changed", 20, "25", {other, "2\t1\t1\t57\t25"}},
            {"amount cleared", 20, "0", {other}},
            {"nothing stays nothing", 0, "0", {empty, other}},
            {"nothing gets an amount", 0, "25", {empty, other, "2\t1\t1\t57\t25"}},
            {"line deleted", 0, "", {empty, other}},
        };
        for (const auto &row : rows) {
            AnnualDesk desk{1};
            desk.row(1, 1, 1, localConveyance, 10);
            desk.row(2, 1, 0, localConveyance, row.second);
            desk.row(2, 2, 0, 58, 70);
            desk.openOn(1);
            if (row.typed.isEmpty()) {
                desk.answers({Reply::Yes});
                desk.click("cmddeleteded");
            } else {
                desk.click("cmdmodifyded");
                desk.type("txtdedflds_3", row.typed);
                desk.click("cmdupdateded");
            }
            QVERIFY2(desk.details().filter(QRegularExpression("^2")) == row.after, row.name);
            desk.said();
        }
    }

    /// Without a highest number there is no new one: number 1 would replace the row that has it. Nothing of the line is
    /// saved then.
    void noNumberNoSave()
    {
        AnnualDesk desk{1};
        desk.client.expense(2008, 1, 1, localConveyance, 10).expense(2008, 4, 1, festival, 40);
        desk.openOn(1);
        desk.click("cmdmodifyded");
        desk.type("txtdedflds_2", "11");
        desk.type("txtdedflds_5", "44");
        Cnn->setObserver([](const QString &statement) {
            if (statement.startsWith(u"Select Max"))
                database->server.kill();
        });
        desk.click("cmdupdateded");
        Cnn->setObserver({});
        database->server.restart();
        QCOMPARE(desk.details(), QStringList({"1\t1\t1\t57\t10", "4\t1\t1\t102\t40"}));
        QVERIFY(desk.enabled("Frame4"));
        QCOMPARE(desk.text("txtdedflds_5"), "44.00");
    }
};

QTEST_MAIN(TestFrmAnnualFbt)
#include "tst_frmannualfbt.moc"
