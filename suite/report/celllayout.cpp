#include "suite/report/celllayout.h"

#include <QTextOption>

#include <algorithm>

namespace {
constexpr int unitsPerPoint = 20;
}

QFont ReportFont(const TextLook &look, double scale)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(std::max(1, static_cast<int>(PointSize(look) * scale * unitsPerPoint)));
    font.setBold(look.bold);
    font.setItalic(look.italic);
    font.setUnderline(look.underline);
    font.setStrikeOut(look.strike);
    return font;
}

void FontMeasure::use(const TextLook &look, double scale)
{
    if (scale == m_scale && look == m_look)
        return;
    m_look = look;
    m_scale = scale;
    m_metrics = QFontMetricsF(ReportFont(look, scale));
    m_height = m_metrics.height();
    for (size_t c = 0; c < m_advances.size(); ++c)
        m_advances[c] = m_metrics.horizontalAdvance(QChar(static_cast<char16_t>(c)));
}

double FontMeasure::height(const TextLook &look, double scale)
{
    use(look, scale);
    return m_height;
}

bool FontMeasure::fits(const QString &text, const TextLook &look, double width, double scale)
{
    constexpr double kerning = 1.02; // letters side by side are hardly ever wider than one by one
    use(look, scale);
    double sum = 0;
    for (const QChar c : text) {
        if (c.unicode() >= m_advances.size())
            return m_metrics.horizontalAdvance(text) <= width;
        sum += m_advances[c.unicode()];
    }
    return sum * kerning <= width || m_metrics.horizontalAdvance(text) <= width;
}

CellLayout::CellLayout(const QString &text, TextLook &look, Qt::Alignment alignment, double width, double scale)
{
    const QFont base = ReportFont(look, scale);
    QString plain;
    QList<QTextLayout::FormatRange> formats;
    for (const TextPiece &piece : ParseReportText(text, look).pieces) {
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(plain.size());
        range.length = static_cast<int>(piece.text.size());
        range.format.setFont(ReportFont(piece.look, scale));
        formats.append(range);
        plain += piece.text;
    }
    plain.replace(u'\n', QChar::LineSeparator);
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setText(plain);
    m_layout.setFont(base);
    m_layout.setTextOption(option);
    m_layout.setFormats(formats);
    m_layout.beginLayout();
    for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, m_height});
        m_height += line.height();
    }
    m_layout.endLayout();
    m_height = std::max(m_height, QFontMetricsF(base).height());
}
