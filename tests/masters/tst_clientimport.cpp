#include "context/errortail.h"
#include "controls/grid.h"
#include "controls/msgbox.h"
#include "masters/clientimport.h"
#include "masters/frmclinfo.h"
#include "tests/masters/clientfixture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

Q_GLOBAL_STATIC(TestServer, server)

/// The client tables of the suite, in a schema of their own, and the import from them.
class TestClientImport : public QObject
{
    Q_OBJECT

private:
    class SuiteMain : public MainObject
    {
    public:
        [[nodiscard]] bool ChkRepDbFlag() const override { return false; }
        [[nodiscard]] bool CreateDbFlag() const override { return false; }
        [[nodiscard]] bool UpdateDbFlag() const override { return false; }
        void ShowWexaNews() override {}
        void CheckForUpdates() override {}
        void ShowAbout() override {}
        void TerminateObj() override {}
    };

    std::unique_ptr<ClientModule> m_module;
    Connection m_suite;
    SuiteMain m_main;

    void fillSuite()
    {
        const QString address = "h_no Text,h_nm Text,street Text,area Text,City Text,State Text,Pin Text";
        const QString person = "PAN Text,Phone1 Text,AuditC Char(1),Email Text," + address;
        const QStringList statements{
            "Create Table tempcltbl (codeno Text,name Text,stat Text,grcd Text,pan Text,addr Text)",
            "Create Table Main_Info1 (Code_No Text,DOI Text,status Int,MRR Char(1)," + person + ")",
            "Create Table Owner1 (Code Text,Code_No Text,dob Text,nation Text," + person + ")",
            "Create Table Off_Info (Code_No Text," + address + ")",
            "Insert into tempcltbl Values ('C1','ZEBRA LTD','COMPANY','G','P','A'),('H1','FAMILY','Huf','','',''),"
            "('p1 ','OWNER','','','',''),('N1','ANON',Null,'','','')",
            "Insert into Main_Info1 Values ('C1','01/02/1999',3,'1','AAACZ1111Z','011-2345-678','1','x@y.in','1','T',"
            "'R','A','MUMBAI','GOA','400001'),('H1',Null,1,'1','','2345','0','',Null,'','','','','','')",
            "Insert into Owner1 Values ('P1','O7','03/04/1970','NON ORDINARY','AAAPO1111P','','1','o@y.in','9','HOME',"
            "'','','PUNE','','1'),('P2','P2','','NON RESIDENT','','','','','8','OWN','','','','',''),"
            "('P3','O8','','INDIAN','AAAPO3333P','','','','7','LOST','','','','','')",
            "Insert into Off_Info Values ('O7','5','OFFICE','ROAD','','DELHI','DELHI','110001')"};
        for (const QString &statement : statements)
            QVERIFY(m_suite.Execute(statement));
    }

private slots:
    void init()
    {
        m_module = std::make_unique<ClientModule>(*server);
        server->openFreshSchema(m_suite);
        m_suite.setFaultHandler(ErrorTail::dispatch);
        m_main.SuiteCnn = &m_suite;
        MainObj = &m_main;
        fillSuite();
    }

    void cleanup()
    {
        m_module.reset();
        m_suite.close();
    }

