#include "masters/frmduedts.h"

#include "platform/dates.h"
#include "tests/masters/masterscreen.h"

class TestDueDates : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_user = std::make_unique<MasterScreen<frmduedts>>(); }
    void cleanup() { m_user.reset(); }

    void windows_data()
    {
        Columns<QString, QString, QString, QString>({"year", "cell", "from", "to"}); // no end: open to the future
        Case("return 2006", "2006-07", "vsf 4 2", "01/04/2006", "31/03/2007");
        Case("quarter 4 of 2007", "2007-08", "vsf1 4 2", "15/03/2007", "");
        Case("instalment 2 of 2008", "2008-09", "vsf1 2 1", "15/09/2007", "30/09/2007");
        Case("instalment 3 of 2008", "2008-09", "vsf1 3 1", "15/12/2007", "31/12/2007");
    }
    void windows()
    {
        const auto [year, cell, from, to] = Row<QString, QString, QString, QString>();
        openYear(year);
        const QString between = Joined("Date should be between ", from, " and ", to);
        const QDate first = DateFromText(from);
        tryDate(cell, first, {});
        tryDate(cell, first.addDays(-1), to.isEmpty() ? "Date should be Greater than " + from : between);
        tryDate(cell, to.isEmpty() ? first.addYears(20) : DateFromText(to), {});
        if (!to.isEmpty())
            tryDate(cell, DateFromText(to).addDays(1), between);
    }
    void aClickDoesNotLeaveABadDate()
    {
        const QStringList before = tables();
        Grid *vsf = openYear("2008-09");
        vsf->setFocus();
        QTRY_VERIFY(vsf->isEditing());
        m_user->keys("01/01/2001");
        m_user->click("cmdsave");
        QCOMPARE(m_user->said(), QStringList("Date should be between 01/04/2008 and 31/03/2009")); // once
        QVERIFY(vsf->isEditing() && vsf->Row() == 1);
        QCOMPARE(tables(), before);
    }

    /// A missing original date is asked for, can be filled, and is closed again.
    void aMissingDateIsAskedFor_data()
    {
        Columns<QString, QString, QString, QString, QString>({"year", "grid", "table", "column", "date"});
        Case("return", "2008-09", "vsf", "DueDt_Master", "DueDt", "30/09/2008");
        Case("quarter", "2007-08", "vsf1", "ChallanDt_Master", "ChDt", "15/01/2007");
    }
    void aMissingDateIsAskedFor()
    {
        const auto [year, grid, table, column, date] = Row<QString, QString, QString, QString, QString>();
        const QString row = grid == "vsf" ? "AssYear=2008 and StatC=4" : "AssYear=2007 and Quarter=3";
        QVERIFY(Cnn->Execute(Sql("Update ", table, " Set ", column, "='' Where ", row)));
        openYear(year);
        m_user->click("cmdsave");
        QCOMPARE(m_user->said(), QStringList("Please Specify Due Date."));
        QVERIFY(m_user->grid(grid)->isEditing());
        m_user->keys(date);
        m_user->key(Qt::Key_Return);
        QCOMPARE(editableColumns(grid, 3), QList<int>({2, 3}));
        m_user->click("cmdsave");
        QCOMPARE(m_user->rows(Sql("Select ", column, " from ", table, " Where ", row)), QStringList(date));
    }

    void whatCouldNotBeReadIsNotSaved_data()
    {
        Columns<QString, QString>({"table", "year"});
        Case("return", "DueDt_Master", "2008-09");
        Case("quarters", "ChallanDt_Master", "2007-08");
        Case("instalments", "AdvTaxDueDt", "2008-09");
    }
    void whatCouldNotBeReadIsNotSaved()
    {
        const auto [table, year] = Row<QString, QString>();
        QVERIFY(
            Cnn->Execute("Insert into AdvTaxDueDt Values (2008,'16/06/2007','16/09/2007','16/12/2007','16/03/2008')"));
        const QStringList before = tables();
        m_user->open();
        m_user->answers({Reply::No});
        {
            const WithoutTable gone(table);
            m_user->choose("Combo4", year);
        }
        QCOMPARE(m_user->said().size(), 1);
        QVERIFY(!m_user->screen()->couldRead() && !m_user->enabled("cmdsave"));
        QCOMPARE(editableColumns("vsf") + editableColumns("vsf1"), QList<int>());
        m_user->click("cmdback"); // there is nothing to ask about
        QVERIFY(!m_user->screen()->isVisible());
        QCOMPARE(tables(), before);
    }
    void leavesAYear_data()
    {
        Columns<bool, bool, QString, QString>({"yes", "bad", "shown", "stored"});
        Case("yes", true, false, "2009-10", "30/10/2008");
        Case("no", false, false, "2009-10", "");
        Case("yes with a bad date", true, true, "2008-09", "");
        Case("no with a bad date", false, true, "2009-10", "");
    }
    void leavesAYear()
    {
        const auto [yes, bad, shown, stored] = Row<bool, bool, QString, QString>();
        if (bad)
            QVERIFY(Cnn->Execute("Update DueDt_Master Set DueDt='' Where AssYear=2008 and StatC=4"));
        const Grid *vsf = openYear("2008-09");
        m_user->typeCell("vsf", 1, 2, "30/10/2008");
        m_user->answers({yes ? Reply::Yes : Reply::No});
        m_user->choose("Combo4", "2009-10");
        QStringList said{"Do you want to Save Changes Made in A.Y. 2008-09?"};
        if (yes && bad) {
            said << "Please Specify Due Date.";
            QVERIFY(vsf->Row() == 3 && vsf->Col() == 1 && m_user->focus() == "vsf");
        }
        QCOMPARE(m_user->said(), said);
        QCOMPARE(m_user->find<QComboBox>("Combo4")->currentText(), shown);
        QCOMPARE(m_user->rows("Select RevDueDt from DueDt_Master Where AssYear=2008 and StatC=1").join(u','), stored);
        QCOMPARE(vsf->TextMatrix(1, 2), QString(yes && bad ? "30/10/2008" : ""));
    }

    void theScreenStaysWhenItCouldNotBeSaved()
    {
        openYear("2008-09");
        m_user->typeCell("vsf1", 1, 1, "20/06/2007");
        m_user->answers({Reply::Yes, Reply::Yes});
        {
            const WithoutTable gone("AdvTaxDueDt");
            m_user->click("cmdback");
            QVERIFY(m_user->screen()->isVisible());
        }
        m_user->key(Qt::Key_Escape);
        QVERIFY(!m_user->screen()->isVisible());
        QCOMPARE(m_user->rows("Select Dt1 from AdvTaxDueDt"), QStringList("20/06/2007"));
        QCOMPARE(m_user->said().size(), 2);
    }

