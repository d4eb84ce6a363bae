#include "context/faultnotice.h"
#include "masters/clgrd.h"
#include "masters/frmclinfo.h"
#include "tests/masters/clientfixture.h"
#include "tests/support/caserow.h"
#include "tests/support/screenuser.h"

Q_GLOBAL_STATIC(TestServer, server)

/// The client master where something goes wrong; what goes well is told by the stories of a user.
class TestFrmClInfo : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ClientModule> m_module;
    std::unique_ptr<ScreenUser> m_user;

    QWidget *clients() const { return m_user->find<QWidget>("ClGrd1"); }
    QString codes() { return m_module->rows("Select Code_no from FBT_Info Order by Code_no").join(u'|'); }
    bool editing() const { return m_user->visible("fammaininfo"); }

    void tickNature(int srNo) const
    {
        Grid *natures = m_user->grid("vsfn");
        natures->setFocus();
        natures->setCell(srNo - 1, 1);
        m_user->key(Qt::Key_Space);
    }
    /// An employer in the edit frame with all that saving asks for.
    void startAdding(const QString &code) const
    {
        m_user->open<frmclinfo>();
        m_user->click("cmdadd");
        m_user->type("txtfields_0", code);
        m_user->type("txtfields_1", "acme ltd");
        m_user->choose("cbostat", 9);
        tickNature(1);
    }
    /// The first client.
    void startModifying(const QString &table = {}) const
    {
        m_user->open<frmclinfo>();
        if (!table.isEmpty())
            m_module->execute("Drop Table " + table);
        clients()->findChild<Grid *>("vsf")->setRow(1);
        m_user->click("cmdmodify");
    }

