#include "masters/frmduedts.h"

#include "platform/dates.h"
#include "tests/masters/masterscreen.h"

Q_GLOBAL_STATIC(TestServer, server)

using DateScreen = MasterScreen<frmduedts>;

class TestDueDates : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_law = std::make_unique<LawDatabase>(*server); }
    void cleanupTestCase() { m_law.reset(); }
    void init() { m_user = std::make_unique<DateScreen>(*m_law); }
    void cleanup()
    {
        QVERIFY(m_user->otherUnchanged());
        m_user.reset();
    }

    void windows_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<QString>("cell"); // grid, row, column
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to"); // empty: open to the future
        QTest::newRow("return 2006") << "2006-07"
                                     << "vsf 4 2"
                                     << "01/04/2006"
                                     << "31/03/2007";
        QTest::newRow("return 2007") << "2007-08"
                                     << "vsf 1 2"
                                     << "01/04/2007"
                                     << "31/03/2008";
        QTest::newRow("return 2008") << "2008-09"
                                     << "vsf 3 2"
                                     << "01/04/2008"
                                     << "31/03/2009";
        QTest::newRow("quarter 1 of 2007") << "2007-08"
                                           << "vsf1 1 2"
                                           << "15/07/2006"
                                           << "";
        QTest::newRow("quarter 4 of 2007") << "2007-08"
                                           << "vsf1 4 2"
                                           << "15/03/2007"
                                           << "";
        QTest::newRow("instalment 1 of 2008") << "2008-09"
                                              << "vsf1 1 1"
                                              << "15/06/2007"
                                              << "30/06/2007";
        QTest::newRow("instalment 2 of 2008") << "2008-09"
                                              << "vsf1 2 1"
                                              << "15/09/2007"
                                              << "30/09/2007";
        QTest::newRow("instalment 3 of 2008") << "2008-09"
                                              << "vsf1 3 1"
                                              << "15/12/2007"
                                              << "31/12/2007";
        QTest::newRow("instalment 4 of 2008") << "2008-09"
                                              << "vsf1 4 1"
                                              << "15/03/2008"
                                              << "31/03/2008";
    }
    void windows()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        openYear();
        const QString between = Sql("Date should be between ", from, " and ", to);
        const QString tooEarly = to.isEmpty() ? "Date should be Greater than " + from : between;
        const QDate first = DateFromText(from);
        tryDate(DateText(first), {});
        tryDate(DateText(first.addDays(-1)), tooEarly);
        if (to.isEmpty()) {
            tryDate(DateText(first.addYears(20)), {});
            return;
        }
        const QDate last = DateFromText(to);
        tryDate(DateText(last), {});
        tryDate(DateText(last.addDays(1)), between);
    }

    void typedForms_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("taken");
        QTest::newRow("short date") << "2008-09"
                                    << "vsf 1 2"
                                    << "1-10-08"
                                    << "01/10/2008";
        QTest::newRow("digits") << "2008-09"
                                << "vsf 1 2"
                                << "011008"
                                << "01/10/2008";
        QTest::newRow("no date") << "2008-09"
                                 << "vsf 1 2"
                                 << "later"
                                 << "";
        QTest::newRow("emptied") << "2007-08"
                                 << "vsf 1 2"
                                 << ""
                                 << "";
        QTest::newRow("instalment emptied") << "2008-09"
                                            << "vsf1 3 1"
                                            << ""
                                            << "15/12/2007";
        QTest::newRow("notification") << "2008-09"
                                      << "vsf 1 3"
                                      << "Order no. 1"
                                      << "ORDER NO. 1";
        QTest::newRow("too long a notification") << "2008-09"
                                                 << "vsf 1 3" << QString(300, 'X') << QString(255, 'X');
    }
    void typedForms()
    {
        QFETCH(QString, cell);
        QFETCH(QString, typed);
        openYear();
        const auto [grid, row, col] = place(cell);
        if (typed.size() > 255)
            pasteCell(grid, row, col, typed);
        else
            m_user->typeCell(grid, row, col, typed);
        QTEST(m_user->grid(grid)->TextMatrix(row, col), "taken");
        QCOMPARE(m_user->said(), QStringList());
    }

    void anArrowDoesNotLeaveABadDate()
    {
        openYear("2008-09");
        Grid *vsf = m_user->grid("vsf");
        vsf->setFocus();
        QTRY_VERIFY(vsf->isEditing());
        QTest::keyClicks(QApplication::focusWidget(), "01/01/2001");
        m_user->key(Qt::Key_Down);
        QCOMPARE(m_user->said(), QStringList("Date should be between 01/04/2008 and 31/03/2009"));
        QVERIFY(vsf->isEditing());
        QCOMPARE(vsf->Row(), 1);
    }

    void aClickDoesNotLeaveABadDate()
    {
        openYear("2008-09");
        Grid *vsf = m_user->grid("vsf");
        vsf->setFocus();
        QTRY_VERIFY(vsf->isEditing());
        QTest::keyClicks(QApplication::focusWidget(), "01/01/2001");
        m_user->statements.clear();
        m_user->click("cmdsave");
        QCOMPARE(m_user->said(), QStringList("Date should be between 01/04/2008 and 31/03/2009")); // once
        QVERIFY(vsf->isEditing());
        QCOMPARE(m_user->statements, QStringList());
        QTest::keyClicks(QApplication::focusWidget(), "01/10/2008");
        m_user->key(Qt::Key_Return);
        QCoreApplication::processEvents();
        QVERIFY(!vsf->isEditing());
        QCOMPARE(vsf->TextMatrix(1, 2), QString("01/10/2008"));
    }

    /// A missing original date is asked for, can be filled, and is closed again.
    void aMissingDateIsAskedFor_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("date");
        QTest::newRow("return") << "2008-09"
                                << "vsf"
                                << "DueDt_Master"
                                << "DueDt"
                                << "AssYear=2008 and StatC=4"
                                << "30/09/2008";
        QTest::newRow("quarter") << "2007-08"
                                 << "vsf1"
                                 << "ChallanDt_Master"
                                 << "ChDt"
                                 << "AssYear=2007 and Quarter=3"
                                 << "15/01/2007";
    }
    void aMissingDateIsAskedFor()
    {
        QFETCH(QString, grid);
        QFETCH(QString, table);
        QFETCH(QString, column);
        QFETCH(QString, row);
        QFETCH(QString, date);
        QVERIFY(Cnn->Execute(Sql("Update ", table, " Set ", column, "='' Where ", row)));
        openYear();
        QCOMPARE(editableColumns(grid, 3), QList<int>({2, 3}));
        m_user->click("cmdsave");
        QCOMPARE(m_user->said(), QStringList("Please Specify Due Date."));
        QVERIFY(m_user->grid(grid)->isEditing());
        QTest::keyClicks(QApplication::focusWidget(), date);
        m_user->key(Qt::Key_Return);
        QCOMPARE(editableColumns(grid, 3), QList<int>({2, 3}));
        m_user->click("cmdsave");
        QCOMPARE(m_user->said(), QStringList());
        QCOMPARE(m_user->module.rows(Sql("Select ", column, " from ", table, " Where ", row)), QStringList(date));
    }

    void whatCouldNotBeReadIsNotSaved_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("year");
        QTest::newRow("return") << "DueDt_Master"
                                << "2008-09";
        QTest::newRow("quarters") << "ChallanDt_Master"
                                  << "2007-08";
        QTest::newRow("instalments") << "AdvTaxDueDt"
                                     << "2008-09";
    }
    void whatCouldNotBeReadIsNotSaved()
    {
        QFETCH(QString, table);
        const QString own = "Insert into AdvTaxDueDt Values (2008,'16/06/2007','16/09/2007','16/12/2007','16/03/2008')";
        QVERIFY(Cnn->Execute(own));
        const QStringList before = tables();
        QVERIFY(Cnn->Execute("Rename Table " + table + " to Away"));
        openYear();
        QVERIFY(Cnn->Execute("Rename Table Away to " + table));
        QVERIFY(!m_user->screen->couldRead());
        QVERIFY(!m_user->enabled("cmdsave"));
        QCOMPARE(editableColumns("vsf") + editableColumns("vsf1"), QList<int>());
        m_user->click("cmdback");
        QVERIFY(!m_user->screen->isVisible());
        QCOMPARE(m_user->said(), QStringList()); // there is nothing to ask about
        QCOMPARE(tables(), before);
    }

    void savesWhatItShows_data()
    {
        QTest::addColumn<QString>("year");
        for (const char *year : {"2006-07", "2007-08", "2008-09"})
            QTest::newRow(year) << year;
    }
    void savesWhatItShows()
    {
        const QStringList before = tables();
        openYear();
        QCOMPARE(m_user->grid("vsf")->TextMatrix(3, 0),
                 QString("Other than Company and Partnership Firm Whose accounts are required to be Audited"));
        m_user->click("cmdsave");
        QCOMPARE(tables(), before);
        QCOMPARE(m_user->said(), QStringList());
    }

    void anyOtherAssesseeIsClassThree()
    {
        openYear("2007-08");
        QCOMPARE(m_user->grid("vsf")->TextMatrix(3, 2), QString("02/11/2007"));
        m_user->typeCell("vsf", 4, 2, "10/08/2007");
        m_user->typeCell("vsf1", 2, 2, "20/10/2006");
        m_user->click("cmdsave");
        QCOMPARE(m_user->module.rows("Select RevDueDt from DueDt_Master Where AssYear=2007 Order by StatC"),
                 QStringList({"15/11/2007", "15/11/2007", "10/08/2007", "02/11/2007"}));
        QCOMPARE(m_user->module.rows("Select * from ChallanDt_Master Where AssYear=2007 and Quarter=2"),
                 QStringList("2007\t2\t15/10/2006\t20/10/2006\t"));
        m_user->user.answer(Reply::No);
        m_user->choose("Combo4", "2008-09");
        m_user->user.answer(Reply::No);
        m_user->choose("Combo4", "2007-08");
        QCOMPARE(m_user->grid("vsf")->TextMatrix(4, 2), QString("10/08/2007"));
        QCOMPARE(m_user->grid("vsf1")->TextMatrix(2, 2), QString("20/10/2006"));
    }

    void datesOfTheLawLeaveNoRow()
    {
        const QString own = "Select * from AdvTaxDueDt";
        openYear("2009-10");
        m_user->typeCell("vsf1", 2, 1, "20/09/2008");
        m_user->click("cmdsave");
        QCOMPARE(m_user->module.rows(own), QStringList("2009\t15/06/2008\t20/09/2008\t15/12/2008\t15/03/2009"));
        m_user->typeCell("vsf1", 2, 1, "");
        m_user->click("cmdsave");
        QCOMPARE(m_user->module.rows(own), QStringList());
        QCOMPARE(m_user->module.rows("Select * from ChallanDt_Master").size(), 20);
    }

    void leavesAYear_data()
    {
        QTest::addColumn<bool>("yes");
        QTest::addColumn<bool>("bad");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("stored");
        QTest::newRow("yes") << true << false << "2009-10"
                             << "30/10/2008";
        QTest::newRow("no") << false << false << "2009-10"
                            << "";
        QTest::newRow("yes with a bad date") << true << true << "2008-09"
                                             << "";
        QTest::newRow("no with a bad date") << false << true << "2009-10"
                                            << "";
    }
    void leavesAYear()
    {
        QFETCH(bool, yes);
        QFETCH(bool, bad);
        if (bad)
            QVERIFY(Cnn->Execute("Update DueDt_Master Set DueDt='' Where AssYear=2008 and StatC=4"));
        openYear("2008-09");
        m_user->typeCell("vsf", 1, 2, "30/10/2008");
        m_user->user.answer(yes ? Reply::Yes : Reply::No);
        m_user->choose("Combo4", "2009-10");
        QCOMPARE(m_user->user.records().at(0).box.title, QString("Confirmation"));
        QStringList said{"Do you want to Save Changes Made in A.Y. 2008-09?"};
        if (yes && bad) {
            said << "Please Specify Due Date.";
            QCOMPARE(m_user->grid("vsf")->Row(), 3);
            QCOMPARE(m_user->grid("vsf")->Col(), 1);
            QCOMPARE(m_user->focus(), QString("vsf"));
        }
        QCOMPARE(m_user->said(), said);
        QTEST(m_user->find<QComboBox>("Combo4")->currentText(), "shown");
        QTEST(m_user->module.rows("Select RevDueDt from DueDt_Master Where AssYear=2008 and StatC=1").join(u','),
              "stored");
        QCOMPARE(m_user->grid("vsf")->TextMatrix(1, 2), QString(yes && bad ? "30/10/2008" : ""));
    }

    void leavingTheScreenAsksToSave()
    {
        openYear("2008-09");
        m_user->typeCell("vsf1", 1, 1, "20/06/2007");
        QVERIFY(Cnn->Execute("Rename Table AdvTaxDueDt to Away"));
        m_user->user.answer(Reply::Yes);
        m_user->click("cmdback");
        QVERIFY(m_user->screen->isVisible()); // it could not be saved
        QVERIFY(Cnn->Execute("Rename Table Away to AdvTaxDueDt"));
        m_user->user.answer(Reply::Yes);
        m_user->key(Qt::Key_Escape);
        QVERIFY(!m_user->screen->isVisible());
        const QString question = "Do you want to Save Changes Made in A.Y. 2008-09?";
        QCOMPARE(m_user->said(), QStringList({question, question}));
        QCOMPARE(m_user->module.rows("Select Dt1 from AdvTaxDueDt"), QStringList("20/06/2007"));
    }

    void aTextStillInEditIsSaved()
    {
        openYear("2008-09");
        Grid *vsf = m_user->grid("vsf");
        vsf->setFocus();
        vsf->setCell(1, 3);
        QVERIFY(vsf->isEditing());
        QTest::keyClicks(QApplication::focusWidget(), "X");
        m_user->find<QAbstractButton>("cmdsave")->click(); // by its mnemonic: the focus stays in the cell
        QCOMPARE(m_user->module.rows("Select Notification from DueDt_Master Where AssYear=2008 and StatC=1"),
                 QStringList("X"));
        vsf->setFocus();
        vsf->setCell(2, 2);
        QTest::keyClicks(QApplication::focusWidget(), "01/01/2001");
        m_user->find<QAbstractButton>("cmdsave")->click();
        QCOMPARE(m_user->said(), QStringList("Date should be between 01/04/2008 and 31/03/2009"));
        QVERIFY(vsf->isEditing());

        // Behind another window, where no control gets or loses the focus.
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        m_user->find<QAbstractButton>("cmdsave")->click();
        QCOMPARE(m_user->said(), QStringList("Date should be between 01/04/2008 and 31/03/2009"));
        QVERIFY(vsf->isEditing());
        vsf->viewport()->findChild<QLineEdit *>()->setText("01/01/2009");
        m_user->find<QAbstractButton>("cmdsave")->click();
        QVERIFY(!vsf->isEditing());
        QCOMPARE(m_user->focus(), QString("vsf"));
        QCOMPARE(m_user->module.rows("Select RevDueDt from DueDt_Master Where AssYear=2008 and StatC=2"),
                 QStringList("01/01/2009"));
    }

    void anApostropheChangesNothing()
    {
        openYear("2008-09");
        m_user->typeCell("vsf", 1, 3, "the board's order");
        const QStringList before = tables();
        m_user->click("cmdsave");
        QCOMPARE(tables(), before);
        QCOMPARE(m_user->module.logLines().size(), 1);
        QVERIFY(m_user->module.logLines().at(0).endsWith("\tfrmduedts\tSAVEGRID"));
        m_user->typeCell("vsf", 1, 3, "order of the board");
        m_user->click("cmdsave");
        QCOMPARE(m_user->module.rows("Select * from DueDt_Master Where AssYear=2008").size(), 4);
    }

    void aNullNotificationReadsAsZero()
    {
        QVERIFY(Cnn->Execute("Update DueDt_Master Set Notification=Null Where AssYear=2010 and StatC=2"));
        m_user->open();
        QCOMPARE(m_user->grid("vsf")->TextMatrix(2, 3), QString("0"));
        QCOMPARE(m_user->grid("vsf")->TextMatrix(1, 3), QString());
    }