    void mapsStatus_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("stat");
        QTest::addColumn<bool>("mrr");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("resident");
        QTest::newRow("HUF") << 1 << "Huf" << false << 1 << 0;
        QTest::newRow("HUF abroad") << 1 << "HUF" << true << 1 << 1;
        QTest::newRow("AOP") << 1 << "AOP" << true << 3 << 0;
        QTest::newRow("AOP(MRR)") << 1 << "AOP(MRR)" << true << 3 << 0;
        QTest::newRow("AOP(MMR)") << 1 << "aop(mmr)" << false << 3 << 0;
        QTest::newRow("trust") << 1 << "AOP (TRUST)" << false << 4 << 0;
        QTest::newRow("co-operative") << 1 << "Co-operative Society" << false << 7 << 0;
        QTest::newRow("other word") << 1 << "CLUB" << true << 0 << 0;
        QTest::newRow("firm") << 2 << "" << true << 2 << 0;
        QTest::newRow("private company") << 3 << "" << false << 9 << 0;
        QTest::newRow("private company abroad") << 3 << "" << true << 10 << 1;
        QTest::newRow("public company") << 4 << "" << false << 8 << 0;
        QTest::newRow("public company abroad") << 4 << "" << true << 10 << 1;
        QTest::newRow("BOI") << 5 << "" << true << 5 << 0;
        QTest::newRow("local authority") << 6 << "" << false << 11 << 0;
        QTest::newRow("juridical person") << 7 << "" << false << 6 << 0;
        QTest::newRow("null") << 0 << "HUF" << true << 0 << 0;
        QTest::newRow("unknown") << 8 << "" << false << 0 << 0;
    }
    void mapsStatus()
    {
        QFETCH(int, status);
        QFETCH(QString, stat);
        QFETCH(bool, mrr);
        const SuiteStatus mapped = MapSuiteStatus(status, stat, mrr);
        QTEST(mapped.position, "position");
        QTEST(mapped.resident, "resident");
    }

    /// Positions 0 to 13, then date, e-mail and residence, with "|" between them.
    void reads_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("stat");
        QTest::addColumn<QString>("fields");
        QTest::newRow("company abroad") << "C1"
                                        << "COMPANY"
                                        << "C1|NAME|AAACZ1111Z|1|T|R|A|MUMBAI|GOA|400001|011|2345-678|5|1"
                                           "|01/02/1999|x@y.in|1";
        QTest::newRow("HUF with nulls") << "H1"
                                        << "Huf"
                                        << "H1|NAME||||||||||2345|1|0|||1";
        QTest::newRow("proprietor with an office") << "P1"
                                                   << ""
                                                   << "P1|NAME|AAAPO1111P|5|OFFICE|ROAD||DELHI|DELHI|110001|||0|1"
                                                      "|03/04/1970|o@y.in|2";
        QTest::newRow("small letters") << "p3"
                                       << ""
                                       << "P3|NAME|AAAPO3333P||||||||||0||||0";
        QTest::newRow("proprietor at home") << "P2"
                                            << ""
                                            << "P2|NAME||8|OWN||||||||0||||1";
        QTest::newRow("office unknown") << "P3"
                                        << ""
                                        << "P3|NAME|AAAPO3333P||||||||||0||||0";
        QTest::newRow("no data") << "N1"
                                 << ""
                                 << "N1|NAME|||||||||||0||||";
    }
    void reads()
    {
        QFETCH(QString, code);
        QFETCH(QString, stat);
        const ClientRecord client = ImportedClient({code, "NAME", stat, {}, {}, {}}, ReadSuiteClient(&m_suite, code));
        QStringList fields;
        for (int position = 0; position <= ClientRecord::Audit; ++position)
            fields << client[position];
        fields << client[ClientRecord::Born] << client[ClientRecord::Email] << client[ClientRecord::Resident];
        QTEST(fields.join(u'|'), "fields");
    }

    void aTableThatCannotBeReadIsNoMissingClient()
    {
        for (const char *table : {"Off_Info", "Owner1", "Main_Info1"}) {
            QVERIFY(m_suite.Execute(Sql("Drop Table ", table)));
            QVERIFY2(ReadSuiteClient(&m_suite, "P1").failed(), table);
        }
    }

    void importsOnTheScreen()
    {
        ScriptedAnswerer answers;
        const AnswererScope scope(&answers);
        employer(m_module->connection, "A1").natures({1, 2});
        QPointer<frmclinfo> form = new frmclinfo;
        form->openChild(nullptr);
        QVERIFY(QTest::qWaitForWindowActive(form->window()));
        const auto click = [&](const char *name) {
            QTest::mouseClick(form->findChild<QPushButton *>(QLatin1String(name)), Qt::LeftButton);
        };
        auto *frame = form->findChild<QWidget *>("Frame1");
        auto *vsf = frame->findChild<Grid *>("vsf");
        click("cmdmodify");
        click("cmdimpcl");
        QVERIFY(frame->isVisible() && vsf->hasFocus());
        QCOMPARE(vsf->Row(), 1);
        QCOMPARE(vsf->TextMatrix(1, 1), QStringLiteral("ANON"));
        QTest::keyClick(vsf, Qt::Key_Escape);
        QVERIFY(!frame->isVisible() && form->findChild<QLineEdit *>("txtfields_0")->hasFocus());
        click("cmdimpcl");
        vsf->setRow(4);
        QTest::keyClick(vsf, Qt::Key_Return);
        QVERIFY(!frame->isVisible());
        QCOMPARE(form->findChild<QLineEdit *>("txtfields_1")->text(), QStringLiteral("ZEBRA LTD"));
        QCOMPARE(form->findChild<QLineEdit *>("txtfields_11")->text(), QStringLiteral("2345-678"));
        QCOMPARE(form->findChild<QComboBox *>("cbostat")->currentText(), QStringLiteral("Foreign Company"));
        QVERIFY(form->findChild<QCheckBox *>("Check1")->isChecked());
        auto *natures = form->findChild<Grid *>("vsfn");
        QCOMPARE(natures->TextMatrix(0, 1) + natures->TextMatrix(1, 1), QStringLiteral("00"));
        QCOMPARE(form->findChild<Grid *>("vsfs")->TextMatrix(5, 2), QStringLiteral("-1"));
        QCOMPARE(m_module->rows("Select Code_no from FBT_Info"), QStringList{"A1"});
        QCOMPARE(m_module->logLines(), QStringList());
        answers.answer(Reply::Yes);
        form->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

QTEST_MAIN(TestClientImport)
#include "tst_clientimport.moc"
