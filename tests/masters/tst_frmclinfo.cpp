#include "controls/grid.h"
#include "controls/matchlist.h"
#include "controls/msgbox.h"
#include "masters/frmclinfo.h"
#include "tests/masters/clientfixture.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

/// The client master as its user works with it, on a real database.
class TestFrmClInfo : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ClientModule> m_module;
    std::unique_ptr<ScriptedAnswerer> m_answers;
    std::unique_ptr<AnswererScope> m_scope;
    frmclinfo *m_form = nullptr;

    template<typename T = QWidget>
    T *control(const char *name) const
    {
        return m_form->findChild<T *>(QLatin1String(name));
    }
    QLineEdit *field(int index) const { return m_form->findChild<QLineEdit *>(Sql("txtfields_", index)); }
    void click(const char *button) const { QTest::mouseClick(control<QPushButton>(button), Qt::LeftButton); }
    QString state() const
    {
        for (const char *frame : {"famgrd", "fammaininfo", "Frame1"}) {
            if (control(frame)->isVisible())
                return QString::fromLatin1(frame);
        }
        return {};
    }

    void open()
    {
        m_form = new frmclinfo;
        m_form->openChild(nullptr);
        QVERIFY(QTest::qWaitForWindowActive(m_form->window()));
    }

    void type(int index, const QString &text) const
    {
        field(index)->setFocus(Qt::TabFocusReason);
        field(index)->selectAll();
        QTest::keyClick(field(index), Qt::Key_Delete);
        QTest::keyClicks(field(index), text);
    }
    void tick(const char *grid, int row, int col) const
    {
        auto *cells = control<Grid>(grid);
        cells->setFocus();
        cells->setCell(row, col);
        QTest::keyClick(cells, Qt::Key_Space);
    }
    void tickNature(int srNo) const { tick("vsfn", srNo - 1, 1); }

    /// An employer in the edit frame with all that saving asks for.
    void startAdding(const QString &code, int status = 9) const
    {
        click("cmdadd");
        type(0, code);
        type(1, "acme ltd");
        control<QComboBox>("cbostat")->setCurrentIndex(status);
        tickNature(1);
    }
    void startModifying(int row = 1) const
    {
        m_form->findChild<QWidget *>("ClGrd1")->findChild<Grid *>("vsf")->setRow(row);
        click("cmdmodify");
    }
    QStringList surcharge() const
    {
        QStringList cells;
        auto *vsfs = control<Grid>("vsfs");
        for (int row = 1; row < vsfs->Rows(); ++row)
            cells << vsfs->TextMatrix(row, 2);
        return cells;
    }

