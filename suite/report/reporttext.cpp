#include "suite/report/reporttext.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr QChar escape(0x1b);
constexpr QChar formFeed(0x0c);
const QLatin1String sizeStart("[##ST##FONT##SIZE##]");
const QLatin1String pitchStart("\x1b\x12\x1b");
const QLatin1String pictureStart("###IMG");

/// Reads one text of the report language from front to back.
class TokenReader
{
public:
    TokenReader(const QString &text, TextLook &look)
        : m_text(text)
        , m_look(look)
    {
    }

    ReportText read()
    {
        while (m_at < m_text.size() && !m_result.pageBreak) {
            if (m_text[m_at] == formFeed)
                breakPage();
            else if (!pitch() && !style() && !fontSize() && !picture())
                plainCharacter();
        }
        flush();
        return std::move(m_result);
    }

private:
    [[nodiscard]] QStringView ahead() const { return QStringView(m_text).mid(m_at); }

    void flush()
    {
        if (!m_piece.isEmpty())
            m_result.pieces.push_back({m_piece.replace(QLatin1String("\r\n"), QLatin1String("\n")), m_look, {}});
        m_piece.clear();
    }

    void plainCharacter() { m_piece.append(m_text[m_at++]); }

    void breakPage()
    {
        m_result.pageBreak = true;
        ++m_at;
        if (ahead().startsWith(u';'))
            ++m_at;
        m_result.rest = m_text.mid(m_at);
    }

    bool pitch()
    {
        if (!ahead().startsWith(pitchStart) || m_at + 3 >= m_text.size())
            return false;
        flush();
        const QChar letter = m_text[m_at + 3];
        m_look.pitch = letter == u'M' ? Pitch::Small : letter == u'N' ? Pitch::Footer : Pitch::Normal;
        m_look.size = 0;
        m_at += 4;
        if (ahead().startsWith(u';'))
            ++m_at;
        return true;
    }

    bool style()
    {
        struct Style
        {
            const char *token;
            bool TextLook::*flag;
            bool on;
        };
        static constexpr Style styles[] = {
            {"E", &TextLook::bold, true},        {"F", &TextLook::bold, false},   {"-1", &TextLook::underline, true},
            {"-0", &TextLook::underline, false}, {"S", &TextLook::strike, true},  {"T", &TextLook::strike, false},
            {"4", &TextLook::italic, true},      {"5", &TextLook::italic, false},
        };
        if (m_text[m_at] != escape)
            return false;
        const QStringView after = ahead().mid(1);
        for (const Style &known : styles) {
            const QLatin1String token(known.token);
            if (!after.startsWith(token))
                continue;
            flush();
            m_look.*known.flag = known.on;
            m_at += 1 + token.size();
            return true;
        }
        return false;
    }

    bool fontSize()
    {
        static const QRegularExpression mark(
            QStringLiteral(R"(\G\[##ST##FONT##SIZE##\]=(\d+)=\[##EN##FONT##SIZE##\])"));
        if (m_text[m_at] != u'[' || !ahead().startsWith(sizeStart))
            return false;
        const QRegularExpressionMatch match = mark.match(m_text, m_at);
        if (!match.hasMatch())
            return false;
        flush();
        m_look.size = match.captured(1).toInt();
        m_result.sizeSet = true;
        m_at += match.capturedLength();
        return true;
    }

    bool picture()
    {
        static const QRegularExpression token(QStringLiteral(R"(\G###IMG\w*###)"));
        if (m_text[m_at] != u'#' || !ahead().startsWith(pictureStart))
            return false;
        const QRegularExpressionMatch match = token.match(m_text, m_at);
        if (!match.hasMatch())
            return false;
        flush();
        m_result.pieces.push_back({{}, m_look, match.captured()});
        m_at += match.capturedLength();
        return true;
    }

    const QString &m_text;
    TextLook &m_look;
    qsizetype m_at = 0;
    QString m_piece;
    ReportText m_result;
};

} // namespace

int ColumnsOfLine(Pitch pitch)
{
    constexpr int normal = 78;
    constexpr int small = 100;
    return pitch == Pitch::Normal ? normal : small;
}

double PointSize(const TextLook &look)
{
    if (look.size > 0)
        return look.size;
    switch (look.pitch) {
    case Pitch::Small:
        return 8;
    case Pitch::Footer:
        return 7;
    default:
        return 10;
    }
}

QString ReportText::plain() const
{
    QString text;
    for (const TextPiece &piece : pieces)
        text += piece.text;
    return text;
}

bool HasTokens(const QString &text)
{
    return text.contains(escape) || text.contains(formFeed) || text.contains(sizeStart) || text.contains(pictureStart);
}

ReportText ParseReportText(const QString &text, TextLook &look)
{
    return TokenReader(text, look).read();
}
