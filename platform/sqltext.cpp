#include "platform/sqltext.h"

#include <QRegularExpression>

namespace {

// No character of any text: it marks a text made from a statement that may not be sent.
constexpr QChar mark(0xFDD0);

const QString &apostrophe()
{
    static const QString sentence = QStringLiteral("the text holds an apostrophe");
    return sentence;
}

/// The quote that is open after the words, when `open` was before them.
QChar quoteAfter(QChar open, QStringView words)
{
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QChar c = words[i];
        if (open.isNull())
            open = c == u'\'' || c == u'"' || c == u'`' ? c : QChar();
        else if (c == u'\\' && open != u'`')
            ++i;
        else if (c == open)
            open = QChar();
    }
    return open;
}

/// Whether a piece outside quotes is whole: it leaves no quote open, and neither ends the statement nor makes the rest of
/// it a comment.
bool isWhole(QStringView piece)
{
    QChar open;
    for (qsizetype i = 0; i < piece.size(); ++i) {
        const QChar before = open;
        open = quoteAfter(open, piece.sliced(i, 1));
        if (!before.isNull() && piece[i] == u'\\' && before != u'`')
            ++i;
        const QStringView two = piece.sliced(i).left(2);
        if (open.isNull() && (piece[i] == u';' || piece[i] == u'#' || two == u"--" || two == u"/*"))
            return false;
    }
    return open.isNull();
}

/// Whether a value between two of these quotes leaves both where they are.
bool staysBetween(QChar quote, QStringView value)
{
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool escape = value[i] == u'\\' && quote != u'`';
        if (!escape && value[i] != quote)
            continue;
        if (++i >= value.size() || (!escape && value[i] != quote))
            return false;
    }
    return true;
}

} // namespace

SqlText::SqlText(QString words)
    : m_text(std::move(words))
    , m_fault(m_text.contains(mark) ? apostrophe() : QString())
    , m_quote(quoteAfter(QChar(), m_text))
{
}

SqlText &SqlText::addWords(QStringView words)
{
    m_text.append(words);
    m_quote = quoteAfter(m_quote, words);
    return *this;
}

SqlText &SqlText::addValue(QStringView value)
{
    if (m_quote.isNull()) {
        if (m_fault.isEmpty() && !isWhole(value))
            m_fault = apostrophe();
        return *this += SqlText(value.toString());
    }
    if (!staysBetween(m_quote, value) || value.contains(mark))
        m_fault = apostrophe();
    m_text.append(value);
    return *this;
}

SqlText &SqlText::operator+=(const SqlText &more)
{
    if (m_fault.isEmpty())
        m_fault = more.m_fault;
    return addWords(more.m_text);
}

SqlText::operator QString() const
{
    return m_fault.isEmpty() || m_text.contains(mark) ? m_text : m_text + mark;
}

SqlText SqlNumbers(const QString &list)
{
    static const QRegularExpression numbers(QStringLiteral(R"(\A[-+.,\s\d]*\z)"));
    SqlText text(list);
    if (!numbers.match(list).hasMatch() || list.contains(u"--"))
        text.m_fault = QStringLiteral("a list of numbers holds something else");
    return text;
}

SqlText ValueList(const QStringList &values)
{
    SqlText list;
    for (const QString &value : values)
        list += Sql(list.text().isEmpty() ? "'" : ",'", value, "'");
    return list;
}

SqlText Quoted(const QString &text)
{
    QString value = text;
    value.replace(u'\\', QStringLiteral("\\\\")).replace(u'\'', QStringLiteral("''"));
    return {u'\'' + value + u'\''};
}