private slots:
    void init()
    {
        m_module = std::make_unique<ClientModule>(*server);
        m_user = std::make_unique<ScreenUser>();
    }
    void cleanup()
    {
        m_user.reset();
        m_module.reset();
    }

    void refusesACodeThatCameOtherwise()
    {
        startAdding("NEW");
        for (const char *code : {"  ", "O'B"}) { // the keys let no such code through
            m_user->find<QLineEdit>("txtfields_0")->setText(code);
            m_user->click("cmdupdate");
            QCOMPARE(m_user->said(), QStringList("Code_No is not valid"));
            QCOMPARE(m_user->focus(), QString("txtfields_0"));
            QVERIFY(editing() && codes().isEmpty());
        }
    }

    void shortcutChecksTheField()
    {
        startAdding("A1");
        m_user->type("txtfields_2", "WRONG");
        m_user->key(Qt::Key_U, Qt::AltModifier);
        QStringList said;
        QTRY_VERIFY(!(said += m_user->said()).isEmpty());
        QCOMPARE(said, QStringList{"PAN No is not Valid."});
        QCOMPARE(codes(), QString());
    }
    /// A table that goes while the client "A1" is modified: nothing is saved over what could not be read.
    void whatCannotBeReadIsNotSaved_data()
    {
        Columns<QString, bool, bool, bool>({"table", "untick", "before", "told"}); // gone before the client is opened
        Case("details of a nature", "FBT_Detail", true, false, true);
        Case("consolidated details", "FBT_Detail", false, false, true);
        Case("existing codes", "biller", false, true, true);
        Case("a table that the new code goes to", "FBT_RetDet", false, false, false);
    }
    void whatCannotBeReadIsNotSaved()
    {
        const auto [table, untick, before, told] = Row<QString, bool, bool, bool>();
        employer(m_module->connection, "A1").busnat(untick ? "1,2" : "1").expense(2008, 1, 1, 69, 500);
        startModifying(before ? table : QString());
        QCOMPARE(m_user->screen()->couldRead(), !before);
        if (untick)
            tickNature(2);
        m_user->type("txtfields_0", "Z9");
        if (!before)
            m_module->execute("Drop Table " + table);
        m_user->click("cmdupdate");
        const QString message = "The details of the employer could not be read. Nothing is saved.";
        QCOMPARE(m_user->said(), QStringList(told ? 1 : 0, message));
        QCOMPARE(codes(), QString("A1"));
        QVERIFY(editing());
        if (table != u"FBT_Detail")
            QCOMPARE(m_module->rows("Select Code_No from FBT_Detail"), QStringList{"A1"}); // with its master row
    }

    void aClientThatCannotBeDeletedStaysInHand()
    {
        employer(m_module->connection, "A1").expense(2008, 1, 1, 69, 500);
        employer(m_module->connection, "B1");
        Base->code = "A1";
        QStringList notices;
        SetFaultNotice([&notices](const QString &line, Doing) { notices << line; });
        m_user->open<frmclinfo>();
        m_module->execute("Drop Table FBT_RetDet");
        Grid *list = clients()->findChild<Grid *>("vsf");
        for (const int row : {1, 2}) { // the second is not the one in hand
            list->setRow(row);
            m_user->answers({Reply::Yes, Reply::Ok});
            m_user->click("cmddelete");
            QCOMPARE(list->Row(), row);
        }
        SetFaultNotice({});
        QVERIFY(notices.value(0).startsWith("Not deleted: "));
        QCOMPARE(codes() + m_module->rows("Select Code_No from FBT_Detail").join(u'|'), QString("A1|B1A1"));
        QCOMPARE(Base->code, QString("A1"));
        QCOMPARE(m_user->said().size(), 4);
    }

    /// What is stored is what is ticked, though the employer had a nature that the list has not any more.
    void natureThatHasGone()
    {
        employer(m_module->connection, "A1").busnat("1,99").expense(2008, 1, -1, 69, 500);
        startModifying();
        m_user->answers({Reply::Yes});
        m_user->click("cmdupdate");
        QVERIFY(m_user->said().value(0).startsWith("You have Selected only One Nature of Business."));
        QCOMPARE(m_module->rows("Select Busnat from FBT_Info"), QStringList("1"));
    }

    /// After a save that was refused since another user has deleted the client, the list does not show him any more.
    void clientWhoHasGone()
    {
        employer(m_module->connection, "A1").busnat("1");
        employer(m_module->connection, "B1").busnat("1");
        startModifying();
        m_module->execute("Delete from FBT_Info Where Code_No='A1'");
        m_user->click("cmdupdate");
        QVERIFY(editing());
        m_user->click("cmdcancel");
        QCOMPARE(m_user->find<ClGrd>("ClGrd1")->TextMatrix(1, 0), QString("B1"));
    }

    /// A list that cannot be read anew stays as it was, and says so.
    void unreadListStays()
    {
        employer(m_module->connection, "A1");
        auto *screen = m_user->open<frmclinfo>();
        auto *list = m_user->find<ClGrd>("ClGrd1");
        m_module->execute("Rename Table FBT_Info to Elsewhere");
        list->DispClGrid();
        QVERIFY(!screen->couldRead("clients"));
        QCOMPARE(list->TextMatrix(1, 0), QString("A1"));
        m_module->execute("Rename Table Elsewhere to FBT_Info");
        list->DispClGrid();
        QVERIFY(screen->couldRead());
    }

    void hiddenClientIsLeftAlone()
    {
        employer(m_module->connection, "A1");
        Base->code = "B1";
        m_user->open<frmclinfo>();
        auto *search = clients()->findChild<QLineEdit *>("Text1_0");
        QTest::keyClicks(search, "zz");
        for (const QString button : {"cmddelete", "cmdmodify"})
            m_user->click(button);
        QTest::keyClick(clients()->findChild<Grid *>("vsf"), Qt::Key_Return);
        QVERIFY(!editing());
        search->clear();
        m_user->answers({Reply::Yes, Reply::Ok});
        m_user->click("cmddelete");
        QCOMPARE(m_module->clients.calls, QStringList{"DeleteClient A1"});
        QCOMPARE(Base->code, QString("B1"));
        QCOMPARE(m_user->said().size(), 2);
    }
};

QTEST_MAIN(TestFrmClInfo)
#include "tst_frmclinfo.moc"
