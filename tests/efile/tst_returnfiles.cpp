#include "efile/errorlocator.h"
#include "efile/form3b.h"
#include "efile/itr8.h"
#include "efile/returnschemas.h"
#include "platform/fault.h"
#include "tests/efile/samplereturns.h"
#include "tests/support/caserow.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QString dataFolder = QStringLiteral(FBT_SOURCE "/Data/");

struct Found
{
    QList<int> lines;
    QStringList messages;
};

class Collector : public XmlErrorHandler
{
public:
    void error(const XmlPlace &place, const QString &message, int /*code*/) override
    {
        found.lines << place.line;
        found.messages << message;
    }
    void fatalError(const XmlPlace &place, const QString &message, int code) override { error(place, message, code); }
    void ignorableWarning(const XmlPlace &place, const QString &message, int code) override
    {
        error(place, message, code);
    }

    Found found;
};

using Maker = FiledReturn (*)();

struct Sample
{
    const char *name;
    Maker make;
};

constexpr Sample samples[] = {{"form3b-full", fullForm3B},
                              {"form3b-lean", leanForm3B},
                              {"itr8-2007-lean", lean2007},
                              {"itr8-2008-full", full2008},
                              {"itr8-2009", plain2009}};

QByteArray fileOf(const FiledReturn &filed)
{
    return filed.form.TYear < firstYearOfItr8 ? Form3BFile(filed) : Itr8File(filed);
}

QString mainSchema(int year)
{
    if (year < firstYearOfItr8)
        return dataFolder + u"ITSForm3BSchemaVer1.0.2.xsd"_s;
    return dataFolder + u"corpitrmain"_s + (year > firstYearOfItr8 ? QString::number(year) : QString()) + u".xsd"_s;
}

std::vector<XmlSchema> schemasOf(int year)
{
    return year < firstYearOfItr8 ? Form3BSchemas(mainSchema(year)) : Itr8Schemas(dataFolder, year);
}

} // namespace

class TestReturnFiles : public QObject
{
    Q_OBJECT

private slots:
    void aFileIsTheSameToTheByte_data()
    {
        Columns<int>({"sample"});
        for (int at = 0; at < int(std::size(samples)); ++at)
            Case(QString::fromLatin1(samples[at].name), at);
    }
    /// The files beside this test were read against the forms of the department line by line.
    void aFileIsTheSameToTheByte()
    {
        QFETCH(int, sample);
        QFile kept(QStringLiteral(FBT_SOURCE "/tests/efile/files/%1.xml").arg(QLatin1String(samples[sample].name)));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        const FiledReturn filed = samples[sample].make();
        QCOMPARE(fileOf(filed), kept.readAll());
        const Found found = validate(filed.form.TYear, fileOf(filed));
        QVERIFY2(found.messages.isEmpty(), qPrintable(found.messages.join(u'\n')));
        QVERIFY(xmllintAccepts(filed.form.TYear));
    }

    /// The department's own oddities, which a good intention could mend.
    void oddities()
    {
        FiledReturn filed = plain2009();
        filed.form.ClName = u"A & B \u2013 \u20ac \u0905"_s;
        QVERIFY(
            Itr8File(filed).contains("<ITRForm:SurNameOrOrgName>A & B \x96 \x80 \x1A</ITRForm:SurNameOrOrgName>\r\n"));
        QVERIFY(Itr8File(filed).contains("/main\r\nC:\\u01\\itportal\\itr\\schema\\AY09-10\\CorpITRMain09.xsd\">\r\n"));
        filed.form.addInfo[u"aorng"_s] = u"W12"_s;
        QVERIFY(Itr8File(filed).contains("<ITRForm:RangeCode>W12<"));
        filed.form.RetCode = u" "_s;
        QVERIFY(Itr8File(filed).contains("<ITRForm:FBTSec> <"));
        QCOMPARE(CONVERT(u"1/4/08"_s, u"Date"), u"1/4/08"_s);
        QCOMPARE(CONVERT(u"01/04/08"_s, u"Date"), u"2008-04-01"_s);
        // Lines after 22 reach only the totals of form 3B; line 31 goes with line 2 in the later form.
        QVERIFY(!Form3BFile(fullForm3B()).contains("<FBT_code>8573<"));
        QVERIFY(Itr8File(full2008()).contains("<ITRForm:AmtOrValueOfExpenditure>2033<"));
    }