private:
    Grid *openYear(const QString &year)
    {
        m_user->open();
        m_user->answers({Reply::No});
        m_user->choose("Combo4", year);
        m_user->said();
        return m_user->grid("vsf");
    }
    /// A date typed in the cell of the row; with a message it must stay in edit.
    void tryDate(const QString &cell, const QDate &date, const QString &message)
    {
        const QString grid = cell.section(u' ', 0, 0);
        const int row = cell.section(u' ', 1, 1).toInt();
        const int col = cell.section(u' ', 2).toInt();
        m_user->typeCell(grid, row, col, DateText(date));
        QCOMPARE(m_user->said().join(u'|'), message);
        QCOMPARE(m_user->grid(grid)->isEditing(), !message.isEmpty());
        if (message.isEmpty())
            QCOMPARE(m_user->grid(grid)->TextMatrix(row, col), DateText(date));
    }
    QList<int> editableColumns(const QString &grid, int row = 1) const
    {
        QList<int> columns;
        for (int col = 0; col < m_user->grid(grid)->Cols(); ++col) {
            if (m_user->grid(grid)->gridModel()->isEditable(row, col))
                columns << col;
        }
        return columns;
    }
    QStringList tables()
    {
        return m_user->rows("Select * from DueDt_Master Order by AssYear,StatC") +
               m_user->rows("Select * from ChallanDt_Master Order by AssYear,Quarter") +
               m_user->rows("Select * from AdvTaxDueDt");
    }

    std::unique_ptr<MasterScreen<frmduedts>> m_user;
};

QTEST_MAIN(TestDueDates)
#include "tst_frmduedts.moc"