private:
    using Place = std::tuple<QString, int, int>;
    static Place place(const QString &cell)
    {
        const QStringList parts = cell.split(u' ');
        return {parts.at(0), parts.at(1).toInt(), parts.at(2).toInt()};
    }
    void openYear()
    {
        QFETCH(QString, year);
        openYear(year);
    }
    void openYear(const QString &year)
    {
        m_user->open();
        m_user->user.answer(Reply::No);
        m_user->choose("Combo4", year);
        m_user->user.clear();
    }
    /// A date typed in the cell of the row; with a message it must stay in edit.
    void tryDate(const QString &date, const QString &message)
    {
        QFETCH(QString, cell);
        const auto [grid, row, col] = place(cell);
        m_user->typeCell(grid, row, col, date);
        QCOMPARE(m_user->said().join(u'|'), message);
        QCOMPARE(m_user->grid(grid)->isEditing(), !message.isEmpty());
        if (message.isEmpty())
            QCOMPARE(m_user->grid(grid)->TextMatrix(row, col), date);
    }
    void pasteCell(const QString &grid, int row, int col, const QString &text)
    {
        m_user->grid(grid)->setCell(row, col);
        QVERIFY(m_user->grid(grid)->EditCell());
        qobject_cast<QLineEdit *>(QApplication::focusWidget())->setText(text);
        m_user->key(Qt::Key_Return);
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
        return m_user->module.rows("Select * from DueDt_Master Order by AssYear,StatC") +
               m_user->module.rows("Select * from ChallanDt_Master Order by AssYear,Quarter") +
               m_user->module.rows("Select * from AdvTaxDueDt");
    }

    std::unique_ptr<LawDatabase> m_law;
    std::unique_ptr<DateScreen> m_user;
};

QTEST_MAIN(TestDueDates)
#include "tst_frmduedts.moc"