    void aWrongValueIsRefusedAndLeadsToItsField_data();
    void aWrongValueIsRefusedAndLeadsToItsField()
    {
        QFETCH(int, sample);
        QFETCH(QString, element);
        QFETCH(QString, value);
        QFETCH(QString, field);
        const FiledReturn filed = samples[sample].make();
        int line = 0;
        const QByteArray bytes = withValue(fileOf(filed), element, value, &line);
        QVERIFY2(line > 0, "no such element");
        const Found found = validate(filed.form.TYear, bytes);
        QCOMPARE(found.lines.mid(0, 1), QList<int>{line});
        QVERIFY(!xmllintAccepts(filed.form.TYear));
        QCOMPARE(placeAt(bytes, line, filed.form.TYear), field);
    }

    void aFileThatIsNone_data()
    {
        Columns<QByteArray, QString>({"bytes", "message"});
        const QByteArray good = Form3BFile(leanForm3B());
        Case(u"empty"_s, QByteArray(), u"invalid document structure"_s);
        Case(u"cut"_s, good.left(good.size() / 2), u"input ended"_s);
        Case(u"another form"_s, Itr8File(plain2009()), u"no declaration found"_s);
        Case(u"ampersand"_s, QByteArray(good).replace("ALPHA", "A & B"), u"expected entity name"_s);
        Case(u"misspelled element"_s, QByteArray(good).replace("ao_typ", "ao_type"), u"ao_type"_s);
        Case(u"elements in another order"_s, QByteArray(good).replace("formname", "pan"), u"not allowed"_s);
        Case(u"a line of the form twice"_s, QByteArray(Form3BFile(fullForm3B())).replace("8552", "8551"), u"unique"_s);
        Case(u"file of this machine"_s,
             QByteArray("<!DOCTYPE x [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><formpatterns>&e;</formpatterns>"),
             u"declaration is not allowed"_s);
        Case(u"file of the network"_s,
             QByteArray("<!DOCTYPE x SYSTEM \"http://127.0.0.1:9/x.dtd\"><formpatterns></formpatterns>"),
             u"declaration is not allowed"_s);
    }
    void aFileThatIsNone()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, message);
        const Found found = validate(2006, bytes);
        QVERIFY2(found.messages.join(u'\n').contains(message), qPrintable(found.messages.join(u'\n')));
    }

    /// A name outside ASCII is told with its own line, which the parser does not know.
    void aByteThatIsNoUtf8()
    {
        const Found found = validate(2006, QByteArray(Form3BFile(leanForm3B())).replace("MUMBAI", "M\xdcMBAI"));
        QCOMPARE(found.lines, QList<int>{13});
    }

    void entitiesDoNotMultiply()
    {
        QByteArray bomb = "<!DOCTYPE x [<!ENTITY a0 \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\">";
        for (int i = 1; i < 12; ++i)
            bomb += "<!ENTITY a" + QByteArray::number(i) + " \"" +
                    ("&a" + QByteArray::number(i - 1) + ";").repeated(10) + "\">";
        QElapsedTimer time;
        time.start();
        const Found found = validate(2006, bomb + "]><formpatterns>&a11;</formpatterns>");
        QVERIFY(found.messages.last().contains(u"entity expansions"));
        QVERIFY(time.elapsed() < 5000);
    }

    /// A schema that is damaged or gone is no verdict on a file.
    void aSchemaThatCannotBeUsedIsAFault()
    {
        const QString wrong = m_scratch.filePath(u"wrong.xsd"_s);
        put(wrong, "<schema>");
        put(m_scratch.filePath(u"return.xml"_s), Form3BFile(leanForm3B()));
        Collector collector;
        for (const QString &schema : {wrong, m_scratch.filePath(u"none.xsd"_s)})
            QVERIFY_THROWS_EXCEPTION(
                FaultError, ValidateXml(m_scratch.filePath(u"return.xml"_s), Form3BSchemas(schema), collector));
    }