private slots:
    void init()
    {
        m_module = std::make_unique<ClientModule>(*server);
        m_answers = std::make_unique<ScriptedAnswerer>();
        m_scope = std::make_unique<AnswererScope>(m_answers.get());
    }

    void cleanup()
    {
        QCOMPARE(m_answers->unexpected(), QStringList());
        QCOMPARE(m_answers->waiting(), QList<Reply>());
        m_answers->clear();
        m_answers->answer(Reply::Yes);
        const QPointer<frmclinfo> alive(std::exchange(m_form, nullptr));
        QVERIFY(alive && alive->Unload());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!alive);
        m_scope.reset();
        m_module.reset();
    }

    // --- saving ---

    void adds()
    {
        open();
        QVERIFY(!control("cmdimpcl")->isEnabled());
        startAdding("a1");
        type(2, "aaaca1234b");
        type(9, "110001");
        type(18, "Info@Acme.in");
        control<QComboBox>("Combo1")->setFocus();
        QTest::keyClicks(control<QComboBox>("Combo1")->lineEdit(), "mah");
        control<QCheckBox>("Check1")->setChecked(true);
        control<QComboBox>("cboresst")->setCurrentIndex(2);
        tickNature(3);
        click("cmdupdate");
        QCOMPARE(
            m_module->rows("Select * from FBT_Info"),
            QStringList{"A1\tACME LTD\tAAACA1234B\t\t\t\t\t\tMAHARASHTRA\t110001\t\t\t16\t1\t1,3\t\t\t\tInfo@Acme.in"
                        "\t2\t\t\t11111"});
        QCOMPARE(state(), QStringLiteral("famgrd"));
        QCOMPARE(Base->code, QStringLiteral("A1"));
        QVERIFY(control("ClGrd1")->findChild<Grid *>("vsf")->hasFocus());
        QCOMPARE(m_module->logLines(), QStringList());
    }

    void modifies()
    {
        employer(m_module->connection, "A1").natures({1, 2}).surApp("11111");
        m_module->execute("Update FBT_Info Set SignP='OLD',SignD='OLD',SexM='1',FName='FATHER',Doi=Null,ResSt='1'");
        open();
        startModifying();
        QCOMPARE(field(17)->text(), QString());
        QCOMPARE(control<QComboBox>("cboresst")->currentIndex(), 1);
        type(1, "renamed");
        control<QComboBox>("Combo1")->setEditText("Elsewhere");
        click("cmdupdate");
        QCOMPARE(m_module->rows(
                     "Select Code_no,Name,Flat,State,Pin,Busnat,SignP,SignD,ResSt,SexM,FName,SurApp from FBT_Info"),
                 QStringList{"A1\tRENAMED\t1\tElsewhere\t110001\t1,2\t\t\t1\t1\tFATHER\t11111"});
        QCOMPARE(m_module->clients.calls, QStringList());
    }

    void renames()
    {
        employer(m_module->connection, "A1").natures({1}).expense(2008, 1, 1, 69, 500);
        employer(m_module->connection, "B1").natures({1});
        open();
        startModifying();
        type(0, "z9");
        click("cmdupdate");
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info Order by Code_no"), (QStringList{"B1", "Z9"}));
        QCOMPARE(m_module->rows("Select Code_No,Amt from FBT_Detail"), QStringList{"Z9\t500"});
        QCOMPARE(m_module->clients.calls, QStringList{"ChangeCode A1 Z9"});
    }

    void codeIsStoredInOneForm()
    {
        open();
        startAdding(" n1 ");
        click("cmdupdate");
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"N1"});
        QCOMPARE(Base->code, QStringLiteral("N1"));
    }

    /// Kept by earlier versions: the statement would read it as the code of another client.
    void renamesCodeWithBackslash()
    {
        employer(m_module->connection, "XY").natures({1}).expense(2008, 1, 1, 69, 500);
        m_module->execute("Insert into FBT_Info (Code_no,Name,ClStatus,Busnat) Values ('X\\\\Y','OTHER',3,'1')");
        m_module->execute("Insert into FBT_Detail (Code_No,TYear,NatId,Amt) Values ('X\\\\Y',2008,2,7)");
        open();
        startModifying(1);
        QCOMPARE(field(1)->text(), QStringLiteral("OTHER"));
        type(0, "z9");
        m_answers->answer(Reply::Yes);
        click("cmdupdate");
        QCOMPARE(m_module->rows("Select Code_no,Name from FBT_Info Order by Code_no"),
                 (QStringList{"XY\tEmployer", "Z9\tOTHER"}));
        QCOMPARE(m_module->rows("Select Code_No,Amt from FBT_Detail"), QStringList{"XY\t500"});
    }

    void smallCodeOfItsOwnIsNoDuplicate()
    {
        employer(m_module->connection, "a1").natures({1}).expense(2008, 1, 1, 69, 500);
        open();
        startModifying();
        click("cmdupdate");
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"a1"});
        startModifying();
        type(0, "A1 ");
        click("cmdupdate");
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"A1"});
        QCOMPARE(m_module->rows("Select Code_No from FBT_Detail"), QStringList{"A1"});
    }

    void apostropheCostsTheStatementOnly()
    {
        employer(m_module->connection, "A1").natures({1, 2}).expense(2008, 1, 2, 69, 500);
        open();
        startModifying();
        type(0, "Z9");
        type(1, "O'NEILL");
        tickNature(2); // its details go with the save only
        m_answers->answer(Reply::Yes);
        click("cmdupdate");
        QCOMPARE(m_module->rows("Select Code_no,Name from FBT_Info"), QStringList{"A1\tEmployer"});
        QCOMPARE(m_module->rows("Select Code_No from FBT_Detail"), QStringList{"A1"});
        QCOMPARE(m_module->logLines().size(), 1);
        QVERIFY(m_module->logLines().first().endsWith(u"\tfrmclinfo\tUPDATEDATA"));
        QCOMPARE(field(1)->text(), QStringLiteral("O'NEILL")); // what was typed stays
    }

    /// What another user does while the list shows (`early`) or while "A1" is modified or a client added.
    void anotherUserMeanwhile_data()
    {
        QTest::addColumn<QString>("early");
        QTest::addColumn<QString>("late");
        QTest::addColumn<QString>("code"); // that is typed
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("ends");
        QTest::addColumn<QString>("rows");
        const auto row = [](const char *name, const char *early, const char *late, const char *code,
                            const char *message, const char *ends, const char *rows) {
            QTest::newRow(name) << early << late << code << message << ends << rows;
        };
        const char *const adds = "Insert into FBT_Info (Code_no,Busnat) Values ('n1','2')";
        const char *const deletes = "Delete from FBT_Info";
        row("adds the same client", "", adds, "+N1", "Duplicate Code Entered.", "fammaininfo", "A1 1,9|n1 2");
        row("adds the same billing party", "", "Insert into biller (Code_no) Values ('N1')", "+N1",
            "Duplicate Code Entered.", "fammaininfo", "A1 1,9");
        row("adds the new code", "", adds, "N1", "Duplicate Code Entered.", "fammaininfo", "A1 1,9|n1 2");
        row("deletes the client", "", deletes, "A1", "", "fammaininfo", "");
        row("deletes the client before", deletes, "", "", "", "famgrd", "");
        row("adds a nature", "Insert into FBT_Nature Values (9,'NEW')", "", "A1", "", "famgrd", "A1 1,9");
        row("has a nature that is not listed", "", "", "A1", "", "famgrd", "A1 1,9");
    }
    void anotherUserMeanwhile()
    {
        QFETCH(QString, early);
        QFETCH(QString, late);
        QFETCH(QString, code);
        QFETCH(QString, message);
        employer(m_module->connection, "A1").natures({1, 9});
        m_module->execute("Update FBT_Info Set ResSt='7'");
        open();
        if (!early.isEmpty())
            m_module->execute(early);
        if (code.startsWith(u'+'))
            startAdding(code.mid(1));
        else
            startModifying();
        if (!late.isEmpty())
            m_module->execute(late);
        if (!code.startsWith(u'+') && !code.isEmpty())
            type(0, code);
        if (!message.isEmpty())
            m_answers->answer(Reply::Ok);
        if (!code.isEmpty())
            click("cmdupdate");
        QCOMPARE(m_answers->texts().join(u'|'), message);
        QTEST(state(), "ends");
        QTEST(m_module->rows("Select Concat(Code_no,' ',Busnat) from FBT_Info Order by Code_no").join(u'|'), "rows");
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info Where Code_no='A1' and ResSt<>'7'"), QStringList());
    }

    void serverRestartedWhileOpen()
    {
        open();
        startAdding("A1");
        server->kill();
        server->restart();
        click("cmdupdate");
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"A1"});
        QCOMPARE(control("ClGrd1")->findChild<Grid *>("vsf")->Rows(), 2);
    }

    // --- refusals ---

    void refuses_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focus");
        QTest::newRow("code of a client") << 0 << "A1"
                                          << "Duplicate Code Entered."
                                          << "txtfields_0";
        QTest::newRow("code of a client, with a blank") << 0 << "A1 "
                                                        << "Duplicate Code Entered."
                                                        << "txtfields_0";
        QTest::newRow("code of a client, with an accent") << 0 << QString::fromUtf8("Á1") << "Duplicate Code Entered."
                                                          << "txtfields_0";
        QTest::newRow("code of a billing party") << 0 << "BILL"
                                                 << "Duplicate Code Entered."
                                                 << "txtfields_0";
        QTest::newRow("blank code") << 0 << "  "
                                    << "Code_No is not valid"
                                    << "txtfields_0";
        QTest::newRow("code with an apostrophe") << 0 << "O'B"
                                                 << "Code_No is not valid"
                                                 << "txtfields_0";
        QTest::newRow("blank name") << 1 << " "
                                    << "Please Enter Name of Employer."
                                    << "txtfields_1";
        QTest::newRow("no status") << -1 << ""
                                   << "Please Select Status of Employer."
                                   << "cbostat";
        QTest::newRow("no nature") << -2 << ""
                                   << "Please Select a Nature of Employer."
                                   << "vsfn";
    }
    void refuses()
    {
        QFETCH(int, index);
        QFETCH(QString, text);
        QFETCH(QString, message);
        employer(m_module->connection, "A1").natures({1});
        m_module->execute("Insert into biller (Code_No) Values ('BILL')");
        open();
        startAdding("NEW");
        if (index >= 0)
            type(index, text);
        else if (index == -1)
            control<QComboBox>("cbostat")->setCurrentIndex(-1);
        else
            tickNature(1);
        m_answers->answer(Reply::Ok);
        click("cmdupdate");
        QCOMPARE(m_answers->texts(), QStringList{message});
        QCOMPARE(control<QComboBox>("cbostat")->view()->isVisible(), index == -1);
        control<QComboBox>("cbostat")->hidePopup();
        const QWidget *focus = m_form->currentField();
        QVERIFY(focus != nullptr);
        QTEST(focus->objectName(), "focus");
        QCOMPARE(state(), QStringLiteral("fammaininfo"));
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"A1"});
    }

    void leavesField_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("text");
        QTest::newRow("PAN too short") << 2 << "AAACA123"
                                       << "PAN No is not Valid."
                                       << "AAACA123";
        QTest::newRow("PAN") << 2 << "aaaca1234b"
                             << ""
                             << "AAACA1234B";
        QTest::newRow("PAN missing") << 2 << ""
                                     << ""
                                     << "";
        QTest::newRow("pin with a blank") << 9 << "110 01"
                                          << "Pin Code can not contain Spaces."
                                          << "110 01";
        QTest::newRow("pin too short") << 9 << "11001"
                                       << "Pin Code should be 6 digit Number."
                                       << "11001";
        QTest::newRow("pin of letters") << 9 << "ABCDEF"
                                        << ""
                                        << "ABCDEF";
        QTest::newRow("pin missing") << 9 << ""
                                     << ""
                                     << "";
        QTest::newRow("short date") << 17 << "1-4-90"
                                    << ""
                                    << "01/04/1990";
        QTest::newRow("no date") << 17 << "31/02/2001"
                                 << ""
                                 << "";
    }
    void leavesField()
    {
        QFETCH(int, index);
        QFETCH(QString, typed);
        QFETCH(QString, message);
        open();
        click("cmdadd");
        type(index, typed);
        if (!message.isEmpty())
            m_answers->answer(Reply::Ok);
        QTest::keyClick(field(index), Qt::Key_Return);
        QCOMPARE(m_answers->texts().join(u'|'), message);
        QCOMPARE(field(index)->hasFocus(), !message.isEmpty());
        QCOMPARE(field(index)->selectedText(), message.isEmpty() ? QString() : typed);
        QTEST(field(index)->text(), "text");
        field(index)->clear();
    }

    void shortcutChecksTheField()
    {
        open();
        startAdding("A1");
        type(2, "WRONG");
        m_answers->answer(Reply::Ok);
        QTest::keyClick(field(2), Qt::Key_U, Qt::AltModifier);
        QTRY_COMPARE(m_answers->texts(), QStringList{"PAN No is not Valid."});
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList());
        field(2)->clear();
    }

    // --- natures and surcharge ---

    void unticksNature_data()
    {
        QTest::addColumn<QList<int>>("unticked");
        QTest::addColumn<QList<Reply>>("replies");
        QTest::addColumn<QString>("details");
        QTest::addColumn<QString>("busnat");
        QTest::newRow("yes") << QList<int>{1} << QList{Reply::Yes} << "2,3,-1"
                             << "2,3";
        QTest::newRow("no keeps it") << QList<int>{1} << QList{Reply::No} << "1,2,3,-1"
                                     << "1,2,3";
        QTest::newRow("salary alone asks too") << QList<int>{3} << QList{Reply::Yes} << "1,2,-1"
                                               << "1,2";
        QTest::newRow("one left, yes") << QList<int>{1, 2} << QList{Reply::Yes, Reply::Yes, Reply::Yes} << "3"
                                       << "3";
        QTest::newRow("one left, no stops") << QList<int>{1, 2} << QList{Reply::Yes, Reply::Yes, Reply::No} << "3,-1"
                                            << "1,2,3";
        QTest::newRow("all, with consent")
            << QList<int>{1, 2, 3} << QList{Reply::Yes, Reply::Yes, Reply::Yes, Reply::Ok} << "-1"
            << "1,2,3";
    }
    void unticksNature()
    {
        QFETCH(QList<int>, unticked);
        QFETCH(QList<Reply>, replies);
        employer(m_module->connection, "A1").natures({1, 2, 3}).expense(2008, 1, 1, 69, 1).expense(2008, 1, 2, 69, 1);
        employer(m_module->connection, "A1").natures({1, 2, 3}).salary(2008, 1, 3, 1).expense(2008, 1, -1, 69, 1);
        employer(m_module->connection, "B1").natures({1}).expense(2008, 1, 1, 69, 1);
        open();
        startModifying();
        for (const int nature : unticked)
            tickNature(nature);
        for (const Reply reply : replies)
            m_answers->answer(reply);
        click("cmdupdate");
        const QString texts = m_answers->texts().join(u'|');
        QVERIFY2(texts.startsWith(u"Do you want to Delete Details of '"), qPrintable(texts));
        QTEST(m_module
                  ->rows("Select NatId from FBT_Detail Where Code_No='A1' Union Select NatId from FBT_SalDet "
                         "Where Code_No='A1' Order by NatId=-1,NatId")
                  .join(u','),
              "details");
        QTEST(m_module->rows("Select Busnat from FBT_Info Where Code_no='A1'").join(u'|'), "busnat");
        QCOMPARE(m_module->rows("Select NatId from FBT_Detail Where Code_No='B1'"), QStringList{"1"});
    }

    /// A table that goes while the client "A1" is modified: nothing is saved over what could not be read.
    void whatCannotBeReadIsNotSaved_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<bool>("untick");
        QTest::addColumn<bool>("before"); // the table is gone before the client is opened
        QTest::addColumn<QString>("message");
        const QString details = "The details of the employer could not be read. Nothing is saved.";
        QTest::newRow("details of a nature") << "FBT_Detail" << true << false << details;
        QTest::newRow("consolidated details") << "FBT_Detail" << false << false << details;
        QTest::newRow("existing codes") << "biller" << false << true << details;
        QTest::newRow("a table that the new code goes to") << "FBT_RetDet" << false << false << "";
    }
    void whatCannotBeReadIsNotSaved()
    {
        QFETCH(QString, table);
        QFETCH(bool, untick);
        QFETCH(bool, before);
        employer(m_module->connection, "A1").busnat(untick ? "1,2" : "1").expense(2008, 1, 1, 69, 500);
        open();
        if (before)
            m_module->execute("Drop Table " + table);
        startModifying();
        QCOMPARE(m_form->couldRead(), !before);
        if (untick)
            tickNature(2);
        type(0, "Z9");
        if (!before)
            m_module->execute("Drop Table " + table);
        QFETCH(QString, message);
        if (!message.isEmpty())
            m_answers->answer(Reply::Ok);
        click("cmdupdate");
        QCOMPARE(m_answers->texts().join(u'|'), message);
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"A1"});
        QCOMPARE(state(), QStringLiteral("fammaininfo"));
        if (table != u"FBT_Detail")
            QCOMPARE(m_module->rows("Select Code_No from FBT_Detail"), QStringList{"A1"}); // with its master row
    }

    void ticksByKeyboardAlone()
    {
        open();
        click("cmdadd");
        control<QComboBox>("cbostat")->setCurrentIndex(3);
        for (const char *name : {"vsfn", "vsfs"}) {
            auto *grid = control<Grid>(name);
            grid->setFocus(Qt::TabFocusReason);
            QVERIFY(grid->currentIndex().isValid());
            QTest::keyClick(grid, Qt::Key_Space);
            QVERIFY(Val(grid->TextMatrix(grid->FixedRows(), grid->Col())) != 0);
            QTest::keyClick(grid, Qt::Key_Down);
            QTest::keyClick(grid, Qt::Key_Space);
            QVERIFY(Val(grid->TextMatrix(grid->FixedRows() + 1, grid->Col())) != 0);
        }
    }

    void statusChangedAndBack()
    {
        employer(m_module->connection, "A1").status(10).natures({1}).surApp("0101");
        open();
        startModifying();
        auto *status = control<QComboBox>("cbostat");
        QCOMPARE(status->currentIndex(), 3);
        QCOMPARE(surcharge(), (QStringList{"0", "1", "0", "1", "0"}));
        QCOMPARE(control<Grid>("vsfs")->TextMatrix(5, 0), QStringLiteral("2010-11"));
        QCOMPARE(control<Grid>("vsfs")->TextMatrix(5, 1), QStringLiteral("Rs. 10 Lacs"));
        tick("vsfs", 1, 2);
        QVERIFY(Val(surcharge().first()) != 0);
        status->setCurrentIndex(2);
        QCOMPARE(surcharge(), QStringList(5, "-1"));
        tick("vsfs", 1, 2);
        QCOMPARE(surcharge(), QStringList(5, "-1"));
        status->setCurrentIndex(-1);
        QCOMPARE(surcharge(), QStringList());
        status->setCurrentIndex(3);
        QCOMPARE(surcharge(), (QStringList{"0", "1", "0", "1", "0"}));
    }

    // --- deleting, keys ---

    void deletes()
    {
        employer(m_module->connection, "A1").expense(2008, 1, 1, 69, 1);
        employer(m_module->connection, "B1");
        Base->code = "A1";
        open();
        for (const QList<Reply> &replies :
             {QList{Reply::No}, QList{Reply::Yes, Reply::Cancel}, QList{Reply::Yes, Reply::Ok}}) {
            QCOMPARE(m_module->rows("Select Code_no from FBT_Info").size(), 2);
            for (const Reply reply : replies)
                m_answers->answer(reply);
            QCOMPARE(Base->code, QStringLiteral("A1"));
            click("cmddelete");
        }
        QCOMPARE(Base->code, QString());
        QCOMPARE(m_answers->texts().mid(3), (QStringList{"Do you want to delete this record ?",
                                                         "It will delete all other data relating to client"}));
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"B1"});
        QCOMPARE(m_module->rows("Select Code_No from FBT_Detail"), QStringList());
        QCOMPARE(m_module->clients.calls, QStringList{"DeleteClient A1"});
    }

    void hiddenClientIsLeftAlone()
    {
        employer(m_module->connection, "A1");
        Base->code = "B1";
        open();
        auto *vsf = control("ClGrd1")->findChild<Grid *>("vsf");
        QTest::keyClicks(control("ClGrd1")->findChild<QLineEdit *>("Text1_0"), "zz");
        QCOMPARE(vsf->Row(), 1);
        click("cmddelete");
        click("cmdmodify");
        vsf->setFocus();
        QTest::keyClick(vsf, Qt::Key_Return);
        QCOMPARE(state(), QStringLiteral("famgrd"));
        QCOMPARE(m_answers->texts(), QStringList());
        QTest::keyClick(vsf, Qt::Key_Tab);
        control("ClGrd1")->findChild<QLineEdit *>("Text1_0")->clear();
        m_answers->answer(Reply::Yes);
        m_answers->answer(Reply::Ok);
        click("cmddelete");
        QCOMPARE(m_module->clients.calls, QStringList{"DeleteClient A1"});
        QCOMPARE(Base->code, QStringLiteral("B1"));
    }

    void escapeStepsBack()
    {
        open();
        click("cmdadd");
        type(2, "WRONG");
        for (const Reply reply : {Reply::No, Reply::Yes, Reply::No})
            m_answers->answer(reply);
        QTest::keyClick(field(2), Qt::Key_Escape);
        QCOMPARE(state(), QStringLiteral("fammaininfo"));
        QTest::keyClick(field(2), Qt::Key_Escape);
        QCOMPARE(state(), QStringLiteral("famgrd"));
        QTest::keyClick(control("cmdadd"), Qt::Key_Escape);
        QVERIFY(m_form->isLoaded());
        const QString question = "You are currently editing a record. Do you want to exit now ?";
        QCOMPARE(m_answers->texts(), (QStringList{question, question, "Do you want to exit ?"}));
    }

    void existingCodesShow()
    {
        for (const char *code : {"AB1", "AB2", "ac1", "B1"})
            employer(m_module->connection, code);
        open();
        click("cmdadd");
        auto *list = control<MatchList>("List2");
        QVERIFY(!list->isVisible());
        QTest::keyClicks(field(0), "a");
        QVERIFY(list->isVisible());
        QCOMPARE(list->visibleRowCount(), 2);
        QTest::keyClicks(field(0), "b2");
        QCOMPARE(list->visibleRowCount(), 1);
        QTest::keyClick(field(0), Qt::Key_Return);
        QVERIFY(!list->isVisible());
        field(0)->setText("B"); // not while the user is elsewhere
        QVERIFY(!list->isVisible());
        field(0)->setFocus();
        field(0)->setText("A"); // put in by the menu of the field
        QVERIFY(list->isVisible());
        QCOMPARE(list->visibleRowCount(), 2);
        type(0, "x");
        QVERIFY(!list->isVisible());
    }
};

QTEST_MAIN(TestFrmClInfo)
#include "tst_frmclinfo.moc"
