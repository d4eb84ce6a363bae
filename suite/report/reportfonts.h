#pragma once

#include "suite/report/reporttext.h"

#include <QFont>
#include <QFontMetricsF>
#include <QRawFont>

#include <array>
#include <memory>
#include <vector>

/// A font of the report at one size, with what is asked of it again and again. Sizes are in twentieths of a point.
class ReportFace
{
public:
    ReportFace(const TextLook &look, double scale);

    [[nodiscard]] const QFont &font() const { return m_font; }
    [[nodiscard]] const QRawFont &raw() const { return m_raw; }
    [[nodiscard]] double height() const { return m_height; }
    [[nodiscard]] double ascent() const { return m_ascent; }
    /// Whether a text can be set letter by letter: Western letters that the font has, neither underlined nor struck.
    [[nodiscard]] bool sets(QStringView text) const;
    [[nodiscard]] double advance(QChar c) const { return m_advances[c.unicode()]; }
    [[nodiscard]] quint32 glyph(QChar c) const { return m_glyphs[c.unicode()]; }

private:
    static constexpr size_t letters = 256;

    QFont m_font;
    QRawFont m_raw;
    double m_height = 0;
    double m_ascent = 0;
    bool m_plain = true;
    std::array<double, letters> m_advances{};
    std::array<quint32, letters> m_glyphs{};
};

/// The faces that a report has used so far.
class ReportFonts
{
public:
    const ReportFace &face(const TextLook &look, double scale);

private:
    struct Entry
    {
        TextLook look;
        double scale = 1;
        std::unique_ptr<ReportFace> face;
    };
    std::vector<Entry> m_entries;
    size_t m_last = 0;
};