private:
    static void put(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    Found validate(int year, const QByteArray &bytes)
    {
        Collector collector;
        put(m_scratch.filePath(u"return.xml"_s), bytes);
        ValidateXml(m_scratch.filePath(u"return.xml"_s), schemasOf(year), collector);
        return collector.found;
    }

    /// Of the file that was validated last.
    [[nodiscard]] bool xmllintAccepts(int year) const
    {
        QProcess xmllint;
        xmllint.start(u"xmllint"_s, {u"--nonet"_s, u"--noout"_s, u"--schema"_s, mainSchema(year),
                                     m_scratch.filePath(u"return.xml"_s)});
        if (!xmllint.waitForFinished())
            qFatal("xmllint is not installed.");
        return xmllint.exitCode() == 0;
    }

    static QByteArray withValue(const QByteArray &bytes, const QString &element, const QString &value, int *line)
    {
        QList<QByteArray> lines = bytes.split('\n');
        const QByteArray open = u"<%1>"_s.arg(element).toLatin1();
        for (int at = 0; at < lines.size(); ++at) {
            const qsizetype from = lines[at].indexOf(open);
            if (from < 0)
                continue;
            const qsizetype to = lines[at].indexOf('<', from + open.size());
            lines[at].replace(from + open.size(), to - from - open.size(), value.toLatin1());
            *line = at + 1;
            break;
        }
        return lines.join('\n');
    }

    /// "screen control" of the value on a line; for an entry of a list without a control its number.
    static QString placeAt(const QByteArray &bytes, int line, int year)
    {
        ErrorLocator locator(year < firstYearOfItr8 ? FileForm::Form3B : FileForm::Itr8);
        for (const QByteArray &text : bytes.split('\n').mid(0, line))
            locator.take(QString::fromLatin1(text));
        const auto place = locator.here().place;
        if (!place)
            return {};
        const bool entry = place->at.field.isEmpty() && place->item > 0;
        return ScreenName(place->at.screen) + u' ' + (entry ? QString::number(place->item) : place->at.field);
    }

    QTemporaryDir m_scratch;
};

