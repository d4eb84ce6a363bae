#include "platform/rtfscanner.h"

#include "platform/windows1252.h"

#include <algorithm>
#include <array>

namespace {

using Kind = RtfToken::Kind;

template<size_t n>
bool isOneOf(const std::array<const char *, n> &words, const QByteArray &word)
{
    return std::any_of(words.begin(), words.end(), [&](const char *known) { return word == known; });
}

bool beginsNoText(const QByteArray &word)
{
    static constexpr std::array words = {"fonttbl",   "colortbl", "stylesheet", "info", "pict", "fldinst",
                                         "sp",        "object",   "nonshppict", "xe",   "rxe",  "tc",
                                         "bkmkstart", "bkmkend",  "filetbl",    "upr"};
    return isOneOf(words, word);
}

bool beginsPartBeside(const QByteArray &word)
{
    static constexpr std::array words = {"header",  "headerl", "headerr", "headerf",  "footer",    "footerl",
                                         "footerr", "footerf", "shptxt",  "footnote", "annotation"};
    return isOneOf(words, word);
}

bool endsParagraph(const QByteArray &word)
{
    static constexpr std::array words = {"par", "cell", "row", "sect", "page", "nestcell", "nestrow"};
    return isOneOf(words, word);
}

/// The character that a control word stands for; a null one when it stands for none.
QChar charOf(const QByteArray &word)
{
    static constexpr std::array<std::pair<const char *, char16_t>, 11> chars = {{{"tab", u'\t'},
                                                                                 {"line", u'\n'},
                                                                                 {"emdash", 0x2014},
                                                                                 {"endash", 0x2013},
                                                                                 {"lquote", 0x2018},
                                                                                 {"rquote", 0x2019},
                                                                                 {"ldblquote", 0x201c},
                                                                                 {"rdblquote", 0x201d},
                                                                                 {"bullet", 0x2022},
                                                                                 {"emspace", 0x2003},
                                                                                 {"enspace", 0x2002}}};
    for (const auto &[name, unit] : chars) {
        if (word == name)
            return unit;
    }
    return {};
}

} // namespace

void RtfScanner::take(RtfTokens::iterator token, std::vector<RtfChar> &chars)
{
    m_ends = false;
    if (token->raw.isEmpty())
        return;
    switch (token->kind) {
    case Kind::Open:
        open();
        break;
    case Kind::Close:
        close();
        break;
    case Kind::Word:
        takeWord(token, chars);
        break;
    case Kind::Symbol:
        takeSymbol(token, chars);
        break;
    case Kind::Hex:
        add(chars, CharOfWindows1252(static_cast<unsigned char>(token->number)), token, 0, token->raw.size());
        break;
    case Kind::Text:
        for (qsizetype at = 0; at < token->raw.size(); ++at) {
            const auto byte = static_cast<unsigned char>(token->raw[at]);
            if (byte != '\r' && byte != '\n' && byte != 0)
                add(chars, CharOfWindows1252(byte), token, at, 1);
        }
        break;
    case Kind::Binary:
        m_standInsLeft = std::max(0, m_standInsLeft - 1);
        break;
    }
}

void RtfScanner::open()
{
    m_outer.push_back(m_scope);
    m_scope.begins = true;
    m_scope.starred = false;
    m_standInsLeft = 0;
    ++m_depth;
}

void RtfScanner::close()
{
    m_standInsLeft = 0;
    --m_depth;
    if (m_outer.empty())
        return;
    m_ends = m_scope.beside && !m_outer.back().beside;
    m_scope = m_outer.back();
    m_outer.pop_back();
}

/// A control word at the start of a group may say what the group is.
bool RtfScanner::beginsPart(const RtfToken &token)
{
    if (!m_scope.begins)
        return false;
    m_scope.begins = false;
    const bool known = token.word == "shppict" || token.word == "shpinst";
    if ((m_scope.starred && !known) || beginsNoText(token.word)) {
        m_scope.skips = true;
        return true;
    }
    if (!beginsPartBeside(token.word))
        return known;
    m_scope.beside = true;
    m_ends = true;
    return true;
}

void RtfScanner::takeWord(RtfTokens::iterator token, std::vector<RtfChar> &chars)
{
    if (beginsPart(*token))
        return;
    if (token->word == "uc") {
        m_scope.standIns = std::clamp(token->number, 0, 16);
    } else if (token->word == "u" && token->hasNumber) {
        m_standInsLeft = 0;
        add(chars, QChar(static_cast<char16_t>(token->number)), token, 0, token->raw.size());
        m_standInsLeft = m_scope.standIns;
    } else if (const QChar unit = charOf(token->word); !unit.isNull()) {
        add(chars, unit, token, 0, token->raw.size());
    } else {
        m_ends = !m_scope.skips && endsParagraph(token->word);
    }
}

void RtfScanner::takeSymbol(RtfTokens::iterator token, std::vector<RtfChar> &chars)
{
    constexpr char16_t noBreakSpace = 0xa0;
    constexpr char16_t noBreakHyphen = 0x2011;
    const char symbol = token->word.isEmpty() ? '\0' : token->word[0];
    switch (symbol) {
    case '*':
        m_scope.starred = m_scope.begins;
        return;
    case '\r':
    case '\n':
        m_ends = !m_scope.skips;
        break;
    case '\\':
    case '{':
    case '}':
        add(chars, QLatin1Char(symbol), token, 0, token->raw.size());
        break;
    case '~':
        add(chars, noBreakSpace, token, 0, token->raw.size());
        break;
    case '_':
        add(chars, noBreakHyphen, token, 0, token->raw.size());
        break;
    default:
        break;
    }
    m_scope.begins = false;
}

void RtfScanner::add(std::vector<RtfChar> &chars, QChar unit, RtfTokens::iterator token, qsizetype at, qsizetype length)
{
    m_scope.begins = false;
    if (m_scope.skips || m_depth <= 0)
        return;
    const bool stand = m_standInsLeft > 0;
    if (stand)
        --m_standInsLeft;
    chars.push_back({unit, token, at, length, stand});
}
