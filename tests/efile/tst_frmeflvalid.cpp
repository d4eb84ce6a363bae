#include "efile/form3b.h"
#include "efile/frmeflvalid.h"
#include "efile/itr8.h"
#include "efile/returnfile.h"
#include "tests/efile/samplereturns.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QFile>
#include <QLabel>

using namespace Qt::StringLiterals;

/// The list of errors as a user works with it.
class TestFrmeflvalid : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_server = std::make_unique<TestServer>(); }
    void init()
    {
        m_module = std::make_unique<TestModule>(*m_server);
        QVERIFY(QFile::link(QStringLiteral(FBT_SOURCE "/Data"), Base->AppPath + u"/Data"_s));
        m_path = Base->AppPath + u"/return.xml"_s;
        m_user = std::make_unique<ScreenUser>();
        m_screen = new frmeflvalid;
        m_screen->Load();
    }
    void cleanup()
    {
        SetPlaceOpener({});
        m_user.reset();
        m_module.reset();
    }

    void theErrorsAreListedWithTheirPlaces()
    {
        FiledReturn filed = full2008();
        filed.form.ClPAN = u"ABC"_s;
        filed.form.miscInf[u"var0_1"_s] = u"XYZ"_s;
        filed.other.front().challanNo = u"1 2"_s;
        QCOMPARE(validate(filed), Validation::Errors);
        m_user->sitAt(m_screen);
        const QStringList shown = m_user->shown(u"vsf"_s);
        QCOMPARE(shown.size(), 3);
        QVERIFY2(shown[0].startsWith(u"1 PAN Organisation Information "), qPrintable(shown[0]));
        QVERIFY(shown[0].endsWith(u"PAN: five letters, four digits, one letter"));
        QVERIFY(shown[1].startsWith(u"2 RepPAN Representative Details "));
        QVERIFY(shown[2].startsWith(u"3 SrlNoOfChaln Payment of FBT "));
        QCOMPARE(m_user->find<QLabel>(u"lblerr"_s)->text(), u"To Correct GoTo: Client Master Information"_s);
        const Grid *vsf = m_user->grid(u"vsf"_s);
        QCOMPARE(vsf->TextMatrix(1, 5), u"ITR8FORM:ITR8\\ITRForm:PartA_GEN1\\ITRForm:OrgFirmInfo\\"_s);
        QCOMPARE(vsf->TextMatrix(3, 5), u"ITR8FORM:ITR8\\ITRForm:ScheduleFBT\\ITRForm:TaxPayment\\"_s);
        // A column more.
        m_user->click(u"Check1_6"_s);
        QVERIFY(m_user->shown(u"vsf"_s)[0].endsWith(QString(u' ') + vsf->TextMatrix(1, 6)));
    }

    void theKeysGoFromErrorToError()
    {
        FiledReturn filed = fullForm3B();
        filed.form.ClPAN.clear();
        filed.accounts.front().account.clear();
        QCOMPARE(validate(filed), Validation::Errors);
        m_user->sitAt(m_screen);
        m_user->click(u"cmdview"_s);
        const Grid *vsfv = m_user->grid(u"vsfv"_s);
        QCOMPARE(vsfv->Row(), 0);
        m_user->key(Qt::Key_F8);
        QCOMPARE(vsfv->TextMatrix(vsfv->Row(), 2), u"        <pan></pan>"_s);
        m_user->key(Qt::Key_F8);
        QCOMPARE(vsfv->TextMatrix(vsfv->Row(), 2), u"                <accountnumber></accountnumber>"_s);
        m_user->key(Qt::Key_F8);
        m_user->key(Qt::Key_F7);
        m_user->key(Qt::Key_F7);
        QCOMPARE(m_user->said(), (QStringList{u"No More Error."_s, u"No Previous Error."_s}));
        m_user->key(Qt::Key_Escape);
        QVERIFY(m_user->visible(u"fam1"_s));
    }

    /// Of two accounts and payments it is the very one with the error.
    void enterLeadsToTheValueAndTheFileIsWrittenAnew()
    {
        FiledReturn filed = fullForm3B();
        filed.accounts[1].micr = u"1"_s;
        filed.advance[1].challanNo.clear();
        QCOMPARE(validate(filed), Validation::Errors);
        m_screen->setFiled(filed);
        std::vector<ReturnPlace> opened;
        SetPlaceOpener([&](const ReturnPlace &place) {
            opened.push_back(place);
            if (place.at.screen == ReturnScreen::Banks)
                filed.accounts[1].micr = u"400002002"_s;
            else
                filed.advance[1].challanNo = u"9"_s;
        });
        m_screen->setWriteAgain([&] { return WriteReturn(m_path, filed); });
        m_user->sitAt(m_screen);
        m_user->find<Grid>(u"vsf"_s)->setFocus();
        m_user->key(Qt::Key_Return);
        QCOMPARE(m_screen->errorCount(), 1);
        m_user->click(u"cmdgoto"_s);
        QCOMPARE(opened.size(), 2U);
        QCOMPARE(opened[0].account.value_or(BankAccount()).number, 2);
        QCOMPARE(opened[0].at.field, u"txtmicr"_s);
        QVERIFY(opened[1].advance);
        QCOMPARE(opened[1].item, 2);
        QCOMPARE(m_screen->lastValidation(), Validation::Valid);
        QCOMPARE(m_user->said(), QStringList{u"The file has no errors any more."_s});
    }

    void charactersAreReplacedAndTheFileIsValid()
    {
        FiledReturn filed = leanForm3B();
        filed.form.ClName = u"A & B%"_s;
        QCOMPARE(validate(filed), Validation::Errors);
        m_user->sitAt(m_screen);
        m_user->click(u"cmdremspch"_s);
        m_user->click(u"cmdadd"_s);
        m_user->keys(u"%\r"_s); // nothing in its place: it goes
        m_user->answers({Reply::Yes});
        m_user->click(u"cmdok"_s);
        QCOMPARE(m_user->said().size(), 1);
        QCOMPARE(m_screen->lastValidation(), Validation::Valid);
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("<name>A AND B</name>"));
        QFile list(Base->AppPath + u"/SpChList"_s);
        QVERIFY(list.open(QIODevice::ReadOnly));
        QCOMPARE(list.readAll(), "&\tAND\n%\t\n");
    }

    /// 10,000 errors and a file of 20 MB are listed and shown.
    void aLargeFileWithManyErrors()
    {
        FiledReturn filed = fullForm3B();
        filed.accounts.assign(10000, account(1, QString(), u"1"_s, false));
        filed.advance.assign(80000, filed.advance.front());
        QCOMPARE(validate(filed), Validation::Errors);
        QCOMPARE(m_screen->errorCount(), 10000);
        m_user->sitAt(m_screen);
        const Grid *vsf = m_user->grid(u"vsf"_s);
        QCOMPARE(vsf->TextMatrix(10000, 1), u"micrcode"_s);
        const Grid *vsfv = m_user->grid(u"vsfv"_s);
        QCOMPARE(vsfv->TextMatrix(vsf->TextMatrix(10000, 6).toInt() - 1, 0), u"1"_s);
        QCOMPARE(vsfv->TextMatrix(vsfv->Rows() - 1, 2), u"</formpatterns>"_s);
    }

    void withoutASchemaThereIsNoVerdict()
    {
        FiledReturn filed = leanForm3B();
        QVERIFY(WriteReturn(m_path, filed));
        QCOMPARE(m_screen->VALIDFILE(Base->AppPath + u"/none.xsd"_s, m_path, QString()), Validation::Failed);
        QCOMPARE(m_module->logLines().size(), 1);
        m_user->sitAt(m_screen);
    }

private:
    Validation validate(const FiledReturn &filed)
    {
        Base->TYear = filed.form.TYear;
        if (!WriteReturn(m_path, filed))
            return Validation::Failed;
        const ValidationTask task = ValidationOf(filed.form.TYear);
        return m_screen->VALIDFILE(task.xsd, m_path, task.form);
    }

    std::unique_ptr<TestServer> m_server;
    std::unique_ptr<TestModule> m_module;
    std::unique_ptr<ScreenUser> m_user;
    frmeflvalid *m_screen = nullptr; // the user's once he sits at it
    QString m_path;
};

QTEST_MAIN(TestFrmeflvalid)
#include "tst_frmeflvalid.moc"