void TestReturnFiles::aWrongValueIsRefusedAndLeadsToItsField_data()
{
    enum { Full3B, Lean3B, Lean2007, Full2008, Plain2009 };
    Columns<int, QString, QString, QString>({"sample", "element", "value", "field"});
    const auto longer = [](int most) { return QString(most + 1, u'X'); };
    const struct
    {
        int sample;
        const char *element; // of the later form without its prefix
        QString value;
        const char *field;
    } rows[] = {
        {Full2008, "PAN", u"ABCDE12345"_s, "Employer Details txtfields_2"},
        {Full2008, "SurNameOrOrgName", longer(75), "Employer Details txtfields_1"},
        {Full2008, "OrgOldName", u""_s, "Miscellaneous Information txtVar2_1"},
        {Full2008, "ResidenceNo", longer(50), "Employer Details txtfields_3"},
        {Full2008, "ResidenceName", longer(50), "Employer Details txtfields_4"},
        {Full2008, "LocalityOrArea", u" "_s, "Employer Details txtfields_6"},
        {Full2008, "CityOrTownOrDistrict", u""_s, "Employer Details txtfields_7"},
        {Full2008, "StateCode", u"36"_s, "Employer Details Combo1"},
        {Full2008, "PinCode", u"11000"_s, "Employer Details txtfields_9"},
        {Full2008, "STDcode", u"0221 2"_s, "Employer Details txtfields_10"},
        {Full2008, "PhoneNo", u"12345678901"_s, "Employer Details txtfields_11"},
        {Full2008, "EmailAddress", u"a@b"_s, "Employer Details txtfields_18"},
        {Full2008, "EmailAddress", u"a@b@c.in"_s, "Employer Details txtfields_18"},
        {Full2008, "EmailAddress", QString(120, u'a') + u"@b.inn"_s, "Employer Details txtfields_18"},
        {Full2008, "DateOFFormOrIncorp", u"1990-02-30"_s, "Employer Details txtfields_17"},
        {Full2008, "DateOFFormOrIncorp", u"1990-02-01Z"_s, "Employer Details txtfields_17"},
        {Full2008, "StatusOrCompanyType", u"9"_s, "Employer Details cbostat"},
        {Full2008, "FBTSec", u" "_s, "Additional Information cboSection"},
        {Full2008, "DesigOfficerWardorCircle", longer(75), "Additional Information txtWard"},
        {Full2008, "AreaCode", u"DE"_s, "Additional Information txtareacd"},
        {Full2008, "AOType", u"CCC"_s, "Additional Information txtaotyp"},
        {Full2008, "RangeCode", u"W12"_s, "Additional Information txtaorng"},
        {Full2008, "AONo", u"1"_s, "Additional Information txtaono"},
        {Full2008, "ReturnType", u"X"_s, "Additional Information chkRevRet"},
        {Full2008, "ReceiptNo", longer(15), "Additional Information txtRevRecNo"},
        {Full2008, "ResidentialStatus", u"RNOR"_s, "Employer Details cboresst"},
        {Full2008, "RepName", longer(50), "Miscellaneous Information txtVar0_0"},
        {Full2008, "RepAddress", longer(75), "Miscellaneous Information txtVar0_2"},
        {Full2008, "AuditorMemNo", u"12345"_s, "Miscellaneous Information txtVar1_1"},
        {Full2008, "AuditDate", u"0008-06-30"_s, "Miscellaneous Information txtVar1_11"},
        {Full2008, "AdvanceFBT", u"-1"_s, "Challan "},
        {Full2008, "DefaultPayUs115WJ3", u"-1"_s, "Additional Information txtAmt115WJ"},
        {Full2008, "NoOfOutsideIndiaEmps", u"-1"_s, "Additional Information txtTotalEmp"},
        {Full2008, "BankAccountNumber", longer(17), "Bank Accounts txtaccount"},
        {Full2008, "MICRCode", u"1234"_s, "Bank Accounts txtmicr"},
        {Full2008, "AmtOrValueOfExpenditure", u"10.5"_s, "FBT Details "},
        {Full2008, "ValueOfFB", u"123456789012345"_s, "FBT Details "},
        {Full2008, "NameOfBank", longer(25), "Challan cbobsrcode"},
        {Full2008, "BSRCode", u""_s, "Challan cbobsrcode"},
        {Full2008, "DateDep", u""_s, "Challan txtfields_3"},
        {Full2008, "SrlNoOfChaln", u"123456"_s, "Challan txtfields_2"},
        {Full2008, "Amt", u"9000.5"_s, "Challan txtfields_4"},
        {Full2008, "FatherName", longer(25), "Return Form txtfields_1"},
        {Full2008, "Capacity", u""_s, "Return Form txtfields_3"},
        {Full2008, "Place", u""_s, "Return Form txtfields_4"},
        {Full2008, "Date", u"2008-03-31"_s, "Return Form txtdate"},
        {Full2008, "SWVersionNo", longer(10), ""},
        {Full2008, "AssessmentYear", u"2007"_s, ""},
        {Plain2009, "AssesseeVerPAN", u"PQRST6789"_s, "Return Form txtfields_2"},
        {Plain2009, "XMLCreationDate", u"2008-09-30"_s, "Return Form txtdate"},
        {Full3B, "Address1", u"12"_s, ""},
        {Full3B, "doi", u""_s, "Employer Details txtfields_17"},
        {Full3B, "status", u""_s, "Employer Details cbostat"},
        {Full3B, "Telno", u"2222,3333"_s, "Employer Details txtfields_11"},
        {Full3B, "range_cd", u"7"_s, "Additional Information txtaorng"},
        {Full3B, "resistatus", u"4"_s, "Employer Details cboresst"},
        {Full3B, "dateofauditreport44AB_c", u""_s, "Additional Information txtDt44ABC"},
        {Full3B, "FBTQ1", u"-1"_s, "FBT Details "},
        {Full3B, "SLF_TAX_SCHD_23", u"1.5"_s, "Challan "},
        {Full3B, "accountnumber", u""_s, "Bank Accounts txtaccount"},
        {Full3B, "micrcode", u"12"_s, "Bank Accounts txtmicr"},
        {Full3B, "FBT_code", u"8573"_s, "FBT Details "},
        {Full3B, "FBT_rate", u"30"_s, "FBT Details "},
        {Full3B, "bsrcode", u"123"_s, "Challan cbobsrcode"},
        {Full3B, "transaction_type", u"H"_s, "Challan 1"},
        {Full3B, "Total_emp_cnt", u"-5"_s, "Additional Information txtTotalEmp"},
    };
    for (const auto &row : rows) {
        const QString name = QString::fromLatin1(row.element);
        const QString element = row.sample < Lean2007 ? name : u"ITRForm:"_s + name;
        Case(u"%1 %2"_s.arg(name, row.value.left(12)), row.sample, element, row.value, QString::fromLatin1(row.field));
    }
}

QTEST_GUILESS_MAIN(TestReturnFiles)
#include "tst_returnfiles.moc"
