#include "platform/dates.h"
#include "platform/text.h"
#include "tests/support/caserow.h"

/// The number, text and date rules that every figure goes through.
class TestText : public QObject
{
    Q_OBJECT
private slots:
    void rules_data()
    {
        Columns<QVariant, QVariant>({"given", "wanted"});
        const auto row = Case<QVariant, QVariant>;
        row("value of a year label", Val(u"2006-2007"), 2006.0);
        row("value: comma ends it", Val(u"1,234"), 1.0);
        row("value: blanks count for nothing", Val(u" 1 234.5 x"), 1234.5);
        row("value: leading point", Val(u"-.5"), -0.5);
        row("value: exponent", Val(u"1E+15"), 1e15);
        row("value: no exponent without digits", Val(u"12E"), 12.0);
        row("value: only a sign", Val(u"-"), 0.0);
        row("value: beyond every number", Val(u"1E400"), 0.0);
        row("round 0.5", Round(0.5), 0.0);
        row("round 1.5", Round(1.5), 2.0);
        row("round 2.5", Round(2.5), 2.0);
        row("round -2.5", Round(-2.5), -2.0);
        row("hundreds of 1299", 1299.0 - RemainderOf100(1299), 1200.0);
        row("remainder of 99.5, which is 100 as a whole number", RemainderOf100(99.5), 0.0);
        row("text of fifteen digits", NumberText(0.1 + 0.2), "0.3");
        row("text: largest without exponent", NumberText(999999999999999.0), "999999999999999");
        row("text beyond it", NumberText(1e15), "1E+15");
        row("text: no negative zero", NumberText(-0.0), "0");
        row("format half away from zero", Format(2.345, u"0.00"), "2.35");
        row("format as typed, not as stored", Format(1.005, u"0.00"), "1.01");
        row("format with carry", Format(9.999, u"###0.00"), "10.00");
        row("format half of the last place", Format(0.005, u"0.00"), "0.01");
        row("format negative", Format(-1234.5, u"###0.00"), "-1234.50");
        row("format: no negative zero", Format(-0.001, u"0.00"), "0.00");
        row("format whole", Format(12.5, u"###0"), "13");
        row("format large", Format(123456789012.0, u"0.00"), "123456789012.00");
        row("format: no digit required", Format(0.25, u"#.##"), ".25");
        row("numeric: blanks around", IsNumeric(u" 12.50 "), true);
        row("numeric: empty", IsNumeric(u""), false);
        row("numeric: letters after it", IsNumeric(u"12x"), false);
        row("words: nil", AmountInWords(0.0), "Nil Rupee Only");
        row("words: lakh and units", AmountInWords(1200005.0), "Twelve Lakh Five Rupee Only");
        row("words: teens and tens", AmountInWords(19090.0), "Nineteen Thousand Ninety Rupee Only");
        row("words: crores", AmountInWords(1230000000.0), "One Hundred Twenty Three Crore Rupee Only");
        row("words: paise round to even", AmountInWords(2.5), "Two Rupee Only");
        row("typed date: one-digit parts", ConvertTypedDate(u"1/4/08"), "01/04/2008");
        row("typed date: dashes and old year", ConvertTypedDate(u"5-6-30"), "05/06/1930");
        row("typed date: last year of this century", ConvertTypedDate(u"5-6-29"), "05/06/2029");
        row("typed date: blanks", ConvertTypedDate(u"1 2 2007"), "01/02/2007");
        row("typed date: eight digits", ConvertTypedDate(u"15062007"), "15/06/2007");
        row("typed date: six digits", ConvertTypedDate(u"150607"), "15/06/2007");
        row("typed date: no leap day", ConvertTypedDate(u"29/02/2007"), "");
        row("typed date: three-digit year", ConvertTypedDate(u"1/1/200"), "");
        row("typed date: words", ConvertTypedDate(u"soon"), "");
        row("date", DateFromText(u"31-12-2008"), QDate(2008, 12, 31));
        row("no such date", DateFromText(u"31/02/2008"), QDate());
        row("date without its century", DateFromText(u"1/1/08"), QDate());
        row("year label over the century", YearLabel(1999), "1999-00");
        row("long year label", LongYearLabel(2009), "2009-2010");
    }
    void rules()
    {
        const auto [given, wanted] = Row<QVariant, QVariant>();
        QCOMPARE(given, wanted);
    }
};

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
