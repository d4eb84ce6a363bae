#include "platform/sqltext.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

/// Why a statement may not be sent, and the mark of a text made from it: no character of any text.
struct Refusal
{
    QChar mark;
    QString sentence;
};

enum RefusalKind : std::size_t { Apostrophe, Backslash, NoNumbers };

const std::array<Refusal, 3> &refusals()
{
    static const std::array<Refusal, 3> all{{
        {QChar(0xFDD0), QStringLiteral("the text holds an apostrophe")},
        {QChar(0xFDD1), QStringLiteral("the text holds a backslash")},
        {QChar(0xFDD2), QStringLiteral("a list of numbers holds something else")},
    }};
    return all;
}

const QString &sentence(RefusalKind kind)
{
    return refusals().at(kind).sentence;
}

/// Why a text that was made from a statement may not be sent; empty when it may.
QString refusalIn(QStringView text)
{
    for (const Refusal &refusal : refusals()) {
        if (text.contains(refusal.mark))
            return refusal.sentence;
    }
    return {};
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

/// Why a value may not stand between two of these quotes; empty when it leaves both where they are and arrives as it was
/// typed. The server reads a backslash as the beginning of an escape, and two quotes as one: it would store another text
/// than the user's.
QString refusalBetween(QChar quote, QStringView value)
{
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == u'\\' && quote != u'`')
            return sentence(Backslash);
        if (value[i] == quote)
            return sentence(Apostrophe);
    }
    return refusalIn(value);
}

} // namespace

SqlText::SqlText(QString words)
    : m_text(std::move(words))
    , m_fault(refusalIn(m_text))
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
            m_fault = sentence(Apostrophe);
        return *this += SqlText(value.toString());
    }
    if (m_fault.isEmpty())
        m_fault = refusalBetween(m_quote, value);
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
    const auto &all = refusals();
    const auto refusal =
        std::find_if(all.begin(), all.end(), [this](const Refusal &one) { return one.sentence == m_fault; });
    return refusal == all.end() || m_text.contains(refusal->mark) ? m_text : m_text + refusal->mark;
}

SqlText SqlNumbers(const QString &list)
{
    static const QRegularExpression numbers(QStringLiteral(R"(\A[-+.,\s\d]*\z)"));
    SqlText text(list);
    if (!numbers.match(list).hasMatch() || list.contains(u"--"))
        text.m_fault = sentence(NoNumbers);
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
