#include "controls/grid.h"
#include "masters/clgrd.h"
#include "masters/clientrecord.h"
#include "masters/clientstatus.h"
#include "tests/masters/clientfixture.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

/// The list of employers: what it shows, how a client is found by typing, and what it tells its owner.
class TestClGrd : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ClientModule> m_module;
    std::unique_ptr<ClGrd> m_grid;
    Grid *m_vsf = nullptr;
    QLineEdit *m_code = nullptr;
    QLineEdit *m_name = nullptr;

    QString count() const { return m_grid->findChild<QLabel *>(QStringLiteral("lblcount"))->text(); }

    QStringList shownCodes() const
    {
        QStringList codes;
        for (int row = 1; row < m_vsf->Rows(); ++row) {
            if (!m_vsf->RowHidden(row))
                codes << m_vsf->TextMatrix(row, 0);
        }
        return codes;
    }

    void addClients(const QStringList &codesAndNames)
    {
        for (const QString &client : codesAndNames)
            employer(m_module->connection, client.section(u'=', 0, 0)).name(client.section(u'=', 1));
    }

private slots:
    void init()
    {
        m_module = std::make_unique<ClientModule>(*server);
        m_grid = std::make_unique<ClGrd>();
        m_vsf = m_grid->findChild<Grid *>(QStringLiteral("vsf"));
        m_code = m_grid->findChild<QLineEdit *>(QStringLiteral("Text1_0"));
        m_name = m_grid->findChild<QLineEdit *>(QStringLiteral("Text1_1"));
        m_grid->resize(900, 400);
        m_grid->show();
        QVERIFY(QTest::qWaitForWindowActive(m_grid.get()));
    }

    void cleanup()
    {
        m_grid.reset();
        m_module.reset();
    }

    void status_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("saved");
        QTest::newRow("individual") << 0 << "Individual" << 0 << 0;
        QTest::newRow("HUF") << 1 << "HUF" << 1 << 1;
        QTest::newRow("former company") << 2 << "" << -1 << -1;
        QTest::newRow("firm") << 3 << "Partnership Firm" << 2 << 3;
        QTest::newRow("juridical person") << 4 << "Artificial Juridical Person" << 6 << 4;
        QTest::newRow("foreign company") << 5 << "Foreign Company" << 10 << 5;
        QTest::newRow("local authority") << 6 << "Local Authority" << 11 << 6;
        QTest::newRow("former 7") << 7 << "" << -1 << -1;
        QTest::newRow("former 8") << 8 << "" << -1 << -1;
        QTest::newRow("AOP") << 9 << "AOP" << 3 << 9;
        QTest::newRow("older AOP") << 10 << "AOP" << 3 << 9;
        QTest::newRow("AOP (Trusts)") << 11 << "AOP (Trusts)" << 4 << 11;
        QTest::newRow("older AOP (Trusts)") << 12 << "AOP (Trusts)" << 4 << 11;
        QTest::newRow("BOI") << 13 << "BOI" << 5 << 13;
        QTest::newRow("older BOI") << 14 << "BOI" << 5 << 13;
        QTest::newRow("public company") << 15 << "Public Limited Company" << 8 << 15;
        QTest::newRow("private company") << 16 << "Private Limited Company" << 9 << 16;
        QTest::newRow("co-operative society") << 17 << "Co-operative Society" << 7 << 17;
        QTest::newRow("unknown") << 18 << "" << -1 << -1;
        QTest::newRow("null") << -1 << "" << -1 << -1;
    }
    void status()
    {
        QFETCH(int, stored);
        QFETCH(QString, text);
        QCOMPARE(StatusText(stored), text);
        QTEST(StatusPosition(stored), "position");
        QTEST(StatusCode(StatusPosition(stored)), "saved");
    }

    void showsClientsByCode()
    {
        addClients({"b2=BETA", "A1=ALPHA"});
        m_module->execute("Insert into FBT_Info (Code_no,Name) Values ('C3','GAMMA')");
        m_grid->DispClGrid();
        QCOMPARE(m_grid->Row(), 1);
        QCOMPARE(m_grid->TextMatrix(1, 1), QStringLiteral("ALPHA"));
        QCOMPARE(m_grid->TextMatrix(1, 2), QStringLiteral("Private Limited Company"));
        QCOMPARE(m_grid->TextMatrix(1, 3), QStringLiteral("AAACA1234A"));
        QCOMPARE(m_grid->TextMatrix(1, 4), QStringLiteral("1, Premises, Road, Area, Town, Delhi-110001"));
        QCOMPARE(m_grid->TextMatrix(2, 0), QStringLiteral("b2"));
        for (const int nullColumn : {2, 3, 4})
            QCOMPARE(m_grid->TextMatrix(3, nullColumn), QString());
        QCOMPARE(count(), QStringLiteral(" No. of Records : 3 "));
        QCOMPARE(m_grid->TextMatrix(0, 4), QStringLiteral("Address"));
        m_grid->DispClGrid();
        QCOMPARE(shownCodes().size(), 3);
    }

    void clearingABoxKeepsTheClient()
    {
        addClients({"A1=ALPHA", "A2=BETA", "A3=BAKERS", "B1=BARBER"});
        m_grid->DispClGrid();
        m_code->setText("A");
        m_name->setText("B");
        m_vsf->setRow(3); // the client chosen
        m_code->clear();
        m_name->clear();
        QCOMPARE(m_grid->TextMatrix(m_grid->Row(), 0), QStringLiteral("A3"));
    }

    void opensOnTheLastClientInSight()
    {
        QStringList clients;
        for (int i = 100; i < 400; ++i)
            clients << QStringLiteral("K%1=CLIENT").arg(i);
        addClients(clients);
        Base->code = QStringLiteral("K399");
        ClGrd later;
        later.DispClGrid();
        later.SelectLastClient();
        later.resize(900, 400);
        later.show();
        const auto *vsf = later.findChild<Grid *>(QStringLiteral("vsf"));
        QTRY_VERIFY(vsf->isRowInView(300));
        later.resize(900, 200);
        QTRY_VERIFY(vsf->isRowInView(300));
    }

    void emptyOrMissingTable()
    {
        m_grid->DispClGrid();
        QCOMPARE(m_grid->Row(), 0);
        QCOMPARE(count(), QStringLiteral(" No. of Records : 0 "));
        QCOMPARE(m_grid->TextMatrix(1, 0), QString());
        m_module->execute("Drop Table FBT_Info");
        m_grid->DispClGrid();
        QCOMPARE(m_vsf->Rows(), 1);
        const QStringList lines = m_module->logLines();
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines[0].startsWith(u"9\t") && lines[0].endsWith(u"\tClGrd\tGET TEXTMATRIX"), qPrintable(lines[0]));
        QVERIFY2(lines[1].startsWith(u"1146\t") && lines[1].endsWith(u"\tClGrd\tDISPCLGRID"), qPrintable(lines[1]));
    }

    void search_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("code, other case") << "a"
                                          << "" << QStringList{"A1", "A2", "AB"};
        QTest::newRow("code that the caption begins with") << "C"
                                                           << "" << QStringList{"C1"};
        QTest::newRow("letter with an accent") << ""
                                               << "É[z" << QStringList{"D2"};
        QTest::newRow("signs that differ as cases do") << "d{"
                                                       << "" << QStringList{};
        QTest::newRow("longer than the code") << "A12"
                                              << "" << QStringList{};
        QTest::newRow("name") << ""
                              << "mo" << QStringList{"A2", "C1"};
        QTest::newRow("code, then name") << "A"
                                         << "mo" << QStringList{"A2"};
        QTest::newRow("matches of each, none of both") << "C"
                                                       << "z" << QStringList{};
        QTest::newRow("inside only") << ""
                                     << "OON" << QStringList{};
        QTest::newRow("all by both") << "A"
                                     << "M" << QStringList{"A1", "A2"};
    }
    void search()
    {
        QFETCH(QString, code);
        QFETCH(QString, name);
        QFETCH(QStringList, shown);
        addClients({"A1=MARS", "A2=MOON", "AB=ZETA", "B1=MINE", "C1=MOLE", "D[=", "D2=é[Zoo"});
        m_grid->DispClGrid();
        m_vsf->setRow(4);
        m_code->setText(code);
        m_name->setText(name);
        QCOMPARE(shownCodes(), shown);
        QCOMPARE(count(), shown.isEmpty() ? QString() : Joined(" No. of Records : ", shown.size(), " "));
        if (!shown.isEmpty())
            QCOMPARE(m_grid->TextMatrix(m_grid->Row(), 0), shown.first());
        m_code->clear();
        m_name->clear();
        QCOMPARE(shownCodes().size(), 7);
        QCOMPARE(count(), QStringLiteral(" No. of Records : 7 "));
    }

    void hiddenRowIsNotOpened()
    {
        addClients({"A1=MARS", "B1=MINE"});
        m_grid->DispClGrid();
        QSignalSpy opened(m_grid.get(), &ClGrd::DblClick);
        m_code->setFocus();
        QTest::keyClicks(m_code, "b");
        QTest::keyClick(m_code, Qt::Key_Return);
        QCOMPARE(opened.size(), 1);
        QCOMPARE(m_grid->Row(), 2);
        QVERIFY(!m_grid->currentHidden());
        QTest::keyClicks(m_code, "x");
        QCOMPARE(m_grid->Row(), 2);
        QVERIFY(m_grid->currentHidden());
        QTest::keyClick(m_code, Qt::Key_Return);
        emit m_vsf->dblClick();
        QCOMPARE(opened.size(), 1);
    }

    void keysBetweenBoxesAndGrid()
    {
        addClients({"A1=MARS"});
        m_grid->DispClGrid();
        QSignalSpy keys(m_grid.get(), &ClGrd::KeyPress);
        m_grid->setFocus();
        QVERIFY(m_vsf->hasFocus());
        QTest::keyClick(m_vsf, Qt::Key_Return);
        QTest::keyClick(m_vsf, Qt::Key_X);
        QCOMPARE(keys, (QList<QVariantList>{{13}, {int('x')}}));
        QTest::keyClick(m_vsf, Qt::Key_Tab);
        QVERIFY(m_code->hasFocus());
        QTest::keyClick(m_code, Qt::Key_Down);
        QVERIFY(m_vsf->hasFocus());
        m_code->setText("zz");
        m_grid->hide();
        m_grid->show();
        QCOMPARE(m_code->text(), QString());
        QCOMPARE(shownCodes(), QStringList{"A1"});
    }

    void sortingLeavesTheHiddenRow()
    {
        addClients({"A1=ZETA", "A2=MOON", "A3=ALPHA"});
        m_grid->DispClGrid();
        m_code->setText("A");
        m_vsf->setRow(1);
        m_vsf->setRowHidden(1, true);
        QTest::mouseClick(m_vsf->horizontalHeader()->viewport(), Qt::LeftButton, {},
                          {m_vsf->horizontalHeader()->sectionViewportPosition(1) + 20, 5});
        QCOMPARE(m_grid->TextMatrix(1, 1), QStringLiteral("ALPHA"));
        QCOMPARE(m_grid->Row(), 1);
        m_grid->DispClGrid(); // by code again, and the arrow says so
        QCOMPARE(m_grid->TextMatrix(1, 1), QStringLiteral("ZETA"));
        QCOMPARE(m_vsf->horizontalHeader()->sortIndicatorSection(), 0);
    }

    void boxesFollowTheirColumns()
    {
        m_grid->DispClGrid();
        m_vsf->setColWidth(0, 200);
        QCOMPARE(m_code->width(), 198);
        QCOMPARE(m_name->mapTo(m_grid.get(), QPoint()).x() - m_code->mapTo(m_grid.get(), QPoint()).x(), 200);
    }

    void lastClient()
    {
        QStringList clients;
        for (int i = 100; i < 200; ++i)
            clients << Sql("K", i, "=NAME ", i);
        addClients(clients);
        m_grid->DispClGrid();
        m_grid->SelectLastClient();
        QCOMPARE(m_grid->Row(), 1);
        Base->code = "K150";
        m_grid->SelectLastClient();
        QCOMPARE(m_grid->Row(), 51);
        QVERIFY(m_vsf->isRowInView(51) && !m_vsf->isRowInView(50));
        for (const char *other : {"k160", "K1", "NONE"}) {
            Base->code = other;
            m_grid->SelectLastClient();
            QCOMPARE(m_grid->Row(), 51);
        }
        m_code->setText("K11");
        Base->code = "K120";
        m_grid->SelectLastClient();
        QCOMPARE(m_grid->TextMatrix(m_grid->Row(), 0), QStringLiteral("K110"));
    }
};

QTEST_MAIN(TestClGrd)
#include "tst_clgrd.moc"
