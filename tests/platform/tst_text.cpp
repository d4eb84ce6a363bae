#include "platform/dates.h"
#include "platform/text.h"

#include <QTest>

#include <functional>

/// The number, text and date rules that every figure goes through.
class TestText : public QObject
{
    Q_OBJECT
private slots:
    void val_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("none") << "" << 0.0;
        QTest::newRow("letters") << "abc" << 0.0;
        QTest::newRow("year label") << "2006-2007" << 2006.0;
        QTest::newRow("comma ends it") << "1,234" << 1.0;
        QTest::newRow("blanks count for nothing") << " 1 234.5 x" << 1234.5;
        QTest::newRow("leading point") << "-.5" << -0.5;
        QTest::newRow("exponent") << "1E+15" << 1e15;
        QTest::newRow("no exponent without digits") << "12E" << 12.0;
        QTest::newRow("only a sign") << "-" << 0.0;
        QTest::newRow("beyond every number") << "1E400" << 0.0;
    }
    void val()
    {
        QFETCH(QString, text);
        QTEST(Val(text), "value");
    }

    void roundsTiesToEven_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("rounded");
        QTest::newRow("0.5") << 0.5 << 0.0;
        QTest::newRow("1.5") << 1.5 << 2.0;
        QTest::newRow("2.5") << 2.5 << 2.0;
        QTest::newRow("-2.5") << -2.5 << -2.0;
        QTest::newRow("1234.5") << 1234.5 << 1234.0;
        QTest::newRow("0.49") << 0.49 << 0.0;
    }
    void roundsTiesToEven()
    {
        QFETCH(double, value);
        QTEST(Round(value), "rounded");
    }

    void remainder()
    {
        QCOMPARE(1250.50 - RemainderOf100(1250.50), 1200.50);
        QCOMPARE(1299.0 - RemainderOf100(1299), 1200.0);
        QCOMPARE(RemainderOf100(99.5), 0.0); // 99.5 is 100 as a whole number
    }

    void numberText_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 1200.0 << "1200";
        QTest::newRow("leading zero") << 0.5 << "0.5";
        QTest::newRow("fifteen digits") << 0.1 + 0.2 << "0.3";
        QTest::newRow("largest without exponent") << 999999999999999.0 << "999999999999999";
        QTest::newRow("beyond") << 1e15 << "1E+15";
        QTest::newRow("no negative zero") << -0.0 << "0";
    }
    void numberText()
    {
        QFETCH(double, value);
        QTEST(NumberText(value), "text");
    }

    void format_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << "###0.00"
                              << "0.00";
        QTest::newRow("half away from zero") << 2.345 << "0.00"
                                             << "2.35";
        QTest::newRow("as typed, not as stored") << 1.005 << "0.00"
                                                 << "1.01";
        QTest::newRow("carry") << 9.999 << "###0.00"
                               << "10.00";
        QTest::newRow("below the last place") << 0.004 << "0.00"
                                              << "0.00";
        QTest::newRow("half of the last place") << 0.005 << "0.00"
                                                << "0.01";
        QTest::newRow("negative") << -1234.5 << "###0.00"
                                  << "-1234.50";
        QTest::newRow("no negative zero") << -0.001 << "0.00"
                                          << "0.00";
        QTest::newRow("whole pattern") << 12.5 << "###0"
                                       << "13";
        QTest::newRow("large") << 123456789012.0 << "0.00"
                               << "123456789012.00";
        QTest::newRow("no digit required") << 0.25 << "#.##"
                                           << ".25";
    }
    void format()
    {
        QFETCH(double, value);
        QFETCH(QString, pattern);
        QTEST(Format(value, pattern), "text");
    }

    void numeric_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        QTest::newRow("number") << "12.50" << true;
        QTest::newRow("blanks around") << " 12 " << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("letters behind") << "12x" << false;
    }
    void numeric()
    {
        QFETCH(QString, text);
        QTEST(IsNumeric(text), "numeric");
    }

    void words_data()
    {
        QTest::addColumn<double>("rupees");
        QTest::addColumn<QString>("words");
        QTest::newRow("nil") << 0.0 << "Nil Rupee Only";
        QTest::newRow("lakh and units") << 1200005.0 << "Twelve Lakh Five Rupee Only";
        QTest::newRow("teens and tens") << 19090.0 << "Nineteen Thousand Ninety Rupee Only";
        QTest::newRow("hundreds") << 999.0 << "Nine Hundred Ninety Nine Rupee Only";
        QTest::newRow("crores above a hundred") << 1230000000.0 << "One Hundred Twenty Three Crore Rupee Only";
        QTest::newRow("paise round to even") << 2.5 << "Two Rupee Only";
    }
    void words()
    {
        QFETCH(double, rupees);
        QTEST(AmountInWords(rupees), "words");
    }

    void typedDates_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("date");
        QTest::newRow("one-digit parts") << "1/4/08"
                                         << "01/04/2008";
        QTest::newRow("dots") << "31.3.2009"
                              << "31/03/2009";
        QTest::newRow("dashes and old year") << "5-6-30"
                                             << "05/06/1930";
        QTest::newRow("last year of this century") << "5-6-29"
                                                   << "05/06/2029";
        QTest::newRow("blanks") << "1 2 2007"
                                << "01/02/2007";
        QTest::newRow("eight digits") << "15062007"
                                      << "15/06/2007";
        QTest::newRow("six digits") << "150607"
                                    << "15/06/2007";
        QTest::newRow("leap day") << "29/02/2008"
                                  << "29/02/2008";
        QTest::newRow("no leap day") << "29/02/2007"
                                     << "";
        QTest::newRow("three-digit year") << "1/1/200"
                                          << "";
        QTest::newRow("text") << "soon"
                              << "";
        QTest::newRow("empty") << ""
                               << "";
    }
    void typedDates()
    {
        QFETCH(QString, typed);
        QTEST(ConvertTypedDate(typed), "date");
    }

    void datesByPosition()
    {
        QCOMPARE(DateFromText(u"31/12/2008"), QDate(2008, 12, 31));
        QCOMPARE(DateFromText(u"31-12-2008"), QDate(2008, 12, 31));
        QVERIFY(!DateFromText(u"31/02/2008").isValid());
        QVERIFY(!DateFromText(u"1/1/08").isValid());
        QCOMPARE(YearLabel(2009), QStringLiteral("2009-10"));
        QCOMPARE(YearLabel(1999), QStringLiteral("1999-00"));
        QCOMPARE(LongYearLabel(2009), QStringLiteral("2009-2010"));
    }
};

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
