#include "platform/sqltext.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Values stay between the quotes that the program's own words put around them.
class TestSqlText : public QObject
{
    Q_OBJECT

private slots:
    void values()
    {
        const QStringList kept{"", "\"A` -- #"};
        const QStringList refused{"O''NEIL", // would be stored with one quote
                                  "BA\\CK",
                                  "C:\\\\",
                                  "O'NEIL",
                                  "'",
                                  "'''",
                                  "1' #2",
                                  "x';delete from fbt_detail; -- ",
                                  "X' or 'a'='a",
                                  "A'+'B",
                                  "a\\",
                                  "a\\\\'",
                                  QString(QChar(0xFDD0))}; // the mark itself
        for (const QString &value : kept + refused) {
            const SqlText whole = Sql("Update T Set A='", value, "',N=", 1.5, " Where B=", Quoted(value));
            const SqlText joined = Sql("Update T Set A='", value) + Sql("',B=", 2); // opened and closed by two pieces
            const QString asText = Sql("A='", value, "'");                          // kept as a text for a while
            const SqlText again = Sql("Select * from T Where ", asText);
            for (const SqlText &statement : {whole, joined, again})
                QVERIFY2(statement.fault().isEmpty() == kept.contains(value), qPrintable(value));
            QVERIFY(whole.text().startsWith("Update T Set A='" + value + "',N=1.5 Where B='"));
            QCOMPARE(SqlText(asText + " and B=1").fault(), whole.fault());
            QCOMPARE(whole.fault() == u"the text holds a backslash", value.contains(u'\\'));
        }
    }

    void piecesOutsideQuotes()
    {
        const QStringList kept{"Code_No='A;#--/*' and NatId in (1,-2)", "A='\\'' and B=''"};
        for (const QString &text : kept + QStringList{"1 or A='", "1;Drop Table T", "1 #", "1 -- ", "1 /* "})
            QVERIFY2(Sql("Select * from T Where ", text, " and N=1").fault().isEmpty() == kept.contains(text),
                     qPrintable(text));
        const QStringList numbers{"1,2, 10", ""};
        for (const QString &list : numbers + QStringList{"1) or (1=1", "SrNo", "1--1"})
            QVERIFY2(Sql("N in (", SqlNumbers(list), ")").fault().isEmpty() == numbers.contains(list),
                     qPrintable(list));
    }

    void codesArriveAsTyped()
    {
        QCOMPARE(Sql("A=", Quoted(u"X' or '\\"_s)).text(), u"A='X'' or ''\\\\'"_s);
        QVERIFY(!Sql("A=", Quoted(u"X'"_s), " and B='", u"B'"_s, "'").fault().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSqlText)
#include "tst_sqltext.moc"
