#include "platform/rtftokens.h"

#include "platform/windows1252.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace {

using Kind = RtfToken::Kind;

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

int hexDigit(char c)
{
    if (isDigit(c))
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

class Tokenizer
{
public:
    explicit Tokenizer(const QByteArray &rtf)
        : m_rtf(rtf)
    {
    }

    RtfTokens read()
    {
        while (m_at < m_rtf.size())
            readOne();
        return std::move(m_tokens);
    }

private:
    /// The byte at a distance, 0 after the end.
    [[nodiscard]] char peek(qsizetype ahead = 0) const
    {
        return m_at + ahead < m_rtf.size() ? m_rtf[m_at + ahead] : '\0';
    }

    RtfToken &add(Kind kind, qsizetype length)
    {
        length = std::min(length, m_rtf.size() - m_at);
        m_tokens.push_back({kind, m_rtf.mid(m_at, length), {}, 0, false});
        m_at += length;
        return m_tokens.back();
    }

    void readOne()
    {
        switch (peek()) {
        case '{':
            add(Kind::Open, 1);
            break;
        case '}':
            add(Kind::Close, 1);
            break;
        case '\\':
            readControl();
            break;
        default:
            readText();
        }
    }

    void readText()
    {
        qsizetype length = 1;
        while (m_at + length < m_rtf.size() && peek(length) != '{' && peek(length) != '}' && peek(length) != '\\')
            ++length;
        add(Kind::Text, length);
    }

    void readControl()
    {
        constexpr qsizetype hexLength = 4; // \'e9
        if (isLetter(peek(1))) {
            readWord();
        } else if (peek(1) == '\'' && hexDigit(peek(2)) >= 0 && hexDigit(peek(3)) >= 0) {
            const int byte = hexDigit(peek(2)) * 16 + hexDigit(peek(3));
            RtfToken &token = add(Kind::Hex, hexLength);
            token.number = byte;
            token.hasNumber = true;
        } else {
            RtfToken &token = add(Kind::Symbol, 2);
            token.word = token.raw.mid(1);
        }
    }

    void readWord()
    {
        qsizetype end = 1;
        while (isLetter(peek(end)))
            ++end;
        const QByteArray word = m_rtf.mid(m_at + 1, end - 1);
        const bool hasNumber = isDigit(peek(end)) || (peek(end) == '-' && isDigit(peek(end + 1)));
        const int number = hasNumber ? readNumber(end) : 0;
        if (peek(end) == ' ')
            ++end;
        RtfToken &token = add(Kind::Word, end);
        token.word = word;
        token.number = number;
        token.hasNumber = hasNumber;
        if (token.is("bin") && number > 0 && m_at < m_rtf.size())
            add(Kind::Binary, number);
    }

    /// The number at that distance, which then lies after it.
    int readNumber(qsizetype &end) const
    {
        const bool negative = peek(end) == '-';
        if (negative)
            ++end;
        qint64 value = 0;
        for (; isDigit(peek(end)); ++end)
            value = std::min<qint64>(value * 10 + (peek(end) - '0'), std::numeric_limits<int>::max());
        return static_cast<int>(negative ? -value : value);
    }

    const QByteArray &m_rtf;
    qsizetype m_at = 0;
    RtfTokens m_tokens;
};

/// Whether a token's first byte would be read as part of the control word before it.
bool runsInto(const RtfToken &word, const QByteArray &next)
{
    if (word.kind != Kind::Word || word.raw.endsWith(' '))
        return false;
    const char first = next[0];
    if (first == ' ' || isDigit(first))
        return true;
    if (word.hasNumber)
        return false;
    return isLetter(first) || (first == '-' && next.size() > 1 && isDigit(next[1]));
}

QByteArray escaped(QChar c)
{
    const char16_t unit = c.unicode();
    if (unit == u'\\' || unit == u'{' || unit == u'}')
        return QByteArray("\\") + static_cast<char>(unit);
    if (unit == u'\t')
        return "\\tab ";
    if (unit == u'\n')
        return "\\line ";
    if (unit < u' ')
        return {};
    if (unit < 0x7f)
        return QByteArray(1, static_cast<char>(unit));
    const int byte = Windows1252Of(c);
    const QByteArray plain = byte < 0 ? QByteArray("?") : "\\'" + QByteArray::number(byte, 16).rightJustified(2, '0');
    return "{\\uc1\\u" + QByteArray::number(static_cast<qint16>(unit)) + (byte < 0 ? " " : "") + plain + "}";
}

} // namespace

RtfTokens ReadRtfTokens(const QByteArray &rtf)
{
    return Tokenizer(rtf).read();
}

QByteArray RtfBytes(const RtfTokens &tokens)
{
    QByteArray bytes;
    const RtfToken *before = nullptr;
    for (const RtfToken &token : tokens) {
        if (token.raw.isEmpty())
            continue;
        if (before != nullptr && runsInto(*before, token.raw))
            bytes += ' ';
        bytes += token.raw;
        before = &token;
    }
    return bytes;
}

QByteArray RtfOfText(const QString &text)
{
    constexpr QChar escape(0x1b);
    QByteArray rtf;
    bool struck = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] != escape) {
            rtf += escaped(text[at]);
            continue;
        }
        const QChar what = ++at < text.size() ? text[at] : QChar();
        if (what == u'S' && !std::exchange(struck, true))
            rtf += "{\\strike ";
        else if (what == u'T' && std::exchange(struck, false))
            rtf += '}';
    }
    return struck ? rtf + '}' : rtf;
}
