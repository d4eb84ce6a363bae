#include "controls/grid.h"
#include "masters/clgrd.h"
#include "masters/clientrecord.h"
#include "masters/statuslist.h"
#include "tests/masters/clientfixture.h"
#include "tests/support/caserow.h"

#include <QLabel>
#include <QLineEdit>
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

    QString count() const { return m_grid->findChild<QLabel *>("lblcount")->text(); }

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
        m_vsf = m_grid->findChild<Grid *>("vsf");
        m_code = m_grid->findChild<QLineEdit *>("Text1_0");
        m_name = m_grid->findChild<QLineEdit *>("Text1_1");
        m_grid->resize(900, 400);
        m_grid->show();
        QVERIFY(QTest::qWaitForWindowActive(m_grid.get()));
    }

    void cleanup()
    {
        m_grid.reset();
        m_module.reset();
    }

    void status()
    {
        const std::vector<std::tuple<int, QString, int, int>> rows{// stored; text, its position, what it is saved as
                                                                   {0, "Individual", 0, 0},
                                                                   {1, "HUF", 1, 1},
                                                                   {2, "", -1, -1},
                                                                   {3, "Partnership Firm", 2, 3},
                                                                   {4, "Artificial Juridical Person", 6, 4},
                                                                   {5, "Foreign Company", 10, 5},
                                                                   {6, "Local Authority", 11, 6},
                                                                   {9, "AOP", 3, 9},
                                                                   {10, "AOP", 3, 9},
                                                                   {11, "AOP (Trusts)", 4, 11},
                                                                   {12, "AOP (Trusts)", 4, 11},
                                                                   {13, "BOI", 5, 13},
                                                                   {14, "BOI", 5, 13},
                                                                   {15, "Public Limited Company", 8, 15},
                                                                   {16, "Private Limited Company", 9, 16},
                                                                   {17, "Co-operative Society", 7, 17},
                                                                   {18, "", -1, -1}};
        for (const auto &[stored, text, position, saved] : rows)
            QVERIFY2(StatusText(stored) == text && StatusPosition(stored) == position && StatusCode(position) == saved,
                     qPrintable(Joined(stored)));
    }

    void showsClientsByCode()
    {
        addClients({"b2=BETA", "A1=ALPHA"});
        m_module->execute("Insert into FBT_Info (Code_no,Name) Values ('C3','GAMMA')");
        m_grid->DispClGrid();
        m_grid->DispClGrid();
        QCOMPARE(shownCodes(), QStringList({"A1", "b2", "C3"}));
        QCOMPARE(m_grid->TextMatrix(3, 2) + m_grid->TextMatrix(3, 3) + m_grid->TextMatrix(3, 4), QString());
        QCOMPARE(m_grid->Row(), 1);
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
        QCOMPARE(m_grid->TextMatrix(m_grid->Row(), 0), "A3");
    }

    void opensOnTheLastClientInSight()
    {
        QStringList clients;
        for (int i = 100; i < 400; ++i)
            clients << QStringLiteral("K%1=CLIENT").arg(i);
        addClients(clients);
        Base->code = "K399";
        ClGrd later;
        later.DispClGrid();
        later.SelectLastClient();
        later.resize(900, 400);
        later.show();
        const auto *vsf = later.findChild<Grid *>("vsf");
        QTRY_VERIFY(vsf->isRowInView(300));
        later.resize(900, 200);
        QTRY_VERIFY(vsf->isRowInView(300));
    }

    void aListThatCannotBeRead()
    {
        addClients({"A1=MARS"});
        m_grid->DispClGrid();
        m_module->execute("Drop Table FBT_Info");
        m_grid->DispClGrid();
        QCOMPARE(m_vsf->Rows(), 2); // it stays as it was
        QCOMPARE(m_module->logLines().size(), 1);
    }

    void search_data()
    {
        Columns<QString, QString, QStringList>({"code", "name", "shown"});
        Case("code, other case", "a", "", QStringList{"A1", "A2", "AB"});
        Case("code that the caption begins with", "C", "", QStringList{"C1"});
        Case("letter with an accent", "", "É[z", QStringList{"D2"});
        Case("signs that differ as cases do", "d{", "", QStringList{});
        Case("name", "", "mo", QStringList{"A2", "C1"});
        Case("code, then name", "A", "mo", QStringList{"A2"});
        Case("matches of each, none of both", "C", "z", QStringList{});
        Case("all by both", "A", "M", QStringList{"A1", "A2"});
    }
    void search()
    {
        const auto [code, name, shown] = Row<QString, QString, QStringList>();
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
        QCOMPARE(count(), " No. of Records : 7 ");
    }

    void lastClient()
    {
        addClients({"K110=X", "K120=X", "K150=X"});
        m_grid->DispClGrid();
        m_grid->SelectLastClient();
        QCOMPARE(m_grid->Row(), 1);
        for (const char *code : {"K150", "k120", "K1", "NONE"}) { // only the first is one of them
            Base->code = code;
            m_grid->SelectLastClient();
            QCOMPARE(m_grid->Row(), 3);
        }
        m_code->setText("K11");
        Base->code = "K120"; // hidden
        m_grid->SelectLastClient();
        QCOMPARE(m_grid->Row(), 1);
    }
};

QTEST_MAIN(TestClGrd)
#include "tst_clgrd.moc"
