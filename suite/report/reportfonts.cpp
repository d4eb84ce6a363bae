#include "suite/report/reportfonts.h"

#include <algorithm>

ReportFace::ReportFace(const TextLook &look, double scale)
    : m_font(QStringLiteral("DejaVu Sans"))
    , m_plain(!look.underline && !look.strike)
{
    constexpr int unitsPerPoint = 20;
    m_font.setStyleHint(QFont::SansSerif);
    m_font.setHintingPreference(QFont::PreferNoHinting);
    m_font.setKerning(false); // a text is as wide as its letters
    m_font.setPixelSize(std::max(1, static_cast<int>(PointSize(look) * scale * unitsPerPoint)));
    m_font.setBold(look.bold);
    m_font.setItalic(look.italic);
    m_font.setUnderline(look.underline);
    m_font.setStrikeOut(look.strike);
    const QFontMetricsF metrics(m_font);
    m_height = metrics.height();
    m_ascent = metrics.ascent();
    m_raw = QRawFont::fromFont(m_font);
    for (size_t c = ' '; c < letters; ++c) {
        const QList<quint32> glyphs = m_raw.glyphIndexesForString(QChar(static_cast<char16_t>(c)));
        m_glyphs[c] = glyphs.value(0);
        m_advances[c] = m_raw.advancesForGlyphIndexes(glyphs).value(0).x();
    }
}

bool ReportFace::sets(QStringView text) const
{
    return m_plain && std::all_of(text.begin(), text.end(), [this](QChar c) {
               return c.unicode() < letters && (m_glyphs[c.unicode()] != 0 || c == u'\n');
           });
}

const ReportFace &ReportFonts::face(const TextLook &look, double scale)
{
    const auto fits = [&](const Entry &entry) { return entry.scale == scale && entry.look == look; };
    if (m_last < m_entries.size() && fits(m_entries[m_last]))
        return *m_entries[m_last].face;
    auto found = std::find_if(m_entries.begin(), m_entries.end(), fits);
    if (found == m_entries.end())
        found = m_entries.insert(found, {look, scale, std::make_unique<ReportFace>(look, scale)});
    m_last = static_cast<size_t>(found - m_entries.begin());
    return *found->face;
}
