#include "context/faultnotice.h"
#include "masters/clgrd.h"
#include "masters/frmclinfo.h"
#include "tests/masters/clientfixture.h"
#include "tests/support/caserow.h"
#include "tests/support/screenuser.h"

Q_GLOBAL_STATIC(TestServer, server)

/// The client master as its user works with it, on a real database.
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

    void modifiesWhatItShows()
    {
        employer(m_module->connection, "A1").natures({1, 2}).surApp("11111");
        m_module->execute("Update FBT_Info Set SignP='OLD',SignD='OLD',SexM='1',FName='FATHER',Doi=Null,ResSt='1'");
        startModifying();
        m_user->type("txtfields_1", "renamed");
        m_user->find<QComboBox>("Combo1")->setEditText("Elsewhere");
        m_user->click("cmdupdate");
        QCOMPARE(m_module->rows(
                     "Select Code_no,Name,Flat,State,Pin,Busnat,SignP,SignD,ResSt,SexM,FName,SurApp from FBT_Info"),
                 QStringList{"A1\tRENAMED\t1\tElsewhere\t110001\t1,2\t\t\t1\t1\tFATHER\t11111"});
    }

    void codeIsStoredInOneForm()
    {
        startAdding(" n1 ");
        m_user->click("cmdupdate");
        QCOMPARE(codes(), QString("N1"));
        QCOMPARE(Base->code, QString("N1"));
    }

    /// Kept by earlier versions: the statement would read it as the code of another client.
    void renamesCodeWithBackslash()
    {
        employer(m_module->connection, "XY").natures({1}).expense(2008, 1, 1, 69, 500);
        m_module->execute("Insert into FBT_Info (Code_no,Name,ClStatus,Busnat) Values ('X\\\\Y','OTHER',3,'1')");
        m_module->execute("Insert into FBT_Detail (Code_No,TYear,NatId,Amt) Values ('X\\\\Y',2008,2,7)");
        startModifying();
        QCOMPARE(m_user->text("txtfields_1"), QString("OTHER"));
        m_user->type("txtfields_0", "z9");
        m_user->answers({Reply::Yes});
        m_user->click("cmdupdate");
        QCOMPARE(codes(), QString("XY|Z9"));
        QCOMPARE(m_module->rows("Select Code_No,Amt from FBT_Detail"), QStringList{"XY\t500"});
        QCOMPARE(m_user->said().size(), 1);
    }

    void refusesACode_data()
    {
        Columns<QString, QString>({"code", "message"});
        Case("of a client, with a blank", "A1 ", "Duplicate Code Entered.");
        Case("of a client, with an accent", QString::fromUtf8("Á1"), "Duplicate Code Entered.");
        Case("of a billing party", "BILL", "Duplicate Code Entered.");
        Case("blank", "  ", "Code_No is not valid");
        Case("that came otherwise, with an apostrophe", "O'B", "Code_No is not valid");
    }
    void refusesACode()
    {
        const auto [code, message] = Row<QString, QString>();
        employer(m_module->connection, "A1").natures({1});
        m_module->execute("Insert into biller (Code_No) Values ('BILL')");
        startAdding("NEW");
        m_user->find<QLineEdit>("txtfields_0")->setText(code);
        m_user->click("cmdupdate");
        QCOMPARE(m_user->said(), QStringList{message});
        QCOMPARE(m_user->focus(), QString("txtfields_0"));
        QVERIFY(editing());
        QCOMPARE(codes(), QString("A1"));
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

    void unticksNature_data()
    {
        Columns<QString, QString, QString, QString>({"unticked", "replies", "details", "busnat"}); // replies: y, n
        Case("salary alone asks too", "3", "y", "1,2,-1", "1,2");
        Case("one left, no stops", "12", "yyn", "3,-1", "1,2,3");
        Case("all, with consent", "123", "yyy", "-1", "1,2,3");
    }
    void unticksNature()
    {
        const auto [unticked, replies, details, busnat] = Row<QString, QString, QString, QString>();
        employer(m_module->connection, "A1").natures({1, 2, 3}).expense(2008, 1, 1, 69, 1).expense(2008, 1, 2, 69, 1);
        employer(m_module->connection, "A1").natures({1, 2, 3}).salary(2008, 1, 3, 1).expense(2008, 1, -1, 69, 1);
        employer(m_module->connection, "B1").natures({1}).expense(2008, 1, 1, 69, 1);
        startModifying();
        for (const QChar nature : unticked)
            tickNature(nature.digitValue());
        for (const QChar reply : replies)
            m_user->answers({reply == u'y' ? Reply::Yes : Reply::No});
        m_user->click("cmdupdate");
        QVERIFY(m_user->said().value(0).startsWith(u"Do you want to Delete Details of '"));
        const QStringList left = m_module->rows("Select NatId from FBT_Detail Where Code_No='A1' Union Select NatId "
                                                "from FBT_SalDet Where Code_No='A1' Order by NatId=-1,NatId");
        QCOMPARE(left.join(u','), details);
        QCOMPARE(m_module->rows("Select Busnat from FBT_Info Where Code_no='A1'"), QStringList(busnat));
        QCOMPARE(m_module->rows("Select NatId from FBT_Detail Where Code_No='B1'"), QStringList{"1"});
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
        Base->code = "A1";
        QStringList notices;
        SetFaultNotice([&notices](const QString &line) { notices << line; });
        m_user->open<frmclinfo>();
        m_module->execute("Drop Table FBT_RetDet");
        m_user->answers({Reply::Yes, Reply::Ok});
        m_user->click("cmddelete");
        SetFaultNotice({});
        QVERIFY(notices.value(0).startsWith("Not deleted: "));
        QCOMPARE(codes() + m_module->rows("Select Code_No from FBT_Detail").join(u'|'), QString("A1A1"));
        QCOMPARE(Base->code, QString("A1"));
        QCOMPARE(m_user->said().size(), 2);
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
