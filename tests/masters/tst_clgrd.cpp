#include "controls/grid.h"
#include "masters/clgrd.h"
#include "masters/clientrecord.h"
#include "masters/clientstatus.h"
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
        Columns<int, QString, int, int>({"stored", "text", "position", "saved"});
        Case("individual", 0, "Individual", 0, 0);
        Case("HUF", 1, "HUF", 1, 1);
        Case("former company", 2, "", -1, -1);
        Case("firm", 3, "Partnership Firm", 2, 3);
        Case("juridical person", 4, "Artificial Juridical Person", 6, 4);
        Case("foreign company", 5, "Foreign Company", 10, 5);
        Case("local authority", 6, "Local Authority", 11, 6);
        Case("AOP", 9, "AOP", 3, 9);
        Case("older AOP", 10, "AOP", 3, 9);
        Case("AOP (Trusts)", 11, "AOP (Trusts)", 4, 11);
        Case("older AOP (Trusts)", 12, "AOP (Trusts)", 4, 11);
        Case("BOI", 13, "BOI", 5, 13);
        Case("older BOI", 14, "BOI", 5, 13);
        Case("public company", 15, "Public Limited Company", 8, 15);
        Case("private company", 16, "Private Limited Company", 9, 16);
        Case("co-operative society", 17, "Co-operative Society", 7, 17);
        Case("unknown", 18, "", -1, -1);
        Case("null", -1, "", -1, -1);
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
        m_grid->DispClGrid();
        QStringList shown;
        for (const int row : {1, 3}) {
            for (int col = 0; col < 5; ++col)
                shown << m_grid->TextMatrix(row, col);
        }
        QCOMPARE(shown, QStringList({"A1", "ALPHA", "Private Limited Company", "AAACA1234A",
                                     "1, Premises, Road, Area, Town, Delhi-110001", "C3", "GAMMA", "", "", ""}));
        QCOMPARE(shownCodes(), QStringList({"A1", "b2", "C3"}));
        QCOMPARE(m_grid->Row(), 1);
        QCOMPARE(count(), QStringLiteral(" No. of Records : 3 "));
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

    void aListThatCannotBeRead()
    {
        addClients({"A1=MARS"});
        m_grid->DispClGrid();
        m_module->execute("Drop Table FBT_Info");
        m_grid->DispClGrid();
        QCOMPARE(m_vsf->Rows(), 1);
        QCOMPARE(m_grid->Row(), 0);
        QCOMPARE(m_module->logLines().size(), 1);
    }

    void search_data()
    {
        Columns<QString, QString, QStringList>({"code", "name", "shown"});
        Case("code, other case", "a", "", QStringList{"A1", "A2", "AB"});
        Case("code that the caption begins with", "C", "", QStringList{"C1"});
        Case("letter with an accent", "", "É[z", QStringList{"D2"});
        Case("signs that differ as cases do", "d{", "", QStringList{});
        Case("longer than the code", "A12", "", QStringList{});
        Case("name", "", "mo", QStringList{"A2", "C1"});
        Case("code, then name", "A", "mo", QStringList{"A2"});
        Case("matches of each, none of both", "C", "z", QStringList{});
        Case("inside only", "", "OON", QStringList{});
        Case("all by both", "A", "M", QStringList{"A1", "A2"});
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
