#include "platform/sqltext.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Values stay between the quotes that the program's own words put around them.
class TestSqlText : public QObject
{
    Q_OBJECT

private slots:
    void values_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("sent");
        const auto row = [](const char *name, const QString &value, bool sent) {
            QTest::newRow(name) << value << sent;
        };
        row("nothing", QString(), true);
        row("two quotes", u"O''NEIL"_s, false); // would be stored as one
        row("backslash in the text", u"BA\\CK"_s, false);
        row("escaped backslash last", u"C:\\\\"_s, false);
        row("other quotes", u"\"A` -- #"_s, true);
        row("a quote", u"O'NEIL"_s, false);
        row("only a quote", u"'"_s, false);
        row("three quotes", u"'''"_s, false);
        row("comment", u"1' #2"_s, false);
        row("second statement", u"x';delete from fbt_detail; -- "_s, false);
        row("always true", u"X' or 'a'='a"_s, false);
        row("two quotes apart", u"A'+'B"_s, false);
        row("backslash before the closing quote", u"a\\"_s, false);
        row("escaped backslash, then a quote", u"a\\\\'"_s, false);
        row("the mark itself", QString(QChar(0xFDD0)), false);
    }
    void values()
    {
        QFETCH(QString, value);
        QFETCH(bool, sent);
        const SqlText whole = Sql("Update T Set A='", value, "',N=", 1.5, " Where B=", Quoted(value));
        QCOMPARE(whole.fault().isEmpty(), sent);
        QVERIFY(whole.text().startsWith(u"Update T Set A='"_s + value + u"',N=1.5 Where B='"_s));
        const SqlText joined = Sql("Update T Set A='", value) + Sql("',B=", 2); // opened and closed by two pieces
        QCOMPARE(joined.fault().isEmpty(), sent);
        const QString asText = Sql("A='", value, "'"); // kept as a text for a while
        QCOMPARE(Sql("Select * from T Where ", asText).fault().isEmpty(), sent);
        QCOMPARE(SqlText(asText + u" and B=1"_s).fault(), whole.fault());
        QCOMPARE(whole.fault() == u"the text holds a backslash", value.contains(u'\\'));
    }

    void piecesOutsideQuotes_data()
    {
        QTest::addColumn<SqlText>("statement");
        QTest::addColumn<bool>("sent");
        const auto piece = [](const QString &text, bool sent) {
            QTest::newRow(qPrintable(text)) << Sql("Select * from T Where ", text, " and N=1") << sent;
        };
        piece(u"Code_No='A;#--/*' and NatId in (1,-2)"_s, true);
        piece(u"A='\\'' and B=''"_s, true);
        piece(u"1 or A='"_s, false);
        piece(u"1;Drop Table T"_s, false);
        piece(u"1 #"_s, false);
        piece(u"1 -- "_s, false);
        piece(u"1 /* "_s, false);
        const auto numbers = [](const QString &list, bool sent) {
            QTest::newRow(qPrintable(u"numbers "_s + list)) << Sql("N in (", SqlNumbers(list), ")") << sent;
        };
        numbers(u"1,2, 10"_s, true);
        numbers(QString(), true);
        numbers(u"1) or (1=1"_s, false);
        numbers(u"SrNo"_s, false);
        numbers(u"1--1"_s, false);
    }
    void piecesOutsideQuotes()
    {
        QFETCH(SqlText, statement);
        QTEST(statement.fault().isEmpty(), "sent");
    }

    void codesArriveAsTyped()
    {
        QCOMPARE(Sql("A=", Quoted(u"X' or '\\"_s)).text(), u"A='X'' or ''\\\\'"_s);
        QVERIFY(!Sql("A=", Quoted(u"X'"_s), " and B='", u"B'"_s, "'").fault().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSqlText)
#include "tst_sqltext.moc"
