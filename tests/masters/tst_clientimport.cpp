#include "context/errortail.h"
#include "masters/clientimport.h"
#include "tests/masters/clientfixture.h"
#include "tests/support/caserow.h"

Q_GLOBAL_STATIC(TestServer, server)

/// The client tables of the suite, in a schema of their own, and the import from them.
class TestClientImport : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ClientModule> m_module;
    Connection m_suite;

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
        fillSuite();
    }

    void cleanup()
    {
        m_module.reset();
        m_suite.close();
    }

    void mapsStatus()
    {
        // status, status as text, residence; position, and whether it is one abroad
        const std::vector<std::tuple<int, QString, bool, int, int>> rows{{1, "Huf", false, 1, 0},
                                                                         {1, "HUF", true, 1, 1},
                                                                         {1, "AOP", true, 3, 0},
                                                                         {1, "AOP(MRR)", true, 3, 0},
                                                                         {1, "aop(mmr)", false, 3, 0},
                                                                         {1, "AOP (TRUST)", false, 4, 0},
                                                                         {1, "Co-operative Society", false, 7, 0},
                                                                         {1, "CLUB", true, 0, 0},
                                                                         {2, "", true, 2, 0},
                                                                         {3, "", false, 9, 0},
                                                                         {3, "", true, 10, 1},
                                                                         {4, "", false, 8, 0},
                                                                         {4, "", true, 10, 1},
                                                                         {5, "", true, 5, 0},
                                                                         {6, "", false, 11, 0},
                                                                         {7, "", false, 6, 0},
                                                                         {0, "HUF", true, 0, 0},
                                                                         {8, "", false, 0, 0}};
        for (const auto &[status, stat, mrr, position, resident] : rows) {
            const SuiteStatus mapped = MapSuiteStatus(status, stat, mrr);
            QVERIFY2(mapped.position == position && mapped.resident == resident, qPrintable(Joined(status, stat)));
        }
    }

    /// Positions 0 to 13, then date, e-mail and residence, with "|" between them.
    void reads_data()
    {
        Columns<QString, QString>({"code", "fields"});
        Case("HUF with nulls", "H1", "H1|NAME||||||||||2345|1|0|||1");
        Case("small letters, office unknown", "p3", "P3|NAME|AAAPO3333P||||||||||0||||0");
        Case("proprietor at home", "P2", "P2|NAME||8|OWN||||||||0||||1");
        Case("no data", "N1", "N1|NAME|||||||||||0||||");
    }
    void reads()
    {
        const auto [code, wanted] = Row<QString, QString>();
        const ClientRecord client =
            ImportedClient({code, "NAME", code == u"H1" ? "Huf" : "", {}, {}, {}}, ReadSuiteClient(&m_suite, code));
        QStringList fields;
        for (int position = 0; position <= ClientRecord::Audit; ++position)
            fields << client[position];
        fields << client[ClientRecord::Born] << client[ClientRecord::Email] << client[ClientRecord::Resident];
        QCOMPARE(fields.join(u'|'), wanted);
    }

    void aTableThatCannotBeReadIsNoMissingClient()
    {
        for (const char *table : {"Off_Info", "Owner1", "Main_Info1"}) {
            QVERIFY(m_suite.Execute(Sql("Drop Table ", table)));
            QVERIFY2(ReadSuiteClient(&m_suite, "P1").failed(), table);
        }
    }
};

QTEST_MAIN(TestClientImport)
#include "tst_clientimport.moc"
